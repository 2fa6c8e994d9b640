// The `jelv` command line tool, the real program, against the application object on the
// test session's bus.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMessageBox>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/History/FileHistoryWindowController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Models/AppSettings.h"
#include "Services/Preferences.h"
#include "UI/AppDelegate.h"
#include "UI/JelvDocument.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "support/TempRepository.h"
#include "support/TestEnvironment.h"

namespace {

QString toolPath() { return QCoreApplication::applicationDirPath() + QStringLiteral("/jelv"); }

struct ToolRun {
  int exitCode = -1;
  QString standardError;
};

// Runs the tool while this process's event loop keeps answering it.
ToolRun runTool(const QString& workingDirectory, const QStringList& arguments) {
  QProcess tool;
  tool.setWorkingDirectory(workingDirectory);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  // A slow answer under load must not make the tool start an application of its own
  // (which, should it happen, ends at once).
  environment.insert(QStringLiteral("JELV_CLI_TIMEOUT"), QStringLiteral("20"));
  environment.insert(QStringLiteral("JELV_QUIT_AFTER_SHOW"), QStringLiteral("1"));
  tool.setProcessEnvironment(environment);
  tool.start(toolPath(), arguments);
  if (!tool.waitForStarted(5000)) return {};
  if (!QTest::qWaitFor([&] { return tool.state() == QProcess::NotRunning; }, 30000)) {
    tool.kill();
    tool.waitForFinished();
    return {};
  }
  return {tool.exitStatus() == QProcess::NormalExit ? tool.exitCode() : -1, QString::fromLocal8Bit(tool.readAllStandardError())};
}

FileHistoryWindowController* fileHistoryWindow() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (auto* window = qobject_cast<FileHistoryWindowController*>(widget); window && window->isVisible()) return window;
  }
  return nullptr;
}

class CommandLineTool : public ::testing::Test {
 protected:
  void SetUp() override {
    Preferences::useStoreFile(dir_.filePath(QStringLiteral("prefs.ini")));
    registry_ = std::make_unique<AppSettings>(dir_.filePath(QStringLiteral("db.sqlite3")));
    registry_->initializeDatabase();
  }
  void TearDown() override {
    for (QWidget* widget : QApplication::topLevelWidgets()) widget->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    TestEnvironment::usePreferencesFile();
  }
  QTemporaryDir dir_;
  std::unique_ptr<AppSettings> registry_;
};

}  // namespace

TEST_F(CommandLineTool, BringsTheRepositoryUpInItsTabWithTheViewAsked) {
  TempRepository repository(true, QStringLiteral("my repo ä"));
  repository.commitFile(QStringLiteral("dir/ä file.txt"), "one\n", QStringLiteral("First"));
  repository.commitFile(QStringLiteral("dir/ä file.txt"), "two\n", QStringLiteral("Second"));
  repository.writeFile(QStringLiteral("dir/ä file.txt"), "changed\n");
  Preferences::shared().setDefaultSourceFolder(dir_.path());
  Preferences::shared().setValue(QStringLiteral("importedOldTabs"), true);

  AppDelegate delegate(*registry_, Preferences::shared());
  delegate.applicationWillFinishLaunching();
  delegate.applicationDidFinishLaunching({});
  JelvDocumentController& documents = delegate.documents();
  ASSERT_EQ(documents.windows().size(), 1);  // the repository manager

  // "status" from a folder inside the repository: its tab opens in front with the changes.
  const ToolRun status = runTool(repository.path() + QStringLiteral("/dir"), {QStringLiteral("status")});
  EXPECT_EQ(status.exitCode, 0) << status.standardError.toStdString();
  JelvWindowController* tab = documents.findRepositoryTab(repository.path());
  ASSERT_TRUE(tab && tab->document());
  JelvMainWindow* window = documents.windows().first();
  EXPECT_EQ(window->currentTab(), tab);
  EXPECT_TRUE(tab->document()->localChangesView()->isVisible());
  EXPECT_FALSE(tab->document()->commitList()->isVisible());
  // The sidebar and the toolbar mark the page once the new tab's sidebar is built.
  QAction* changesPage = tab->findChild<QAction*>(QStringLiteral("localChangesAction"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return changesPage->isChecked(); }, 10000));
  EXPECT_EQ(tab->document()->sidebar()->currentItem(), tab->document()->sidebar()->localChangesItem());

  // "log -- <file>" from elsewhere with -C: the same tab, the commit list, the file's history.
  window->tabWidget()->setCurrentIndex(0);
  const ToolRun log = runTool(dir_.path(), {QStringLiteral("-C"), repository.path(), QStringLiteral("log"), QStringLiteral("--"),
                                            QStringLiteral("dir/ä file.txt")});
  EXPECT_EQ(log.exitCode, 0) << log.standardError.toStdString();
  EXPECT_EQ(window->tabCount(), 2);
  EXPECT_EQ(window->currentTab(), tab);
  EXPECT_TRUE(tab->document()->commitList()->isVisible());
  EXPECT_TRUE(tab->findChild<QAction*>(QStringLiteral("historyAction"))->isChecked());
  FileHistoryWindowController* history = fileHistoryWindow();
  ASSERT_TRUE(history);
  EXPECT_EQ(history->windowTitle(), QStringLiteral("History: dir/ä file.txt"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return history->history().size() == 2; }, 10000));

  // A request that cannot be read is shown, not dropped.
  const ToolRun broken = runTool(repository.path(), {QStringLiteral("status"), QStringLiteral("-C")});
  EXPECT_EQ(broken.exitCode, 0);
  auto* alert = window->findChild<QMessageBox*>(QStringLiteral("cliError"));
  ASSERT_TRUE(alert);
  EXPECT_EQ(alert->text(), QStringLiteral("Option -C needs a directory."));
}

// On a bus of its own nobody answers.
class CommandLineToolAlone : public ::testing::Test {
 protected:
  // Runs the tool at `tool` in a fresh session bus, with the application's files in `dir_`.
  ToolRun run(const QString& tool, const QString& workingDirectory, const QStringList& arguments) {
    const QString busRunner = QStandardPaths::findExecutable(QStringLiteral("dbus-run-session"));
    if (busRunner.isEmpty()) return {};
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("JELV_CLI_TIMEOUT"), QStringLiteral("1"));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), dir_.filePath(QStringLiteral("data")));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), dir_.filePath(QStringLiteral("config")));
    // A started application ends once its first window is up.
    environment.insert(QStringLiteral("JELV_QUIT_AFTER_SHOW"), QStringLiteral("1"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(workingDirectory);
    process.start(busRunner, QStringList{QStringLiteral("--"), tool} + arguments);
    if (!process.waitForFinished(15000)) return {};
    return {process.exitCode(), QString::fromLocal8Bit(process.readAllStandardError())};
  }
  QString logText() const {
    QFile log(dir_.filePath(QStringLiteral("data/org.jelv.Jelv/Logs/Jelv.log")));
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : QString();
  }
  QTemporaryDir dir_;
};

TEST_F(CommandLineToolAlone, WithoutAnApplicationBesideItFailsWithinItsTimeOut) {
  const QString copy = dir_.filePath(QStringLiteral("jelv"));
  ASSERT_TRUE(QFile::copy(toolPath(), copy));
  QElapsedTimer clock;
  clock.start();
  const ToolRun result = run(copy, dir_.path(), {QStringLiteral("status")});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_LT(clock.elapsed(), 10000);
  EXPECT_TRUE(result.standardError.contains(QStringLiteral("Jelv is not running"))) << result.standardError.toStdString();
}

TEST_F(CommandLineToolAlone, StartsTheApplicationBesideItWithTheCommand) {
  TempRepository repository(true, QStringLiteral("started repo"));
  repository.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("First"));
  const ToolRun result = run(toolPath(), repository.path(), {QStringLiteral("status")});
  EXPECT_EQ(result.exitCode, 0) << result.standardError.toStdString();
  EXPECT_TRUE(result.standardError.contains(QStringLiteral("starting it")));
  const QString request = repository.path() + QStringLiteral("workingDirectorySeparatorstatus");
  EXPECT_TRUE(QTest::qWaitFor([&] { return logText().contains(QStringLiteral("Jelv quitting")); }, 30000)) << logText().toStdString();
  EXPECT_TRUE(logText().contains(QStringLiteral("Command line request: '%1'").arg(request)));
}
