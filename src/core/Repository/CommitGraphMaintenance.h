#pragma once
// Keeps git's commit-graph of a large repository current, in the background: after the
// first load and after fetches, when the file is missing or older than the newest pack.
// It runs as an internal job at a low priority, and never while another git operation
// holds the repository's lock or one of the user's operations runs.
#include <QString>
#include <memory>

#include "Models/GitModule.h"

class JobQueue;
class Job;

class CommitGraphMaintenance {
 public:
  // Smaller histories load fast enough without the file.
  static constexpr int minimumCommitCount = 10000;
  static inline const char* jobName = "Write commit-graph";

  // The graph file (or the chain of a split graph) is missing, or packs are newer.
  static bool isBehind(const GitModule& module);
  // index.lock, HEAD.lock or the graph's own lock: someone else is writing.
  static bool isLocked(const GitModule& module);
  // The objects folder, shared by linked work trees.
  static QString objectsDirectory(const GitModule& module);

  // Schedules the write when the preference allows it, the history is large and the
  // graph is behind; gives the job, or null when none was needed.
  static std::shared_ptr<Job> scheduleIfNeeded(const GitModule& module, int commitCount, const std::shared_ptr<JobQueue>& queue);
};
