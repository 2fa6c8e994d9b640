#pragma once
// Diffs taken from real git, requested the way the application requests them.
#include <QString>
#include <QStringList>
#include <ostream>

#include "support/TempRepository.h"

namespace DiffFixture {

inline QStringList baseArguments() {
  return {"-c",         "core.quotepath=false", "--no-pager",      "diff",           "--no-ext-diff",
          "--no-color", "--src-prefix=a/",      "--dst-prefix=b/", "--find-renames", "--submodule=short"};
}

// The working tree against the index (or, staged, the index against HEAD).
inline QString diff(const TempRepository& repo, const QStringList& extra = {}) {
  QStringList args = baseArguments();
  args << "--full-index" << extra;
  return QString::fromUtf8(repo.gitBytes(args));
}

inline QString stagedDiff(const TempRepository& repo, const QStringList& extra = {}) {
  return diff(repo, QStringList{"--staged"} + extra);
}

// An untracked file against /dev/null; git exits with 1 because they differ.
inline QString untrackedDiff(const TempRepository& repo, const QString& path) {
  QStringList args = baseArguments();
  args << "--no-index"
       << "--"
       << "/dev/null" << path;
  int status = 0;
  const QByteArray out = runProgram("git", args, repo.path(), &status);
  return QString::fromUtf8(out);
}

}  // namespace DiffFixture

// Readable failure messages for texts.
inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }
