#include <gtest/gtest.h>

#include <QTextBlock>

#include "Controls/Diff/DiffTextView.h"
#include "Models/PatchParser.h"
#include "Models/XPatch.h"
#include "support/TempRepository.h"

TEST(UnifiedDiffRows, NumbersFollowTheHunkAndNoNewlineIsShown) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("f.txt"), "one\ntwo\nthree\nfour\nfive\nsix\nseven\neight\nnine\nten\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral("f.txt"), "one\nTWO\nthree\nfour\nfive\nsix\nseven\neight\nnine\nten\neleven");
  const QString diff = repo.git({QStringLiteral("diff"), QStringLiteral("--no-color"), QStringLiteral("--unified=1")});
  const XPatchPtr patch = PatchParser().parse(diff, XFilePatch::Location::unstaged);
  ASSERT_TRUE(patch);
  ASSERT_EQ(patch->files.size(), 1u);
  const auto rows = unifiedDiffRows(patch->files[0]);
  using K = UnifiedDiffRow::Kind;
  std::vector<std::tuple<K, qint64, qint64, QString>> got;
  for (const auto& r : rows) got.emplace_back(r.kind, r.oldLine, r.newLine, r.text);
  const std::vector<std::tuple<K, qint64, qint64, QString>> expected = {
      {K::hunkHeader, 0, 0, QStringLiteral("@@ -1,3 +1,3 @@")},
      {K::context, 1, 1, QStringLiteral("one")},
      {K::removed, 2, 0, QStringLiteral("two")},
      {K::added, 0, 2, QStringLiteral("TWO")},
      {K::context, 3, 3, QStringLiteral("three")},
      {K::hunkHeader, 0, 0, QStringLiteral("@@ -10,1 +10,2 @@ nine")},
      {K::context, 10, 10, QStringLiteral("ten")},
      {K::added, 0, 11, QStringLiteral("eleven")},
      {K::noNewline, 0, 0, QStringLiteral("\\ No newline at end of file")},
  };
  EXPECT_EQ(got, expected);

  DiffTextView view;
  view.setRows(rows);
  EXPECT_EQ(view.document()->blockCount(), static_cast<int>(rows.size()));
  EXPECT_EQ(view.document()->findBlockByNumber(3).text(), QStringLiteral("+TWO"));
}
