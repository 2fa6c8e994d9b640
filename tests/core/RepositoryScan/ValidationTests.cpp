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
  const QString repo = makeRepository(QStringLiteral("plain"));
  EXPECT_EQ(moduleOf(QStringLiteral("  ") + repo + QStringLiteral("\n")), (GitModule{repo, repo + QStringLiteral("/.git"), std::nullopt}));

  // A folder inside the working tree stands for the whole repository.
  makeFolder(QStringLiteral("plain/src/deep"));
  EXPECT_EQ(moduleOf(at(QStringLiteral("plain/src/deep"))).repositoryPath, repo);

  // A link to the repository keeps the name the user gave.
  makeLink(repo, QStringLiteral("linked"));
  const GitModule linked = moduleOf(at(QStringLiteral("linked")));
  EXPECT_EQ(linked.repositoryPath, at(QStringLiteral("linked")));
  EXPECT_EQ(linked.gitDirectoryUrl, repo + QStringLiteral("/.git"));
}

TEST_F(ScanTest, ALinkedWorktreeIsARepositoryWhoseGitDirectoryLiesInTheMainOne) {
  const QString repo = makeRepository(QStringLiteral("main"));
  runProgram(QStringLiteral("git"), {QStringLiteral("worktree"), QStringLiteral("add"), QStringLiteral("-q"), at(QStringLiteral("feature"))},
             repo);
  const GitModule module = moduleOf(at(QStringLiteral("feature")));
  EXPECT_EQ(module.repositoryPath, at(QStringLiteral("feature")));
  EXPECT_EQ(module.gitDirectoryUrl, repo + QStringLiteral("/.git/worktrees/feature"));
  EXPECT_FALSE(module.superProjectPath.has_value());
}

TEST_F(ScanTest, SubmodulesBareRepositoriesAndPathsThatAreNoFolderAreRefused) {
  const QString outer = makeRepository(QStringLiteral("outer"));
  const QString library = makeRepository(QStringLiteral("library"));
  runProgram(QStringLiteral("git"),
             {QStringLiteral("-c"), QStringLiteral("protocol.file.allow=always"), QStringLiteral("submodule"), QStringLiteral("add"),
              QStringLiteral("-q"), library, QStringLiteral("lib")},
             outer);
  ASSERT_TRUE(QFileInfo(outer + QStringLiteral("/lib/.git")).isFile());
  EXPECT_EQ(refusalOf(outer + QStringLiteral("/lib")), RepositoryRefusal::submodule);
  // The superproject itself is fine.
  EXPECT_EQ(moduleOf(outer).repositoryPath, outer);

  runProgram(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("-q"), QStringLiteral("--bare"), at(QStringLiteral("bare.git"))});
  EXPECT_EQ(refusalOf(at(QStringLiteral("bare.git"))), RepositoryRefusal::notARepository);
  EXPECT_EQ(refusalOf(outer + QStringLiteral("/.git")), RepositoryRefusal::notARepository);

  makeFolder(QStringLiteral("empty"));
  EXPECT_EQ(refusalOf(at(QStringLiteral("empty"))), RepositoryRefusal::notARepository);
  makeFile(QStringLiteral("a-file"));
  EXPECT_EQ(refusalOf(at(QStringLiteral("a-file"))), RepositoryRefusal::notARepository);
  // A registered repository whose folder is gone.
  const QString vanished = makeRepository(QStringLiteral("vanished"));
  ASSERT_TRUE(QDir(vanished).removeRecursively());
  EXPECT_EQ(refusalOf(vanished), RepositoryRefusal::notARepository);
  EXPECT_EQ(refusalOf(QStringLiteral("   ")), RepositoryRefusal::notARepository);
}

TEST(GetGitDirectoryParseTest, ReadsTwoOrThreeAbsoluteLinesAndRejectsAnythingElse) {
  auto plain = GetGitDirectoryGitCommand::parse(QStringLiteral("/r/.git\n/r\n"));
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain.value(), (GitModule{QStringLiteral("/r"), QStringLiteral("/r/.git"), std::nullopt}));
  auto sub = GetGitDirectoryGitCommand::parse(QStringLiteral("/p/.git/modules/s\n/p/s\n/p\n"));
  ASSERT_TRUE(sub);
  EXPECT_EQ(sub.value().superProjectPath, QStringLiteral("/p"));

  for (const char* bad : {"", "/r/.git\n", "r/.git\n/r\n", "/r/.git\nwarning: x\n", "/a\n/b\n/c\n/d\n"}) {
    EXPECT_TRUE(GetGitDirectoryGitCommand::parse(QString::fromLatin1(bad)).isError<Error::CannotParse>()) << bad;
  }
}
