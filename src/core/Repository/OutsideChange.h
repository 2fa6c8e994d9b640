#pragma once
// What a change to a file of the repository, made by another program, asks the next
// refresh to read. Paths are relative, with '/' between folders.
#include <QString>

#include "Models/Subdomain.h"

namespace OutsideChange {

// A path inside the Git directory (or the common directory of a linked work tree):
// "HEAD", "refs/heads/topic", "logs/refs/stash", "rebase-merge/done". Lock files, objects
// and the application's own settings file ask for nothing.
Subdomain inGitDirectory(const QString& path);
// A path of the work tree: the changed files, and the submodules for ".gitmodules".
Subdomain inWorkTree(const QString& path);

}  // namespace OutsideChange
