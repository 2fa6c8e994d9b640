#pragma once
// The working tree's status: `git status --porcelain -z`, one ChangedFile per side of
// each changed path, in the order of ChangedFile::compare.
#include <QString>
#include <QStringList>
#include <QStringView>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"
#include "Models/Submodule.h"

class Cancelable;

class GetChangedFilesGitCommand {
 public:
  // Suffixes of the temporary sides an outside merge tool works on.
  static inline const QString local = QStringLiteral(".~LOCAL");
  static inline const QString base = QStringLiteral(".~BASE");
  static inline const QString remote = QStringLiteral(".~REMOTE");

  struct ChangedFilesCollection {
    int filesCount = 0;
    ChangedFileList changedFiles;
  };

  // One record "XY path": the index code, the work-tree code and the path.
  struct StatusLine {
    QChar x;
    QChar y;
    QStringView path;
    bool operator==(const StatusLine&) const = default;
  };

  static GitResult<ChangedFilesCollection> execute(const GitModule& module, const SubmoduleList& submodules,
                                                   bool hideUntracked, bool showIgnored, Cancelable* progress = nullptr);

  static QStringList arguments(bool hideUntracked, bool showIgnored);
  // The form that must not take the index lock, for diagnostics that only look.
  static QStringList readOnlyArguments(bool showIgnored);

  // Logs and gives nothing for a record that is too short or lacks the blank.
  static std::optional<StatusLine> splitStatusLine(QStringView record);
  // 0-9 for "ACD!MRTU?X", 10 for anything else.
  static int codeIndex(QChar code);

  // Walks the NUL-separated records and sorts the entries; bad records are logged and dropped.
  static ChangedFilesCollection parse(QStringView output, const SubmoduleList& submodules);
  // The stable merge sort of the file lists.
  static void sort(ChangedFileList& files);
};
