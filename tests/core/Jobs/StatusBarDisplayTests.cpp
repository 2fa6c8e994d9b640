#include <gtest/gtest.h>

#include "Jobs/StatusBarDisplay.h"

namespace {

const QString line = "repo: main";

std::shared_ptr<Job> jobIn(Job::Status status, const QString& name = "Fetch",
                           Job::ProgressType type = Job::ProgressType::progress, Job::Show show = Job::Show::everywhere()) {
  auto job = Job::make(name, show, type, {});
  if (status == Job::Status::finished) job->setStatus(Job::Status::running);
  job->setStatus(status);
  return job;
}

// The text, whether the cancel button shows and the job it cancels.
using Shown = std::tuple<QString, bool, std::shared_ptr<Job>>;
Shown shown(const std::vector<std::shared_ptr<Job>>& jobs, const QDateTime& now) {
  const auto display = StatusBarDisplay::choose(jobs, now, line);
  return {display.text, display.cancelButtonVisible, display.job};
}

}  // namespace

TEST(StatusBarDisplay, FinishedJobStaysForLessThanTwoWholeSeconds) {
  auto job = jobIn(Job::Status::finished);
  job->progress().update(100, "done", JobProgressState::succeeded);
  const QDateTime finished = *job->finishTime();

  for (int ms : {0, 1500, 1999})
    EXPECT_EQ(shown({job}, finished.addMSecs(ms)), (Shown{"Fetch: done", false, job})) << ms << " ms";
  for (int ms : {2000, 60000}) {
    const auto display = StatusBarDisplay::choose({job}, finished.addMSecs(ms), line);
    EXPECT_EQ(display.text, line) << ms << " ms";
    EXPECT_TRUE(display.barHidden);
    EXPECT_EQ(display.job, nullptr);
  }
}

TEST(StatusBarDisplay, NewestQualifyingJobWins) {
  auto older = jobIn(Job::Status::running, "Pull");
  auto stale = jobIn(Job::Status::finished, "Old");
  auto hidden = jobIn(Job::Status::running, "Background", Job::ProgressType::progress, Job::Show::inActivityManager());
  auto pending = jobIn(Job::Status::pending, "Waiting");
  older->progress().update(40, "pulling...", JobProgressState::inProgress);
  const QDateTime later = stale->finishTime()->addSecs(10);

  // Skipped from the newest: a pending job, a job not meant for the bar, a stale finished one.
  EXPECT_EQ(shown({older, stale, hidden, pending}, later), (Shown{"Pull: pulling...", true, older}));

  // A job that just finished ends the search before an older running one.
  auto fresh = jobIn(Job::Status::finished, "Push");
  fresh->progress().update(100, "pushed", JobProgressState::succeeded);
  EXPECT_EQ(shown({older, fresh}, *fresh->finishTime()), (Shown{"Push: pushed", false, fresh}));
}

TEST(StatusBarDisplay, CanceledJobHidesTheCancelButton) {
  auto job = jobIn(Job::Status::running);
  job->progress().update(30, "fetching...", JobProgressState::inProgress);
  job->progress().cancel();
  EXPECT_EQ(shown({job}, QDateTime::currentDateTime()), (Shown{"Fetch: canceling...", false, job}));
  job->setStatus(Job::Status::finished);
  EXPECT_EQ(shown({job}, *job->finishTime()), (Shown{"Fetch: canceled", false, job}));
}

TEST(StatusBarDisplay, BarShowsASliverAndNeverForInfiniteJobs) {
  auto determinate = jobIn(Job::Status::running);
  auto display = StatusBarDisplay::choose({determinate}, QDateTime::currentDateTime(), line);
  EXPECT_FALSE(display.barHidden);
  EXPECT_DOUBLE_EQ(display.barValue, 5.0);
  determinate->progress().update(50, "half", JobProgressState::inProgress);
  display = StatusBarDisplay::choose({determinate}, QDateTime::currentDateTime(), line);
  EXPECT_DOUBLE_EQ(display.barValue, 52.5);

  auto infinite = jobIn(Job::Status::running, "Refresh", Job::ProgressType::infinite);
  infinite->progress().update(50, "loading", JobProgressState::inProgress);
  display = StatusBarDisplay::choose({infinite}, QDateTime::currentDateTime(), line);
  EXPECT_TRUE(display.barHidden);
  EXPECT_EQ(display.barValue, 0);
  EXPECT_EQ(display.text, "Refresh: loading");
}

TEST(StatusBarDisplay, RepositoryLineWithoutAJob) {
  EXPECT_EQ(StatusBarDisplay::repositoryLine(std::nullopt, false, std::nullopt), "Welcome to Jelv. Open a repository to start");
  EXPECT_EQ(StatusBarDisplay::repositoryLine("repo", false, std::nullopt), "repo: loading...");
  EXPECT_EQ(StatusBarDisplay::repositoryLine("repo", true, "main"), "repo: main");
  EXPECT_EQ(StatusBarDisplay::repositoryLine("repo", true, std::nullopt), "repo: detached HEAD");
}
