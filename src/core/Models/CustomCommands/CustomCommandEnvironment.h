#pragma once
// What a custom command runs on, and the replacing of its variables ("$path", "$sha",
// ...) in the command's strings. Replacement is a plain, case-sensitive search and
// replace with no quoting: each environment replaces its own variables first, then the
// common ones, so "$filepath" is gone before "$path" is looked for.
#include <QString>
#include <memory>
#include <optional>

#include "Models/CustomCommands/CustomCommand.h"
#include "Models/GitModule.h"
#include "Models/Reference.h"

class CustomCommandEnvironment {
 public:
  // `gitPath`: the program that "$git" stands for, the Git instance in use.
  CustomCommandEnvironment(GitModule gitModule, QString gitPath) : gitModule(std::move(gitModule)), gitPath(std::move(gitPath)) {}
  virtual ~CustomCommandEnvironment() = default;

  // `text` with the variables replaced; with `urlEncode` the replacements are
  // percent-encoded, only ASCII letters and digits kept.
  virtual QString replace(const QString& text, bool urlEncode) const;

  // The help the command editor shows for a target, one variable a line.
  static QString availableVariables(CustomCommand::Target target);
  // Replaces every `variable` in `text` by `value`.
  static QString substitute(QString text, const QString& variable, const QString& value, bool urlEncode);

  const GitModule gitModule;
  const QString gitPath;
};

using CustomCommandEnvironmentPtr = std::shared_ptr<const CustomCommandEnvironment>;

class RevisionCustomCommandEnvironment final : public CustomCommandEnvironment {
 public:
  RevisionCustomCommandEnvironment(GitModule gitModule, QString gitPath, QString sha)
      : CustomCommandEnvironment(std::move(gitModule), std::move(gitPath)), sha(std::move(sha)) {}
  QString replace(const QString& text, bool urlEncode) const override;

  const QString sha;  // the commit's full name
};

class FileCustomCommandEnvironment final : public CustomCommandEnvironment {
 public:
  FileCustomCommandEnvironment(GitModule gitModule, QString gitPath, QString filepath, QString filename, std::optional<QString> sha)
      : CustomCommandEnvironment(std::move(gitModule), std::move(gitPath)), filepath(std::move(filepath)), filename(std::move(filename)),
        sha(std::move(sha)) {}
  // The file's own variables are never URL-encoded; without a commit "$SHA" and "$sha"
  // stay as they are.
  QString replace(const QString& text, bool urlEncode) const override;

  const QString filepath;  // in the repository
  const QString filename;
  const std::optional<QString> sha;  // none for a file of the working tree
};

class RefCustomCommandEnvironment final : public CustomCommandEnvironment {
 public:
  RefCustomCommandEnvironment(GitModule gitModule, QString gitPath, ReferencePtr reference)
      : CustomCommandEnvironment(std::move(gitModule), std::move(gitPath)), reference(std::move(reference)) {}
  QString replace(const QString& text, bool urlEncode) const override;

  const ReferencePtr reference;
};
