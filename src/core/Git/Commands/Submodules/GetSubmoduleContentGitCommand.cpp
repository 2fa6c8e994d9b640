#include "Git/Commands/Submodules/GetSubmoduleContentGitCommand.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Git/Commands/Revision/GetRevisionDetailsGitCommand.h"
#include "Git/Process/GitRequest.h"
#include "Models/Tag.h"

std::optional<GitModule> GetSubmoduleContentGitCommand::openSubmodule(const GitModule& superproject, const QString& submodulePath) {
  const QString directory = QDir(superproject.repositoryPath).filePath(submodulePath);
  const QFileInfo dotGit(directory + QStringLiteral("/.git"));
  QString gitDirectory;
  if (dotGit.isDir()) {
    gitDirectory = dotGit.absoluteFilePath();
  } else if (dotGit.isFile()) {
    // "gitdir: ../../.git/modules/name", relative to the submodule's folder.
    QFile file(dotGit.absoluteFilePath());
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    const QString line = QString::fromUtf8(file.readLine()).trimmed();
    if (!line.startsWith(QStringLiteral("gitdir:"))) return std::nullopt;
    gitDirectory = QDir::cleanPath(QDir(directory).absoluteFilePath(line.mid(7).trimmed()));
    if (!QFileInfo(gitDirectory).isDir()) return std::nullopt;
  } else {
    return std::nullopt;
  }
  return GitModule{QDir::cleanPath(directory), gitDirectory, superproject.repositoryPath};
}

int GetSubmoduleContentGitCommand::countStatusEntries(const QString& output) {
  int count = 0;
  const QStringList records = output.split(QChar(u'\0'), Qt::SkipEmptyParts);
  for (qsizetype i = 0; i < records.size(); ++i) {
    ++count;
    // "R  new\0old": the source path is a record of its own.
    const QString& record = records.at(i);
    if (!record.isEmpty() && (record.at(0) == QLatin1Char('R') || record.at(0) == QLatin1Char('C'))) ++i;
  }
  return count;
}

GitResult<DiffFileContentPtr> GetSubmoduleContentGitCommand::execute(const GitModule& superproject, const GitModule& submoduleModule,
                                                                     const Submodule& submodule, const ChangedFilePtr& file,
                                                                     const FileChangeClassifier::SubmoduleShas& shas) {
  const GitResult<ReferenceList> references = GetReferencesGitCommand::execute(submoduleModule, Subdomain::tags());
  if (references.isFailure()) return references.error();
  const GitResult<RevisionDetails> oldRevision = GetRevisionDetailsGitCommand::execute(submoduleModule, shas.oldSha);
  if (oldRevision.isFailure()) return oldRevision.error();
  const GitResult<RevisionDetails> newRevision = GetRevisionDetailsGitCommand::execute(submoduleModule, shas.newSha);
  if (newRevision.isFailure()) return newRevision.error();

  auto content = std::make_shared<SubmoduleDiffFileContent>(file, submodule, superproject);
  content->oldRevision = oldRevision.value();
  content->newRevision = newRevision.value();
  for (const ReferencePtr& reference : references.value()) {
    const auto tag = std::dynamic_pointer_cast<const Tag>(reference);
    if (!tag) continue;
    if (tag->commitSha() == content->oldRevision.sha) content->oldTags.push_back(tag);
    if (tag->commitSha() == content->newRevision.sha) content->newTags.push_back(tag);
  }
  if (shas.dirty) {
    const GitRequest request(submoduleModule, {QStringLiteral("status"), QStringLiteral("--porcelain"), QStringLiteral("-uno"),
                                               QStringLiteral("-z")});
    const GitResponse response = request.execute();
    if (!response.isSuccess()) return failureResult<DiffFileContentPtr>(response);
    content->submoduleChangesCount = countStatusEntries(response.output);
  }
  return DiffFileContentPtr(std::move(content));
}
