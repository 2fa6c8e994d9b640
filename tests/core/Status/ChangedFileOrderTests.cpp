#include <gtest/gtest.h>

#include <random>

#include "Extensions/NaturalCompare.h"
#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "StatusTestSupport.h"

namespace {

using ChangeType = ChangedFile::ChangeType;

int sign(int value) { return (value > 0) - (value < 0); }

TEST(NaturalCompareTest, IgnoresCaseAndComparesDigitRunsAsNumbers) {
  struct Row {
    const char16_t* a;
    const char16_t* b;
    int expected;
  };
  const Row rows[] = {
      {u"file2", u"file10", -1},
      {u"File2", u"file10", -1},
      {u"a", u"B", -1},
      {u"README", u"readme", 0},
      {u"x07", u"x7", 0},
      {u"x007y", u"x7z", -1},
      {u"abc", u"abcd", -1},
      {u"9", u"10", -1},
      {u"a1b2", u"a1b10", -1},
      {u"v1.10.0", u"v1.9.3", 1},
      {u"123456789012345678901234567890", u"123456789012345678901234567891", -1},  // past 64 bits
      {u"\u00e4pfel", u"\u00c4PFEL", 0},
      {u"\u00e4", u"z", 1},
      {u"dir/a", u"dir-a", 1},  // '/' sorts after '-', as its code says
      {u"", u"a", -1},
  };
  for (const Row& row : rows) {
    const QString a = QString::fromUtf16(row.a);
    const QString b = QString::fromUtf16(row.b);
    EXPECT_EQ(sign(NaturalCompare::compare(a, b)), row.expected) << a.toStdString() << " vs " << b.toStdString();
    EXPECT_EQ(sign(NaturalCompare::compare(b, a)), -row.expected) << b.toStdString() << " vs " << a.toStdString();
    QString keyA;
    QString keyB;
    NaturalCompare::appendSortKey(a, keyA);
    NaturalCompare::appendSortKey(b, keyB);
    EXPECT_EQ(sign(NaturalCompare::compareKeys(keyA, keyB)), row.expected) << a.toStdString() << " vs " << b.toStdString();
  }
}

// The sort compares keys; they must order exactly as the comparison does, for any text.
TEST(NaturalCompareTest, SortKeysOrderAsTheComparison) {
  std::mt19937 random(11);
  const QString alphabet = "0001239aAzZ-/. \u00e4\u00c4\u00df\u1e9e";
  std::uniform_int_distribution<int> length(0, 7);
  std::uniform_int_distribution<int> pick(0, alphabet.size() - 1);
  const auto text = [&] {
    QString t;
    for (int n = length(random); n > 0; --n) t += alphabet[pick(random)];
    return t;
  };
  for (int i = 0; i < 20000; ++i) {
    const QString a = text();
    const QString b = text();
    QString keys = "prefix";  // keys are appended to a shared buffer
    const qsizetype startA = keys.size();
    NaturalCompare::appendSortKey(a, keys);
    const qsizetype startB = keys.size();
    NaturalCompare::appendSortKey(b, keys);
    const QStringView all(keys);
    ASSERT_EQ(sign(NaturalCompare::compareKeys(all.sliced(startA, startB - startA), all.sliced(startB))),
              sign(NaturalCompare::compare(a, b)))
        << a.toStdString() << " vs " << b.toStdString();
  }
}

ChangedFilePtr file(const QString& path, ChangeType type, bool staged, std::optional<QString> oldPath = {},
                    std::optional<QString> tag = {}) {
  return std::make_shared<const ChangedFile>(std::move(oldPath), path, type, staged, true, false, false, std::move(tag));
}

TEST(ChangedFileOrderTest, PathThenSideThenTypeThenSource) {
  ChangedFileList files{
      file("b", ChangeType::modified, true),        file("a10", ChangeType::modified, false),
      file("b", ChangeType::renamed, false, "old"), file("b", ChangeType::deleted, false),
      file("A2", ChangeType::added, true),          file("b", ChangeType::renamed, false),
      file("b", ChangeType::modified, false),
  };
  GetChangedFilesGitCommand::sort(files);
  EXPECT_EQ(describe(files),
            (QStringList{"staged added 'A2'", "unstaged modified 'a10'", "unstaged modified 'b'", "unstaged deleted 'b'",
                         "unstaged renamed 'b'", "unstaged renamed 'b' from 'old'", "staged modified 'b'"}));
}

// Entries that compare equal (paths differing in case only) keep git's order, so a
// list does not shuffle between two refreshes. That the sort's keys order as the
// comparison does is SortKeysOrderAsTheComparison's; enough equal entries here make an
// unstable sort move some.
TEST(ChangedFileOrderTest, EqualEntriesKeepGitsOrder) {
  ChangedFileList files;
  QStringList order;
  for (int i = 0; i < 200; ++i) {
    order << QString::number(i);
    files.push_back(file(i % 3 ? "ReadMe" : "README", ChangeType::modified, false, std::nullopt, order.back()));
  }
  GetChangedFilesGitCommand::sort(files);
  QStringList sorted;
  for (const ChangedFilePtr& f : files) sorted << *f->treeIsh;
  EXPECT_EQ(sorted, order);
}

}  // namespace
