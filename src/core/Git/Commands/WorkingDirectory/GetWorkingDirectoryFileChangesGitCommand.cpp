#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "Consts.h"
#include "Git/Commands/Submodules/GetSubmoduleContentGitCommand.h"
#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"
#include "Models/FileContent/BinaryDiffFileContent.h"
#include "Models/FileContent/FileChangeClassifier.h"
#include "Models/FileContent/LfsFileContent.h"
#include "Models/FileContent/TextDiffFileContent.h"
#include "Models/FileContent/UnknownBinaryFileContent.h"

namespace {

using namespace FileChangeClassifier;

// The path of the file before the change: the source of a rename.
QString oldSidePath(const ChangedFile& file) { return file.oldPath.value_or(file.path); }

std::optional<QByteArray> catFileBlob(const GitModule& module, const QString& object) {
  const GitDataResponse response = GitRequest(module, {QStringLiteral("cat-file"), QStringLiteral("blob"), object}).executeData();
  if (!response.isSuccess()) return std::nullopt;
  return response.data;
}

std::optional<qint64> catFileSize(const GitModule& module, const QString& object) {
  const GitResponse response = GitRequest(module, {QStringLiteral("cat-file"), QStringLiteral("-s"), object}).execute(true);
  if (!response.isSuccess()) return std::nullopt;
  bool ok = false;
  const qint64 size = response.output.trimmed().toLongLong(&ok);
  return ok ? std::optional<qint64>(size) : std::nullopt;
}

std::optional<QString> pointerText(const std::optional<QByteArray>& bytes) {
  if (!bytes) return std::nullopt;
  auto text = decodeUtf8(*bytes);
  if (!text || !LfsPointer::isPointerText(*text)) return std::nullopt;
  return text;
}

DiffFileContentPtr imageContent(const GitModule& module, const ChangedFilePtr& file, bool amend) {
  using Command = GetWorkingDirectoryFileChangesGitCommand;
  std::optional<QByteArray> oldData;
  std::optional<QByteArray> newData;
  if (file->staged) {
    newData = Command::getFileContent(module, file->path, Command::index);
    oldData = amend ? catFileBlob(module, Command::amendBaseTree(module) + QLatin1Char(':') + oldSidePath(*file))
                    : Command::getFileContent(module, oldSidePath(*file), Command::head);
  } else {
    oldData = Command::getFileContent(module, oldSidePath(*file), Command::indexOrHead);
    newData = Command::getFileContent(module, file->path, Command::workingCopy);
  }
  const auto oldPointer = pointerText(oldData);
  const auto newPointer = pointerText(newData);
  if (oldPointer || newPointer) {
    return std::make_shared<LfsFileContent>(file, oldPointer ? LfsPointer::parse(*oldPointer) : std::nullopt,
                                            newPointer ? LfsPointer::parse(*newPointer) : std::nullopt, true);
  }
  return std::make_shared<BinaryDiffFileContent>(file, std::move(oldData), std::move(newData));
}

DiffFileContentPtr unknownBinaryContent(const GitModule& module, const ChangedFilePtr& file, bool amend) {
  std::optional<qint64> oldSize;
  std::optional<qint64> newSize;
  const QString oldPath = oldSidePath(*file);
  if (file->staged) {
    const QString base = amend ? GetWorkingDirectoryFileChangesGitCommand::amendBaseTree(module) : QStringLiteral("HEAD");
    oldSize = catFileSize(module, base + QLatin1Char(':') + oldPath);
    newSize = catFileSize(module, QLatin1Char(':') + file->path);
  } else {
    oldSize = catFileSize(module, QLatin1Char(':') + oldPath);
    if (!oldSize) oldSize = catFileSize(module, QStringLiteral("HEAD:") + oldPath);
    const QFileInfo working(QDir(module.repositoryPath).filePath(file->path));
    if (working.exists()) newSize = working.size();
  }
  return std::make_shared<UnknownBinaryFileContent>(file, oldSize, newSize);
}

}  // namespace

QStringList GetWorkingDirectoryFileChangesGitCommand::arguments(const ChangedFile& file, bool amend, const DiffSettings& settings,
                                                                const QString& baseTree) {
  QStringList args{QStringLiteral("-c"), QStringLiteral("core.quotepath=false"), QStringLiteral("--no-pager"), QStringLiteral("diff"),
                   QStringLiteral("--no-ext-diff"), QStringLiteral("--no-color"), QStringLiteral("--src-prefix=a/"),
                   QStringLiteral("--dst-prefix=b/"), QStringLiteral("--find-renames"), QStringLiteral("--submodule=short")};
  args << (file.tracked ? QStringLiteral("--full-index") : QStringLiteral("--no-index"));
  if (file.staged) args << QStringLiteral("--staged");
  if (file.staged && amend) {
    args = QStringList{QStringLiteral("-c"), QStringLiteral("core.quotepath=false"), QStringLiteral("--no-pager"),
                       QStringLiteral("diff-index"), QStringLiteral("--no-ext-diff"), QStringLiteral("--no-color"),
                       QStringLiteral("--src-prefix=a/"), QStringLiteral("--dst-prefix=b/"), QStringLiteral("--patch"), baseTree,
                       QStringLiteral("--cached")};
  }
  if (settings.showEntireFile) {
    args << QStringLiteral("--inter-hunk-context=100000") << QStringLiteral("--unified=100000");
  } else {
    args << QStringLiteral("--unified=%1").arg(settings.effectiveContextSize());
  }
  if (settings.ignoreWhitespaces) args << QStringLiteral("--ignore-all-space");
  args << QStringLiteral("--");
  if (!file.tracked) args << QStringLiteral("/dev/null");
  args << file.path;
  if (file.oldPath) args << *file.oldPath;
  return args;
}

QStringList GetWorkingDirectoryFileChangesGitCommand::patchArguments(const ChangedFile& file, bool amend, const QString& baseTree) {
  QStringList args{QStringLiteral("--no-pager"), QStringLiteral("diff"), QStringLiteral("--full-index"), QStringLiteral("--binary"),
                   QStringLiteral("--no-ext-diff"), QStringLiteral("--no-color"), QStringLiteral("--src-prefix=a/"),
                   QStringLiteral("--dst-prefix=b/"), QStringLiteral("--find-renames"), QStringLiteral("--submodule=short")};
  if (file.staged) args << QStringLiteral("--staged");
  if (file.staged && amend) {
    args = QStringList{QStringLiteral("--no-pager"), QStringLiteral("diff-index"), QStringLiteral("--no-ext-diff"),
                       QStringLiteral("--no-color"), QStringLiteral("--src-prefix=a/"), QStringLiteral("--dst-prefix=b/"),
                       QStringLiteral("--patch"), baseTree, QStringLiteral("--cached")};
  }
  args << QStringLiteral("--");
  if (!file.tracked) args << QStringLiteral("/dev/null");
  args << file.path;
  if (file.oldPath) args << *file.oldPath;
  return args;
}

QString GetWorkingDirectoryFileChangesGitCommand::amendBaseTree(const GitModule& module) {
  const GitRequest request(module, {QStringLiteral("rev-parse"), QStringLiteral("--verify"), QStringLiteral("--quiet"),
                                    QStringLiteral("HEAD^")});
  return request.execute(true).isSuccess() ? QStringLiteral("HEAD^") : Consts::Git::emptyTreeSha;
}

GitResult<DiffFileContentPtr> GetWorkingDirectoryFileChangesGitCommand::execute(const GitModule& module, const ChangedFilePtr& file,
                                                                                bool amend, const DiffSettings& settings) {
  const QString baseTree = file->staged && amend ? amendBaseTree(module) : QString();
  // --no-index exits 1 when the files differ, so status 1 alone is no failure.
  const GitResponse response = GitRequest(module, arguments(*file, amend, settings, baseTree)).execute(true);
  QString diff = response.output;
  if (!response.isSuccess()) {
    const GitResponseError& failure = *response.failure;
    if (failure.kind != GitResponseError::Kind::unknownError) return failureResult<DiffFileContentPtr>(response);
    if (!failure.error.isEmpty() && failure.error.contains(QStringLiteral("fatal:"))) {
      LOG_ERROR(QStringLiteral("Cannot get the changes of '%1': %2").arg(file->path, failure.error));
      return failureResult<DiffFileContentPtr>(response);
    }
    diff = failure.output;
  }

  if (auto pointers = findLfsChange(diff)) {
    return DiffFileContentPtr(std::make_shared<LfsFileContent>(file, pointers->first, pointers->second, isImageFile(file->path)));
  }
  if (isImageFile(file->path)) return imageContent(module, file, amend);
  if (isBinaryDiff(diff)) return unknownBinaryContent(module, file, amend);
  if (const Submodule* submodule = file->changedSubmodule()) {
    const auto shas = parseSubmoduleDiff(diff, true);
    const auto submoduleModule = GetSubmoduleContentGitCommand::openSubmodule(module, submodule->path);
    if (shas && submoduleModule) return GetSubmoduleContentGitCommand::execute(module, *submoduleModule, *submodule, file, *shas);
  }
  return DiffFileContentPtr(std::make_shared<TextDiffFileContent>(file, diff));
}

std::optional<QByteArray> GetWorkingDirectoryFileChangesGitCommand::getFileContent(const GitModule& module, const QString& filename,
                                                                                   int status) {
  switch (status) {
    case workingCopy: {
      QFile file(QDir(module.repositoryPath).filePath(filename));
      if (!file.open(QIODevice::ReadOnly)) {
        LOG_ERROR(QStringLiteral("Cannot read '%1': %2").arg(file.fileName(), file.errorString()));
        return std::nullopt;
      }
      return file.readAll();
    }
    case index:
      return catFileBlob(module, QLatin1Char(':') + filename);
    case head:
      return catFileBlob(module, QStringLiteral("HEAD:") + filename);
    case indexOrHead:
      if (auto staged = getFileContent(module, filename, index)) return staged;
      return getFileContent(module, filename, head);
    default:
      return std::nullopt;
  }
}
