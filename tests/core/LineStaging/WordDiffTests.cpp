#include <gtest/gtest.h>

#include <QStringList>

#include "Models/PatchParser.h"
#include "Models/PatchViewBuilder.h"
#include "Models/WordDiff.h"

namespace {

// The text under each mark.
QStringList marked(const PatchView::Document& document) {
  QStringList texts;
  for (const PatchView::Range& span : WordDiff::changedSpans(document.files)) texts << document.text.mid(span.location, span.length);
  return texts;
}

const QString diff = QStringLiteral(
    "diff --git a/f.c b/f.c\n"
    "index 1111111..2222222 100644\n"
    "--- a/f.c\n"
    "+++ b/f.c\n"
    "@@ -1,7 +1,6 @@\n"
    " int main() {\n"
    "-  int a = 1;\r\n"
    "-  return a;\n"
    "+  int a = 42;\r\n"
    "   puts(\"x\");\n"
    "-  old();\n"
    "+  entirely new\n"
    "-  while (i < line.size()) ++i;\n"
    "+  const bool quoted = line[i] == 'x';\n"
    " }\n");

}  // namespace

// Paired lines mark what lies between their common beginning and end; an unpaired
// line, a pair with only blanks or little else in common and a minified file get no mark.
TEST(WordDiff, MarksThePartOfAPairedLineThatChanged) {
  const XPatchPtr patch = PatchParser().parse(diff, XFilePatch::Location::unstaged);
  ASSERT_TRUE(patch);
  const PatchView::Document unified = PatchViewBuilder::unified(patch);
  EXPECT_EQ(marked(unified), (QStringList{"1", "42"}));

  // Each side of the side-by-side layout marks its own lines only.
  const PatchViewBuilder::SideBySide sides = PatchViewBuilder::sideBySide(patch);
  EXPECT_EQ(marked(sides.left), QStringList{"1"});
  EXPECT_EQ(marked(sides.right), QStringList{"42"});

  XPatch minified = *patch;
  minified.files.front().isMinified = true;
  EXPECT_TRUE(WordDiff::changedSpans(PatchViewBuilder::unified(std::make_shared<const XPatch>(minified)).files).empty());
}
