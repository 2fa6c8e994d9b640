#include <gtest/gtest.h>

#include "Jobs/JobActivityList.h"

namespace {
std::shared_ptr<Job> job(const QString& name, Job::Show show = Job::Show::inActivityManager()) {
  return Job::make(name, show, Job::ProgressType::progress, {});
}
QStringList names(const JobActivityList& list) {
  QStringList result;
  for (const auto& item : list.items()) result << item->name;
  return result;
}
}  // namespace

TEST(JobActivityList, RowsFollowTheLiveJobAndRedrawOnlyOnChange) {
  JobActivityList list;
  auto fetch = job("Fetch");
  fetch->setStatus(Job::Status::pending);
  ASSERT_EQ(list.tick({fetch}), std::vector<int>{0});  // a new row is dirty
  JobItem& row = *list.items()[0];
  EXPECT_EQ(row.statusString, QString());
  row.markDrawn();
  EXPECT_TRUE(list.tick({fetch}).empty());

  fetch->setStatus(Job::Status::running);
  EXPECT_EQ(list.tick({fetch}), std::vector<int>{0});
  EXPECT_EQ(row.statusString, "running");
  EXPECT_TRUE(row.isRunning);
  row.markDrawn();

  fetch->progress().update(42, "fetching...", JobProgressState::inProgress);
  EXPECT_EQ(list.tick({fetch}), std::vector<int>{0});
  EXPECT_EQ(row.progress, 42);
  row.markDrawn();

  fetch->progress().update(100, "failed", JobProgressState::failed);
  fetch->setStatus(Job::Status::finished);
  list.tick({fetch});
  EXPECT_EQ(row.statusString, "failed");
  EXPECT_TRUE(row.isFailed);
  EXPECT_FALSE(row.isRunning);
  ASSERT_TRUE(row.finishTime.has_value());
  EXPECT_FALSE(row.finished.isEmpty());
}

TEST(JobActivityList, CancelShowsAsCancelingThenCanceled) {
  JobActivityList list;
  auto pull = job("Pull");
  pull->setStatus(Job::Status::running);
  list.tick({pull});
  pull->progress().cancel();
  list.tick({pull});
  EXPECT_EQ(list.items()[0]->statusString, "canceling");
  EXPECT_FALSE(list.items()[0]->isRunning);
  pull->setStatus(Job::Status::finished);
  list.tick({pull});
  EXPECT_EQ(list.items()[0]->statusString, "canceled");

  // An action that returned without a final state shows as finished with no status.
  auto quiet = job("Quiet");
  quiet->setStatus(Job::Status::running);
  quiet->setStatus(Job::Status::finished);
  list.tick({pull, quiet});
  EXPECT_EQ(list.items()[0]->name, "Quiet");
  EXPECT_EQ(list.items()[0]->statusString, QString());
}

TEST(JobActivityList, NewestOnTopOnlyVisibleJobsAndBounded) {
  JobActivityList list;
  std::vector<std::shared_ptr<Job>> history{job("a"), job("hidden", Job::Show::none()), job("b")};
  list.tick(history);
  EXPECT_EQ(names(list), (QStringList{"b", "a"}));

  // Rows outlive the queue's history until the list itself is full.
  for (int i = 0; i < 40; ++i) list.tick({job(QStringLiteral("n%1").arg(i))});
  ASSERT_EQ(list.items().size(), 29u);
  EXPECT_EQ(list.items().front()->name, "n39");
  EXPECT_EQ(list.items().back()->name, "n11");
}
