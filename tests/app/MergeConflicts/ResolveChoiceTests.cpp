#include <gtest/gtest.h>

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "Controllers/MergeConflicts/MergeConflictViewController.h"
#include "Jobs/JobQueue.h"
#include "Services/Preferences.h"
#include "support/Conflicts.h"

namespace {

// The merge tool preference pointed at a program of the test's own on PATH; restored after.
struct ScriptMergeTool {
  explicit ScriptMergeTool(const QByteArray& script) {
    const QString program = dir.filePath(QStringLiteral("jelv-test-merge"));
    QFile file(program);
    file.open(QIODevice::WriteOnly);
    file.write(script);
    file.close();
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    oldPath = qgetenv("PATH");
    qputenv("PATH", dir.path().toUtf8() + ":" + oldPath);
    Preferences& preferences = Preferences::shared();
    preferences.setMergeTool(6);  // custom
    preferences.setExternalMergeToolCustomPath(QStringLiteral("jelv-test-merge"));
    preferences.setExternalMergeToolCustomArguments(QStringLiteral("$LOCAL $REMOTE \"$BASE\" $MERGED"));
  }
  ~ScriptMergeTool() {
    qputenv("PATH", oldPath);
    Preferences& preferences = Preferences::shared();
    preferences.remove(QStringLiteral("mergeTool"));
    preferences.remove(QStringLiteral("externalMergeToolCustomPath"));
    preferences.remove(QStringLiteral("externalMergeToolCustomArguments"));
  }
  QTemporaryDir dir;
  QByteArray oldPath;
};

std::unique_ptr<MergeConflictViewController> openChoice(const TempRepository& repo, const QString& path) {
  auto sheet = std::make_unique<MergeConflictViewController>(repo.module(), path);
  sheet->setJobQueue(std::make_shared<JobQueue>());
  QSignalSpy loaded(sheet.get(), &MergeConflictViewController::loaded);
  sheet->show();
  EXPECT_TRUE(loaded.wait(10000));
  return sheet;
}

QStringList leftovers(const TempRepository& repo) {
  return QDir(repo.path() + QStringLiteral("/dir")).entryList({QStringLiteral("*.~*")}, QDir::Files);
}

}  // namespace

// The outside tool gets the three versions and the working file: here a script that
// writes them one after another. The versions are gone afterwards.
TEST(ResolveChoice, OutsideToolWritesTheWorkingFile) {
  const struct {
    const char* name;
    std::optional<QByteArray> base;
    QByteArray expected;
  } cases[] = {
      {"with base", QByteArray("base\n"), "L:local\nR:remote\nB:base\n"},
      {"added on both sides", std::nullopt, "L:local\nR:remote\nB:\n"},
  };
  ScriptMergeTool tool(
      "#!/bin/sh\n"
      "{ printf 'L:'; cat \"$1\"; printf 'R:'; cat \"$2\"; printf 'B:'; [ -n \"$3\" ] && cat \"$3\" || echo; } > \"$4.new\"\n"
      "mv \"$4.new\" \"$4\"\n");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TempRepository repo;
    const QString path = QStringLiteral("dir/a b.txt");
    makeConflict(repo, path, {c.base, QByteArray("local\n"), QByteArray("remote\n")});
    auto sheet = openChoice(repo, path);
    EXPECT_EQ(sheet->toolButton()->text(), QStringLiteral("Merge in Custom"));
    ASSERT_TRUE(sheet->toolButton()->isEnabled());
    QSignalSpy finished(sheet.get(), &QDialog::finished);
    QTest::mouseClick(sheet->toolButton(), Qt::LeftButton);
    ASSERT_TRUE(finished.wait(10000));
    EXPECT_TRUE(sheet->result().isSuccess());
    EXPECT_EQ(repo.readFile(path), c.expected);
    EXPECT_TRUE(leftovers(repo).isEmpty()) << leftovers(repo).join(u' ').toStdString();
  }
}

// A side that deleted the file: no merge, only the sides, one of which deletes it.
TEST(ResolveChoice, DeletedSide) {
  TempRepository repo;
  const QString path = QStringLiteral("dir/f");
  makeConflict(repo, path, {QByteArray("a\n"), QByteArray("changed\n"), std::nullopt});
  auto sheet = openChoice(repo, path);
  const auto labels = sheet->findChildren<QLabel*>();
  QStringList texts;
  for (QLabel* label : labels) texts << label->text();
  EXPECT_TRUE(texts.contains(QStringLiteral("Local: (modified)")));
  EXPECT_TRUE(texts.contains(QStringLiteral("Remote: (deleted)")));
  EXPECT_EQ(sheet->localButton()->text(), QStringLiteral("Choose 'Local'"));
  EXPECT_EQ(sheet->remoteButton()->text(), QStringLiteral("Delete file"));
  EXPECT_TRUE(sheet->editorButton()->isHidden());
  EXPECT_TRUE(sheet->toolButton()->isHidden());
  QSignalSpy finished(sheet.get(), &QDialog::finished);
  QTest::mouseClick(sheet->remoteButton(), Qt::LeftButton);
  ASSERT_TRUE(finished.wait(10000));
  EXPECT_FALSE(QFile::exists(repo.path() + QLatin1Char('/') + path));
  EXPECT_EQ(repo.git({"ls-files", "--unmerged"}), QString());
  EXPECT_EQ(repo.git({"ls-files", path}), QString());
}
