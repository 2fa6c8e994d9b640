#include <gtest/gtest.h>

#include <QFileInfo>
#include <QTemporaryDir>

#include "Git/Commands/Repository/GetCustomCommandsGitCommand.h"
#include "Models/CustomCommands/CustomCommandCoder.h"
#include "Services/CustomCommandManager.h"
#include "Services/Preferences.h"
#include "support/TempRepository.h"

namespace {

CustomCommandPtr command(const QString& name, CustomCommand::Target target, bool shared = false,
                         std::optional<std::vector<CustomCommand::ReferenceTarget>> kinds = std::nullopt) {
  auto c = std::make_shared<CustomCommand>();
  c->name = name;
  c->target = target;
  c->shared = shared;
  c->referenceTargets = std::move(kinds);
  c->action = std::make_shared<UrlCustomCommandAction>("https://x.invalid/" + name);
  return c;
}

QStringList names(const CustomCommandList& list) {
  QStringList result;
  for (const auto& c : list) result << c->name;
  return result;
}

const QVariantList oldActions{
    QVariantMap{
        {"target", "repository"}, {"name", "Old one"}, {"action", QVariantMap{{"type", "url"}, {"url", "https://old.invalid"}}}},
    QVariantMap{{"name", "No target"}}};

}  // namespace

TEST(CustomCommandManager, OldUserDefaultIsImportedOnce) {
  QTemporaryDir dir;
  const QString global = dir.filePath("support/custom-commands.json");
  Preferences::shared().setValue("customActions", oldActions);

  CustomCommandManager first(global);
  EXPECT_EQ(names(first.customCommands()), QStringList{"Old one"});
  ASSERT_TRUE(QFileInfo::exists(global));

  // The next start reads the file; the old default, though still there, is not read again.
  Preferences::shared().setValue(
      "customActions",
      QVariantList{QVariantMap{{"target", "file"}, {"name", "Changed"}, {"action", QVariantMap{{"type", "cancel"}}}}});
  CustomCommandManager second(global);
  EXPECT_EQ(names(second.customCommands()), QStringList{"Old one"});

  // Emptied through the preferences, the file stays (as "[]"), so no import comes back.
  second.setCustomCommands({});
  CustomCommandManager third(global);
  EXPECT_TRUE(third.customCommands().empty());
  EXPECT_TRUE(QFileInfo::exists(global));
  Preferences::shared().remove("customActions");
}

TEST(CustomCommandManager, NothingToImportWritesNothingAndABrokenFileIsLeftAlone) {
  TempRepository dir(false);
  const QString global = dir.path() + "/custom-commands.json";
  Preferences::shared().remove("customActions");
  CustomCommandManager fresh(global);
  EXPECT_TRUE(fresh.customCommands().empty());
  EXPECT_FALSE(QFileInfo::exists(global));

  dir.writeFile("custom-commands.json", "[{\"target\": \"file\", ");
  CustomCommandManager broken(global);
  EXPECT_TRUE(broken.customCommands().empty());
  EXPECT_EQ(dir.readFile("custom-commands.json"), QByteArray("[{\"target\": \"file\", "));

  CustomCommandManager none(std::nullopt);
  EXPECT_TRUE(none.customCommands().empty());
}

TEST(CustomCommandManager, RepositoryCommandsSplitIntoTheirTwoFiles) {
  TempRepository repository;
  const GitModule module = repository.module();
  const QString sharedFile = repository.path() + "/.jelv/custom-commands.json";
  const QString localFile = repository.gitDir() + "/jelv/custom-commands.json";

  CustomCommandManager::saveRepositoryCommands(
      {command("mine", CustomCommand::Target::file), command("team", CustomCommand::Target::file, true)}, module);
  ASSERT_TRUE(QFileInfo::exists(sharedFile));
  ASSERT_TRUE(QFileInfo::exists(localFile));
  // The same object in the local file too: read from the shared file it is still shared.
  repository.writeFile(".git/jelv/custom-commands.json",
                       CustomCommandCoder::encodeList(
                           {command("team", CustomCommand::Target::file, true), command("mine", CustomCommand::Target::file)}));
  const auto loaded = GetCustomCommandsGitCommand::execute(module);
  ASSERT_TRUE(loaded.isSuccess());
  ASSERT_EQ(names(loaded.value()), (QStringList{"team", "team", "mine"}));
  EXPECT_TRUE(loaded.value()[0]->shared);
  EXPECT_FALSE(loaded.value()[1]->shared);
  EXPECT_FALSE(loaded.value()[2]->shared);

  // No shared command left: the committed file goes, its folder stays.
  CustomCommandManager::saveRepositoryCommands({command("mine", CustomCommand::Target::file)}, module);
  EXPECT_FALSE(QFileInfo::exists(sharedFile));
  EXPECT_TRUE(QFileInfo(repository.path() + "/.jelv").isDir());
  EXPECT_EQ(names(GetCustomCommandsGitCommand::execute(module).value()), QStringList{"mine"});
}

TEST(CustomCommandManager, MenuListsGlobalThenRepositoryCommandsOfTheTarget) {
  QTemporaryDir dir;
  CustomCommandManager manager(dir.filePath("c.json"));
  using T = CustomCommand::Target;
  using R = CustomCommand::ReferenceTarget;
  manager.setCustomCommands({command("g-file", T::file), command("g-any-ref", T::reference),
                             command("g-tag", T::reference, false, std::vector{R::tag})});
  const CustomCommandList repository{command("r-file", T::file, true),
                                     command("r-branch", T::reference, false, std::vector{R::localBranch, R::remoteBranch}),
                                     command("r-none", T::reference, false, std::vector<R>{})};

  EXPECT_EQ(names(manager.commands(T::file, repository)), (QStringList{"g-file", "r-file"}));
  EXPECT_EQ(names(manager.commands(T::reference, repository, R::tag)), (QStringList{"g-any-ref", "g-tag"}));
  EXPECT_EQ(names(manager.commands(T::reference, repository, R::remoteBranch)), (QStringList{"g-any-ref", "r-branch"}));
  EXPECT_TRUE(manager.commands(T::repository, repository).empty());
}
