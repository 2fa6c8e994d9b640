#include <gtest/gtest.h>

#include "Models/CommitButtonTitle.h"
#include "Models/CommitComposer.h"
#include "Models/CommitDraft.h"
#include "Models/GitModuleSettings.h"
#include "support/TempRepository.h"
#include "Models/CommitMessage.h"
#include "Models/SubjectCounter.h"

TEST(CommitButtonTitle, FollowsTheRepositoryStateBeforeTheFileCount) {
  struct Row {
    const char* name;
    CommitButtonInput input;
    CommitButtonTitle expected;
  };
  using P = CommitPhase;
  using A = CommitButtonAction;
  const Row rows[] = {
      {"nothing staged", {P::none, false, 0, false, false}, {"Commit", A::commit, false}},
      {"one file", {P::none, false, 1, false, false}, {"Commit 1 File", A::commit, false}},
      {"several files", {P::none, false, 12, false, false}, {"Commit 12 Files", A::commit, false}},
      {"push preference", {P::none, false, 2, true, false}, {"Commit 2 Files and Push", A::commit, true}},
      {"option key", {P::none, false, 0, false, true}, {"Commit and Push", A::commit, true}},
      {"rebase, amend wins over staged files", {P::rebaseInProgress, true, 3, true, false}, {"Amend Last Commit", A::amendLastCommit, false}},
      {"rebase with staged files", {P::rebaseInProgress, false, 1, false, false}, {"Commit 1 File", A::commit, false}},
      {"rebase, nothing staged", {P::rebaseInProgress, false, 0, true, true}, {"Continue Rebase", A::continueRebase, false}},
      {"cherry-pick, nothing staged", {P::cherryPickInProgress, false, 0, false, false}, {"Continue Cherry-Pick", A::continueCherryPick, false}},
      {"cherry-pick with staged files", {P::cherryPickInProgress, false, 2, false, false}, {"Commit 2 Files", A::commit, false}},
      {"squash, whatever is staged", {P::squashInProgress, false, 4, true, false}, {"Squash Commits", A::squashCommits, false}},
  };
  for (const Row& row : rows) {
    const CommitButtonTitle title = commitButtonTitle(row.input);
    EXPECT_EQ(title.text, row.expected.text) << row.name;
    EXPECT_EQ(title.action, row.expected.action) << row.name;
    EXPECT_EQ(title.andPush, row.expected.andPush) << row.name;
  }
}

TEST(SubjectCounter, ColoursByTheTwoLimitsAndTipsOnlyBeyondTheHighOne) {
  const QString tip = "The recommended subject line should be 70 characters or less";
  using C = SubjectCounterColor;
  const std::pair<int, SubjectCounter> rows[] = {{0, {}},
                                                 {50, {false, 50, C::normal, {}}},
                                                 {51, {false, 51, C::warning, {}}},
                                                 {70, {false, 70, C::warning, {}}},
                                                 {71, {false, 71, C::error, tip}}};
  for (const auto& [length, expected] : rows) EXPECT_EQ(subjectCounter(QString(length, u'x'), 50, 70), expected) << length;
}

TEST(SubjectCounter, CountsWhatTheUserSeesNotCodeUnits) {
  // 50 decomposed "é" are 100 UTF-16 units but 50 characters: still within the low limit.
  QString decomposed;
  for (int i = 0; i < 50; ++i) decomposed += "e\u0301";
  EXPECT_EQ(subjectCounter(decomposed, 50, 70).count, 50);
  EXPECT_EQ(subjectCounter(decomposed, 50, 70).color, SubjectCounterColor::normal);
  // A character outside the basic plane is a surrogate pair, one character.
  EXPECT_EQ(subjectCharacterCount("fix \U0001F41B"), 5);
}

TEST(CommitMessage, SplitsSubjectFromBodyAndJoinsThemBack) {
  const CommitMessage message = CommitMessage::fromText("Subject line\n\n\nBody one\n\nBody two\n\n");
  EXPECT_EQ(message.subject, "Subject line");
  EXPECT_EQ(message.description, "Body one\n\nBody two");
  EXPECT_EQ(message.text(), "Subject line\n\nBody one\n\nBody two");
  EXPECT_EQ(CommitMessage::fromText(message.text()), message);

  EXPECT_EQ(CommitMessage::fromText("Only a subject\n"), (CommitMessage{"Only a subject", {}}));
  EXPECT_EQ((CommitMessage{"Only a subject", {}}).text(), "Only a subject");
  EXPECT_EQ(CommitMessage::fromText("Windows\r\n\r\nlines\r\n"), (CommitMessage{"Windows", "lines"}));
}

TEST(CommitComposer, AmendParksTheTypedTextAndGivesItBack) {
  CommitComposer composer;
  composer.setMessage({"Half-written", "draft body"});
  int loads = 0;
  const auto lastMessage = [&loads]() -> GitResult<QString> {
    ++loads;
    return QStringLiteral("Previous commit\n\nIts body\n");
  };

  ASSERT_TRUE(composer.setAmend(true, lastMessage).isSuccess());
  EXPECT_TRUE(composer.amend());
  EXPECT_EQ(composer.message(), (CommitMessage{"Previous commit", "Its body"}));
  // Turning it on twice doesn't park the loaded message over the user's text.
  ASSERT_TRUE(composer.setAmend(true, lastMessage).isSuccess());
  EXPECT_EQ(loads, 1);

  composer.setSubject("Previous commit, fixed");
  ASSERT_TRUE(composer.setAmend(false, lastMessage).isSuccess());
  EXPECT_FALSE(composer.amend());
  EXPECT_EQ(composer.message(), (CommitMessage{"Half-written", "draft body"}));

  const auto failing = []() -> GitResult<QString> { return Error::Generic{"no HEAD"}; };
  EXPECT_TRUE(composer.setAmend(true, failing).isFailure());
  EXPECT_FALSE(composer.amend());
  EXPECT_EQ(composer.message().subject, "Half-written");

  ASSERT_TRUE(composer.setAmend(true, lastMessage).isSuccess());
  composer.reset();
  EXPECT_FALSE(composer.amend());
  EXPECT_TRUE(composer.message().isEmpty());
  EXPECT_TRUE(composer.parkedMessage().isEmpty());
}

TEST(CommitDraft, KeepsTheUsersTextAcrossAmendAndLeavesOtherSettingsAlone) {
  TempRepository repo;
  GitModuleSettings settings;
  settings.signOff = true;
  settings.tabWidth = 8;
  settings.save(repo.module());

  CommitComposer composer;
  composer.setMessage({"WIP: parser", "handles \u00E9"});
  CommitDraft::save(repo.module(), composer.draft());
  ASSERT_TRUE(composer.setAmend(true, [] { return GitResult<QString>("Old commit\n"); }).isSuccess());
  // Saving while amend shows the old commit's message keeps the user's text as the draft.
  CommitDraft::save(repo.module(), composer.draft());

  EXPECT_EQ(CommitDraft::load(repo.module()), (CommitMessage{"WIP: parser", "handles \u00E9"}));
  const GitModuleSettings reloaded = GitModuleSettings::load(repo.module());
  EXPECT_TRUE(reloaded.signOff);
  EXPECT_EQ(reloaded.tabWidth, 8);

  CommitDraft::clear(repo.module());
  EXPECT_TRUE(CommitDraft::load(repo.module()).isEmpty());
  EXPECT_TRUE(GitModuleSettings::load(repo.module()).signOff);
}
