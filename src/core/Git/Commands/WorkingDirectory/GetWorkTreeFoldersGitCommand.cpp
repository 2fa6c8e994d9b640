#include "Git/Commands/WorkingDirectory/GetWorkTreeFoldersGitCommand.h"

#include <QSet>
#include <algorithm>

#include "Git/Commands/RunGitCommand.h"

QStringList GetWorkTreeFoldersGitCommand::arguments() {
  // Untracked folders come as "dir/" with --directory, tracked files with their path.
  return {QStringLiteral("--no-optional-locks"), QStringLiteral("ls-files"), QStringLiteral("-z"),
          QStringLiteral("--cached"),           QStringLiteral("--others"),   QStringLiteral("--exclude-standard"),
          QStringLiteral("--directory"),        QStringLiteral("--no-empty-directory")};
}

QStringList GetWorkTreeFoldersGitCommand::parse(const QString& output) {
  QSet<QString> folders{QString()};
  for (const QString& entry : output.split(QChar(0), Qt::SkipEmptyParts)) {
    // "src/ui/view.cpp" gives "src/ui" and "src"; "build-notes/" gives "build-notes".
    QString folder = entry.endsWith(QLatin1Char('/')) ? entry.chopped(1) : entry.section(QLatin1Char('/'), 0, -2);
    while (!folder.isEmpty() && !folders.contains(folder)) {
      folders.insert(folder);
      folder = folder.section(QLatin1Char('/'), 0, -2);
    }
  }
  QStringList sorted(folders.begin(), folders.end());
  std::sort(sorted.begin(), sorted.end());
  return sorted;
}

GitResult<QStringList> GetWorkTreeFoldersGitCommand::execute(const GitModule& module, JobProgress* progress) {
  auto response = runGitCommandWithResponse(module, arguments(), progress);
  if (!response) return response.error();
  return parse(response.value().output);
}
