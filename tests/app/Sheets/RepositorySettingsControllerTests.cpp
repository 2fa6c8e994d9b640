#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/Sheets/EditRepositoryFileController.h"
#include "Controllers/Sheets/RepositorySettingsController.h"
#include "Jobs/JobQueue.h"
#include "Models/GitModuleSettings.h"
#include "Repository/RepositoryController.h"
#include "support/TempRepository.h"

namespace {
QString localValue(const TempRepository& repo, const QString& key) {
  int status = 0;
  return repo.git({QStringLiteral("config"), QStringLiteral("--local"), QStringLiteral("--get"), key}, true, &status).trimmed();
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

// Opened from the commit box's menu: the fields show the repository's values (the global
// identity as a hint), and saving writes the local configuration, the signing settings
// and the template; the commit box follows the new sign-off.
TEST(RepositorySettingsController, WritesTheLocalConfigAndTheCommitSettings) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
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

  EXPECT_EQ(localValue(repo, QStringLiteral("user.name")), QStringLiteral("Ada Lovelace"));
  EXPECT_EQ(localValue(repo, QStringLiteral("user.email")), QStringLiteral("ada@example.com"));
  const GitModuleSettings settings = GitModuleSettings::load(repo.module());
  EXPECT_EQ(settings.signingKey, std::optional<QString>(QStringLiteral("0xDEADBEEF")));
  EXPECT_TRUE(settings.signOff);
  EXPECT_EQ(repo.readFile(QStringLiteral(".git/commit_msg_template.txt")), QByteArray("Area: \n\nWhy:"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return box->signOffBox()->isChecked(); }, 2000));

  // Opened again, the sheet shows what was saved; cancelling changes nothing.
  ShowRepositorySettingsSheetCommand::execute(box, repo.module(), queue);
  sheet = waitForLoadedSheet(&window);
  ASSERT_NE(sheet, nullptr);
  EXPECT_EQ(sheet->nameField()->text(), QStringLiteral("Ada Lovelace"));
  EXPECT_EQ(sheet->signingKeyField()->text(), QStringLiteral("0xDEADBEEF"));
  EXPECT_EQ(sheet->templateField()->toPlainText(), QStringLiteral("Area: \n\nWhy:"));
  sheet->nameField()->setText(QStringLiteral("Someone Else"));
  QSignalSpy cancelled(sheet, &QDialog::finished);
  QTest::mouseClick(sheet->cancelButton(), Qt::LeftButton);
  ASSERT_EQ(cancelled.count(), 1);
  EXPECT_EQ(localValue(repo, QStringLiteral("user.name")), QStringLiteral("Ada Lovelace"));
}

TEST(JelvSheetController, ASheetThatSucceedsAsksItsRepositoryToReadWhatItChanged) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral("build.log"), "noise\n");
  RepositoryController repository(repo.module(), std::make_shared<JobQueue>());
  QSignalSpy finished(&repository, &RepositoryController::refreshFinished);
  repository.refresh();
  ASSERT_TRUE(finished.wait(20000));
  ASSERT_EQ(repository.repositoryStatus()->changedFiles.size(), 1u);

  QMainWindow window;
  window.show();
  auto* sheet = new EditRepositoryFileController(repo.path() + QStringLiteral("/.gitignore"), &window);
  sheet->setRepository(&repository, &repository);
  QSignalSpy statusRead(&repository, &RepositoryController::repositoryStatusUpdated);
  JelvSheetController::showSheet(&window, sheet, [](const JelvSheetResult&) {});
  sheet->editor()->setPlainText(QStringLiteral("*.log"));
  sheet->submit();
  ASSERT_TRUE(statusRead.wait(20000));
  QStringList paths;
  for (const auto& file : repository.repositoryStatus()->changedFiles) paths << file->path;
  EXPECT_EQ(paths, QStringList{QStringLiteral(".gitignore")});
}
