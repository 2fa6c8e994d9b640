#pragma once
// One search at a time per repository: a new one cancels the one still running, whose
// remaining matches are dropped. Matches reach the main thread one by one, as git finds them.
#include <QObject>
#include <functional>
#include <memory>

#include "Git/ResultError.h"
#include "Models/RevisionSearchQuery.h"
#include "Models/RevisionWithFiles.h"

class Job;
class RepositoryController;

struct RevisionSearchCommand {
  // `onMatch` and `onEnd` run on the main thread while `receiver` lives, and only for the
  // search still active then. A canceled search ends without `onEnd`.
  static std::shared_ptr<Job> start(RepositoryController& controller, const RevisionSearchQuery& query, QObject* receiver,
                                    std::function<void(const RevisionWithFiles&)> onMatch,
                                    std::function<void(const GitVoidResult&)> onEnd);
  // Cancels the running search, if any.
  static void cancel(RepositoryController& controller);
};
