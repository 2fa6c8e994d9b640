#include "Models/FileListTree.h"

#include <QHash>
#include <algorithm>

QString FileListViewItem::text() const {
  if (!file) return name;
  // Names are made when a row is shown, not for every file of a long list.
  QStringView path(file->path);
  if (path.endsWith(QLatin1Char('/'))) path.chop(1);
  return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1).toString();
}

void FileListViewItem::collectFiles(ChangedFileList& files) const {
  if (file) files.push_back(file);
  for (const auto& child : children) child->collectFiles(files);
}

const FileListViewItem* FileListViewItem::findDirectory(const QString& path) const {
  for (const auto& child : children) {
    if (!child->isDirectory()) continue;
    if (child->directoryPath == path) return child.get();
    // Only a folder whose path is a prefix of the wanted one can hold it.
    if (path.startsWith(child->directoryPath + QLatin1Char('/'))) return child->findDirectory(path);
  }
  return nullptr;
}

namespace {

void finish(FileListViewItem& item) {
  // Merge chains of single folders into one row.
  for (auto& child : item.children) {
    while (child->isDirectory() && child->children.size() == 1 && child->children.front()->isDirectory()) {
      std::unique_ptr<FileListViewItem> only = std::move(child->children.front());
      only->name = child->name + QLatin1Char('/') + only->name;
      child = std::move(only);
    }
  }
  std::stable_partition(item.children.begin(), item.children.end(), [](const auto& child) { return child->isDirectory(); });
  for (size_t i = 0; i < item.children.size(); ++i) {
    FileListViewItem& child = *item.children[i];
    child.parent = &item;
    child.row = static_cast<int>(i);
    if (child.isDirectory()) finish(child);
  }
}

}  // namespace

std::unique_ptr<FileListViewItem> FileListTree::build(const ChangedFileList& files) {
  auto root = std::make_unique<FileListViewItem>();
  QHash<QString, FileListViewItem*> folders;  // by path
  folders.reserve(static_cast<qsizetype>(files.size() / 8 + 1));
  FileListViewItem* lastFolder = nullptr;
  for (const ChangedFilePtr& file : files) {
    // A directory entry (an untracked folder, a submodule) is a file row of its own.
    QStringView path(file->path);
    if (path.endsWith(QLatin1Char('/'))) path.chop(1);
    const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
    FileListViewItem* parent = root.get();
    if (slash > 0 && lastFolder && path.left(slash) == QStringView(lastFolder->directoryPath)) {
      // Sorted input: most files share the folder of the one before.
      parent = lastFolder;
    } else if (slash > 0) {
      const QString folderPath = path.left(slash).toString();
      auto found = folders.constFind(folderPath);
      if (found != folders.constEnd()) {
        parent = found.value();
      } else {
        // Create the missing folders from the top down.
        qsizetype start = 0;
        while (start <= slash) {
          qsizetype end = path.indexOf(QLatin1Char('/'), start);
          if (end < 0 || end > slash) end = slash;
          const QString prefix = path.left(end).toString();
          auto existing = folders.constFind(prefix);
          if (existing != folders.constEnd()) {
            parent = existing.value();
          } else {
            auto folder = std::make_unique<FileListViewItem>();
            folder->name = path.mid(start, end - start).toString();
            folder->directoryPath = prefix;
            FileListViewItem* raw = folder.get();
            parent->children.push_back(std::move(folder));
            folders.insert(prefix, raw);
            parent = raw;
          }
          start = end + 1;
        }
      }
    }
    if (slash > 0) lastFolder = parent;
    auto item = std::make_unique<FileListViewItem>();
    item->file = file;
    parent->children.push_back(std::move(item));
  }
  finish(*root);
  return root;
}
