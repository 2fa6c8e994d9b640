// Submodules from ".gitmodules", and how a changed submodule shows in the status.
#include <gtest/gtest.h>

#include <QDir>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/Submodules/GetSubmodulesGitCommand.h"
#include "Services/Preferences.h"
#include "StatusTestSupport.h"
#include "support/TempRepository.h"

namespace {

QString L(const char* text) { return QString::fromUtf8(text); }

TEST(SubmoduleParseTest, OnlyPathKeysOfSubmodulesCount) {
  const auto submodules = GetSubmodulesGitCommand::parse(
      L("submodule.lib/core.path lib/core\n"
        "submodule.dotted.name.path vendor/dotted name\n"
        "submodule.weird.path a.path b\n"  // the separator twice: no submodule
        "other.x.path y\n"
        "submodule.nopath\n"
        "\n"));
  ASSERT_EQ(submodules.size(), 2u);
  EXPECT_EQ(submodules[0], (Submodule{L("submodule."), L("lib/core"), L("lib/core")}));
  EXPECT_EQ(submodules[1].name, L("dotted.name"));
  EXPECT_EQ(submodules[1].path, L("vendor/dotted name"));
}

TEST(SubmoduleReadTest, ReadsSubmodulesAndMarksTheirStatusEntries) {
  Preferences::shared().setGitInstance(GitInstanceType::system());
  TempRepository library(true, L("library"));
  library.commitFile(L("lib.txt"), "1\n", L("library"));
  TempRepository repo;
  repo.commitFile(L("main.txt"), "main\n", L("main"));

  // Without ".gitmodules" the list is empty, not an error.
  auto none = GetSubmodulesGitCommand::execute(repo.module());
  ASSERT_TRUE(none.isSuccess());
  EXPECT_TRUE(none.value().empty());

  repo.git({L("-c"), L("protocol.file.allow=always"), L("submodule"), L("add"), L("-q"), library.path(), L("deps/lib")});
  repo.commit(L("add submodule"));
  auto read = GetSubmodulesGitCommand::execute(repo.module());
  ASSERT_TRUE(read.isSuccess());
  ASSERT_EQ(read.value().size(), 1u);
  EXPECT_EQ(read.value()[0].name, L("deps/lib"));
  EXPECT_EQ(read.value()[0].path, L("deps/lib"));

  // A new commit inside the submodule changes the commit the parent records.
  runProgram(L("git"), {L("commit"), L("-q"), L("--allow-empty"), L("-m"), L("inside")}, repo.path() + L("/deps/lib"));
  auto status = GetChangedFilesGitCommand::execute(repo.module(), read.value(), false, false);
  ASSERT_TRUE(status.isSuccess());
  EXPECT_EQ(describe(status.value().changedFiles), QStringList{L("unstaged modified 'deps/lib' submodule=deps/lib")});

  // A file that git can't read as a config is a failure, not an empty list.
  repo.writeFile(L(".gitmodules"), "[submodule \"broken\"\n\tpath = x\n");
  EXPECT_TRUE(GetSubmodulesGitCommand::execute(repo.module()).isError<Error::GitUnknownError>());
}

}  // namespace
