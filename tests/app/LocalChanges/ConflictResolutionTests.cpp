#include <gtest/gtest.h>

#include <QSignalSpy>

#include "Controllers/LocalChanges/FileListViewController.h"
#include "LocalChangesPage.h"

// A conflicted file settled from the page: their side lands in the work tree and the
// index, and the file moves to the staged list.
TEST(ConflictResolution, TheirsIsTakenAndTheFileIsStaged) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "base\n", QStringLiteral("base"));
  repo.git({"checkout", "-q", "-b", "topic"});
  repo.commitFile(QStringLiteral("a.txt"), "theirs\n", QStringLiteral("theirs"));
  repo.git({"checkout", "-q", "main"});
  repo.commitFile(QStringLiteral("a.txt"), "mine\n", QStringLiteral("mine"));
  repo.git({"merge", "topic"}, true);

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
