#include "Jobs/JobActivityList.h"

#include <algorithm>

bool JobActivityList::hasRow(const std::shared_ptr<Job>& job) const {
  return std::any_of(items_.begin(), items_.end(), [&](const auto& item) { return item->job == job; });
}

std::vector<int> JobActivityList::tick(const std::vector<std::shared_ptr<Job>>& userJobs) {
  for (const auto& job : userJobs) {
    if (!job->show().contains(Job::Show::inActivityManager()) || hasRow(job)) continue;
    items_.insert(items_.begin(), std::make_shared<JobItem>(job));
    while (static_cast<int>(items_.size()) >= maxRows) items_.pop_back();
  }
  std::vector<int> dirty;
  for (int i = 0; i < static_cast<int>(items_.size()); ++i) {
    if (items_[i]->refresh()) dirty.push_back(i);
  }
  return dirty;
}
