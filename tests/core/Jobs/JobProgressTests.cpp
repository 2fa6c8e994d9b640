#include <gtest/gtest.h>

#include "Jobs/JobProgress.h"

TEST(JobProgress, GitProgressTakesTheLastMatchOfAChunk) {
  JobProgress progress;
  EXPECT_TRUE(progress.parseGitProgress("Counting objects:  50% (1/2)\rCounting objects: 100% (2/2)\r"));
  EXPECT_EQ(progress.message(), "Counting objects: 100%");
  EXPECT_EQ(progress.progress(), 100);
  EXPECT_EQ(progress.state(), JobProgressState::inProgress);

  // The label range admits the punctuation between the two alphabets.
  EXPECT_TRUE(progress.parseGitProgress("remote: Compressing_objects:  7% (1/14)"));
  EXPECT_EQ(progress.message(), "Compressing_objects: 7%");
}

TEST(JobProgress, TextWithoutPercentageIsNotProgress) {
  JobProgress progress;
  progress.update(30, "fetching...", JobProgressState::inProgress);
  EXPECT_FALSE(progress.parseGitProgress("From github.com:owner/repo\n"));
  EXPECT_FALSE(progress.parseGitProgress("Receiving objects: done\n"));
  EXPECT_FALSE(progress.parseGitProgress(QString()));
  // A percentage too large for an integer does not parse.
  EXPECT_FALSE(progress.parseGitProgress("Counting objects: 99999999999999999999%"));
  EXPECT_EQ(progress.message(), "fetching...");
  EXPECT_EQ(progress.progress(), 30);
}

TEST(JobProgress, CancelRunsTheActionOnceAndSticks) {
  JobProgress progress;
  int runs = 0;
  progress.setCancelationAction([&] { ++runs; });
  progress.cancel();
  progress.cancel();
  EXPECT_EQ(runs, 1);
  EXPECT_TRUE(progress.isCanceled());
  // The outcome of an interrupted child must not replace the cancel.
  progress.setState(JobProgressState::succeeded);
  EXPECT_EQ(progress.state(), JobProgressState::canceled);
  // Only an explicit update may.
  progress.update(100, "done", JobProgressState::succeeded);
  EXPECT_EQ(progress.state(), JobProgressState::succeeded);
}
