#pragma once
// One step of a bisect. After a mark git checks out the next commit to test, or names
// the first bad commit, which ends the search (the bisect stays open until a reset).
#include <QStringList>
#include <optional>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct BisectGitCommand {
  enum class Step { start, reset, good, bad };

  struct Outcome {
    std::optional<QString> firstBadCommit;  // the sha, once the search has ended
    QString output;
    bool operator==(const Outcome&) const = default;
  };

  // `revision` marks that commit instead of the checked-out one (good and bad only).
  static QStringList arguments(Step step, const QString& revision = {});
  // "<sha> is the first bad commit" in git's words.
  static std::optional<QString> parseFirstBadCommit(const QString& output);

  static GitResult<Outcome> execute(const GitModule& module, Step step, const QString& revision = {}, JobProgress* progress = nullptr);
};
