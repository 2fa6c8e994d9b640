#pragma once
// Runs "git commit" with the message handed over in a temporary file, so that any text
// (leading dashes, several paragraphs, non-ASCII) arrives exactly as typed.
#include <QString>
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;
struct GitModuleSettings;

struct CommitOptions {
  bool signOff = false;
  bool amend = false;
  bool noVerify = false;  // skips the pre-commit and commit-msg hooks
  std::optional<QString> signingKey;

  // Sign-off and signing key as the repository's settings keep them.
  static CommitOptions fromSettings(const GitModuleSettings& settings, bool amend = false, bool noVerify = false);
};

struct CommitGitCommand {
  // The full argument list for a message stored at messageFilePath.
  static QStringList arguments(const CommitOptions& options, const QString& messageFilePath);
  // Canonical composition (NFC): a decomposed accent typed or pasted becomes one character.
  static QString normalizedMessage(const QString& message);
  // A fresh file in the temporary directory named by a UUID; written atomically as UTF-8.
  static std::optional<QString> writeMessageFile(const QString& message);

  // Fails with GitCommitFailed carrying what a retry needs; a canceled run gives Canceled.
  static GitVoidResult execute(const GitModule& module, const QString& message, const CommitOptions& options,
                               JobProgress* progress = nullptr);
};
