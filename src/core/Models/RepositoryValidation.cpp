#include "Models/RepositoryValidation.h"

#include "Git/Commands/Repository/GetGitDirectoryGitCommand.h"

std::variant<GitModule, RepositoryRefusal> RepositoryValidation::validate(const QString& path, bool allowSubmodule) {
  const QString trimmed = path.trimmed();
  if (trimmed.isEmpty()) return RepositoryRefusal::notARepository;
  auto module = GetGitDirectoryGitCommand::execute(trimmed);
  if (!module) return RepositoryRefusal::notARepository;
  if (module.value().superProjectPath && !allowSubmodule) return RepositoryRefusal::submodule;
  return module.value();
}

QString RepositoryValidation::alertTitle(RepositoryRefusal refusal) {
  switch (refusal) {
    case RepositoryRefusal::notARepository: return QStringLiteral("The directory is not a git repository");
    case RepositoryRefusal::submodule: return QStringLiteral("The directory is a submodule of another repository");
  }
  return {};
}

QString RepositoryValidation::alertMessage(RepositoryRefusal refusal, const QString& path) {
  switch (refusal) {
    case RepositoryRefusal::notARepository:
      return QStringLiteral("'") + path + QStringLiteral("' is not a git repository. Please select a correct path.");
    case RepositoryRefusal::submodule: return QStringLiteral("'") + path + QStringLiteral("' is a submodule. Please select a correct path.");
  }
  return {};
}

QString RepositoryValidation::openFailureText(RepositoryRefusal refusal, const QString& path) {
  switch (refusal) {
    case RepositoryRefusal::notARepository: return QStringLiteral("The '") + path + QStringLiteral("' is not a valid git directory.");
    case RepositoryRefusal::submodule:
      return QStringLiteral("The '") + path + QStringLiteral("' is a submodule of another git repository.");
  }
  return {};
}
