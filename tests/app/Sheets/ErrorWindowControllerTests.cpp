#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>
#include <QMainWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controllers/Sheets/GitOperationSheetController.h"
#include "Controls/GitOutputView.h"
#include "Git/Commands/WorkingDirectory/CommitGitCommand.h"
#include "Git/Commands/WorkingDirectory/StageFilesGitCommand.h"
#include "Jobs/JobQueue.h"
#include "Models/ChangedFile.h"
#include "support/TempRepository.h"

namespace {
ChangedFilePtr modifiedFile(const QString& path) {
  return std::make_shared<const ChangedFile>(std::nullopt, path, ChangeType::modified, false, true, false);
}
}  // namespace

TEST(ErrorWindowController, StaleIndexLockIsOfferedForRemovalAndRemoved) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral("a.txt"), "b\n");
  repo.writeFile(QStringLiteral(".git/index.lock"), "");
  const GitVoidResult failed = StageFilesGitCommand::execute(repo.module(), {modifiedFile(QStringLiteral("a.txt"))});
  ASSERT_TRUE(failed.isFailure());

  QMainWindow window;
  window.show();
  auto queue = std::make_shared<JobQueue>();
  ErrorWindowController* sheet = ErrorWindowController::present(&window, repo.module(), failed.error(), queue);
  QSignalSpy changed(sheet, &ErrorWindowController::repositoryChanged);
  std::optional<JelvSheetResult> result;
  QObject::connect(sheet, &QDialog::finished, [&](int) { result = sheet->result(); });

  ASSERT_TRUE(sheet->isVisible());
  EXPECT_TRUE(sheet->errorTextView()->toPlainText().contains(u"index.lock"));
  ASSERT_TRUE(sheet->firstButton()->isVisible());
  EXPECT_EQ(sheet->firstButton()->text(), QStringLiteral("Remove .git/index.lock"));

  QTest::mouseClick(sheet->firstButton(), Qt::LeftButton);
  ASSERT_TRUE(result.has_value());
  EXPECT_TRUE(result->isSuccess());
  EXPECT_EQ(changed.count(), 1);
  EXPECT_FALSE(QFile::exists(repo.gitDir() + QStringLiteral("/index.lock")));
  // The repaired repository accepts the operation again.
  EXPECT_TRUE(StageFilesGitCommand::execute(repo.module(), {modifiedFile(QStringLiteral("a.txt"))}).isSuccess());
}

TEST(ErrorWindowController, FailingHookOffersCommitWithoutHooksAndTheRetryCommits) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.writeExecutable(QStringLiteral(".git/hooks/pre-commit"), "#!/bin/sh\necho 'lint: trailing space' >&2\nexit 1\n");
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
  std::optional<JelvSheetResult> result;
  QObject::connect(sheet, &QDialog::finished, [&](int) { result = sheet->result(); });
  EXPECT_TRUE(sheet->errorTextView()->toPlainText().contains(u"lint: trailing space"));
  ASSERT_TRUE(sheet->firstButton()->isVisible());
  EXPECT_EQ(sheet->firstButton()->text(), QStringLiteral("Skip pre-commit hooks and commit"));

  QTest::mouseClick(sheet->firstButton(), Qt::LeftButton);
  EXPECT_TRUE(sheet->isOperationInProgress());
  EXPECT_FALSE(sheet->firstButton()->isEnabled());
  ASSERT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 10000));
  EXPECT_TRUE(result->isSuccess());
  EXPECT_EQ(committed.count(), 1);
  EXPECT_NE(repo.headSha(), before);
}

// A sheet's life: validation drives the submit button, busy disables the inputs but not
// Cancel, and each ending stores its result.
TEST(JelvSheetController, StatusLineControlsAndEndings) {
  QMainWindow window;
  window.show();
  auto* sheet = new GitOperationSheetController;
  auto* field = new QLineEdit(sheet);
  sheet->contentLayout()->addWidget(field);
  std::optional<JelvSheetResult> result;
  JelvSheetController::showSheet(&window, sheet, [&](const JelvSheetResult& r) { result = r; });
  ASSERT_TRUE(sheet->isVisible());
  EXPECT_EQ(sheet->parentWidget(), &window);
  EXPECT_TRUE(sheet->windowModality() == Qt::WindowModal);

  sheet->setStatus(JelvSheetController::Status::busy, QStringLiteral("Working"));
  sheet->setControlsEnabled(false);
  EXPECT_TRUE(sheet->isOperationInProgress());
  EXPECT_EQ(sheet->statusLabel()->text(), QStringLiteral("Working"));
  EXPECT_FALSE(field->isEnabled());
  EXPECT_FALSE(sheet->submitButton()->isEnabled());
  EXPECT_TRUE(sheet->cancelButton()->isEnabled());
  sheet->setStatus(JelvSheetController::Status::warning);
  EXPECT_FALSE(sheet->isOperationInProgress());
  EXPECT_TRUE(sheet->statusLabel()->isHidden());
  sheet->setControlsEnabled(true);

  // Ctrl+Return submits from inside the text.
  sheet->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(sheet));
  field->setFocus();
  QTest::keyClick(field, Qt::Key_Return, Qt::ControlModifier);
  ASSERT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 2000));
  EXPECT_TRUE(result->isSuccess());

  auto* second = new JelvSheetController;
  std::optional<JelvSheetResult> secondResult;
  JelvSheetController::showSheet(&window, second, [&](const JelvSheetResult& r) { secondResult = r; });
  QTest::keyClick(second, Qt::Key_Escape);
  ASSERT_TRUE(secondResult.has_value());
  EXPECT_TRUE(secondResult->isCancel());

  auto* third = new JelvSheetController;
  std::optional<JelvSheetResult> thirdResult;
  JelvSheetController::showSheet(&window, third, [&](const JelvSheetResult& r) { thirdResult = r; });
  third->endWithError(Error::Generic{QStringLiteral("x")});
  ASSERT_TRUE(thirdResult.has_value() && thirdResult->error());
  EXPECT_TRUE(std::holds_alternative<Error::Generic>(*thirdResult->error()));
}
