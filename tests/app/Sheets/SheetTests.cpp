#include <gtest/gtest.h>

#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <atomic>
#include <thread>

#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controllers/Sheets/GitOperationSheetController.h"
#include "Controllers/Sheets/RepositorySettingsController.h"
#include "Controls/GitOutputView.h"
#include "Git/Commands/WorkingDirectory/CommitGitCommand.h"
#include "Jobs/JobProgress.h"
#include "Jobs/JobQueue.h"
#include "Models/GitModuleSettings.h"
#include "support/TempRepository.h"
#include "support/Widgets.h"

namespace {
QList<ErrorWindowController*> errorSheets(const QWidget& window) {
  QList<ErrorWindowController*> open;
  for (auto* sheet : window.findChildren<ErrorWindowController*>()) {
    if (sheet->isVisible()) open << sheet;
  }
  return open;
}

QString localValue(const TempRepository& repo, const QString& key) {
  int status = 0;
  return repo.git({"config", "--local", "--get", key}, true, &status).trimmed();
}

RepositorySettingsController* waitForLoadedSheet(QWidget* window) {
  RepositorySettingsController* sheet = nullptr;
  const bool loaded = QTest::qWaitFor([&] {
    sheet = window->findChild<RepositorySettingsController*>();
    return sheet && sheet->isLoaded();
  }, 10000);
  return loaded ? sheet : nullptr;
}
}  // namespace

// A commit refused by a failing pre-commit hook: the sheet offers the commit without
// hooks. A retry that fails again (a lock left by another program) says why in an error
// sheet of its own, whose removal of the lock reaches the caller; one that goes through
// commits.
TEST(ErrorWindowController, FailingHookOffersCommitWithoutHooks) {
  TempRepository repo;
  repo.commitFile("a.txt", "a\n", "base");
  repo.writeExecutable(".git/hooks/pre-commit", "#!/bin/sh\necho 'lint: trailing space' >&2\nexit 1\n");
  repo.writeFile("a.txt", "b\n");
  repo.git({"add", "a.txt"});
  const QString before = repo.headSha();
  const GitVoidResult failed = CommitGitCommand::execute(repo.module(), QStringLiteral("Second"), {});
  ASSERT_TRUE(failed.isError<Error::GitCommitFailed>());

  QMainWindow window;
  window.show();
  auto queue = std::make_shared<JobQueue>();
  int changes = 0;  // wired to every sheet of the chain, as the view's refresh is
  ErrorWindowController* sheet = ErrorWindowController::present(&window, repo.module(), failed.error(), queue, [&](ErrorWindowController* each) {
    QObject::connect(each, &ErrorWindowController::repositoryChanged, [&] { ++changes; });
  });
  QSignalSpy committed(sheet, &ErrorWindowController::committed);
  EXPECT_TRUE(sheet->errorTextView()->toPlainText().contains(u"lint: trailing space"));
  ASSERT_TRUE(sheet->firstButton()->isVisible());
  screenshot(sheet, QStringLiteral("error-sheet"));
  repo.writeFile(".git/index.lock", "");
  QTest::mouseClick(sheet->firstButton(), Qt::LeftButton);
  EXPECT_TRUE(sheet->isOperationInProgress());
  EXPECT_FALSE(sheet->firstButton()->isEnabled());
  ASSERT_TRUE(QTest::qWaitFor([&] {
    const auto open = errorSheets(window);
    return open.size() == 1 && open.first() != sheet;
  }, 10000));
  ErrorWindowController* second = errorSheets(window).first();
  EXPECT_TRUE(second->errorTextView()->toPlainText().contains(u"index.lock")) << second->errorTextView()->toPlainText().toStdString();
  EXPECT_EQ(committed.count(), 0);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(repo.headSha(), before);
  // The second sheet's repair reaches the caller too.
  QTest::mouseClick(second->firstButton(), Qt::LeftButton);
  EXPECT_FALSE(QFile::exists(repo.path() + QStringLiteral("/.git/index.lock")));
  EXPECT_FALSE(second->isVisible());
  EXPECT_EQ(changes, 2);

  ErrorWindowController* retry = ErrorWindowController::present(&window, repo.module(), failed.error(), queue);
  std::optional<JelvSheetResult> result;
  QObject::connect(retry, &QDialog::finished, [&](int) { result = retry->result(); });
  QSignalSpy retried(retry, &ErrorWindowController::committed);
  QTest::mouseClick(retry->firstButton(), Qt::LeftButton);
  ASSERT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 10000));
  EXPECT_TRUE(result->isSuccess());
  EXPECT_EQ(retried.count(), 1);
  EXPECT_NE(repo.headSha(), before);
  ASSERT_TRUE(queue->waitForDone(10000));
}

// A sheet's life: its job makes it busy, which disables the inputs but not Cancel. Escape,
// Cancel and the window's close button only ask a busy sheet's job to stop; the sheet
// stays until the job reports, then ends as canceled. Idle, Ctrl+Return submits from
// inside the text, Escape cancels, and an error ends it with that error.
TEST(JelvSheetController, BusyWhileItsJobRunsThenEachEndingStoresItsResult) {
  QMainWindow window;
  window.show();
  auto queue = std::make_shared<JobQueue>();
  const auto show = [&](JelvSheetController* sheet, std::optional<JelvSheetResult>& result) {
    sheet->setJobQueue(queue);
    JelvSheetController::showSheet(&window, sheet, [&result](const JelvSheetResult& r) { result = r; });
  };
  auto* sheet = new GitOperationSheetController;
  auto* field = new QLineEdit(sheet);
  sheet->contentLayout()->addWidget(field);
  std::optional<JelvSheetResult> result;
  show(sheet, result);
  ASSERT_TRUE(sheet->isVisible());
  EXPECT_EQ(sheet->parentWidget(), &window);
  EXPECT_TRUE(sheet->windowModality() == Qt::WindowModal);

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
  EXPECT_EQ(sheet->statusLabel()->text(), QStringLiteral("Working…"));
  EXPECT_FALSE(field->isEnabled());
  EXPECT_FALSE(sheet->submitButton()->isEnabled());
  EXPECT_TRUE(sheet->cancelButton()->isEnabled());

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

  auto* typed = new GitOperationSheetController;
  auto* text = new QLineEdit(typed);
  typed->contentLayout()->addWidget(text);
  std::optional<JelvSheetResult> typedResult;
  show(typed, typedResult);
  typed->setStatus(JelvSheetController::Status::warning);
  EXPECT_TRUE(typed->statusLabel()->isHidden());
  typed->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(typed));
  text->setFocus();
  QTest::keyClick(text, Qt::Key_Return, Qt::ControlModifier);
  ASSERT_TRUE(QTest::qWaitFor([&] { return typedResult.has_value(); }, 2000));
  EXPECT_TRUE(typedResult->isSuccess());

  auto* escaped = new JelvSheetController;
  std::optional<JelvSheetResult> escapedResult;
  show(escaped, escapedResult);
  QTest::keyClick(escaped, Qt::Key_Escape);
  ASSERT_TRUE(escapedResult.has_value());
  EXPECT_TRUE(escapedResult->isCancel());

  auto* failed = new JelvSheetController;
  std::optional<JelvSheetResult> failedResult;
  show(failed, failedResult);
  failed->endWithError(Error::Generic{QStringLiteral("x")});
  ASSERT_TRUE(failedResult.has_value() && failedResult->error());
  EXPECT_TRUE(std::holds_alternative<Error::Generic>(*failedResult->error()));
}

// Opened from the commit box's menu: the fields show the repository's values (the global
// identity as a hint), and saving writes the local configuration, the signing settings
// and the template; the commit box follows the new sign-off.
TEST(RepositorySettingsController, WritesTheLocalConfigAndTheCommitSettings) {
  TempRepository repo;
  repo.commitFile("a.txt", "a\n", "base");
  QMainWindow window;
  auto queue = std::make_shared<JobQueue>();
  auto* box = new CommitController(repo.module(), queue);
  window.setCentralWidget(box);
  window.show();
  EXPECT_FALSE(box->signOffBox()->isChecked());

  box->showRepositorySettings();
  RepositorySettingsController* sheet = waitForLoadedSheet(&window);
  ASSERT_NE(sheet, nullptr);
  EXPECT_TRUE(sheet->nameField()->text().isEmpty());
  EXPECT_EQ(sheet->nameField()->placeholderText(), QStringLiteral("Global: Jelv Test"));
  EXPECT_TRUE(sheet->submitButton()->isEnabled());

  sheet->nameField()->setText(QStringLiteral("Ada Lovelace"));
  sheet->emailField()->setText(QStringLiteral("not an address"));
  EXPECT_FALSE(sheet->statusLabel()->isHidden());  // a warning, saving is still allowed
  EXPECT_TRUE(sheet->submitButton()->isEnabled());
  sheet->emailField()->setText(QStringLiteral("ada@example.com"));
  EXPECT_TRUE(sheet->statusLabel()->isHidden());
  sheet->signingKeyField()->setText(QStringLiteral("0xDEADBEEF"));
  sheet->signOffBox()->setChecked(true);
  sheet->templateField()->setPlainText(QStringLiteral("Area: \n\nWhy:"));

  QSignalSpy ended(sheet, &QDialog::finished);
  QTest::mouseClick(sheet->submitButton(), Qt::LeftButton);
  ASSERT_TRUE(ended.wait(10000));
  EXPECT_EQ(ended.first().first().toInt(), JelvSheetController::successCode);

  // What each field writes is the commit settings' core test; here the fields reach it.
  EXPECT_EQ(localValue(repo, QStringLiteral("user.name")), QStringLiteral("Ada Lovelace"));
  EXPECT_EQ(GitModuleSettings::load(repo.module()).signingKey, std::optional<QString>(QStringLiteral("0xDEADBEEF")));
  EXPECT_TRUE(QTest::qWaitFor([&] { return box->signOffBox()->isChecked(); }, 2000));

  // Opened again, the sheet shows what was saved; cancelling changes nothing.
  ShowRepositorySettingsSheetCommand::execute(box, repo.module(), queue);
  sheet = waitForLoadedSheet(&window);
  ASSERT_NE(sheet, nullptr);
  EXPECT_EQ(sheet->templateField()->toPlainText(), QStringLiteral("Area: \n\nWhy:"));
  sheet->nameField()->setText(QStringLiteral("Someone Else"));
  QSignalSpy cancelled(sheet, &QDialog::finished);
  QTest::mouseClick(sheet->cancelButton(), Qt::LeftButton);
  ASSERT_EQ(cancelled.count(), 1);
  EXPECT_EQ(localValue(repo, QStringLiteral("user.name")), QStringLiteral("Ada Lovelace"));
}
