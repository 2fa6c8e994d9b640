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
  TempRepository library{true, QStringLiteral("library")};
  TempRepository app{true, QStringLiteral("app")};
  QString recorded;
  QString subPath;

  SubmoduleFixture() {
    library.commitFile(QStringLiteral("lib.c"), "int lib;\n", QStringLiteral("Library"));
    app.commitFile(QStringLiteral("main.c"), "int main;\n", QStringLiteral("App"));
    app.git({QStringLiteral("submodule"), QStringLiteral("add"), QStringLiteral("-q"), library.path(), QStringLiteral("ext/lib rary")});
    app.commit(QStringLiteral("Add submodule"));
    recorded = app.git({QStringLiteral("rev-parse"), QStringLiteral("HEAD:ext/lib rary")}).trimmed();
    subPath = app.path() + QStringLiteral("/ext/lib rary");
    app.writeFile(QStringLiteral("ext/lib rary/lib.c"), "int moved;\n");
    inSubmodule({QStringLiteral("commit"), QStringLiteral("-qam"), QStringLiteral("Moved on")});
    app.writeFile(QStringLiteral("ext/lib rary/lib.c"), "int edited;\n");
    app.writeFile(QStringLiteral("ext/lib rary/scratch.txt"), "tmp\n");
    app.writeFile(QStringLiteral("main.c"), "int edited_main;\n");
  }
  QString inSubmodule(const QStringList& args) const { return QString::fromUtf8(runProgram(QStringLiteral("git"), args, subPath)); }
  ChangedFileList status() const {
    const auto submodules = GetSubmodulesGitCommand::execute(app.module());
    const auto files = GetChangedFilesGitCommand::execute(app.module(), submodules.value(), false, false);
    return files.value().changedFiles;
  }
};
}  // namespace

TEST(DiscardSubmoduleChanges, ResetsWorkTreeRemovesUntrackedAndReturnsToTheRecordedCommit) {
  SubmoduleFixture fixture;
  const GitVoidResult result = DiscardSubmoduleChangesGitCommand::execute(fixture.app.module(), QStringLiteral("ext/lib rary"));
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  EXPECT_EQ(fixture.inSubmodule({QStringLiteral("rev-parse"), QStringLiteral("HEAD")}).trimmed(), fixture.recorded);
  EXPECT_EQ(fixture.app.readFile(QStringLiteral("ext/lib rary/lib.c")), QByteArray("int lib;\n"));
  EXPECT_FALSE(QFileInfo::exists(fixture.subPath + QStringLiteral("/scratch.txt")));
  EXPECT_EQ(fixture.app.git({QStringLiteral("status"), QStringLiteral("--porcelain")}), QStringLiteral(" M main.c\n"));

  // A path that is no submodule stops at the first step.
  EXPECT_TRUE(DiscardSubmoduleChangesGitCommand::execute(fixture.app.module(), QStringLiteral("missing")).isFailure());
}

TEST(DiscardChangedFiles, SubmodulesFromTheStatusAreResetAndPlainFilesRestored) {
  SubmoduleFixture fixture;
  const ChangedFileList selection = fixture.status();
  ASSERT_EQ(selection.size(), 2u);

  const auto plan = DiscardChangedFilesCommand::plan(selection);
  ASSERT_EQ(plan.submodules.size(), 1u);
  EXPECT_EQ(plan.submodules.front().path, QStringLiteral("ext/lib rary"));
  ASSERT_EQ(plan.files.size(), 1u);
  EXPECT_EQ(plan.files.front()->path, QStringLiteral("main.c"));
  EXPECT_EQ(DiscardChangedFilesCommand::confirmation(plan),
            (DiscardChangedFilesCommand::Confirmation{QStringLiteral("Do you want to discard all changes in submodule 'ext/lib rary'?"),
                                                      QStringLiteral("All uncommitted changes will be lost"), QStringLiteral("Discard")}));

  ASSERT_TRUE(DiscardChangedFilesCommand::execute(fixture.app.module(), plan).isSuccess());
  EXPECT_EQ(fixture.app.git({QStringLiteral("status"), QStringLiteral("--porcelain")}), QString());
  EXPECT_EQ(fixture.inSubmodule({QStringLiteral("rev-parse"), QStringLiteral("HEAD")}).trimmed(), fixture.recorded);
}

TEST(DiscardChangedFiles, AlertTextsFollowTheCountOfFilesOrSubmodules) {
  using Plan = DiscardChangedFilesCommand::Plan;
  const auto file = changedFile(QStringLiteral("a"), ChangeType::modified, false);
  const auto one = DiscardChangedFilesCommand::confirmation(Plan{{file}, {}});
  EXPECT_EQ(one.messageText, QStringLiteral("Do you want to discard all your changes in the selected files?"));
  EXPECT_EQ(one.informativeText, QStringLiteral("All uncommitted changes will be lost."));
  EXPECT_EQ(one.discardButton, QStringLiteral("Discard"));
  EXPECT_EQ(one.cancelButton, QStringLiteral("Cancel"));
  EXPECT_EQ(DiscardChangedFilesCommand::confirmation(Plan{{file, file, file}, {}}).discardButton,
            QStringLiteral("Discard Changes in 3 Files"));

  const Submodule a{QStringLiteral("submodule."), QStringLiteral("a"), QStringLiteral("a")};
  const auto two = DiscardChangedFilesCommand::confirmation(Plan{{file}, {a, a}});
  EXPECT_EQ(two.messageText, QStringLiteral("Do you want to discard all changes in 2 submodules?"));
  EXPECT_EQ(two.discardButton, QStringLiteral("Discard All"));
}
