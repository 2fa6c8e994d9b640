#pragma once
// The rows of the activity manager, newest on top. A tick adds rows for new visible
// jobs of the queue's history and refreshes every row from its live job.
#include <memory>
#include <vector>

#include "Jobs/JobItem.h"

class JobActivityList {
 public:
  static constexpr int maxRows = 30;

  // `userJobs` oldest first, as the queue gives them. Returns the indexes of dirty rows
  // after the tick (a new row is dirty).
  std::vector<int> tick(const std::vector<std::shared_ptr<Job>>& userJobs);

  const std::vector<std::shared_ptr<JobItem>>& items() const { return items_; }

 private:
  bool hasRow(const std::shared_ptr<Job>& job) const;

  std::vector<std::shared_ptr<JobItem>> items_;
};
