// Tags and remotes on real repositories.
#include <gtest/gtest.h>

#include "Git/Commands/Remotes/GetRemotesGitCommand.h"
#include "Git/Commands/Remotes/RemoteGitCommand.h"
#include "Git/Commands/Repository/TagGitCommand.h"
#include "support/TempRepository.h"

TEST(TagGitCommandTest, CreatesAnnotatedTagsAtTheCommitAndDeletesThem) {
  TempRepository repo;
  const QString first = repo.commitFile("a.txt", "1\n", "First");
  repo.commitFile("a.txt", "2\n", "Second");

  ASSERT_TRUE(TagGitCommand::create(repo.module(), "v1.0", first, "Release 1.0\n\nNotes").isSuccess());
  EXPECT_EQ(repo.git({"cat-file", "-t", "v1.0"}).trimmed(), "tag");  // annotated, not lightweight
  EXPECT_EQ(repo.git({"rev-parse", "v1.0^{commit}"}).trimmed(), first);
  EXPECT_EQ(repo.git({"tag", "-l", "--format=%(contents)", "v1.0"}).trimmed(), "Release 1.0\n\nNotes");

  // A second tag of the same name is refused and the first stays.
  EXPECT_TRUE(TagGitCommand::create(repo.module(), "v1.0", repo.headSha(), "again").isError<Error::GitUnknownError>());
  EXPECT_EQ(repo.git({"rev-parse", "v1.0^{commit}"}).trimmed(), first);

  ASSERT_TRUE(TagGitCommand::remove(repo.module(), "v1.0").isSuccess());
  EXPECT_TRUE(repo.git({"tag", "-l"}).trimmed().isEmpty());
}

TEST(RemoteGitCommandTest, AddEditAndRemoveAsGetRemotesReadsThem) {
  TempRepository repo;
  repo.commitFile("a.txt", "1\n", "First");
  ASSERT_TRUE(RemoteGitCommand::add(repo.module(), "origin", "https://example.com/a.git").isSuccess());
  // Already there: git's refusal reaches the user.
  EXPECT_TRUE(RemoteGitCommand::add(repo.module(), "origin", "https://example.com/b.git").isFailure());

  const RemoteGitCommand::Edit before{"origin", "https://example.com/a.git", false};
  ASSERT_TRUE(RemoteGitCommand::edit(repo.module(), before, {"upstream", "/srv/git/with blank.git", true}).isSuccess());
  auto remotes = GetRemotesGitCommand::execute(repo.module());
  ASSERT_TRUE(remotes.isSuccess());
  ASSERT_EQ(remotes.value().size(), 1u);
  EXPECT_EQ(remotes.value()[0].name, "upstream");
  EXPECT_EQ(remotes.value()[0].repositoryUrl.rawUrlString, "/srv/git/with blank.git");
  EXPECT_TRUE(remotes.value()[0].disableImplicitFetch);

  // Fetched implicitly again; clearing a flag that is not set is no failure either.
  const RemoteGitCommand::Edit now{"upstream", "/srv/git/with blank.git", true};
  ASSERT_TRUE(RemoteGitCommand::edit(repo.module(), now, {"upstream", now.url, false}).isSuccess());
  ASSERT_TRUE(RemoteGitCommand::setImplicitFetchDisabled(repo.module(), "upstream", false).isSuccess());
  remotes = GetRemotesGitCommand::execute(repo.module());
  ASSERT_TRUE(remotes.isSuccess());
  EXPECT_FALSE(remotes.value()[0].disableImplicitFetch);

  ASSERT_TRUE(RemoteGitCommand::remove(repo.module(), "upstream").isSuccess());
  remotes = GetRemotesGitCommand::execute(repo.module());
  ASSERT_TRUE(remotes.isSuccess());
  EXPECT_TRUE(remotes.value().empty());
  EXPECT_TRUE(RemoteGitCommand::remove(repo.module(), "upstream").isError<Error::GitUnknownError>());
}
