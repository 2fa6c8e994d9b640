#include <gtest/gtest.h>

#include "DiffFixture.h"
#include "Models/PatchParser.h"
#include "support/LogCapture.h"

namespace {

XPatchPtr parse(const QString& text, XFilePatch::Location location = XFilePatch::Location::unstaged) {
  return PatchParser().parse(text, location);
}

QStringList texts(const XChangedLineList& lines) {
  QStringList result;
  for (const auto& line : lines) result << line->line;
  return result;
}

// A sub-chunk's four runs of lines, each as one text: before, removed, added, after.
QStringList parts(const XSubChunk& sub) {
  QStringList result;
  for (const auto* list : {&sub.preContextLines, &sub.removedLines, &sub.addedLines, &sub.postContextLines})
    result << texts(*list).join(QString());
  return result;
}

std::vector<qint64> range(const XChunk& chunk) { return {chunk.fromStart, chunk.fromLength, chunk.toStart, chunk.toLength}; }

QStringList flags(const XChangedLineList& lines) {
  QStringList result;
  for (const auto& line : lines) result << (line->noNewLineAtEndOfFile ? "flag" : "-");
  return result;
}

QByteArray numberedLines(int count, const QByteArray& prefix = "line ") {
  QByteArray text;
  for (int i = 1; i <= count; ++i) text += prefix + QByteArray::number(i) + '\n';
  return text;
}

// "old -> new oldmode -> newmode similarity, n chunks" with '-' for what is missing.
QString header(const XFilePatch& file) {
  const auto mode = [](const std::optional<FileMode>& m) { return m ? QString::number(m->rawValue) : "-"; };
  const QString similarity = file.similarity ? QStringLiteral(" %1%").arg(*file.similarity) : QString();
  return QStringLiteral("%1 -> %2 %3 -> %4%5, %6 chunks")
      .arg(file.oldFilepath.value_or("-"), file.newFilepath.value_or("-"), mode(file.oldFileMode), mode(file.newFileMode),
           similarity)
      .arg(file.chunks.size());
}

const XFilePatch* fileNamed(const XPatch& patch, const QString& name) {
  for (const XFilePatch& file : patch.files) {
    if (file.newFilepath == name || (!file.newFilepath && file.oldFilepath == name)) return &file;
  }
  return nullptr;
}

}  // namespace

TEST(PatchParser, FoldsAModifiedFileIntoChunksAndSubChunks) {
  TempRepository repo;
  QByteArray text = numberedLines(30);
  repo.commitFile("f.txt", text, "base");
  text.replace("line 3\n", "line three\n");
  text.replace("line 6\n", "line 6\ninserted\n");
  text.replace("line 25\n", "");
  repo.writeFile("f.txt", text);

  const QString diff = DiffFixture::diff(repo);
  const XPatchPtr patch = parse(diff, XFilePatch::Location::unstaged);
  ASSERT_TRUE(patch);
  ASSERT_EQ(patch->files.size(), 1u);
  const XFilePatch& file = patch->files.front();
  // Lines 3 and 6 are close enough to share a hunk; line 25 has its own.
  EXPECT_EQ(header(file), "f.txt -> f.txt 100644 -> 100644, 2 chunks");
  EXPECT_EQ(file.oldTreeIsh.size(), 40);
  EXPECT_EQ(file.treeIsh, repo.git({"hash-object", "f.txt"}).trimmed());
  EXPECT_EQ(file.location, XFilePatch::Location::unstaged);
  EXPECT_FALSE(file.isMinified);
  EXPECT_EQ(patch->changedLinesCount(), 4);

  ASSERT_EQ(file.chunks.size(), 2u);
  const XChunk& first = *file.chunks[0];
  EXPECT_EQ(range(first), (std::vector<qint64>{1, 9, 1, 10}));
  ASSERT_EQ(first.subChunks.size(), 2u);
  // Context between two changes is the first one's post-context.
  EXPECT_EQ(parts(*first.subChunks[0]),
            (QStringList{"line 1\nline 2\n", "line 3\n", "line three\n", "line 4\nline 5\nline 6\n"}));
  EXPECT_EQ(parts(*first.subChunks[1]), (QStringList{"", "", "inserted\n", "line 7\nline 8\nline 9\n"}));
  const XChunk& second = *file.chunks[1];
  EXPECT_EQ(range(second), (std::vector<qint64>{22, 7, 23, 6}));
  ASSERT_EQ(second.subChunks.size(), 1u);
  EXPECT_EQ(parts(*second.subChunks[0]),
            (QStringList{"line 22\nline 23\nline 24\n", "line 25\n", "", "line 26\nline 27\nline 28\n"}));
}

TEST(PatchParser, ReadsTheFileHeadersOfRealDiffs) {
  TempRepository repo;
  repo.writeFile("deleted.txt", numberedLines(3));
  repo.writeFile("renamed-old.txt", numberedLines(20));
  repo.writeFile("source.txt", numberedLines(20, "copy me "));
  repo.writeFile("script.sh", "echo one\n");
  repo.writeFile("mode-only.sh", "echo two\n");
  repo.writeFile("data.bin", QByteArray("\0\1\2\3", 4));
  repo.writeFile("name with blank.txt", "x\n");
  repo.writeFile("\u00fcnic\u00f6de.txt", "x\n");
  repo.commit("base");

  repo.writeFile("created.txt", "new\n");
  repo.removeFile("deleted.txt");
  QByteArray renamed = numberedLines(20);
  renamed.replace("line 10\n", "line ten\n");
  repo.removeFile("renamed-old.txt");
  repo.writeFile("renamed-new.txt", renamed);
  QByteArray copied = numberedLines(20, "copy me ");
  copied.replace("copy me 5\n", "copied 5\n");
  repo.writeFile("copy.txt", copied);
  repo.writeFile("script.sh", "echo one\necho more\n");
  repo.writeFile("data.bin", QByteArray("\0\1\2\4", 4));
  repo.writeFile("name with blank.txt", "y\n");
  repo.writeFile("\u00fcnic\u00f6de.txt", "y\n");
  repo.git({"add", "-A"});
  repo.git({"update-index", "--chmod=+x", "script.sh", "mode-only.sh"});

  LogCapture log;
  const XPatchPtr patch = parse(DiffFixture::stagedDiff(repo, {"-C", "--find-copies-harder"}), XFilePatch::Location::staged);
  ASSERT_TRUE(patch);

  // A binary file has no chunk lines, so no paths; the index line still gives the mode.
  // A pure mode change prints no index line and drops out with a log line.
  QStringList headers;
  for (const XFilePatch& file : patch->files) {
    EXPECT_EQ(file.location, XFilePatch::Location::staged);
    headers << header(file);
  }
  headers.sort();
  EXPECT_EQ(headers, (QStringList{"- -> - 100644 -> 100644, 0 chunks",
                                  "- -> created.txt - -> 100644, 1 chunks",
                                  "deleted.txt -> - 100644 -> -, 1 chunks",
                                  "name with blank.txt -> name with blank.txt 100644 -> 100644, 1 chunks",
                                  "renamed-old.txt -> renamed-new.txt 100644 -> 100644 94%, 1 chunks",
                                  "script.sh -> script.sh 100644 -> 100755, 1 chunks",
                                  "source.txt -> copy.txt 100644 -> 100644 95%, 1 chunks",
                                  "\u00fcnic\u00f6de.txt -> \u00fcnic\u00f6de.txt 100644 -> 100644, 1 chunks"}));
  EXPECT_EQ(log.messages(AdvancedLogger::Level::error), QStringList{"File patch parsing failed! File index not found."});

  const XFilePatch* created = fileNamed(*patch, "created.txt");
  EXPECT_EQ(created->oldTreeIsh, QString(40, u'0'));
  EXPECT_EQ(created->chunks[0]->fromStart, 0);
  EXPECT_EQ(texts(created->chunks[0]->subChunks[0]->addedLines), QStringList{"new\n"});
  EXPECT_EQ(fileNamed(*patch, "deleted.txt")->chunks[0]->subChunks[0]->removedLines.size(), 3u);
  EXPECT_EQ(texts(fileNamed(*patch, "renamed-new.txt")->chunks[0]->subChunks[0]->addedLines), QStringList{"line ten\n"});
  EXPECT_EQ(texts(fileNamed(*patch, "script.sh")->chunks[0]->subChunks[0]->addedLines), QStringList{"echo more\n"});
}

TEST(PatchParser, SubmoduleAndLfsPointerDiffsAreTextDiffs) {
  TempRepository sub(true, "sub");
  const QString first = sub.commitFile("s.txt", "1\n", "one");
  const QString second = sub.commitFile("s.txt", "2\n", "two");

  TempRepository repo;
  const QString oid1 = QString(64, u'a'), oid2 = QString(64, u'b');
  const auto pointer = [](const QString& oid, int size) {
    return QStringLiteral("version https://git-lfs.github.com/spec/v1\noid sha256:%1\nsize %2\n").arg(oid).arg(size).toUtf8();
  };
  repo.writeFile("image.png", pointer(oid1, 1200));
  repo.git({"-c", "protocol.file.allow=always", "submodule", "add", "-q", sub.path(), "module"});
  repo.git({"-C", "module", "checkout", "-q", first});
  repo.commit("base");
  repo.git({"-C", "module", "checkout", "-q", second});
  repo.writeFile("image.png", pointer(oid2, 2400));

  const XPatchPtr patch = parse(DiffFixture::diff(repo));
  ASSERT_TRUE(patch);
  ASSERT_EQ(patch->files.size(), 2u);
  const XFilePatch* image = fileNamed(*patch, "image.png");
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(parts(*image->chunks[0]->subChunks[0]).mid(1, 2),
            (QStringList{"oid sha256:" + oid1 + "\nsize 1200\n", "oid sha256:" + oid2 + "\nsize 2400\n"}));

  const XFilePatch* module = fileNamed(*patch, "module");
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(module->oldFileMode, FileMode{160000});
  EXPECT_EQ(module->newFileMode, FileMode{160000});
  EXPECT_EQ(module->oldTreeIsh, first);
  EXPECT_EQ(module->treeIsh, second);
  // "@@ -1 +1 @@": the counts git left out read as 0.
  ASSERT_EQ(module->chunks.size(), 1u);
  EXPECT_EQ(range(*module->chunks[0]), (std::vector<qint64>{1, 0, 1, 0}));
  EXPECT_EQ(parts(*module->chunks[0]->subChunks[0]),
            (QStringList{"", "Subproject commit " + first + "\n", "Subproject commit " + second + "\n", ""}));
}

TEST(PatchParser, FlagsTheLineThatHasNoNewlineAtTheEnd) {
  struct Row {
    const char* name;
    QByteArray before, after;
    QStringList removedFlags, addedFlags, postFlags;
  };
  const Row rows[] = {
      {"newline taken away", "a\nb\n", "a\nc", {"-"}, {"flag"}, {}},
      {"newline added", "a\nb", "a\nb\n", {"flag"}, {"-"}, {}},
      {"neither side has one", "a\nb", "a\nc", {"flag"}, {"flag"}, {}},
      {"last line is unchanged context", "a\nb\nc\nd", "A\nb\nc\nd", {"-"}, {"-"}, {"-", "-", "flag"}},
  };
  // One file a row, all in one diff.
  TempRepository repo;
  for (const Row& row : rows) repo.writeFile(row.name, row.before);
  repo.commit("base");
  for (const Row& row : rows) repo.writeFile(row.name, row.after);
  const XPatchPtr patch = parse(DiffFixture::diff(repo));
  ASSERT_TRUE(patch);
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const XFilePatch* file = fileNamed(*patch, row.name);
    ASSERT_TRUE(file);
    ASSERT_EQ(file->chunks.size(), 1u);
    ASSERT_EQ(file->chunks[0]->subChunks.size(), 1u);
    const XSubChunk& sub = *file->chunks[0]->subChunks[0];
    EXPECT_EQ(flags(sub.removedLines), row.removedFlags);
    EXPECT_EQ(flags(sub.addedLines), row.addedFlags);
    EXPECT_EQ(flags(sub.postContextLines), row.postFlags);
    ASSERT_TRUE(sub.noNewLineAtEndOfFileLine);
    EXPECT_EQ(sub.noNewLineAtEndOfFileLine->line, "No newline at end of file\n");
    EXPECT_FALSE(sub.noNewLineAtEndOfFileLine->noNewLineAtEndOfFile);
    // The flagged line keeps the newline that the diff text gave it.
    for (const auto* list : {&sub.removedLines, &sub.addedLines, &sub.postContextLines}) {
      for (const auto& line : *list) EXPECT_TRUE(line->line.endsWith(u'\n'));
    }
  }

  // Context alone never takes the marker: a chunk without changes stays unflagged.
  const XPatchPtr contextOnly = parse(QStringLiteral(
      "diff --git a/f b/f\nindex 1..2 100644\n--- a/f\n+++ b/f\n@@ -1,2 +1,2 @@\n a\n b\n\\ No newline at end of file\n"));
  ASSERT_TRUE(contextOnly);
  const XSubChunk& sub = *contextOnly->files.at(0).chunks.at(0)->subChunks.at(0);
  EXPECT_EQ(flags(sub.preContextLines), (QStringList{"-", "-"}));
  EXPECT_FALSE(sub.noNewLineAtEndOfFileLine);
}

TEST(PatchParser, MarksFilesWithLinesLongerThan2047Characters) {
  // A combining accent makes two UTF-16 units one character: length alone would lie.
  const QByteArray accented = QString("e\u0301").toUtf8();
  struct Row {
    const char* name;
    QByteArray line;
    bool minified;
  };
  const Row rows[] = {
      {"2047 characters and a newline", QByteArray(2047, 'x') + '\n', true},
      {"2046 characters and a newline", QByteArray(2046, 'x') + '\n', false},
      {"2048 characters, no newline", QByteArray(2048, 'x'), true},
      {"2046 accented characters (4092 UTF-16 units)", accented.repeated(2046) + '\n', false},
  };
  // One file a row, all in one diff.
  TempRepository repo;
  for (const Row& row : rows) repo.writeFile(row.name, "short\nkeep\n");
  repo.commit("base");
  for (const Row& row : rows) repo.writeFile(row.name, "short\nkeep\n" + row.line);
  const XPatchPtr patch = parse(DiffFixture::diff(repo));
  ASSERT_TRUE(patch);
  ASSERT_EQ(patch->files.size(), std::size(rows));
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const XFilePatch* file = fileNamed(*patch, row.name);
    ASSERT_TRUE(file);
    EXPECT_EQ(file->isMinified, row.minified);
    // The diff text ends every line, even the one that has no newline in the file.
    const QByteArray printed = row.line.endsWith('\n') ? row.line : row.line + '\n';
    EXPECT_EQ(file->chunks[0]->subChunks[0]->addedLines.at(0)->line, QString::fromUtf8(printed));
  }
}

TEST(PatchParser, ReadsPathLinesAsTheyArePrinted) {
  struct Row {
    const char* name;
    QString line;  // as the tokenizer keeps it: without the first column
    std::optional<QString> path;
  };
  const Row rows[] = {
      {"plain", "++ b/dir/name.txt\n", "dir/name.txt"},
      {"blank in the name, tab behind", "++ b/dir/name with blank\t\n", "dir/name with blank"},
      {"removed side", "-- a/x\n", "x"},
      {"created file", "-- /dev/null\n", std::nullopt},
      {"no newline", "++ b/last", "last"},
      {"quoted, letters beyond ASCII", "++ \"b/d\\303\\251j\\303\\240 vu.txt\"\n", "d\u00e9j\u00e0 vu.txt"},
      // The search covers as many units as there are characters: three characters of
      // two units each cost the path its last one.
      {"outside the 16-bit range", "++ b/\U0001D49C\U0001D49C\U0001D49C\n", "\U0001D49C\U0001D49C"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(PatchParser::pathOfHeaderLine(row.line), row.path);
  }
}

TEST(PatchParser, SplitsFilesAndChunksAtTheRightTokens) {
  const QString text = QStringLiteral(
      "diff --git a/one b/one\n"
      "index 1111111..2222222 100644\n"
      "--- a/one\n"
      "+++ b/one\n"
      "@@ -1,2 +1,2 @@\n"
      "-a\n"
      "+b\n"
      " c\n"
      "\n"
      "@@ -10,1 +10,2 @@\n"
      " x\n"
      "+y\n"
      "diff --git a/two b/two\n"
      "new file mode 100755\n"
      "index 0000000..3333333\n"
      "--- /dev/null\n"
      "+++ b/two\n"
      "@@ -0,0 +1 @@\n"
      "+z\n");
  const XPatchPtr patch = parse(text, XFilePatch::Location::revision);
  ASSERT_TRUE(patch);
  ASSERT_EQ(patch->files.size(), 2u);
  const XFilePatch& one = patch->files[0];
  // The empty line ends the first chunk but not the file.
  ASSERT_EQ(one.chunks.size(), 2u);
  EXPECT_EQ(parts(*one.chunks[0]->subChunks[0]), (QStringList{"", "a\n", "b\n", "c\n"}));
  EXPECT_EQ(parts(*one.chunks[1]->subChunks[0]), (QStringList{"x\n", "", "y\n", ""}));
  EXPECT_EQ(header(patch->files[1]), "- -> two - -> 100755, 1 chunks");
  EXPECT_EQ(patch->files[1].location, XFilePatch::Location::revision);
  EXPECT_EQ(patch->changedLinesCount(), 4);

  // Changes after trailing context start a new sub-chunk, removals after additions don't.
  const XPatchPtr mixed = parse(QStringLiteral(
      "diff --git a/m b/m\nindex 1..2 100644\n--- a/m\n+++ b/m\n@@ -1,6 +1,6 @@\n a\n+b\n-c\n d\n-e\n+f\n g\n"));
  ASSERT_TRUE(mixed);
  const auto& subs = mixed->files.at(0).chunks.at(0)->subChunks;
  ASSERT_EQ(subs.size(), 2u);
  EXPECT_EQ(parts(*subs[0]), (QStringList{"a\n", "c\n", "b\n", "d\n"}));
  EXPECT_EQ(parts(*subs[1]), (QStringList{"", "e\n", "f\n", "g\n"}));
}

TEST(PatchParser, SurvivesTruncatedAndHostileInput) {
  TempRepository repo;
  repo.writeFile("a.txt", numberedLines(40));
  repo.writeFile("b.txt", "b\nb");
  repo.commit("base");
  QByteArray a = numberedLines(40);
  a.replace("line 2\n", "two\n");
  a.replace("line 30\n", "thirty\n");
  repo.writeFile("a.txt", a);
  repo.writeFile("b.txt", "b\nc");
  repo.writeFile("c.txt", "new\n");
  repo.stageAll();
  const QString full = DiffFixture::stagedDiff(repo);
  const XPatchPtr whole = parse(full);
  ASSERT_TRUE(whole);
  ASSERT_EQ(whole->files.size(), 3u);

  // Every cut either fails as a whole or gives a prefix of the files, never more lines.
  for (qsizetype cut = 0; cut <= full.size(); ++cut) {
    const XPatchPtr part = parse(full.left(cut));
    if (!part) continue;
    ASSERT_LE(part->files.size(), whole->files.size()) << "cut at " << cut;
    ASSERT_LE(part->changedLinesCount(), whole->changedLinesCount()) << "cut at " << cut;
    for (size_t i = 0; i < part->files.size(); ++i) {
      // A cut inside a path line shortens the path, it never invents one. (A cut index
      // line can still parse: "index 0000" reads as "0", any two characters, "0".)
      const XFilePatch& cutFile = part->files[i];
      if (cutFile.newFilepath) {
        ASSERT_TRUE(whole->files[i].newFilepath.value_or(QString()).startsWith(*cutFile.newFilepath)) << cut;
      }
    }
  }

  struct Row {
    const char* name;
    QString text;
    int files;
  };
  const Row rows[] = {
      {"no diff at all", "hello\nworld\n", 0},
      {"header only", "diff --git a/x b/x\n", 0},
      {"lines before any header", "+a\n-b\n c\n@@ -1 +1 @@\n+x\n", 0},
      {"index without mode", "diff --git a/x b/x\nindex 1..2\n--- a/x\n+++ b/x\n@@ -1 +1 @@\n-a\n+b\n", 0},
      {"pragma right after the header", "diff --git a/x b/x\nindex 1..2 100644\n\\ No newline at end of file\n", 1},
      {"pragma that is something else", "diff --git a/x b/x\nindex 1..2 100644\n@@ -1 +1 @@\n-a\n\\ something\n+b\n", 1},
      {"chunk headers back to back", "diff --git a/x b/x\nindex 1..2 100644\n@@ -1 +1 @@\n@@ -2 +2 @@\n+b\n", 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const XPatchPtr patch = parse(row.text);
    ASSERT_TRUE(patch);
    EXPECT_EQ(int(patch->files.size()), row.files);
  }
  const XPatchPtr backToBack = parse(rows[6].text);
  ASSERT_EQ(backToBack->files[0].chunks.size(), 2u);
  EXPECT_TRUE(backToBack->files[0].chunks[0]->subChunks.empty());
  const XPatchPtr otherPragma = parse(rows[5].text);
  EXPECT_EQ(parts(*otherPragma->files[0].chunks[0]->subChunks[0]), (QStringList{"", "a\n", "b\n", ""}));
  EXPECT_FALSE(otherPragma->files[0].chunks[0]->subChunks[0]->noNewLineAtEndOfFileLine);
}
