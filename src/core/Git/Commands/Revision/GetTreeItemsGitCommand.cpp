#include "Git/Commands/Revision/GetTreeItemsGitCommand.h"

#include "Git/Process/GitRequest.h"
#include "Jobs/Cancelable.h"

QStringList GetTreeItemsGitCommand::arguments(const QString& tree) { return {QStringLiteral("ls-tree"), QStringLiteral("-z"), tree}; }

GitResult<std::vector<FileTreeItem>> GetTreeItemsGitCommand::execute(const GitModule& module, const QString& tree,
                                                                     const QString& parentFolder, Cancelable* cancelation) {
  const GitResponse response = GitRequest(module, arguments(tree)).execute(false, cancelation);
  if (cancelation && cancelation->isCanceled()) return Error::Canceled{};
  if (!response.isSuccess()) return failureResult<std::vector<FileTreeItem>>(response);
  return parse(response.output, parentFolder);
}

// "100644 blob 3b18e512...\tname", NUL after each entry; "tree" is a folder and "commit"
// a submodule.
std::vector<FileTreeItem> GetTreeItemsGitCommand::parse(const QString& output, const QString& parentFolder) {
  std::vector<FileTreeItem> items;
  const QString prefix = parentFolder.isEmpty() || parentFolder.endsWith(QLatin1Char('/')) ? parentFolder : parentFolder + QLatin1Char('/');
  for (const QString& record : output.split(QLatin1Char('\0'), Qt::SkipEmptyParts)) {
    const qsizetype tab = record.indexOf(QLatin1Char('\t'));
    if (tab < 0) continue;
    const QStringList fields = record.left(tab).split(QLatin1Char(' '));
    if (fields.size() < 3) continue;
    FileTreeItem item;
    const QString& type = fields.at(1);
    item.itemType = type == QLatin1String("tree")     ? FileTreeItemType::directory
                    : type == QLatin1String("commit") ? FileTreeItemType::revision
                                                      : FileTreeItemType::file;
    item.fileName = record.mid(tab + 1);
    item.filePath = prefix + item.fileName;
    item.treeSha = fields.at(2);
    items.push_back(std::move(item));
  }
  return items;
}
