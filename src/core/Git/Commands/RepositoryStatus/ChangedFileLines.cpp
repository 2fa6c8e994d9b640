#include "Git/Commands/RepositoryStatus/ChangedFileLines.h"

#include "Logging/AdvancedLogger.h"
#include "Models/SubmoduleChangedFile.h"

ChangedFileList ChangedFileLines::read(const QString& output, bool staged, const std::optional<QString>& treeIsh,
                                       const SubmoduleList& submodules) {
  ChangedFileList files;
  for (const QStringView line : QStringView(output).split(u'\n', Qt::SkipEmptyParts)) {
    auto file = ChangedFile::fromDiffLine(line, staged, treeIsh);
    if (!file) continue;
    const auto submodule = std::find_if(submodules.begin(), submodules.end(),
                                        [&](const Submodule& s) { return s.path == file->path; });
    if (submodule != submodules.end()) {
      files.push_back(std::make_shared<const SubmoduleChangedFile>(*file, *submodule));
    } else {
      files.push_back(std::make_shared<const ChangedFile>(std::move(*file)));
    }
  }
  return files;
}

bool ChangedFileLines::isUnknownRevision(const GitResponse& response, const QString& name) {
  // "fatal: ambiguous argument 'HEAD^': unknown revision or path not in the working tree."
  return response.failure && response.failure->kind == GitResponseError::Kind::unknownError &&
         response.failure->error.contains(QStringLiteral("unknown revision or path not in the working tree.")) &&
         response.failure->error.contains(QLatin1Char('\'') + name + QLatin1Char('\''));
}

void ChangedFileLines::logFailure(const QStringList& arguments, const GitResponse& response) {
  if (response.isSuccess()) return;
  LOG_WARNING(QStringLiteral("Git error '%1':\n%2").arg(arguments.join(QLatin1Char(' ')), response.failure->error));
}
