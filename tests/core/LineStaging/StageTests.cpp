#include "StagingFixture.h"

using StageLines = LineStagingTest;

TEST_F(StageLines, OneLineOfAModifiedBlockAndThenTheRestInAnyOrder) {
  repo().commitFile("f", numbered(10), "base");
  const QByteArray modified = lines({"l1", "l2", "l3", "A", "B", "C", "l7", "l8", "l9", "l10"});
  repo().writeFile("f", modified);

  showUnstaged();
  apply(SelectionMode::stage, "+B");
  // The removed lines stay, the added one lands behind them.
  EXPECT_EQ(indexed("f"), lines({"l1", "l2", "l3", "l4", "l5", "l6", "B", "l7", "l8", "l9", "l10"}));
  EXPECT_EQ(worktree("f"), modified);

  showUnstaged();
  apply(SelectionMode::stage, span("-l5", "-l5"));
  EXPECT_EQ(indexed("f"), lines({"l1", "l2", "l3", "l4", "l6", "B", "l7", "l8", "l9", "l10"}));

  // The rest, one line at a time and out of order, ends with the index equal to the file.
  for (const char* spec : {"+C", "-l4", "+A", "-l6"}) {
    SCOPED_TRACE(spec);
    showUnstaged();
    const int before = indexed("f").count('\n');
    apply(SelectionMode::stage, QString::fromLatin1(spec));
    EXPECT_EQ(indexed("f").count('\n'), before + (spec[0] == '+' ? 1 : -1));
  }
  EXPECT_EQ(indexed("f"), modified);
  EXPECT_EQ(worktree("f"), modified);
}

TEST_F(StageLines, FirstMiddleAndLastLinesAndASelectionAcrossTwoHunks) {
  repo().commitFile("f", numbered(30), "base");
  QByteArray changed = numbered(30);
  changed.replace("l1\n", "L1\n");
  changed.replace("l15\n", "L15\n");
  changed.replace("l30\n", "L30\n");
  repo().writeFile("f", changed);

  showUnstaged();
  ASSERT_EQ(view.files.at(0).chunks.size(), 3u);
  // A drag over two rows of the first hunk.
  apply(SelectionMode::stage, span("-l1", "+L1"));
  QByteArray expected = numbered(30);
  expected.replace("l1\n", "L1\n");
  EXPECT_EQ(indexed("f"), expected);

  // A few characters inside one row select that row.
  showUnstaged();
  const PatchView::Range middle = row("+L15");
  apply(SelectionMode::stage, std::pair{middle.location + 1, middle.location + 2});
  expected.replace("l15\n", "l15\nL15\n");
  EXPECT_EQ(indexed("f"), expected);

  // From the removed line of one hunk to the last line of the next: both hunks, each
  // with its own lengths.
  showUnstaged();
  const XPatchPtr across = selection(SelectionMode::stage, span("-l15", "+L30"));
  ASSERT_TRUE(across);
  ASSERT_EQ(across->files.at(0).chunks.size(), 2u);
  apply(SelectionMode::stage, span("-l15", "+L30"));
  EXPECT_EQ(indexed("f"), changed);
  EXPECT_EQ(worktree("f"), changed);
}

// One line selected around a file end without newline, in CRLF files and beyond ASCII, in
// each mode. Staging and unstaging change the index only, discarding the working tree only.
TEST_F(LineStagingTest, AroundAMissingNewlineWithCrlfAndNonAsciiInEveryMode) {
  struct Row {
    SelectionMode mode;
    const char* name;
    QByteArray before, after;
    QStringList selection;  // first and last row of the drag
    QByteArray expected;    // the index, or the working tree when discarding
  };
  using M = SelectionMode;
  const Row rows[] = {
      {M::stage, "added line after an unselected line without newline", "a\nb", "a\nc", {"+c", "+c"}, "a\nb\nc"},
      {M::stage, "removed line without newline", "a\nb", "a\nc", {"-b", "-b"}, "a\n"},
      {M::stage, "both", "a\nb", "a\nc", {"-b", "+c"}, "a\nc"},
      {M::stage, "lines appended to a file without newline", "a\nb", "a\nb\nc\n", {"+c", "+c"}, "a\nb\nc\n"},
      {M::stage, "new last line without newline", "a\nb\n", "a\nb\nc", {"+c", "+c"}, "a\nb\nc"},
      {M::stage, "newline taken away, new line only", "a\nb\n", "a\nB", {"+B", "+B"}, "a\nb\nB"},
      {M::unstage, "removed line before an unselected one, both without newline", "a\nb", "a\nc", {"-b", "-b"}, "a\nb\nc"},
      {M::unstage, "added line without newline", "a\nb", "a\nc", {"+c", "+c"}, "a\n"},  // "-b" stays staged
      {M::unstage, "line added behind a file without newline", "a\nb", "a\nb\nc\n", {"+c", "+c"}, "a\nb\n"},
      {M::discard, "restore a removed line without newline", "a\nb", "a\nc", {"-b", "-b"}, "a\nb\nc"},
      {M::discard, "drop an added line without newline", "a\nb", "a\nc", {"+c", "+c"}, "a\n"},
      {M::discard, "drop a line added behind a file without newline", "a\nb", "a\nb\nc\n", {"+c", "+c"}, "a\nb\n"},
      {M::discard, "take back the change of the last line", "a\nb\n", "a\nB", {"-b", "+B"}, "a\nb\n"},
      {M::discard, "CRLF", "a\r\nb\r\nc\r\n", "a\r\nB\r\nc\r\nd\r\n", {"+B", "+B"}, "a\r\nc\r\nd\r\n"},
      {M::discard, "CRLF restore", "a\r\nb\r\nc\r\n", "a\r\nB\r\nc\r\nd\r\n", {"-b", "-b"}, "a\r\nb\r\nB\r\nc\r\nd\r\n"},
      {M::stage, "CRLF, added line", "a\r\nb\r\nc\r\n", "a\r\nB\r\nc\r\nd\r\n", {"+d", "+d"}, "a\r\nb\r\nc\r\nd\r\n"},
      {M::stage, "CRLF, changed line", "a\r\nb\r\nc\r\n", "a\r\nB\r\nc\r\nd\r\n", {"-b", "+B"}, "a\r\nB\r\nc\r\n"},
      {M::stage, "non-ASCII", "Gr\u00fc\u00dfe\nna\u00efve\n", "Gr\u00fc\u00dfe, Welt\n\U0001F600 \u65e5\u672c\nna\u00efve\n",
       {"+\U0001F600 \u65e5\u672c", "+\U0001F600 \u65e5\u672c"}, "Gr\u00fc\u00dfe\n\U0001F600 \u65e5\u672c\nna\u00efve\n"},
      {M::unstage, "CRLF, non-ASCII added line", "a\r\nb\r\nc\r\n", "a\r\nB\u00e4\r\nc\r\n\u65e5\r\n", {"+B\u00e4", "+B\u00e4"},
       "a\r\nc\r\n\u65e5\r\n"},
      {M::unstage, "CRLF, removed line", "a\r\nb\r\nc\r\n", "a\r\nB\u00e4\r\nc\r\n\u65e5\r\n", {"-b", "-b"},
       "a\r\nb\r\nB\u00e4\r\nc\r\n\u65e5\r\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    freshRepository();
    repo().commitFile("f", row.before, "base");
    repo().writeFile("f", row.after);
    if (row.mode == M::unstage) {
      repo().stageAll();
      showStaged();
    } else {
      showUnstaged();
    }
    apply(row.mode, span(row.selection[0], row.selection[1]));
    if (row.mode == M::discard) {
      EXPECT_EQ(worktree("f"), row.expected);
      EXPECT_EQ(indexed("f"), row.before);
    } else {
      EXPECT_EQ(indexed("f"), row.expected);
      EXPECT_EQ(worktree("f"), row.after);
    }
  }
}

// New, deleted and mode-changed files, in each mode: a line of a deletion leaves the file
// with that line in the index or, discarded, brings back that line; the whole hunk
// deletes or restores all of it; the mode goes with a staged line and leaves with an
// unstaged one, and discarding a line leaves it alone.
TEST_F(LineStagingTest, NewDeletedAndModeChangedFilesInEveryMode) {
  using M = SelectionMode;
  const struct {
    M mode;
    const char* file;
    const char* first;
    const char* last;
    const char* state;  // index mode | index | working file (x: executable)
  } rows[] = {
      {M::stage, "new.txt", "+\u00fc2", "+\u00fc2", "100644 | \u00fc2\n | n1\n\u00fc2\nn3\n"},
      {M::stage, "gone.txt", "-g2", "-g2", "100644 | g1\ng3\n | -"},
      {M::stage, "all-gone.txt", "-h1", "-h2", "- |  | -"},
      {M::stage, "run.sh", "+echo 3", "+echo 3", "100755 | echo 1\necho 2\necho 3\n | echo 1\necho 1.5\necho 2\necho 3\n x"},
      {M::unstage, "new.txt", "+\u00fc2", "+\u00fc2", "100644 | n1\nn3\n | n1\n\u00fc2\nn3\n"},
      {M::unstage, "gone.txt", "-g2", "-g2", "100644 | g2\n | -"},
      {M::unstage, "all-gone.txt", "-h1", "-h2", "100644 | h1\nh2\n | -"},
      {M::unstage, "run.sh", "+echo 3", "+echo 3", "100644 | echo 1\necho 1.5\necho 2\n | echo 1\necho 1.5\necho 2\necho 3\n x"},
      {M::discard, "new.txt", "+\u00fc2", "+\u00fc2", "- |  | n1\nn3\n"},
      {M::discard, "gone.txt", "-g2", "-g2", "100644 | g1\ng2\ng3\n | g2\n"},
      {M::discard, "all-gone.txt", "-h1", "-h2", "100644 | h1\nh2\n | h1\nh2\n"},
      {M::discard, "run.sh", "+echo 3", "+echo 3", "100644 | echo 1\necho 2\n | echo 1\necho 1.5\necho 2\n x"},
  };
  const auto state = [this](const QString& path) {
    QString mode = "-";
    for (const QString& entry : indexEntries()) {
      if (entry.endsWith(u' ' + path)) mode = entry.section(u' ', 0, 0);
    }
    const QString index = mode == "-" ? QString() : QString::fromUtf8(indexed(path));
    if (!exists(path)) return mode + " | " + index + " | -";
    const bool executable = QFile::permissions(repo().path() + u'/' + path) & QFileDevice::ExeOwner;
    return mode + " | " + index + " | " + QString::fromUtf8(worktree(path)) + (executable ? " x" : "");
  };
  std::optional<M> mode;
  for (const auto& row : rows) {
    SCOPED_TRACE(QStringLiteral("%1 in %2").arg(int(row.mode)).arg(row.file).toStdString());
    if (row.mode != mode) {
      mode = row.mode;
      freshRepository();
      repo().writeFile("gone.txt", lines({"g1", "g2", "g3"}));
      repo().writeFile("all-gone.txt", lines({"h1", "h2"}));
      repo().writeFile("run.sh", lines({"echo 1", "echo 2"}));
      repo().commit("base");
      repo().writeFile("new.txt", "n1\n\u00fc2\nn3\n");
      repo().removeFile("gone.txt");
      repo().removeFile("all-gone.txt");
      repo().writeExecutable("run.sh", lines({"echo 1", "echo 1.5", "echo 2", "echo 3"}));
      if (mode == M::unstage) repo().stageAll();
    }
    if (mode == M::unstage) {
      showStaged({"--", row.file});
    } else if (row.file == QStringLiteral("new.txt")) {
      showUntracked(row.file);
    } else {
      showUnstaged({"--", row.file});
    }
    apply(*mode, span(row.first, row.last));
    EXPECT_EQ(state(row.file), QString::fromUtf8(row.state));
  }
}

TEST_F(StageLines, FromADiffShownWithWhitespaceIgnored) {
  const QByteArray base = lines({"int a;", "int b;", "int c;", "int d;", "int e;", "int f;"});
  repo().commitFile("f", base, "base");
  const QByteArray edited = lines({"int a;", "int   b;", "int c;", "int d;", "int E;", "int f;"});
  repo().writeFile("f", edited);
  showUnstaged({"--ignore-all-space"});
  // The blank-only change is shown as context and must not reach the index.
  apply(SelectionMode::stage, span("-int e;", "+int E;"));
  EXPECT_EQ(indexed("f"), lines({"int a;", "int b;", "int c;", "int d;", "int E;", "int f;"}));
  EXPECT_EQ(worktree("f"), edited);

  // Context comes from the working tree; git apply matches runs of blanks, but not
  // blanks where the index has none. It refuses then, and the index stays as it was.
  freshRepository();
  repo().commitFile("f", base, "base");
  repo().writeFile("f", lines({"int a;", "    int b;", "int c;", "int d;", "int E;", "int f;"}));
  showUnstaged({"--ignore-all-space"});
  const XPatchPtr selected = selection(SelectionMode::stage, span("-int e;", "+int E;"));
  ASSERT_TRUE(selected);
  const auto result = ApplySelectionPatchGitCommand::execute(repo().module(), *selected, SelectionMode::stage);
  ASSERT_TRUE(result.isError<Error::GitUnknownError>());
  EXPECT_TRUE(result.errorAs<Error::GitUnknownError>()->error.contains(u"patch does not apply"));
  EXPECT_EQ(indexed("f"), base);
}

TEST_F(StageLines, EveryFileSelectedWholeStagesWhatGitAddWould) {
  repo().writeFile("one-line.txt", "only\n");
  repo().writeFile("tail.txt", "x\ny");
  repo().writeFile("gone.txt", "bye\n");
  repo().writeFile("tool.sh", "echo\n");
  repo().writeFile("long.txt", lines({"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}));
  repo().writeFile("dos.txt", "a\r\nb\r\nc\r\n");
  repo().commit("base");
  repo().writeFile("one-line.txt", "changed\n");
  repo().writeFile("tail.txt", "x\ny\nz\n");
  repo().removeFile("gone.txt");
  repo().writeExecutable("tool.sh", "echo 2\n");
  repo().writeFile("long.txt", lines({"one", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "zw\u00f6lf \U0001F600"}));
  repo().writeFile("dos.txt", "a\r\nB\r\nc\r\n");

  showUnstaged();
  ASSERT_EQ(view.files.size(), 6u);
  // Only the first file of a selection patch is applied, so one file at a time.
  const std::vector<PatchView::FilePatch> files = view.files;
  for (const PatchView::FilePatch& file : files) {
    SCOPED_TRACE(PatchViewBuilder::fileTitle(*file.node).toStdString());
    apply(SelectionMode::stage, std::pair{file.range.location, file.range.end()});
  }
  const QString staged = repo().git({"write-tree"}).trimmed();
  repo().stageAll();
  EXPECT_EQ(staged, repo().git({"write-tree"}).trimmed());
}
