#include "Services/FilePatchReader.h"

#include "Git/Process/GitRequest.h"

namespace {
QStringList common() {
  return {QStringLiteral("--no-pager"), QStringLiteral("diff"), QStringLiteral("--no-ext-diff"), QStringLiteral("--no-color"),
          QStringLiteral("--src-prefix=a/"), QStringLiteral("--dst-prefix=b/"), QStringLiteral("--submodule=short")};
}
void addPaths(QStringList& args, const ChangedFile& file, int contextSize) {
  if (file.oldPath) args << QStringLiteral("--find-renames");
  args << QStringLiteral("--unified=%1").arg(contextSize) << QStringLiteral("--") << file.path;
  if (file.oldPath) args << *file.oldPath;
}
}  // namespace

QStringList FilePatchReader::revisionArguments(const QString& fromSha, const QString& sha, const ChangedFile& file, int contextSize) {
  QStringList args = common();
  args << fromSha << sha;
  addPaths(args, file, contextSize);
  return args;
}

QStringList FilePatchReader::workingTreeArguments(const ChangedFile& file, int contextSize) {
  QStringList args = common();
  if (file.isNew) {
    // An untracked file against nothing: shown as added in full.
    args << QStringLiteral("--no-index") << QStringLiteral("--unified=%1").arg(contextSize) << QStringLiteral("--")
         << QStringLiteral("/dev/null") << file.path;
    return args;
  }
  if (file.staged) args << QStringLiteral("--cached");
  addPaths(args, file, contextSize);
  return args;
}

GitResult<QString> FilePatchReader::revision(const GitModule& module, const QString& sha, const std::optional<QString>& parentSha,
                                             const ChangedFile& file, int contextSize, Cancelable* cancel) {
  const QString from = parentSha.value_or(QString::fromLatin1(emptyTreeSha));
  const GitResponse response = GitRequest(module, revisionArguments(from, sha, file, contextSize)).execute(false, cancel);
  if (!response.isSuccess()) return failureResult<QString>(response);
  return response.output;
}

GitResult<QString> FilePatchReader::workingTree(const GitModule& module, const ChangedFile& file, int contextSize, Cancelable* cancel) {
  const GitResponse response = GitRequest(module, workingTreeArguments(file, contextSize)).execute(file.isNew, cancel);
  // "diff --no-index" exits 1 when the files differ, which they always do here.
  if (!response.isSuccess()) {
    if (file.isNew && response.failure->kind == GitResponseError::Kind::unknownError && response.failure->status == 1) {
      return response.failure->output;
    }
    return failureResult<QString>(response);
  }
  return response.output;
}
