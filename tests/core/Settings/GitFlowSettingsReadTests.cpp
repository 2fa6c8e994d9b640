#include <gtest/gtest.h>

#include "Git/Commands/GitFlow/GetGitFlowSettingsGitCommand.h"
#include "support/LogCapture.h"
#include "support/TempRepository.h"

namespace {

TEST(GitFlowSettingsReadTest, AllSixKeysGiveSettingsEvenWithAnEmptyVersionTag) {
  TempRepository repo;
  // A repository without any key fails; the refresh takes that as "no Git Flow".
  EXPECT_TRUE(GetGitFlowSettingsGitCommand::execute(repo.module()).isError<Error::GitUnknownError>());

  const QStringList pairs{"gitflow.branch.master", "master", "gitflow.branch.develop", "develop",
                          "gitflow.prefix.feature", "feature/", "gitflow.prefix.release", "release/",
                          "gitflow.prefix.hotfix", "hot fix/", "gitflow.prefix.bugfix", "bugfix/"};
  for (qsizetype i = 0; i < pairs.size(); i += 2) repo.git({"config", pairs[i], pairs[i + 1]});
  auto partial = GetGitFlowSettingsGitCommand::execute(repo.module());
  ASSERT_TRUE(partial.isError<Error::CannotParse>());
  EXPECT_EQ(partial.errorAs<Error::CannotParse>()->error, "gitflow is not properly installed");

  repo.git({"config", "gitflow.prefix.versiontag", ""});
  auto complete = GetGitFlowSettingsGitCommand::execute(repo.module());
  ASSERT_TRUE(complete.isSuccess());
  ASSERT_TRUE(complete.value().has_value());
  EXPECT_EQ(*complete.value(), (GitFlowSettings{"master", "develop", "feature/", "release/", "hot fix/", ""}));
}

TEST(GitFlowSettingsParseTest, OddLinesAreLoggedOrPassedOver) {
  LogCapture log;
  auto settings = GetGitFlowSettingsGitCommand::parse(
      "gitflow.branch.master main\ngitflow.branch.develop dev\ngitflow.prefix.feature f/\n"
      "gitflow.prefix.release r/\ngitflow.prefix.hotfix h/\ngitflow.prefix.versiontag v\n"
      "gitflow.path.hooks /repo/.git/hooks\ngitflow.x.novalue\n");
  ASSERT_TRUE(settings.isSuccess());
  EXPECT_EQ(settings.value()->masterBranch, "main");
  EXPECT_EQ(settings.value()->versionTag, "v");
  EXPECT_EQ(log.messages(AdvancedLogger::Level::error),
            QStringList{"Cannot parse gitflow settings in config line 'gitflow.x.novalue'"});
}

}  // namespace
