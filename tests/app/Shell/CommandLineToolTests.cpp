// The `jelv` command line tool, the real program, against the application object on the
// test session's bus.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
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
#include "UI/JelvDocument.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "support/TempRepository.h"
#include "ShellFixture.h"

namespace {

QString toolPath() { return QCoreApplication::applicationDirPath() + QStringLiteral("/jelv"); }

struct ToolRun {
  int exitCode = -1;
  QString standardError;
};

// Runs a tool to its end while this process's event loop keeps answering it. With
// `ownFiles`, on a session bus of its own (where no application listens) and with an
// application's files there. A started application ends once its window is up; the long
// time-out keeps a slow answer under load from starting one at all.
ToolRun runTool(const QString& tool, const QString& workingDirectory, const QStringList& arguments, const QString& ownFiles = {}) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("JELV_QUIT_AFTER_SHOW"), QStringLiteral("1"));
  environment.insert(QStringLiteral("JELV_CLI_TIMEOUT"), ownFiles.isEmpty() ? QStringLiteral("20") : QStringLiteral("1"));
  QStringList command{tool};
  if (!ownFiles.isEmpty()) {
    command = QStringList{QStandardPaths::findExecutable(QStringLiteral("dbus-run-session")), QStringLiteral("--")} + command;
    environment.insert(QStringLiteral("XDG_DATA_HOME"), ownFiles + QStringLiteral("/data"));
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), ownFiles + QStringLiteral("/config"));
  }
  QProcess process;
  process.setProcessEnvironment(environment);
  process.setWorkingDirectory(workingDirectory);
  const QString program = command.takeFirst();
  process.start(program, command + arguments);
  if (!process.waitForStarted(5000)) return {};
  if (!QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 30000)) {
    process.kill();
    process.waitForFinished();
    return {};
  }
  return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
          QString::fromLocal8Bit(process.readAllStandardError())};
}

using CommandLineTool = ShellTest;

}  // namespace

TEST_F(CommandLineTool, BringsTheRepositoryUpInItsTabWithTheViewAsked) {
  TempRepository repository(true, QStringLiteral("my repo ä"));
  repository.commitFile(QStringLiteral("dir/ä file.txt"), "one\n", QStringLiteral("First"));
  repository.commitFile(QStringLiteral("dir/ä file.txt"), "two\n", QStringLiteral("Second"));
  repository.writeFile(QStringLiteral("dir/ä file.txt"), "changed\n");
  preferences().setDefaultSourceFolder(dir_.path());
  preferences().setValue(QStringLiteral("importedOldTabs"), true);
  auto delegate = launch();
  JelvDocumentController& documents = delegate->documents();
  ASSERT_EQ(documents.windows().size(), 1);  // the repository manager

  // "status" from a folder inside the repository: its tab opens in front with the changes.
  const ToolRun status = runTool(toolPath(), repository.path() + QStringLiteral("/dir"), {QStringLiteral("status")});
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
  const ToolRun log = runTool(toolPath(), dir_.path(), {QStringLiteral("-C"), repository.path(), QStringLiteral("log"), QStringLiteral("--"),
                                            QStringLiteral("dir/ä file.txt")});
  EXPECT_EQ(log.exitCode, 0) << log.standardError.toStdString();
  EXPECT_EQ(window->tabCount(), 2);
  EXPECT_EQ(window->currentTab(), tab);
  EXPECT_TRUE(tab->document()->commitList()->isVisible());
  EXPECT_TRUE(tab->findChild<QAction*>(QStringLiteral("historyAction"))->isChecked());
  auto* history = window->findChild<FileHistoryWindowController*>();
  ASSERT_TRUE(history && history->isVisible());
  EXPECT_EQ(history->windowTitle(), QStringLiteral("History: dir/ä file.txt"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return history->history().size() == 2; }, 10000));

  // A request that cannot be read is shown, not dropped.
  const ToolRun broken = runTool(toolPath(), repository.path(), {QStringLiteral("status"), QStringLiteral("-C")});
  EXPECT_EQ(broken.exitCode, 0);
  auto* alert = window->findChild<QMessageBox*>(QStringLiteral("cliError"));
  ASSERT_TRUE(alert);
  EXPECT_EQ(alert->text(), QStringLiteral("Option -C needs a directory."));
}

// On a bus of its own nobody answers: the tool starts the application beside it, and
// a copy with none beside it fails within its time-out.
TEST(CommandLineToolAlone, StartsTheApplicationBesideItOrSaysNoneRuns) {
  QTemporaryDir files;
  TempRepository repository(true, QStringLiteral("started repo"));
  const ToolRun started = runTool(toolPath(), repository.path(), {QStringLiteral("status")}, files.path());
  EXPECT_EQ(started.exitCode, 0) << started.standardError.toStdString();
  const auto logText = [&files] {
    QFile log(files.filePath(QStringLiteral("data/org.jelv.Jelv/Logs/Jelv.log")));
    return log.open(QIODevice::ReadOnly) ? QString::fromUtf8(log.readAll()) : QString();
  };
  QString text;
  EXPECT_TRUE(QTest::qWaitFor([&] { return (text = logText()).contains(QStringLiteral("Jelv quitting")); }, 30000));
  EXPECT_TRUE(text.contains(QStringLiteral("Command line request: '%1workingDirectorySeparatorstatus'").arg(repository.path())));

  const QString copy = files.filePath(QStringLiteral("jelv"));
  ASSERT_TRUE(QFile::copy(toolPath(), copy));
  QElapsedTimer clock;
  clock.start();
  const ToolRun alone = runTool(copy, files.path(), {QStringLiteral("status")}, files.path());
  EXPECT_EQ(alone.exitCode, 1);
  EXPECT_LT(clock.elapsed(), 10000);
  EXPECT_TRUE(alone.standardError.contains(QStringLiteral("Jelv is not running"))) << alone.standardError.toStdString();
}
