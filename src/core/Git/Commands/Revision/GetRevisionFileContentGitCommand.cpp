#include "Git/Commands/Revision/GetRevisionFileContentGitCommand.h"

#include "Git/Process/GitRequest.h"
#include "Models/FileContent/BinaryContent.h"
#include "Models/FileContent/FileChangeClassifier.h"
#include "Models/FileContent/ImageContent.h"
#include "Models/FileContent/LfsContent.h"
#include "Models/FileContent/TextContent.h"

using namespace FileChangeClassifier;

GitResult<ContentPtr> GetRevisionFileContentGitCommand::execute(const GitModule& module, const QString& sha, const QString& path) {
  const QString object = sha + QLatin1Char(':') + path;
  const QStringList args = isImageFile(path) ? QStringList{QStringLiteral("cat-file"), QStringLiteral("blob"), object}
                                             : QStringList{QStringLiteral("show"), object};
  const GitDataResponse response = GitRequest(module, args).executeData();
  if (!response.isSuccess()) return failureResult<ContentPtr>(response);
  return classify(path, response.data);
}

GitResult<ContentPtr> GetRevisionFileContentGitCommand::executeBlob(const GitModule& module, const QString& blobSha,
                                                                   const QString& path, Cancelable* cancelation) {
  const GitDataResponse response =
      GitRequest(module, {QStringLiteral("cat-file"), QStringLiteral("blob"), blobSha}).executeData(std::nullopt, cancelation);
  if (!response.isSuccess()) return failureResult<ContentPtr>(response);
  return classify(path, response.data);
}

ContentPtr GetRevisionFileContentGitCommand::classify(const QString& path, const QByteArray& bytes, bool isStaged) {
  if (isImageFile(path)) {
    if (bytes.size() >= 121 && bytes.size() <= 1023) {
      if (const auto text = decodeUtf8(bytes); text && LfsPointer::isPointerText(*text)) {
        if (auto pointer = LfsPointer::parse(*text)) return std::make_shared<LfsContent>(path, isStaged, *pointer, true);
      }
    }
    return std::make_shared<ImageContent>(path, isStaged, bytes);
  }
  if (readsAsText(bytes)) {
    const QString text = *decodeUtf8(bytes);
    if (LfsPointer::isPointerText(text)) {
      if (auto pointer = LfsPointer::parse(text)) return std::make_shared<LfsContent>(path, isStaged, *pointer, false);
    }
    return std::make_shared<TextContent>(path, isStaged, text);
  }
  return std::make_shared<BinaryContent>(path, isStaged, bytes.size());
}
