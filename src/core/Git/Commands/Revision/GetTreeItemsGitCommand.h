#pragma once
// The entries of one folder at a commit: the top folder by the commit's sha, a folder
// below it by its own tree's sha. Folders are read one at a time, as they are opened.
#include <QString>
#include <QStringList>
#include <vector>

#include "Git/ResultError.h"
#include "Models/FileTreeItem.h"
#include "Models/GitModule.h"

class Cancelable;

struct GetTreeItemsGitCommand {
  static QStringList arguments(const QString& tree);
  // `parentFolder` is the folder's path ("" at the top); the entries' paths start with it.
  static GitResult<std::vector<FileTreeItem>> execute(const GitModule& module, const QString& tree, const QString& parentFolder,
                                                      Cancelable* cancelation = nullptr);
  static std::vector<FileTreeItem> parse(const QString& output, const QString& parentFolder);
};
