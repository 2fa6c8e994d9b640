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

TEST_F(UnstageLines, InAddedRenamedDeletedAndModeChangedFiles) {
  repo().writeFile("old-name.txt", lines({"r1", "r2", "r3", "r4", "r5", "r6", "r7", "r8"}));
  repo().writeFile("gone.txt", lines({"g1", "g2", "g3"}));
  repo().writeFile("all-gone.txt", lines({"h1", "h2"}));
  repo().writeFile("run.sh", lines({"echo 1", "echo 2"}));
  repo().commit("base");

  repo().writeFile("added.txt", lines({"n1", "n2", "n3"}));
  repo().git({"mv", "old-name.txt", "new-name.txt"});
  repo().writeFile("new-name.txt", lines({"r1", "r2", "r3", "R4", "r5", "r6", "r7", "r8"}));
  repo().git({"rm", "-q", "gone.txt", "all-gone.txt"});
  repo().writeFile("run.sh", lines({"echo 1", "echo 2", "echo 3"}));
  repo().stageAll();
  repo().git({"update-index", "--chmod=+x", "run.sh"});

  // A newly added file stays added, without the line.
  showStaged({"--", "added.txt"});
  apply(SelectionMode::unstage, "+n2");
  EXPECT_EQ(indexed("added.txt"), lines({"n1", "n3"}));
  EXPECT_EQ(worktree("added.txt"), lines({"n1", "n2", "n3"}));

  // A moved file stays moved; only the line goes back.
  showStaged({"--", "new-name.txt", "old-name.txt"});
  ASSERT_EQ(patch->files.at(0).oldFilepath, "old-name.txt");
  apply(SelectionMode::unstage, span("-r4", "+R4"));
  EXPECT_EQ(indexed("new-name.txt"), lines({"r1", "r2", "r3", "r4", "r5", "r6", "r7", "r8"}));
  const QStringList entries = indexEntries();
  EXPECT_TRUE(entries.contains("100644 new-name.txt"));
  for (const QString& entry : entries) EXPECT_FALSE(entry.endsWith(u"old-name.txt"));

  // Unstaging a line of a staged deletion puts back a file of that line.
  showStaged({"--", "gone.txt"});
  apply(SelectionMode::unstage, "-g2");
  EXPECT_EQ(indexed("gone.txt"), lines({"g2"}));

  // The whole hunk of a deletion brings the file back whole.
  showStaged({"--", "all-gone.txt"});
  apply(SelectionMode::unstage, span("-h1", "-h2"));
  EXPECT_EQ(indexed("all-gone.txt"), lines({"h1", "h2"}));
  EXPECT_FALSE(exists("all-gone.txt"));

  // The header carries the modes, so the mode change leaves the index with the line.
  showStaged({"--", "run.sh"});
  apply(SelectionMode::unstage, "+echo 3");
  EXPECT_EQ(indexed("run.sh"), lines({"echo 1", "echo 2"}));
  EXPECT_TRUE(indexEntries().contains("100644 run.sh"));
}
