#pragma once
// The rows of a changed-file list shown as a tree: files grouped under their folders,
// folders before files, each group in the order of the files it was built from (the
// status order). A folder whose only child is another folder is merged with it
// ("src/core/Models" as one row), so a deep path doesn't cost a click per level.
#include <QString>
#include <memory>
#include <vector>

#include "Models/ChangedFile.h"

// The stored preference "fileListMode".
enum class FileListViewMode { list = 0, tree = 1 };

struct FileListViewItem {
  QString name;           // a folder's (merged) name; empty for a file, see text()
  QString directoryPath;  // a folder's path in the work tree, without a trailing slash
  ChangedFilePtr file;    // null for a folder
  FileListViewItem* parent = nullptr;
  int row = 0;  // the index among the parent's children
  std::vector<std::unique_ptr<FileListViewItem>> children;

  bool isDirectory() const { return !file; }
  // The row's text: the folder's name, or the last part of the file's path.
  QString text() const;
  // Every file at or under this row, in tree order.
  void collectFiles(ChangedFileList& files) const;
  // The folder row with that path, searched below this one; null when there is none.
  const FileListViewItem* findDirectory(const QString& path) const;
};

namespace FileListTree {
// The root row (nameless) with the tree of `files` under it.
std::unique_ptr<FileListViewItem> build(const ChangedFileList& files);
}  // namespace FileListTree
