#include "Git/Commands/Revision/FormatPatchGitCommand.h"

#include "Git/Commands/RunGitCommand.h"

QStringList FormatPatchGitCommand::arguments(const QString& folder, const QString& oldest, const QString& newest, bool oldestIsRoot) {
  QStringList arguments{QStringLiteral("format-patch"), QStringLiteral("--output-directory"), folder};
  if (oldest == newest) {
    arguments << QStringLiteral("-1") << newest;
  } else if (oldestIsRoot) {
    // "<root>~" names nothing; from the root takes the same commits.
    arguments << QStringLiteral("--root") << newest;
  } else {
    arguments << oldest + QStringLiteral("~..") + newest;
  }
  return arguments;
}

QStringList FormatPatchGitCommand::parseFiles(const QString& output) { return output.split(QLatin1Char('\n'), Qt::SkipEmptyParts); }

GitResult<QStringList> FormatPatchGitCommand::execute(const GitModule& module, const QString& folder, const QString& oldest,
                                                      const QString& newest, bool oldestIsRoot, JobProgress* progress) {
  const GitResult<GitResponse> response = runGitCommandWithResponse(module, arguments(folder, oldest, newest, oldestIsRoot), progress);
  if (!response) return response.error();
  return parseFiles(response.value().output);
}
