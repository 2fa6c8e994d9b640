#include <gtest/gtest.h>

#include "Jobs/JobProgress.h"

TEST(JobProgress, GitProgressTakesTheLastMatchOfAChunk) {
  JobProgress progress;
  EXPECT_TRUE(progress.parseGitProgress(QStringLiteral("Counting objects:  50% (1/2)\rCounting objects: 100% (2/2)\r")));
  EXPECT_EQ(progress.message(), QStringLiteral("Counting objects: 100%"));
  EXPECT_EQ(progress.progress(), 100);
  EXPECT_EQ(progress.state(), JobProgressState::inProgress);

  // The label range admits the punctuation between the two alphabets.
  EXPECT_TRUE(progress.parseGitProgress(QStringLiteral("remote: Compressing_objects:  7% (1/14)")));
  EXPECT_EQ(progress.message(), QStringLiteral("Compressing_objects: 7%"));
}

TEST(JobProgress, TextWithoutPercentageIsNotProgress) {
  JobProgress progress;
  progress.update(30, QStringLiteral("fetching..."), JobProgressState::inProgress);
  EXPECT_FALSE(progress.parseGitProgress(QStringLiteral("From github.com:owner/repo\n")));
  EXPECT_FALSE(progress.parseGitProgress(QStringLiteral("Receiving objects: done\n")));
  EXPECT_FALSE(progress.parseGitProgress(QString()));
  // A percentage too large for an integer does not parse.
  EXPECT_FALSE(progress.parseGitProgress(QStringLiteral("Counting objects: 99999999999999999999%")));
  EXPECT_EQ(progress.message(), QStringLiteral("fetching..."));
  EXPECT_EQ(progress.progress(), 30);
}

TEST(JobProgress, CommandLogReadsAsTypedByAUser) {
  JobProgress progress;
  progress.logGitCommand({QStringLiteral("-c"), QStringLiteral("push.default=upstream"), QStringLiteral("push"),
                          QStringLiteral("--progress"), QStringLiteral("origin"), QStringLiteral("main")});
  progress.appendOutput(QStringLiteral("Everything up-to-date"));
  EXPECT_EQ(progress.output(), QStringLiteral("$ git push origin main\n\nEverything up-to-date\n"));
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
  progress.update(100, QStringLiteral("done"), JobProgressState::succeeded);
  EXPECT_EQ(progress.state(), JobProgressState::succeeded);
}
