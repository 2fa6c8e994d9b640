#include <gtest/gtest.h>

#include <QAction>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "Controllers/LocalChanges/FileListViewController.h"
#include "LocalChangesPage.h"
#include "Services/MergeTool.h"
#include "Services/Preferences.h"
#include "support/Widgets.h"

namespace {
QByteArray read(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable: ") + path.toUtf8() + '>';
}

// A stand-in diff tool: writes the arguments it got, one a line, then ends.
QString writeTool(const QTemporaryDir& dir) {
  const QString path = dir.filePath(QStringLiteral("fake diff"));
  QFile script(path);
  script.open(QIODevice::WriteOnly);
  script.write("#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.args.tmp\" && mv \"$0.args.tmp\" \"$0.args\"\n");
  script.close();
  script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  return path;
}

struct DiffToolPreferences {
  ~DiffToolPreferences() {
    for (const char* key : {"externalDiffTool", "externalDiffToolCustomPath", "externalDiffToolCustomArguments"}) {
      Preferences::shared().remove(QString::fromLatin1(key));
    }
  }
};

// Runs "External Diff" from the list's menu for the file and gives the tool's arguments.
QStringList runExternalDiff(StageFileViewController& view, FileListViewController* list, const QString& path, const QString& tool) {
  QFile::remove(tool + QStringLiteral(".args"));
  EXPECT_TRUE(list->selectFile(path));
  std::unique_ptr<QMenu> menu(view.contextMenu(list));
  QAction* action = menu ? findAction(menu.get(), QStringLiteral("External Diff")) : nullptr;
  EXPECT_NE(action, nullptr);
  if (!action) return {};
  action->trigger();
  const QString args = tool + QStringLiteral(".args");
  if (!QTest::qWaitFor([&] { return QFileInfo::exists(args); }, 10000)) return {};
  return QString::fromUtf8(read(args)).split(u'\n', Qt::SkipEmptyParts);
}
}  // namespace

// The custom tool gets two real files: for an unstaged change the index's version and the
// working file, for a staged one HEAD's version and the index's, with the user's arguments.
TEST(LocalChangesExternalDiff, CustomToolReceivesBothSides) {
  DiffToolPreferences restore;
  QTemporaryDir bin;
  const QString tool = writeTool(bin);
  TempRepository repo;
  const QString path = QStringLiteral("docs/résumé notes.txt");
  repo.commitFile(path, "head\n", QStringLiteral("Base"));
  repo.writeFile(path, "staged\n");
  repo.stageAll();
  repo.writeFile(path, "working\n");
  Preferences::shared().setExternalDiffTool(int(MergeTool::Kind::custom));
  Preferences::shared().setExternalDiffToolCustomPath(tool);

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  ASSERT_TRUE(page.load());

  const QStringList unstaged = runExternalDiff(view, view.unstagedList(), path, tool);
  ASSERT_EQ(unstaged.size(), 2) << unstaged.join(u'|').toStdString();
  EXPECT_EQ(read(unstaged[0]), QByteArray("staged\n"));
  EXPECT_EQ(unstaged[1], QDir(repo.path()).filePath(path));
  EXPECT_EQ(read(unstaged[1]), QByteArray("working\n"));

  Preferences::shared().setExternalDiffToolCustomArguments(QStringLiteral("--new=$REMOTE --old $LOCAL"));
  const QStringList staged = runExternalDiff(view, view.stagedList(), path, tool);
  ASSERT_EQ(staged.size(), 3) << staged.join(u'|').toStdString();
  ASSERT_TRUE(staged[0].startsWith(QStringLiteral("--new=")));
  EXPECT_EQ(read(staged[0].mid(6)), QByteArray("staged\n"));
  EXPECT_EQ(staged[1], QStringLiteral("--old"));
  EXPECT_EQ(read(staged[2]), QByteArray("head\n"));
  EXPECT_TRUE(QFileInfo(staged[2]).fileName().startsWith(QStringLiteral("résumé notes (HEAD)")));
}

// Without a usable tool the user is told why, and nothing is started.
TEST(LocalChangesExternalDiff, MissingToolIsExplained) {
  DiffToolPreferences restore;
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("Base"));
  repo.writeFile(QStringLiteral("a.txt"), "b\n");
  Preferences::shared().setExternalDiffTool(int(MergeTool::Kind::custom));

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  ASSERT_TRUE(page.load());
  QSignalSpy failed(&view, SIGNAL(externalToolFailed(QString)));
  view.externalDiff(view.unstagedList()->files().front());
  ASSERT_TRUE(failed.wait(10000));
  EXPECT_TRUE(failed.front().front().toString().startsWith(QStringLiteral("No custom diff tool is set")));

  Preferences::shared().setExternalDiffToolCustomPath(QStringLiteral("/nonexistent/tool"));
  view.externalDiff(view.unstagedList()->files().front());
  ASSERT_TRUE(failed.wait(10000));
  EXPECT_EQ(failed.back().front().toString(), QStringLiteral("/nonexistent/tool does not exist"));
}
