#include "Git/Commands/Repository/GetGitDirectoryGitCommand.h"
#include "Models/RepositoryValidation.h"
#include "ScanFixture.h"

namespace {
std::optional<RepositoryRefusal> refusalOf(const QString& path) {
  const auto result = RepositoryValidation::validate(path);
  if (const auto* refusal = std::get_if<RepositoryRefusal>(&result)) return *refusal;
  return std::nullopt;
}
GitModule moduleOf(const QString& path) {
  const auto result = RepositoryValidation::validate(path);
  EXPECT_TRUE(std::holds_alternative<GitModule>(result)) << path.toStdString();
  return std::holds_alternative<GitModule>(result) ? std::get<GitModule>(result) : GitModule{};
}
}  // namespace

TEST_F(ScanTest, AWorkingTreeIsAcceptedAndItsModuleNamesTheGitDirectory) {
  const QString repo = makeRepository("plain");
  EXPECT_EQ(moduleOf("  " + repo + "\n"), (GitModule{repo, repo + "/.git", std::nullopt}));

  // A folder inside the working tree stands for the whole repository.
  makeFolder("plain/src/deep");
  EXPECT_EQ(moduleOf(at("plain/src/deep")).repositoryPath, repo);

  // A link to the repository keeps the name the user gave.
  makeLink(repo, "linked");
  const GitModule linked = moduleOf(at("linked"));
  EXPECT_EQ(linked.repositoryPath, at("linked"));
  EXPECT_EQ(linked.gitDirectoryUrl, repo + "/.git");
}

TEST_F(ScanTest, ALinkedWorktreeIsARepositoryWhoseGitDirectoryLiesInTheMainOne) {
  const QString repo = makeRepository("main");
  runProgram("git", {"worktree", "add", "-q", at("feature")}, repo);
  const GitModule module = moduleOf(at("feature"));
  EXPECT_EQ(module.repositoryPath, at("feature"));
  EXPECT_EQ(module.gitDirectoryUrl, repo + "/.git/worktrees/feature");
  EXPECT_FALSE(module.superProjectPath.has_value());
}

// A submodule's refusal is checked where adding by hand reports it (ScanTests). A bare
// repository or a .git folder fails in git as an empty folder does, a file as a gone folder.
TEST_F(ScanTest, FoldersThatAreNoWorkingTreeAreRefused) {
  makeFolder("empty");
  EXPECT_EQ(refusalOf(at("empty")), RepositoryRefusal::notARepository);
  // A registered repository whose folder is gone.
  const QString vanished = makeRepository("vanished");
  ASSERT_TRUE(QDir(vanished).removeRecursively());
  EXPECT_EQ(refusalOf(vanished), RepositoryRefusal::notARepository);
  EXPECT_EQ(refusalOf("   "), RepositoryRefusal::notARepository);
}

TEST(GetGitDirectoryParseTest, RejectsAnythingButTwoOrThreeAbsoluteLines) {
  for (const char* bad : {"", "/r/.git\n", "r/.git\n/r\n", "/r/.git\nwarning: x\n", "/a\n/b\n/c\n/d\n"}) {
    EXPECT_TRUE(GetGitDirectoryGitCommand::parse(QString::fromLatin1(bad)).isError<Error::CannotParse>()) << bad;
  }
}
