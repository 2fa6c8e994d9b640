#include <QElapsedTimer>
#include <QPointer>
#include <QTest>
#include <QThread>
#include <atomic>

#include "Jobs/Job.h"
#include "Jobs/JobProgress.h"
#include "Jobs/JobQueue.h"
#include "Jobs/ReleasedQueues.h"
#include "ShellTestSupport.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "support/TempRepository.h"

using TabClose = ShellTest;

// A job that is slow to notice the cancel must not hold the window: the tab goes at
// once, the job is told to stop and ends later on its own.
TEST_F(TabClose, ATabWithAJobSlowToStopClosesAtOnce) {
  TempRepository alpha(true, QStringLiteral("alpha"));
  TempRepository beta(true, QStringLiteral("beta"));
  JelvDocumentController documents(registry(), preferences());
  documents.openRepository(alpha.path());
  documents.openRepository(beta.path());
  ASSERT_TRUE(settle(documents));
  JelvMainWindow* window = documents.windows().first();
  ASSERT_EQ(window->tabCount(), 2);
  QPointer<JelvWindowController> tab = window->tab(0);
  std::weak_ptr<JobQueue> queue = tab->jobQueue();

  std::atomic<bool> release = false;
  auto job = Job::make(QStringLiteral("Stubborn"), Job::Show::none(), Job::ProgressType::infinite, [&release](JobProgress&) {
    while (!release) QThread::msleep(5);
  });
  queue.lock()->schedule(job);
  ASSERT_TRUE(QTest::qWaitFor([&] { return job->status() == Job::Status::running; }, 5000));

  QElapsedTimer timer;
  timer.start();
  window->closeTab(tab);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(tab.isNull());
  EXPECT_LT(timer.elapsed(), 2000);
  EXPECT_EQ(window->tabCount(), 1);
  EXPECT_TRUE(job->progress().isCanceled());
  EXPECT_FALSE(queue.expired());

  release = true;
  ASSERT_TRUE(ReleasedQueues::waitForAll(5000));
  EXPECT_TRUE(queue.expired());
  EXPECT_EQ(job->status(), Job::Status::finished);
}
