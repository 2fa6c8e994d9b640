// Remotes read from the configuration of real repositories.
#include <gtest/gtest.h>

#include "Git/Commands/Remotes/GetRemotesGitCommand.h"
#include "ReferencesTestSupport.h"
#include "support/TempRepository.h"

namespace {

QStringList names(const std::vector<Remote>& remotes) {
  QStringList result;
  for (const Remote& remote : remotes) result << remote.name;
  return result;
}

TEST(GetRemotesGitCommandTest, ReadsUrlsAndImplicitFetchInConfigurationOrder) {
  TempRepository repo;
  repo.git({"remote", "add", "origin", "https://github.com/jelv/jelv.git"});
  repo.git({"remote", "add", "my.fork", "git@gitlab.com:someone/jelv.git"});
  repo.git({"config", "remote.my.fork.disableImplicitFetch", "true"});
  repo.git({"remote", "add", "local", "/srv/git/repo.v2 backup/x.git"});
  // A remote with settings but no url is none.
  repo.git({"config", "remote.nourl.fetch", "+refs/heads/*:refs/remotes/nourl/*"});

  auto result = GetRemotesGitCommand::execute(repo.module());
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  const auto& remotes = result.value();
  EXPECT_EQ(names(remotes), (QStringList{"origin", "my.fork", "local"}));

  EXPECT_EQ(remotes[0].repositoryUrl.rawUrlString, QStringLiteral("https://github.com/jelv/jelv.git"));
  EXPECT_EQ(remotes[0].repositoryUrl.repositoryName, QStringLiteral("jelv"));
  EXPECT_FALSE(remotes[0].disableImplicitFetch);
  EXPECT_EQ(remotes[1].repositoryUrl.user, QStringLiteral("someone"));
  EXPECT_TRUE(remotes[1].disableImplicitFetch);  // git prints the key in lower case
  EXPECT_EQ(remotes[2].repositoryUrl.rawUrlString, QStringLiteral("/srv/git/repo.v2 backup/x.git"));
}

TEST(GetRemotesGitCommandTest, RepositoryWithoutRemotesHasAnEmptyList) {
  TempRepository repo;
  LogCapture log;
  auto result = GetRemotesGitCommand::execute(repo.module());
  ASSERT_TRUE(result.isSuccess());
  EXPECT_TRUE(result.value().empty());
  EXPECT_TRUE(log.messages().isEmpty()) << log.messages().join('|').toStdString();
}

TEST(GetRemotesGitCommandTest, VanishedRepositoryFails) {
  TempRepository folder(false);
  const GitModule gone{folder.path() + "/missing", folder.path() + "/missing/.git", std::nullopt};
  EXPECT_TRUE(GetRemotesGitCommand::execute(gone).isError<Error::GitWorkingDirectoryNotExists>());
}

TEST(GetRemotesParseTest, GathersLinesPerRemoteAndLogsWhatItCannotRead) {
  LogCapture log;
  const auto remotes = GetRemotesGitCommand::parse(
      "remote.origin.url https://github.com/a/b.git\n"
      "remote.origin.fetch +refs/heads/*:refs/remotes/origin/*\n"
      "remote.origin.disableimplicitfetch false\n"
      "garbage line\n"
      "remote.up.fetch +refs/heads/*:refs/remotes/up/*\n"
      "remote.up.url ../relative/path\n"
      "remote.up.url https://example.com/second.git\n"
      "remote.gone.fetch +refs/heads/*:refs/remotes/gone/*\n"
      "remote.last.disableimplicitfetch true\n"
      "remote.last.url ssh://git@example.com:2222/x/y.git");
  ASSERT_EQ(names(remotes), (QStringList{"origin", "up", "last"}));
  EXPECT_FALSE(remotes[0].disableImplicitFetch);
  // The later url of a remote wins.
  EXPECT_EQ(remotes[1].repositoryUrl.rawUrlString, QStringLiteral("https://example.com/second.git"));
  EXPECT_TRUE(remotes[2].disableImplicitFetch);  // set before the url, kept
  EXPECT_EQ(remotes[2].repositoryUrl.host, QStringLiteral("example.com"));
  EXPECT_TRUE(log.contains("Cannot parse remote config line: 'garbage line'"));
  EXPECT_TRUE(log.contains("Cannot parse remote line 'remote.up.url ../relative/path'"));
}

TEST(GetRemotesParseTest, EmptyOutputHasNoRemotes) {
  EXPECT_TRUE(GetRemotesGitCommand::parse(QString()).empty());
  EXPECT_TRUE(GetRemotesGitCommand::parse("remote.x.url").empty());  // no blank: doesn't match
}

}  // namespace
