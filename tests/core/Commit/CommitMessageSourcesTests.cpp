#include <gtest/gtest.h>

#include "Git/Commands/WorkingDirectory/GetCommitMessagesGitCommand.h"
#include "Git/Commands/WorkingDirectory/GetCommitTemplate.h"
#include "Git/Commands/WorkingDirectory/SetCommitTemplateGitCommand.h"
#include "Models/MergeMessage.h"
#include "support/Conflicts.h"

TEST(MergeMessage, PrefillsFromTheMessageGitPreparedForAMerge) {
  TempRepository repo;
  EXPECT_FALSE(readMergeMessage(repo.module()).has_value());
  makeConflict(repo, "a.txt", {"base\n", "main\n", "topic\n"});

  const auto message = readMergeMessage(repo.module());
  ASSERT_TRUE(message.has_value());
  EXPECT_EQ(message->subject, "Merge branch 'theirs'");
  // git's notes on the conflict are comments, not part of the message.
  ASSERT_TRUE(repo.readFile(".git/MERGE_MSG").contains("# Conflicts:"));
  EXPECT_EQ(message->description, QString());
  // With another comment character a line that starts with "#" is text.
  repo.git({"config", "core.commentChar", ";"});
  repo.writeFile(".git/MERGE_MSG", "Merge branch 'theirs'\n\n#12 fixed on both sides\n; Conflicts:\n;\ta.txt\n");
  EXPECT_EQ(readMergeMessage(repo.module())->description, "#12 fixed on both sides");

  // An empty squash message is no message: the merge's stands.
  repo.writeFile(".git/SQUASH_MSG", "\n");
  EXPECT_EQ(readMergeMessage(repo.module())->subject, "Merge branch 'theirs'");
}

TEST(MergeMessage, ReadsTheSquashMessageOfASquashMerge) {
  TempRepository repo;
  repo.commitFile("a.txt", "base\n", "Base");
  repo.git({"checkout", "-q", "-b", "topic"});
  repo.commitFile("b.txt", "b\n", "Add b\n\nWith a body");
  repo.git({"checkout", "-q", "main"});
  repo.git({"merge", "--squash", "topic"});

  const auto message = readMergeMessage(repo.module());
  ASSERT_TRUE(message.has_value());
  EXPECT_EQ(message->subject, "Squashed commit of the following:");
  EXPECT_TRUE(message->description.contains("Add b")) << message->description.toStdString();
}

TEST(CommitMessages, LastAndRecentMessagesComeWholeAndNewestFirst) {
  TempRepository repo;
  EXPECT_TRUE(GetCommitMessagesGitCommand::recentMessages(repo.module()).isFailure());  // no HEAD yet

  for (int i = 1; i <= 12; ++i) {
    repo.commitFile("f.txt", QByteArray::number(i), QStringLiteral("Change %1\n\nBody of change %1\nsecond line").arg(i));
  }
  const GitResult<QString> last = GetCommitMessagesGitCommand::lastMessage(repo.module());
  ASSERT_TRUE(last.isSuccess());
  EXPECT_EQ(last.value(), "Change 12\n\nBody of change 12\nsecond line\n\n");

  const GitResult<QStringList> recent = GetCommitMessagesGitCommand::recentMessages(repo.module());
  ASSERT_TRUE(recent.isSuccess());
  ASSERT_EQ(recent.value().size(), 10);
  EXPECT_EQ(recent.value().first(), "Change 12\n\nBody of change 12\nsecond line");
  EXPECT_EQ(recent.value().last(), "Change 3\n\nBody of change 3\nsecond line");
}

TEST(CommitTemplate, WritesTheFileAndReadsItBackThroughTheConfiguration) {
  TempRepository repo;
  const GitResult<std::optional<QString>> unset = GetCommitTemplate::execute(repo.module(), ConfigLocation::local);
  ASSERT_TRUE(unset.isSuccess());  // exit status 1 of "config" means "not set"
  EXPECT_FALSE(unset.value().has_value());

  const QString text = "[ticket] \u00DCbersicht\n\nWhy:\n";
  ASSERT_TRUE(SetCommitTemplateGitCommand::execute(repo.module(), std::nullopt, text).isSuccess());
  const auto local = GetCommitTemplate::execute(repo.module(), ConfigLocation::local);
  ASSERT_TRUE(local.isSuccess() && local.value().has_value());
  EXPECT_EQ(*local.value(), repo.gitDir() + "/commit_msg_template.txt");
  EXPECT_EQ(GetCommitTemplate::readTemplate(repo.module(), *local.value()), text);
  EXPECT_FALSE(GetCommitTemplate::execute(repo.module(), ConfigLocation::global).value().has_value());

  // A relative path in the configuration is taken from the working directory, as git does.
  repo.writeFile("docs/template.txt", "relative\n");
  repo.git({"config", "--global", "commit.template", "docs/template.txt"});
  const auto global = GetCommitTemplate::execute(repo.module(), ConfigLocation::global);
  repo.git({"config", "--global", "--unset", "commit.template"});
  ASSERT_TRUE(global.isSuccess() && global.value().has_value());
  EXPECT_EQ(GetCommitTemplate::readTemplate(repo.module(), *global.value()), "relative\n");
}
