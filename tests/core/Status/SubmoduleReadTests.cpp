// Submodules from ".gitmodules".
#include <gtest/gtest.h>

#include "Git/Commands/Submodules/GetSubmodulesGitCommand.h"
#include "support/TempRepository.h"

namespace {

TEST(SubmoduleParseTest, OnlyPathKeysOfSubmodulesCount) {
  const auto submodules = GetSubmodulesGitCommand::parse(
      "submodule.lib/core.path lib/core\n"
      "submodule.dotted.name.path vendor/dotted name\n"
      "submodule.weird.path a.path b\n"  // the separator twice: no submodule
      "other.x.path y\n"
      "submodule.nopath\n"
      "\n");
  EXPECT_EQ(submodules,
            (SubmoduleList{{"submodule.", "lib/core", "lib/core"}, {"submodule.", "vendor/dotted name", "dotted.name"}}));
}

// A real submodule is read through this command by the FileChanges and Staging tests.
TEST(SubmoduleReadTest, NoFileIsAnEmptyListAndABrokenFileAFailure) {
  TempRepository repo;
  // Without ".gitmodules" the list is empty, not an error.
  EXPECT_EQ(GetSubmodulesGitCommand::execute(repo.module()).value(), SubmoduleList{});

  // A file that git can't read as a config is a failure, not an empty list.
  repo.writeFile(".gitmodules", "[submodule \"broken\"\n\tpath = x\n");
  EXPECT_TRUE(GetSubmodulesGitCommand::execute(repo.module()).isError<Error::GitUnknownError>());
}

}  // namespace
