#include <gtest/gtest.h>

#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "Controls/FileDiffView/ConflictDiffView.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "Jobs/JobQueue.h"
#include "LocalChangesPage.h"
#include "support/Conflicts.h"

namespace {
// main and theirs both change a.txt; the merge stops on it.
void conflictedFile(const TempRepository& repo) {
  makeConflict(repo, QStringLiteral("a.txt"), {QByteArray("base\n"), QByteArray("mine\n"), QByteArray("theirs\n")});
}
}  // namespace

// The page shows the combined diff of a conflicted file, and its button asks for the
// merge editor of that path.
TEST(ConflictedFile, CombinedDiffWithResolveButton) {
  TempRepository repo;
  conflictedFile(repo);
  LocalChangesPage localChanges(repo);
  StageFileViewController& view = *localChanges.view();
  ASSERT_TRUE(localChanges.load());
  QSignalSpy diffLoaded(&view, &StageFileViewController::diffLoaded);
  ASSERT_TRUE(view.unstagedList()->selectFile(QStringLiteral("a.txt")));
  ASSERT_TRUE(diffLoaded.wait(10000));
  ConflictDiffView* page = view.diffPane()->conflictView();
  ASSERT_TRUE(page);
  EXPECT_TRUE(page->diffText().contains(QStringLiteral("diff --cc a.txt")));
  EXPECT_TRUE(page->diffText().contains(QStringLiteral("++<<<<<<< HEAD\n +mine\n++=======\n+ theirs\n++>>>>>>> theirs")));
  QSignalSpy requested(&view, &StageFileViewController::resolveConflictsRequested);
  QTest::mouseClick(page->resolveButton(), Qt::LeftButton);
  ASSERT_EQ(requested.size(), 1);
  EXPECT_EQ(requested.front().front().toString(), QStringLiteral("a.txt"));
}

// Staging a file that still holds conflict markers asks first; "no" leaves it conflicted,
// a file without markers is staged without a word.
TEST(ConflictedFile, StagingWithMarkersAsksFirst) {
  TempRepository repo;
  conflictedFile(repo);
  LocalChangesPage localChanges(repo);
  StageFileViewController& view = *localChanges.view();
  QStringList asked;
  bool answer = false;
  view.setConfirmation([&](const QString& message, const QString&, const QString& button) {
    asked << message + QLatin1Char('|') + button;
    return answer;
  });
  QSignalSpy reloaded(&view, &StageFileViewController::reloaded);
  view.reload();
  ASSERT_TRUE(reloaded.wait(10000));

  view.stage(view.unstagedList()->files());
  EXPECT_FALSE(reloaded.wait(1500));
  ASSERT_EQ(asked, QStringList{QStringLiteral("The file still contains conflict markers.|Stage Anyway")});
  EXPECT_NE(repo.git({"ls-files", "--unmerged"}), QString());

  repo.writeFile(QStringLiteral("a.txt"), "mine and theirs\n");
  view.stage(view.unstagedList()->files());
  ASSERT_TRUE(reloaded.wait(10000));
  EXPECT_EQ(asked.size(), 1);
  EXPECT_EQ(repo.git({"ls-files", "--unmerged"}), QString());
  EXPECT_EQ(repo.git({"show", ":a.txt"}), QStringLiteral("mine and theirs\n"));
}

// A conflicted file settled from the page: their side lands in the work tree and the
// index, and the file moves to the staged list.
TEST(ConflictedFile, TheirsIsTakenAndTheFileIsStaged) {
  TempRepository repo;
  conflictedFile(repo);

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  ASSERT_TRUE(page.load());
  const ChangedFileList unstaged = view.unstagedList()->files();
  ASSERT_EQ(unstaged.size(), 1u);
  ASSERT_EQ(unstaged[0]->changeType, ChangeType::unmerged);

  ASSERT_TRUE(page.reloadAfter([&] { view.resolveConflicts(unstaged, UnmergedFileVersionType::remote); }));
  EXPECT_EQ(repo.readFile(QStringLiteral("a.txt")), "theirs\n");
  EXPECT_TRUE(view.unstagedList()->files().empty());
  ASSERT_EQ(view.stagedList()->files().size(), 1u);
  EXPECT_EQ(view.stagedList()->files()[0]->path, QStringLiteral("a.txt"));
}
