#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "support/Conflicts.h"
#include "Git/Merge/MergeConflictParser.h"
#include "support/LogCapture.h"

namespace {

using Kind = MergeConflict::Chunk::Kind;

QString sideText(const std::vector<MergeConflict::SelectableLinePtr>& lines) {
  QString text;
  for (const auto& line : lines) text += line->isEmptyLine() ? "<empty>" : line->originalString;
  return text;
}

// What `git merge-file` makes of the index's three stages when every conflict takes one
// side: the same file the editor must produce by choosing that side everywhere.
QByteArray mergeFileFavoring(const TempRepository& repo, const QString& path, const QString& favor) {
  QTemporaryDir dir;
  const auto stage = [&](int number) {
    int status = 0;
    const QByteArray bytes = runProgram("git", {"show", QStringLiteral(":%1:%2").arg(number).arg(path)}, repo.path(), &status);
    const QString file = dir.filePath(QString::number(number));
    QFile out(file);
    out.open(QIODevice::WriteOnly);
    if (status == 0) out.write(bytes);
    return file;
  };
  int status = 0;
  return runProgram("git", {"merge-file", "-p", favor, stage(2), stage(1), stage(3)}, repo.path(), &status);
}

void chooseEverywhere(MergeConflict& conflict, MergeConflictPart side) {
  for (const auto& chunk : conflict.chunks) {
    if (chunk->kind() == Kind::conflict) static_cast<MergeConflict::ConflictChunk&>(*chunk).choose(side);
  }
}

}  // namespace

TEST(UnifiedMergeTokenizer, LinesByTheirMarks) {
  const QString text = QStringLiteral(
      "diff --cc x\n"
      "index 1,2..3\n"
      "  early\n"
      "@@@ -1,2 -1,2 +1,5 @@@\n"
      "  text\n"
      "++<<<<<<< HEAD\n"
      " +mine\n"
      "++||||||| abc\n"
      "++old\n"
      "++=======\n"
      "+ yours\n"
      "++>>>>>>> other (subject)\n"
      "- gone\n"
      "\\ No newline at end of file\n"
      "  last");
  const auto tokens = UnifiedMergeTokenizer().tokenize(text);
  ASSERT_TRUE(tokens);
  struct Expected {
    MergeTokenType type;
    ContextType remote;
    ContextType local;
    QString string;
  };
  const ContextType n = ContextType::none, a = ContextType::add, r = ContextType::remove;
  const std::vector<Expected> expected{
      {MergeTokenType::other, n, n, "diff --cc x\n"},
      {MergeTokenType::other, n, n, "index 1,2..3\n"},
      // A context-looking line before the first "@@@" is still header.
      {MergeTokenType::other, n, n, "  early\n"},
      {MergeTokenType::other, n, n, "@@@ -1,2 -1,2 +1,5 @@@\n"},
      {MergeTokenType::context, n, n, "text\n"},
      {MergeTokenType::conflictStart, n, n, "HEAD\n"},
      {MergeTokenType::context, n, a, "mine\n"},
      {MergeTokenType::baseStart, n, n, "abc"},
      {MergeTokenType::context, a, a, "old\n"},
      {MergeTokenType::conflictSeparator, n, n, QString()},
      {MergeTokenType::context, a, n, "yours\n"},
      {MergeTokenType::conflictEnd, n, n, "other (subject)\n"},
      // The marker behind it takes the line's newline away.
      {MergeTokenType::context, r, n, "gone"},
      {MergeTokenType::other, n, n, "\\ No newline at end of file\n"},
      {MergeTokenType::context, n, n, "last"},
  };
  ASSERT_EQ(tokens->size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ((*tokens)[i].type, expected[i].type);
    EXPECT_EQ((*tokens)[i].string, expected[i].string);
    if (expected[i].type == MergeTokenType::context) {
      EXPECT_EQ((*tokens)[i].remote, expected[i].remote);
      EXPECT_EQ((*tokens)[i].local, expected[i].local);
    }
  }
  EXPECT_EQ((*tokens)[4].start, text.indexOf("  text"));
  EXPECT_TRUE(UnifiedMergeTokenizer().tokenize(QString())->empty());
}

TEST(UnifiedMergeTokenizer, UnreadableLinesFailTheParse) {
  const struct {
    const char* text;
    const char* log;
  } cases[] = {
      {"@@@ -1 -1 +1 @@@\n++<<<<<<<", "Cannot parse chunk delimiter in '++<<<<<<<'"},
      {"@@@ -1 -1 +1 @@@\n++|||||||", "Cannot parse base sha in '++|||||||'"},
      {"@@@ -1 -1 +1 @@@\n +", "Cannot parse context line in ' +'"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    LogCapture log;
    EXPECT_FALSE(MergeConflictParser().parse("f", QString::fromUtf8(c.text)));
    EXPECT_TRUE(log.contains(QString::fromUtf8(c.log)));
    EXPECT_TRUE(log.contains("Cannot create tokens for 'f'"));
  }
}

TEST(MergeConflictParser, BrokenMarkerOrderIsRefused) {
  const QString head = "@@@ -1 -1 +1 @@@\n";
  const struct {
    QString body;
    const char* log;
  } cases[] = {
      {"++<<<<<<< a\n++<<<<<<< b\n", "Unexpected conflict start"},
      {"++<<<<<<< a\n++=======\n++=======\n", "Unexpected conflict separator"},
      {"++<<<<<<< a\n++=======\n++||||||| b\n", "Unexpected base start"},
      {"++<<<<<<< a\n++||||||| b\n++||||||| b\n", "Unexpected base start"},
      {"++<<<<<<< a\n +x\n++>>>>>>> b\n", "Unexpected conflict end"},
      {"++<<<<<<< a\n +x\n", "Unexpected conflict end"},
      {"++=======\n", "Unexpected token"},
      {"++>>>>>>> b\n", "Unexpected token"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.body.toStdString());
    LogCapture log;
    EXPECT_FALSE(MergeConflictParser().parse("f", head + c.body));
    EXPECT_TRUE(log.contains(QString::fromUtf8(c.log)));
  }
}

// Each kind of conflict real git makes, parsed; then every conflict resolved to one side
// must give what `git merge-file --ours/--theirs` gives for the same three stages.
TEST(MergeConflictParser, ConflictsOfRealOperations) {
  const QByteArray base = "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n";
  const QByteArray local = "1\n2 local\n3\n4\n5\n6\n7\n8\n9\n10\n11 local\n12\n";
  const QByteArray remote = "1\n2 remote\n3\n4\n5 remote\n6\n7\n8\n9\n10\n11 remote\n12\nadded remote\n";
  const struct {
    const char* name;
    ConflictSides sides;
    ConflictOperation operation;
    bool diff3;
    int conflicts;
    QString localName;
  } cases[] = {
      {"merge", {base, local, remote}, ConflictOperation::merge, false, 2, "HEAD\n"},
      {"merge diff3", {base, local, remote}, ConflictOperation::merge, true, 2, "HEAD\n"},
      {"cherry-pick", {base, local, remote}, ConflictOperation::cherryPick, false, 2, "HEAD\n"},
      {"rebase diff3", {base, local, remote}, ConflictOperation::rebase, true, 2, QString()},
      {"add/add",
       {std::nullopt, QByteArray("a\nsame\nb local\n"), QByteArray("a\nsame\nb remote\nc\n")},
       ConflictOperation::merge,
       false,
       1,
       "HEAD\n"},
      {"no newline at the end",
       {QByteArray("x\ny\nz"), QByteArray("x local\ny\nz"), QByteArray("x remote\ny\nz")},
       ConflictOperation::merge,
       false,
       1,
       "HEAD\n"},
      {"non-ASCII, blank in path",
       {QByteArray("ä\nß\n"), QByteArray("ä\nß lokal\n"), QByteArray("ä\nß fern\n")},
       ConflictOperation::merge,
       false,
       1,
       "HEAD\n"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TempRepository repo;
    const QString path = "dir/a file ü.txt";
    makeConflict(repo, path, c.sides, c.operation, c.diff3);
    const auto conflict = loadConflict(repo, path);
    ASSERT_TRUE(conflict);
    EXPECT_EQ(conflict->filepath, path);
    EXPECT_EQ(conflict->conflictCount(), c.conflicts);
    EXPECT_EQ(conflict->unresolvedConflictCount(), c.conflicts);
    bool sawConflict = false;
    for (const auto& chunk : conflict->chunks) {
      EXPECT_EQ(chunk->resultLines.empty(), chunk->kind() == Kind::conflict);
      if (chunk->kind() != Kind::conflict || sawConflict) continue;
      sawConflict = true;
      const auto& first = static_cast<const MergeConflict::ConflictChunk&>(*chunk);
      if (!c.localName.isEmpty()) {
        EXPECT_EQ(first.localName, c.localName);
      }
      // Base lines of the diff3 style are not a side.
      EXPECT_FALSE(sideText(first.localLines).contains("\n2\n"));
      for (const auto& line : first.localLines) EXPECT_EQ(line->viewMode, MergeConflictPart::local);
      for (const auto& line : first.remoteLines) EXPECT_EQ(line->viewMode, MergeConflictPart::remote);
    }
    // Lines git merged on its own stand on the side they come from, chosen when the
    // merge kept them.
    const QString result = QString::fromUtf8(repo.readFile(path));
    for (const auto& chunk : conflict->chunks) {
      if (chunk->kind() != Kind::change) continue;
      const auto& change = static_cast<const MergeConflict::ChangeChunk&>(*chunk);
      for (const auto& [lines, stage] : {std::pair{&change.localLines, 2}, std::pair{&change.remoteLines, 3}}) {
        const QString side = "\n" + repo.git({"show", QStringLiteral(":%1:%2").arg(stage).arg(path)});
        for (const auto& line : *lines) {
          const QString text = line->originalString.endsWith(u'\n') ? line->originalString : line->originalString + u'\n';
          EXPECT_TRUE(side.contains(u'\n' + text)) << stage << ": " << text.toStdString();
          EXPECT_EQ(line->isSelected, (u'\n' + result).contains(u'\n' + text)) << text.toStdString();
        }
      }
    }
    chooseEverywhere(*conflict, MergeConflictPart::local);
    EXPECT_EQ(conflict->unresolvedConflictCount(), 0);
    EXPECT_EQ(conflict->resultText().toUtf8(), mergeFileFavoring(repo, path, "--ours"));
    chooseEverywhere(*conflict, MergeConflictPart::remote);
    EXPECT_EQ(conflict->resultText().toUtf8(), mergeFileFavoring(repo, path, "--theirs"));
  }
}

TEST(MergeConflictParser, SidesOfOneConflict) {
  TempRepository repo;
  makeConflict(repo, "f", {QByteArray("a\nb\nc\n"), QByteArray("a\nL1\nL2\nc\n"), QByteArray("a\nc\n")}, ConflictOperation::merge,
               true);
  const auto conflict = loadConflict(repo, "f");
  ASSERT_TRUE(conflict);
  ASSERT_EQ(conflict->chunks.size(), 3u);
  const auto& chunk = static_cast<const MergeConflict::ConflictChunk&>(*conflict->chunks[1]);
  ASSERT_EQ(chunk.kind(), Kind::conflict);
  EXPECT_EQ(sideText(chunk.localLines), "L1\nL2\n");
  // The remote side deleted the line: it gets one empty line to be chosen by.
  EXPECT_EQ(sideText(chunk.remoteLines), "<empty>");
  EXPECT_EQ(chunk.remoteName, "theirs\n");
  EXPECT_EQ(chunk.rowCount(), 2);
}

TEST(MergeConflictParser, SideDeletedFileHasNoLinesToMerge) {
  TempRepository repo;
  makeConflict(repo, "f", {QByteArray("a\n"), std::nullopt, QByteArray("a changed\n")});
  const auto result = LoadMergeConflict::execute(repo.module(), "f");
  ASSERT_TRUE(result.isFailure());
  EXPECT_TRUE(result.isError<Error::Generic>());
}
