#include "Git/Commands/WorkingDirectory/GetRepositoryFilesGitCommand.h"

#include "Git/Commands/RunGitCommand.h"

QStringList GetRepositoryFilesGitCommand::arguments() {
  // --full-name: paths from the top, whatever folder git runs in. -z keeps names with
  // blanks, quotes and non-ASCII letters as they are.
  return {QStringLiteral("--no-optional-locks"), QStringLiteral("ls-files"), QStringLiteral("-z"), QStringLiteral("--cached"),
          QStringLiteral("--full-name")};
}

QStringList GetRepositoryFilesGitCommand::parse(const QString& output) {
  QStringList paths;
  for (const QString& path : output.split(QChar(0), Qt::SkipEmptyParts)) {
    // The stages of one conflicted path follow each other.
    if (paths.isEmpty() || paths.constLast() != path) paths << path;
  }
  return paths;
}

GitResult<QStringList> GetRepositoryFilesGitCommand::execute(const GitModule& module, JobProgress* progress) {
  auto response = runGitCommandWithResponse(module, arguments(), progress);
  if (!response) return response.error();
  return parse(response.value().output);
}
