#include "StagingFixture.h"

using UnstageLines = LineStagingTest;

TEST_F(UnstageLines, OneLineOfAStagedBlockAndThenTheRest) {
  const QByteArray base = lines({"l1", "l2", "l3", "l4", "l5", "l6", "l7", "l8"});
  repo().commitFile(QStringLiteral("f"), base, QStringLiteral("base"));
  const QByteArray modified = lines({"l1", "l2", "A", "B", "C", "l6", "l7", "l8"});
  repo().writeFile(QStringLiteral("f"), modified);
  repo().stageAll();

  // The other added lines are context; only "B" leaves the index.
  showStaged();
  apply(SelectionMode::unstage, QStringLiteral("+B"));
  EXPECT_EQ(indexed(QStringLiteral("f")), lines({"l1", "l2", "A", "C", "l6", "l7", "l8"}));
  EXPECT_EQ(worktree(QStringLiteral("f")), modified);

  // A removed line comes back in front of the lines that replaced it.
  showStaged();
  apply(SelectionMode::unstage, QStringLiteral("-l4"));
  EXPECT_EQ(indexed(QStringLiteral("f")), lines({"l1", "l2", "l4", "A", "C", "l6", "l7", "l8"}));

  for (const char* spec : {"+C", "-l3", "+A", "-l5"}) {
    SCOPED_TRACE(spec);
    showStaged();
    apply(SelectionMode::unstage, QString::fromLatin1(spec));
  }
  EXPECT_EQ(indexed(QStringLiteral("f")), base);
  EXPECT_EQ(worktree(QStringLiteral("f")), modified);
}

TEST_F(UnstageLines, AcrossTwoHunksOfAFileWithoutNewlineAtTheEnd) {
  QByteArray base;
  for (int i = 1; i <= 20; ++i) base += "l" + QByteArray::number(i) + '\n';
  base.chop(1);  // no newline at the end
  repo().commitFile(QStringLiteral("f"), base, QStringLiteral("base"));
  QByteArray changed = base;
  changed.replace("l2\n", "L2\n");
  changed.replace("l20", "L20");
  repo().writeFile(QStringLiteral("f"), changed);
  repo().stageAll();

  showStaged();
  ASSERT_EQ(view.files.at(0).chunks.size(), 2u);
  // From "+L2" to "-l20": the first hunk's addition and the second's removal.
  apply(SelectionMode::unstage, span(QStringLiteral("+L2"), QStringLiteral("-l20")));
  QByteArray expected = base;
  expected.chop(3);
  expected += "l20\nL20";  // l20 is back (with a newline now), L20 still staged
  expected.replace("l2\n", "");
  EXPECT_EQ(indexed(QStringLiteral("f")), expected);
  EXPECT_EQ(worktree(QStringLiteral("f")), changed);
}

TEST_F(UnstageLines, InAddedRenamedDeletedAndModeChangedFiles) {
  repo().writeFile(QStringLiteral("old-name.txt"), lines({"r1", "r2", "r3", "r4", "r5", "r6", "r7", "r8"}));
  repo().writeFile(QStringLiteral("gone.txt"), lines({"g1", "g2", "g3"}));
  repo().writeFile(QStringLiteral("all-gone.txt"), lines({"h1", "h2"}));
  repo().writeFile(QStringLiteral("run.sh"), lines({"echo 1", "echo 2"}));
  repo().commit(QStringLiteral("base"));

  repo().writeFile(QStringLiteral("added.txt"), lines({"n1", "n2", "n3"}));
  repo().git({QStringLiteral("mv"), QStringLiteral("old-name.txt"), QStringLiteral("new-name.txt")});
  repo().writeFile(QStringLiteral("new-name.txt"), lines({"r1", "r2", "r3", "R4", "r5", "r6", "r7", "r8"}));
  repo().git({QStringLiteral("rm"), QStringLiteral("-q"), QStringLiteral("gone.txt"), QStringLiteral("all-gone.txt")});
  repo().writeFile(QStringLiteral("run.sh"), lines({"echo 1", "echo 2", "echo 3"}));
  repo().stageAll();
  repo().git({QStringLiteral("update-index"), QStringLiteral("--chmod=+x"), QStringLiteral("run.sh")});

  // A newly added file stays added, without the line.
  showStaged({QStringLiteral("--"), QStringLiteral("added.txt")});
  apply(SelectionMode::unstage, QStringLiteral("+n2"));
  EXPECT_EQ(indexed(QStringLiteral("added.txt")), lines({"n1", "n3"}));
  EXPECT_EQ(worktree(QStringLiteral("added.txt")), lines({"n1", "n2", "n3"}));

  // A moved file stays moved; only the line goes back.
  showStaged({QStringLiteral("--"), QStringLiteral("new-name.txt"), QStringLiteral("old-name.txt")});
  ASSERT_EQ(patch->files.at(0).oldFilepath, QStringLiteral("old-name.txt"));
  apply(SelectionMode::unstage, span(QStringLiteral("-r4"), QStringLiteral("+R4")));
  EXPECT_EQ(indexed(QStringLiteral("new-name.txt")), lines({"r1", "r2", "r3", "r4", "r5", "r6", "r7", "r8"}));
  const QStringList entries = indexEntries();
  EXPECT_TRUE(entries.contains(QStringLiteral("100644 new-name.txt")));
  for (const QString& entry : entries) EXPECT_FALSE(entry.endsWith(u"old-name.txt"));

  // Unstaging a line of a staged deletion puts back a file of that line.
  showStaged({QStringLiteral("--"), QStringLiteral("gone.txt")});
  apply(SelectionMode::unstage, QStringLiteral("-g2"));
  EXPECT_EQ(indexed(QStringLiteral("gone.txt")), lines({"g2"}));

  // The whole hunk of a deletion brings the file back whole.
  showStaged({QStringLiteral("--"), QStringLiteral("all-gone.txt")});
  apply(SelectionMode::unstage, span(QStringLiteral("-h1"), QStringLiteral("-h2")));
  EXPECT_EQ(indexed(QStringLiteral("all-gone.txt")), lines({"h1", "h2"}));
  EXPECT_FALSE(exists(QStringLiteral("all-gone.txt")));

  // The header carries the modes, so the mode change leaves the index with the line.
  showStaged({QStringLiteral("--"), QStringLiteral("run.sh")});
  apply(SelectionMode::unstage, QStringLiteral("+echo 3"));
  EXPECT_EQ(indexed(QStringLiteral("run.sh")), lines({"echo 1", "echo 2"}));
  EXPECT_TRUE(indexEntries().contains(QStringLiteral("100644 run.sh")));
}

TEST_F(UnstageLines, KeepsCrlfAndNonAsciiBytes) {
  repo().commitFile(QStringLiteral("dos.txt"), "a\r\nb\r\nc\r\n", QStringLiteral("base"));
  repo().writeFile(QStringLiteral("dos.txt"), QStringLiteral("a\r\nB\u00e4\r\nc\r\n\u65e5\r\n").toUtf8());
  repo().stageAll();
  showStaged();
  apply(SelectionMode::unstage, QStringLiteral("+B\u00e4"));
  EXPECT_EQ(indexed(QStringLiteral("dos.txt")), QStringLiteral("a\r\nc\r\n\u65e5\r\n").toUtf8());
  showStaged();
  apply(SelectionMode::unstage, QStringLiteral("-b"));
  EXPECT_EQ(indexed(QStringLiteral("dos.txt")), QStringLiteral("a\r\nb\r\nc\r\n\u65e5\r\n").toUtf8());
}
