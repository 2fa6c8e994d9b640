#include "StagingFixture.h"

using DiscardLines = LineStagingTest;

TEST_F(DiscardLines, AddedAndRemovedLinesOfAModifiedBlock) {
  const QByteArray base = lines({"l1", "l2", "l3", "l4", "l5", "l6", "l7", "l8"});
  repo().commitFile("f", base, "base");
  repo().writeFile("f", lines({"l1", "l2", "A", "B", "C", "l6", "l7", "l8"}));

  showUnstaged();
  const XPatchPtr one = selection(SelectionMode::discard, span("+B", "+B"));
  ASSERT_TRUE(one);
  const auto confirmation = SelectionPatch::discardConfirmation(*one);
  ASSERT_TRUE(confirmation);
  EXPECT_EQ(confirmation->confirmButtonTitle, "Discard Line");
  apply(SelectionMode::discard, "+B");
  EXPECT_EQ(worktree("f"), lines({"l1", "l2", "A", "C", "l6", "l7", "l8"}));
  EXPECT_EQ(indexed("f"), base);

  // A removed line comes back into the file, in front of the lines that replaced it.
  showUnstaged();
  apply(SelectionMode::discard, "-l4");
  EXPECT_EQ(worktree("f"), lines({"l1", "l2", "l4", "A", "C", "l6", "l7", "l8"}));

  showUnstaged();
  const auto all = span("-l3", "+C");
  apply(SelectionMode::discard, all);
  EXPECT_EQ(worktree("f"), base);
}

TEST_F(DiscardLines, ContextInTheSelectionChangesNothing) {
  const QByteArray base = numbered(20);
  repo().commitFile("f", base, "base");
  QByteArray changed = base;
  changed.replace("l3\n", "X\n");
  changed.replace("l15\n", "Y\n");
  repo().writeFile("f", changed);
  showUnstaged();
  ASSERT_EQ(view.files.at(0).chunks.size(), 2u);

  // Context alone: nothing to discard, nothing to ask.
  EXPECT_FALSE(selection(SelectionMode::discard, span(" l1", " l2")));
  // From the trailing context of the first hunk into the second: only the second counts.
  const auto drag = span(" l6", "+Y");
  const XPatchPtr selected = selection(SelectionMode::discard, drag);
  ASSERT_TRUE(selected);
  EXPECT_EQ(selected->files.at(0).chunks.size(), 1u);
  EXPECT_EQ(SelectionPatch::discardConfirmation(*selected)->confirmButtonTitle, "Discard 2 Lines");
  apply(SelectionMode::discard, drag);
  QByteArray expected = changed;
  expected.replace("Y\n", "l15\n");
  EXPECT_EQ(worktree("f"), expected);
  // A selection outside every file gives no patch at all.
  EXPECT_FALSE(selection(SelectionMode::discard, {view.text.size() + 10, view.text.size() + 20}));
}

TEST_F(DiscardLines, FromADiffShownWithWhitespaceIgnored) {
  repo().commitFile("f", lines({"a();", "b();", "c();", "d();", "e();"}), "base");
  repo().writeFile("f", lines({"a();", "    b();", "c();", "d();", "E();"}));
  showUnstaged({"--ignore-all-space"});
  apply(SelectionMode::discard, span("-e();", "+E();"));
  // The blank-only change was never shown, and it stays.
  EXPECT_EQ(worktree("f"), lines({"a();", "    b();", "c();", "d();", "e();"}));
}

TEST_F(DiscardLines, ReportsALockedIndexAndAStaleView) {
  repo().commitFile("f", lines({"a", "b", "c"}), "base");
  repo().writeFile("f", lines({"a", "B", "c"}));
  showUnstaged();
  const XPatchPtr selected = selection(SelectionMode::stage, span("+B", "+B"));
  ASSERT_TRUE(selected);

  repo().writeFile(".git/index.lock", "");
  const auto locked = ApplySelectionPatchGitCommand::execute(repo().module(), *selected, SelectionMode::stage);
  EXPECT_TRUE(locked.isError<Error::RepositoryIsLocked>()) << describe(locked.error()).toStdString();
  repo().removeFile(".git/index.lock");

  // The file changed after the diff was shown: git refuses and nothing is touched.
  repo().writeFile("f", lines({"x", "y", "z"}));
  const XPatchPtr stale = selection(SelectionMode::discard, span("+B", "+B"));
  const auto refused = ApplySelectionPatchGitCommand::execute(repo().module(), *stale, SelectionMode::discard);
  ASSERT_TRUE(refused.isError<Error::GitUnknownError>());
  EXPECT_TRUE(refused.errorAs<Error::GitUnknownError>()->error.contains(u"patch does not apply"));
  EXPECT_EQ(worktree("f"), lines({"x", "y", "z"}));

  EXPECT_TRUE(ApplySelectionPatchGitCommand::execute(repo().module(), XPatch{}, SelectionMode::discard).isError<Error::NoChanges>());
}
