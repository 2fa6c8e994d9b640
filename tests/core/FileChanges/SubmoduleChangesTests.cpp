#include <gtest/gtest.h>

#include "FileChangesTestSupport.h"
#include "Git/Commands/Revision/GetRevisionFileChangesGitCommand.h"
#include "Git/Commands/Submodules/GetSubmoduleContentGitCommand.h"
#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Models/SubmoduleChangedFile.h"

namespace {
// Old and new commit, their tags and the count of changed files inside.
QStringList summary(const SubmoduleDiffFileContent& content) {
  const auto names = [](const auto& tags) {
    QStringList list;
    for (const auto& tag : tags) list << tag->name;
    return list.join(u',');
  };
  return {content.oldRevision.sha, content.newRevision.sha, names(content.oldTags), names(content.newTags),
          QString::number(content.submoduleChangesCount)};
}
}  // namespace

TEST(SubmoduleChanges, MovedPointerShowsBothCommitsTheirTagsAndTheDirtyCount) {
  TempRepository library(true, "library");
  const QString v1 = library.commitFile("lib.c", "1\n", "Library 1");
  library.git({"tag", "v1"});
  TempRepository app(true, "app");
  app.git({"submodule", "add", "-q", library.path(), "libs/core"});
  app.commit("Add library");

  const QString subPath = app.path() + "/libs/core";
  auto inSubmodule = [&](const QStringList& args) { return QString::fromUtf8(runProgram("git", args, subPath)).trimmed(); };
  app.writeFile("libs/core/lib.c", "2\n");
  app.writeFile("libs/core/extra.c", "x\n");
  inSubmodule({"add", "-A"});
  inSubmodule({"commit", "-qm", "Library 2"});
  inSubmodule({"tag", "-a", "v2", "-m", "Two"});
  const QString v2 = inSubmodule({"rev-parse", "HEAD"});
  app.writeFile("libs/core/lib.c", "3\n");        // dirty: one changed file
  app.writeFile("libs/core/extra.c", "y\n");      // and another
  app.writeFile("libs/core/untracked.c", "u\n");  // not counted (-uno)

  const auto file = statusEntry(app, "libs/core", false);
  ASSERT_TRUE(file);
  ASSERT_TRUE(file->changedSubmodule());
  const auto result = GetWorkingDirectoryFileChangesGitCommand::execute(app.module(), file, false, {});
  const auto moved = contentAs<SubmoduleDiffFileContent>(result);
  ASSERT_TRUE(moved) << (result.isFailure() ? describe(result.error()).toStdString() : "other content");
  // v2 is annotated: matched by the commit it points at.
  EXPECT_EQ(summary(*moved), (QStringList{v1, v2, "v1", "v2", "2"}));
  EXPECT_EQ(moved->submodule.path, "libs/core");
  EXPECT_EQ(moved->parentGitModule, app.module());

  // The same move, committed, in the revision view.
  app.git({"add", "libs/core"});
  const QString sha = app.commit("Move library");
  auto committed = std::make_shared<SubmoduleChangedFile>(
      ChangedFile(std::nullopt, "libs/core", ChangeType::modified, false, true, false), *file->changedSubmodule());
  const auto revision = contentAs<SubmoduleDiffFileContent>(
      GetRevisionFileChangesGitCommand::execute(app.module(), sha, std::nullopt, committed, {}));
  ASSERT_TRUE(revision);
  EXPECT_EQ(summary(*revision), (QStringList{v1, v2, "v1", "v2", "0"}));
}

TEST(SubmoduleChanges, AnUninitialisedSubmoduleFallsBackToTheTextDiff) {
  TempRepository library(true, "library");
  library.commitFile("lib.c", "1\n", "Library 1");
  TempRepository app(true, "app");
  app.git({"submodule", "add", "-q", library.path(), "lib"});
  const QString sha = app.commit("Add library");
  EXPECT_TRUE(GetSubmoduleContentGitCommand::openSubmodule(app.module(), "lib").has_value());
  app.git({"submodule", "deinit", "-q", "-f", "lib"});
  EXPECT_FALSE(GetSubmoduleContentGitCommand::openSubmodule(app.module(), "lib").has_value());

  auto file = std::make_shared<SubmoduleChangedFile>(ChangedFile(std::nullopt, "lib", ChangeType::added, false, true, false),
                                                     Submodule{"submodule.", "lib", "lib"});
  const auto text = contentAs<TextDiffFileContent>(GetRevisionFileChangesGitCommand::execute(app.module(), sha, std::nullopt, file, {}));
  ASSERT_TRUE(text);
  EXPECT_TRUE(text->diffString.contains("+Subproject commit "));
}
