#include <gtest/gtest.h>

#include <QFileInfo>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/Submodules/DiscardSubmoduleChangesGitCommand.h"
#include "Git/Commands/Submodules/GetSubmodulesGitCommand.h"
#include "Git/Commands/WorkingDirectory/DiscardChangedFilesCommand.h"
#include "StagingTestSupport.h"

namespace {
// An application with one submodule at "ext/lib rary", whose checkout has moved on to a
// new commit, has an edited file and an untracked one; plus an edited file of the app.
struct SubmoduleFixture {
  TempRepository library{true, "library"};
  TempRepository app{true, "app"};
  QString recorded;
  QString subPath;

  SubmoduleFixture() {
    library.commitFile("lib.c", "int lib;\n", "Library");
    app.commitFile("main.c", "int main;\n", "App");
    app.git({"submodule", "add", "-q", library.path(), "ext/lib rary"});
    app.commit("Add submodule");
    recorded = app.git({"rev-parse", "HEAD:ext/lib rary"}).trimmed();
    subPath = app.path() + "/ext/lib rary";
    app.writeFile("ext/lib rary/lib.c", "int moved;\n");
    inSubmodule({"commit", "-qam", "Moved on"});
    app.writeFile("ext/lib rary/lib.c", "int edited;\n");
    app.writeFile("ext/lib rary/scratch.txt", "tmp\n");
    app.writeFile("main.c", "int edited_main;\n");
  }
  QString inSubmodule(const QStringList& args) const { return QString::fromUtf8(runProgram("git", args, subPath)); }
  ChangedFileList status() const {
    const auto submodules = GetSubmodulesGitCommand::execute(app.module());
    const auto files = GetChangedFilesGitCommand::execute(app.module(), submodules.value(), false, false);
    return files.value().changedFiles;
  }
};
}  // namespace

TEST(DiscardSubmoduleChanges, ResetsWorkTreeRemovesUntrackedAndReturnsToTheRecordedCommit) {
  SubmoduleFixture fixture;
  const GitVoidResult result = DiscardSubmoduleChangesGitCommand::execute(fixture.app.module(), "ext/lib rary");
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  EXPECT_EQ(fixture.inSubmodule({"rev-parse", "HEAD"}).trimmed(), fixture.recorded);
  EXPECT_EQ(fixture.app.readFile("ext/lib rary/lib.c"), QByteArray("int lib;\n"));
  EXPECT_FALSE(QFileInfo::exists(fixture.subPath + "/scratch.txt"));
  EXPECT_EQ(fixture.app.git({"status", "--porcelain"}), " M main.c\n");

  // A path that is no submodule stops at the first step.
  EXPECT_TRUE(DiscardSubmoduleChangesGitCommand::execute(fixture.app.module(), "missing").isFailure());
}

TEST(DiscardChangedFiles, SubmodulesFromTheStatusAreResetAndPlainFilesRestored) {
  SubmoduleFixture fixture;
  const ChangedFileList selection = fixture.status();
  ASSERT_EQ(selection.size(), 2u);

  const auto plan = DiscardChangedFilesCommand::plan(selection);
  ASSERT_EQ(plan.submodules.size(), 1u);
  EXPECT_EQ(plan.submodules.front().path, "ext/lib rary");
  ASSERT_EQ(plan.files.size(), 1u);
  EXPECT_EQ(plan.files.front()->path, "main.c");
  EXPECT_EQ(DiscardChangedFilesCommand::confirmation(plan),
            (DiscardChangedFilesCommand::Confirmation{"Do you want to discard all changes in submodule 'ext/lib rary'?",
                                                      "All uncommitted changes will be lost", "Discard"}));

  ASSERT_TRUE(DiscardChangedFilesCommand::execute(fixture.app.module(), plan).isSuccess());
  EXPECT_EQ(fixture.app.git({"status", "--porcelain"}), QString());
  EXPECT_EQ(fixture.inSubmodule({"rev-parse", "HEAD"}).trimmed(), fixture.recorded);
}

TEST(DiscardChangedFiles, AlertTextsFollowTheCountOfFilesOrSubmodules) {
  using Plan = DiscardChangedFilesCommand::Plan;
  using Confirmation = DiscardChangedFilesCommand::Confirmation;
  const auto file = changedFile("a", ChangeType::modified, false);
  EXPECT_EQ(DiscardChangedFilesCommand::confirmation(Plan{{file}, {}}),
            (Confirmation{"Do you want to discard all your changes in the selected files?", "All uncommitted changes will be lost.",
                          "Discard", "Cancel"}));
  EXPECT_EQ(DiscardChangedFilesCommand::confirmation(Plan{{file, file, file}, {}}).discardButton, "Discard Changes in 3 Files");
  const Submodule a{"submodule.", "a", "a"};
  const auto two = DiscardChangedFilesCommand::confirmation(Plan{{file}, {a, a}});
  EXPECT_EQ(two.messageText, "Do you want to discard all changes in 2 submodules?");
  EXPECT_EQ(two.discardButton, "Discard All");
}
