#pragma once
// One entry of a folder at a commit, as ls-tree names it.
#include <QString>

enum class FileTreeItemType { directory, file, revision };  // revision: a submodule's commit

struct FileTreeItem {
  QString fileName;
  QString filePath;  // from the top of the repository
  QString treeSha;   // the object: a tree, a blob or the submodule's commit
  FileTreeItemType itemType = FileTreeItemType::file;

  bool operator==(const FileTreeItem&) const = default;
};
