#include <gtest/gtest.h>

#include "FileChangesTestSupport.h"
#include "Git/Commands/Revision/GetRevisionFileChangesGitCommand.h"
#include "Git/Commands/Submodules/GetSubmoduleContentGitCommand.h"
#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Models/SubmoduleChangedFile.h"

TEST(SubmoduleChanges, MovedPointerShowsBothCommitsTheirTagsAndTheDirtyCount) {
  TempRepository library(true, QStringLiteral("library"));
  const QString v1 = library.commitFile(QStringLiteral("lib.c"), "1\n", QStringLiteral("Library 1"));
  library.git({QStringLiteral("tag"), QStringLiteral("v1")});
  TempRepository app(true, QStringLiteral("app"));
  app.git({QStringLiteral("submodule"), QStringLiteral("add"), QStringLiteral("-q"), library.path(), QStringLiteral("libs/core")});
  app.commit(QStringLiteral("Add library"));

  const QString subPath = app.path() + QStringLiteral("/libs/core");
  auto inSubmodule = [&](const QStringList& args) { return QString::fromUtf8(runProgram(QStringLiteral("git"), args, subPath)).trimmed(); };
  app.writeFile(QStringLiteral("libs/core/lib.c"), "2\n");
  app.writeFile(QStringLiteral("libs/core/extra.c"), "x\n");
  inSubmodule({QStringLiteral("add"), QStringLiteral("-A")});
  inSubmodule({QStringLiteral("commit"), QStringLiteral("-qm"), QStringLiteral("Library 2")});
  inSubmodule({QStringLiteral("tag"), QStringLiteral("-a"), QStringLiteral("v2"), QStringLiteral("-m"), QStringLiteral("Two")});
  const QString v2 = inSubmodule({QStringLiteral("rev-parse"), QStringLiteral("HEAD")});
  app.writeFile(QStringLiteral("libs/core/lib.c"), "3\n");        // dirty: one changed file
  app.writeFile(QStringLiteral("libs/core/extra.c"), "y\n");      // and another
  app.writeFile(QStringLiteral("libs/core/untracked.c"), "u\n");  // not counted (-uno)

  const auto file = statusEntry(app, QStringLiteral("libs/core"), false);
  ASSERT_TRUE(file);
  ASSERT_TRUE(file->changedSubmodule());
  const auto result = GetWorkingDirectoryFileChangesGitCommand::execute(app.module(), file, false, {});
  const auto moved = contentAs<SubmoduleDiffFileContent>(result);
  ASSERT_TRUE(moved) << (result.isFailure() ? describe(result.error()).toStdString() : "other content");
  EXPECT_EQ(moved->oldRevision.sha, v1);
  EXPECT_EQ(moved->newRevision.sha, v2);
  ASSERT_EQ(moved->oldTags.size(), 1u);
  EXPECT_EQ(moved->oldTags.front()->name, QStringLiteral("v1"));
  ASSERT_EQ(moved->newTags.size(), 1u);
  EXPECT_EQ(moved->newTags.front()->name, QStringLiteral("v2"));  // annotated: matched by the commit it points at
  EXPECT_EQ(moved->submoduleChangesCount, 2);
  EXPECT_EQ(moved->submodule.path, QStringLiteral("libs/core"));
  EXPECT_EQ(moved->parentGitModule, app.module());

  // The same move, committed, in the revision view.
  app.git({QStringLiteral("add"), QStringLiteral("libs/core")});
  const QString sha = app.commit(QStringLiteral("Move library"));
  auto committed = std::make_shared<SubmoduleChangedFile>(ChangedFile(std::nullopt, QStringLiteral("libs/core"), ChangeType::modified, false, true, false),
                                                          *file->changedSubmodule());
  const auto revision = contentAs<SubmoduleDiffFileContent>(
      GetRevisionFileChangesGitCommand::execute(app.module(), sha, std::nullopt, committed, {}));
  ASSERT_TRUE(revision);
  EXPECT_EQ(revision->oldRevision.sha, v1);
  EXPECT_EQ(revision->newRevision.sha, v2);
  EXPECT_EQ(revision->submoduleChangesCount, 0);
}

TEST(SubmoduleChanges, AnUninitialisedSubmoduleFallsBackToTheTextDiff) {
  TempRepository library(true, QStringLiteral("library"));
  library.commitFile(QStringLiteral("lib.c"), "1\n", QStringLiteral("Library 1"));
  TempRepository app(true, QStringLiteral("app"));
  app.git({QStringLiteral("submodule"), QStringLiteral("add"), QStringLiteral("-q"), library.path(), QStringLiteral("lib")});
  const QString sha = app.commit(QStringLiteral("Add library"));
  EXPECT_TRUE(GetSubmoduleContentGitCommand::openSubmodule(app.module(), QStringLiteral("lib")).has_value());
  app.git({QStringLiteral("submodule"), QStringLiteral("deinit"), QStringLiteral("-q"), QStringLiteral("-f"), QStringLiteral("lib")});
  EXPECT_FALSE(GetSubmoduleContentGitCommand::openSubmodule(app.module(), QStringLiteral("lib")).has_value());

  auto file = std::make_shared<SubmoduleChangedFile>(ChangedFile(std::nullopt, QStringLiteral("lib"), ChangeType::added, false, true, false),
                                                     Submodule{QStringLiteral("submodule."), QStringLiteral("lib"), QStringLiteral("lib")});
  const auto text = contentAs<TextDiffFileContent>(GetRevisionFileChangesGitCommand::execute(app.module(), sha, std::nullopt, file, {}));
  ASSERT_TRUE(text);
  EXPECT_TRUE(text->diffString.contains(QStringLiteral("+Subproject commit ")));
}
