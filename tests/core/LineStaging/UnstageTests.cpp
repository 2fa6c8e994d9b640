#include "StagingFixture.h"

using UnstageLines = LineStagingTest;

TEST_F(UnstageLines, OneLineOfAStagedBlockAndThenTheRest) {
  const QByteArray base = lines({"l1", "l2", "l3", "l4", "l5", "l6", "l7", "l8"});
  repo().commitFile("f", base, "base");
  const QByteArray modified = lines({"l1", "l2", "A", "B", "C", "l6", "l7", "l8"});
  repo().writeFile("f", modified);
  repo().stageAll();

  // The other added lines are context; only "B" leaves the index.
  showStaged();
  apply(SelectionMode::unstage, "+B");
  EXPECT_EQ(indexed("f"), lines({"l1", "l2", "A", "C", "l6", "l7", "l8"}));
  EXPECT_EQ(worktree("f"), modified);

  // A removed line comes back in front of the lines that replaced it.
  showStaged();
  apply(SelectionMode::unstage, "-l4");
  EXPECT_EQ(indexed("f"), lines({"l1", "l2", "l4", "A", "C", "l6", "l7", "l8"}));

  for (const char* spec : {"+C", "-l3", "+A", "-l5"}) {
    SCOPED_TRACE(spec);
    showStaged();
    apply(SelectionMode::unstage, QString::fromLatin1(spec));
  }
  EXPECT_EQ(indexed("f"), base);
  EXPECT_EQ(worktree("f"), modified);
}

TEST_F(UnstageLines, AcrossTwoHunksOfAFileWithoutNewlineAtTheEnd) {
  QByteArray base = numbered(20);
  base.chop(1);  // no newline at the end
  repo().commitFile("f", base, "base");
  QByteArray changed = base;
  changed.replace("l2\n", "L2\n");
  changed.replace("l20", "L20");
  repo().writeFile("f", changed);
  repo().stageAll();

  showStaged();
  ASSERT_EQ(view.files.at(0).chunks.size(), 2u);
  // From "+L2" to "-l20": the first hunk's addition and the second's removal.
  apply(SelectionMode::unstage, span("+L2", "-l20"));
  QByteArray expected = base;
  expected.chop(3);
  expected += "l20\nL20";  // l20 is back (with a newline now), L20 still staged
  expected.replace("l2\n", "");
  EXPECT_EQ(indexed("f"), expected);
  EXPECT_EQ(worktree("f"), changed);
}

TEST_F(UnstageLines, AMovedFileStaysMovedAndOnlyTheLineGoesBack) {
  repo().commitFile("old-name.txt", lines({"r1", "r2", "r3", "r4", "r5", "r6", "r7", "r8"}), "base");
  repo().git({"mv", "old-name.txt", "new-name.txt"});
  repo().writeFile("new-name.txt", lines({"r1", "r2", "r3", "R4", "r5", "r6", "r7", "r8"}));
  repo().stageAll();
  showStaged({"--", "new-name.txt", "old-name.txt"});
  ASSERT_EQ(patch->files.at(0).oldFilepath, "old-name.txt");
  apply(SelectionMode::unstage, span("-r4", "+R4"));
  EXPECT_EQ(indexed("new-name.txt"), lines({"r1", "r2", "r3", "r4", "r5", "r6", "r7", "r8"}));
  const QStringList entries = indexEntries();
  EXPECT_TRUE(entries.contains("100644 new-name.txt"));
  for (const QString& entry : entries) EXPECT_FALSE(entry.endsWith(u"old-name.txt"));
}
