#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <atomic>
#include <thread>

#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controls/GitOutputView.h"
#include "Git/Commands/WorkingDirectory/CommitGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobProgress.h"
#include "Jobs/JobQueue.h"
#include "support/TempRepository.h"

namespace {

QList<ErrorWindowController*> errorSheets(const QWidget& window) {
  QList<ErrorWindowController*> open;
  for (auto* sheet : window.findChildren<ErrorWindowController*>()) {
    if (sheet->isVisible()) open << sheet;
  }
  return open;
}

}  // namespace

// Escape, Cancel and the window's close button only ask a busy sheet's job to stop; the
// sheet stays until the job reports, then ends as canceled.
TEST(SheetJob, ABusySheetEndsOnlyByItsJobsReport) {
  QMainWindow window;
  window.show();
  auto queue = std::make_shared<JobQueue>();
  auto* sheet = new JelvSheetController;
  sheet->setJobQueue(queue);
  std::optional<JelvSheetResult> result;
  JelvSheetController::showSheet(&window, sheet, [&](const JelvSheetResult& r) { result = r; });

  std::atomic<bool> sawCancel = false;
  std::atomic<bool> release = false;
  sheet->runSheetJob(QStringLiteral("Slow"), QStringLiteral("Working…"), [&](JobProgress& progress) -> GitVoidResult {
    while (!progress.isCanceled()) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    sawCancel = true;
    // A job may take its time to wind down after the cancel.
    while (!release) std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return Unit{};
  });
  ASSERT_TRUE(sheet->isOperationInProgress());

  QTest::keyClick(sheet, Qt::Key_Escape);
  ASSERT_TRUE(QTest::qWaitFor([&] { return sawCancel.load(); }, 5000));
  sheet->close();
  QTest::mouseClick(sheet->cancelButton(), Qt::LeftButton);
  QTest::qWait(50);
  EXPECT_TRUE(sheet->isVisible());
  EXPECT_FALSE(result.has_value());
  EXPECT_EQ(sheet->statusLabel()->text(), QStringLiteral("Canceling…"));

  release = true;
  ASSERT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 5000));
  // The job returned success, but the user had canceled: the sheet says so.
  EXPECT_TRUE(result->isCancel());
  ASSERT_TRUE(queue->waitForDone(10000));
}

// A commit retried without hooks that fails again says why in an error sheet of its own.
TEST(SheetJob, AFailedRetryWithoutHooksShowsItsError) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.writeExecutable(QStringLiteral(".git/hooks/pre-commit"), "#!/bin/sh\nexit 1\n");
  repo.writeFile(QStringLiteral("a.txt"), "b\n");
  repo.git({QStringLiteral("add"), QStringLiteral("a.txt")});
  const QString before = repo.headSha();
  const GitVoidResult failed = CommitGitCommand::execute(repo.module(), QStringLiteral("Second"), {});
  ASSERT_TRUE(failed.isError<Error::GitCommitFailed>());

  QMainWindow window;
  window.show();
  auto queue = std::make_shared<JobQueue>();
  ErrorWindowController* sheet = ErrorWindowController::present(&window, repo.module(), failed.error(), queue);
  QSignalSpy committed(sheet, &ErrorWindowController::committed);
  QSignalSpy changed(sheet, &ErrorWindowController::repositoryChanged);
  // The retry meets a lock left by another program.
  repo.writeFile(QStringLiteral(".git/index.lock"), "");
  QTest::mouseClick(sheet->firstButton(), Qt::LeftButton);

  ASSERT_TRUE(QTest::qWaitFor([&] {
    const auto open = errorSheets(window);
    return open.size() == 1 && open.first() != sheet;
  }, 10000));
  const ErrorWindowController* second = errorSheets(window).first();
  EXPECT_TRUE(second->errorTextView()->toPlainText().contains(u"index.lock")) << second->errorTextView()->toPlainText().toStdString();
  EXPECT_EQ(committed.count(), 0);
  EXPECT_EQ(changed.count(), 1);
  EXPECT_EQ(repo.headSha(), before);
  ASSERT_TRUE(queue->waitForDone(10000));
}
