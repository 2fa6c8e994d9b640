#pragma once
// Searches the history with git log and hands each matching commit over while git still
// runs, so that the first matches show long before a search of a large history ends.
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>

#include "Git/Commands/Revision/RevisionParser.h"
#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/RevisionSearchQuery.h"
#include "Models/RevisionWithFiles.h"

class JobProgress;

struct RevisionSearchGitCommand {
  using MatchCallback = std::function<void(RevisionWithFiles)>;

  // git gives at most this many commits per search.
  static constexpr int maxCount = 1000;
  // Between the fields of a record: a pair that a name or a sha never holds.
  static QString fieldSeparator() { return QStringLiteral("\u00b1."); }

  static QStringList arguments(const RevisionSearchQuery& query);

  // `matchCallback` runs on the pipe's thread. A canceled progress drops the lines
  // still to come and the result is `canceled`.
  static GitVoidResult execute(const GitModule& module, const RevisionSearchQuery& query, const MatchCallback& matchCallback,
                               JobProgress* progress);

  // Reads the output line by line. Message and author searches print one line per
  // commit; content and path searches follow it with the changed files and an empty line.
  class LineParser {
   public:
    LineParser(bool withFiles, MatchCallback callback) : withFiles_(withFiles), callback_(std::move(callback)) {}
    void feed(const QString& line);
    // git ends the last record without an empty line: deliver what is open.
    void finish();

   private:
    RevisionPtr parseRecord(const QString& line);

    bool withFiles_;
    MatchCallback callback_;
    RevisionParser parser_;
    std::optional<RevisionWithFiles> open_;
  };
};
