#include <gtest/gtest.h>

#include "Git/Commands/GitFlow/GetGitFlowSettingsGitCommand.h"
#include "Services/Preferences.h"
#include "support/LogCapture.h"
#include "support/TempRepository.h"

namespace {

QString L(const char* text) { return QString::fromUtf8(text); }

TEST(GitFlowSettingsReadTest, AllSixKeysGiveSettingsEvenWithAnEmptyVersionTag) {
  Preferences::shared().setGitInstance(GitInstanceType::system());
  TempRepository repo;
  // A repository without any key fails; the refresh takes that as "no Git Flow".
  EXPECT_TRUE(GetGitFlowSettingsGitCommand::execute(repo.module()).isError<Error::GitUnknownError>());

  const QStringList pairs{L("gitflow.branch.master"), L("master"), L("gitflow.branch.develop"), L("develop"),
                          L("gitflow.prefix.feature"), L("feature/"), L("gitflow.prefix.release"), L("release/"),
                          L("gitflow.prefix.hotfix"), L("hot fix/"), L("gitflow.prefix.bugfix"), L("bugfix/")};
  for (qsizetype i = 0; i < pairs.size(); i += 2) repo.git({L("config"), pairs[i], pairs[i + 1]});
  auto partial = GetGitFlowSettingsGitCommand::execute(repo.module());
  ASSERT_TRUE(partial.isError<Error::CannotParse>());
  EXPECT_EQ(partial.errorAs<Error::CannotParse>()->error, L("gitflow is not properly installed"));

  repo.git({L("config"), L("gitflow.prefix.versiontag"), L("")});
  auto complete = GetGitFlowSettingsGitCommand::execute(repo.module());
  ASSERT_TRUE(complete.isSuccess());
  ASSERT_TRUE(complete.value().has_value());
  EXPECT_EQ(*complete.value(),
            (GitFlowSettings{L("master"), L("develop"), L("feature/"), L("release/"), L("hot fix/"), L("")}));
}

TEST(GitFlowSettingsParseTest, OddLinesAreLoggedOrPassedOver) {
  LogCapture log;
  auto settings = GetGitFlowSettingsGitCommand::parse(
      L("gitflow.branch.master main\ngitflow.branch.develop dev\ngitflow.prefix.feature f/\n"
        "gitflow.prefix.release r/\ngitflow.prefix.hotfix h/\ngitflow.prefix.versiontag v\n"
        "gitflow.path.hooks /repo/.git/hooks\ngitflow.x.novalue\n"));
  ASSERT_TRUE(settings.isSuccess());
  EXPECT_EQ(settings.value()->masterBranch, L("main"));
  EXPECT_EQ(settings.value()->versionTag, L("v"));
  EXPECT_EQ(log.messages(AdvancedLogger::Level::error),
            QStringList{L("Cannot parse gitflow settings in config line 'gitflow.x.novalue'")});
}

}  // namespace
