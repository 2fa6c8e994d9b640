#pragma once
// What the repository settings sheet edits: the identity in the repository's own
// configuration, the signing key and sign-off of its settings file, and the commit
// template. Loading reads all of them; saving writes only what changed, so a sheet
// opened and confirmed untouched runs no git at all.
#include <QString>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

struct RepositoryCommitSettings {
  QString userName;   // local user.name; empty when the repository doesn't set one
  QString userEmail;  // local user.email
  QString signingKey;  // empty: commits are not signed
  bool signOff = false;
  QString commitTemplate;  // the template's text; empty: no template
  std::optional<QString> templatePath;  // where the local commit.template points

  // The global identity, which applies where the local one is empty. Not written.
  QString globalUserName;
  QString globalUserEmail;

  bool operator==(const RepositoryCommitSettings&) const = default;

  static GitResult<RepositoryCommitSettings> load(const GitModule& module);
  // Writes the differences of `after` from `before` to git's configuration; the first
  // failure ends the run. Runs git: call it off the main thread.
  static GitVoidResult save(const GitModule& module, const RepositoryCommitSettings& before,
                            const RepositoryCommitSettings& after);
  // The signing key and sign-off, kept in the repository's own settings file. Main
  // thread only, as every writer of that file, so that no change of another is lost.
  static void saveSigning(const GitModule& module, const RepositoryCommitSettings& before, const RepositoryCommitSettings& after);
};
