#include <gtest/gtest.h>

#include <QTest>
#include <atomic>

#include "Controllers/ActivityManagerWindow.h"
#include "Controls/RepositoryStatusBar.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "support/TempRepository.h"

TEST(RepositoryStatusBar, ShowsARunningJobWithCancelAndThenTheRepositoryLine) {
  auto queue = std::make_shared<JobQueue>();
  RepositoryStatusBar bar(queue, [] { return QStringLiteral("repo: main"); });
  bar.poll();
  EXPECT_EQ(bar.text(), QStringLiteral("repo: main"));
  EXPECT_FALSE(bar.isCancelVisible());

  std::atomic<bool> release{false};
  auto job = Job::make(QStringLiteral("Fetch"), Job::Show::everywhere(), Job::ProgressType::progress, [&](JobProgress& progress) {
    progress.update(40, QStringLiteral("Receiving objects: 40%"), JobProgressState::inProgress);
    while (!release && !progress.isCanceled()) QThread::msleep(10);
  });
  queue->schedule(job);
  ASSERT_TRUE(QTest::qWaitFor([&] {
    bar.poll();
    return bar.text() == QStringLiteral("Fetch: Receiving objects: 40%");
  }, 5000));
  EXPECT_TRUE(bar.isCancelVisible());
  EXPECT_TRUE(bar.isBarVisible());

  // Which job shows and for how long (the repository line two seconds after the job) is
  // the status display's business, tested with it.
  release = true;
  ASSERT_TRUE(queue->waitForDone(5000));
}

TEST(ActivityManagerWindow, ListsVisibleJobsNewestFirstWithTheirOutput) {
  TempRepository repo;
  auto queue = std::make_shared<JobQueue>();
  const GitModule module = repo.module();
  queue->schedule(Job::make(QStringLiteral("Hidden"), Job::Show::none(), Job::ProgressType::infinite, [](JobProgress&) {}));
  queue->schedule(Job::make(QStringLiteral("Status"), Job::Show::everywhere(), Job::ProgressType::infinite, [module](JobProgress& progress) {
    GitRequest(module, {QStringLiteral("rev-parse"), QStringLiteral("no-such-ref")}).executeWithProgress(progress);
  }));
  ASSERT_TRUE(queue->waitForDone(10000));
  ActivityManagerWindow window(queue);
  window.tick();
  EXPECT_EQ(window.rowCount(), 1);
  EXPECT_TRUE(window.outputText().contains(QStringLiteral("$ git rev-parse no-such-ref")));
  EXPECT_TRUE(window.outputText().contains(QStringLiteral("fatal:")));
}

TEST(ActivityManagerWindow, EscapeAndCtrlWCloseIt) {
  auto queue = std::make_shared<JobQueue>();
  for (const QKeySequence& keys : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
    ActivityManagerWindow window(queue);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keySequence(&window, keys);
    EXPECT_FALSE(window.isVisible()) << keys.toString().toStdString();
  }
}
