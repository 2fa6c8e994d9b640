#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>

#include "Git/Commands/Repository/GetCustomCommandsGitCommand.h"
#include "Models/CustomCommands/CustomCommandCoder.h"
#include "Services/CustomCommandManager.h"
#include "Services/Preferences.h"
#include "support/TempRepository.h"

namespace {

void writeFile(const QString& path, const QByteArray& bytes) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(bytes);
}

QByteArray readFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

CustomCommandPtr command(const QString& name, CustomCommand::Target target, bool shared = false,
                         std::optional<std::vector<CustomCommand::ReferenceTarget>> kinds = std::nullopt) {
  auto c = std::make_shared<CustomCommand>();
  c->name = name;
  c->target = target;
  c->shared = shared;
  c->referenceTargets = std::move(kinds);
  c->action = std::make_shared<UrlCustomCommandAction>(QStringLiteral("https://x.invalid/") + name);
  return c;
}

QStringList names(const CustomCommandList& list) {
  QStringList result;
  for (const auto& c : list) result << c->name;
  return result;
}

const QVariantList oldActions{
    QVariantMap{{QStringLiteral("target"), QStringLiteral("repository")},
                {QStringLiteral("name"), QStringLiteral("Old one")},
                {QStringLiteral("action"), QVariantMap{{QStringLiteral("type"), QStringLiteral("url")},
                                                       {QStringLiteral("url"), QStringLiteral("https://old.invalid")}}}},
    QVariantMap{{QStringLiteral("name"), QStringLiteral("No target")}}};

}  // namespace

TEST(CustomCommandManager, OldUserDefaultIsImportedOnce) {
  QTemporaryDir dir;
  const QString global = dir.filePath(QStringLiteral("support/custom-commands.json"));
  Preferences::shared().setValue(QStringLiteral("customActions"), oldActions);

  CustomCommandManager first(global);
  EXPECT_EQ(names(first.customCommands()), QStringList{QStringLiteral("Old one")});
  ASSERT_TRUE(QFileInfo::exists(global));

  // The next start reads the file; the old default, though still there, is not read again.
  Preferences::shared().setValue(QStringLiteral("customActions"),
                                 QVariantList{QVariantMap{{QStringLiteral("target"), QStringLiteral("file")},
                                                          {QStringLiteral("name"), QStringLiteral("Changed")},
                                                          {QStringLiteral("action"), QVariantMap{{QStringLiteral("type"), QStringLiteral("cancel")}}}}});
  CustomCommandManager second(global);
  EXPECT_EQ(names(second.customCommands()), QStringList{QStringLiteral("Old one")});

  // Emptied through the preferences, the file stays (as "[]"), so no import comes back.
  second.setCustomCommands({});
  CustomCommandManager third(global);
  EXPECT_TRUE(third.customCommands().empty());
  EXPECT_TRUE(QFileInfo::exists(global));
  Preferences::shared().remove(QStringLiteral("customActions"));
}

TEST(CustomCommandManager, NothingToImportWritesNothingAndABrokenFileIsLeftAlone) {
  QTemporaryDir dir;
  const QString global = dir.filePath(QStringLiteral("custom-commands.json"));
  Preferences::shared().remove(QStringLiteral("customActions"));
  CustomCommandManager fresh(global);
  EXPECT_TRUE(fresh.customCommands().empty());
  EXPECT_FALSE(QFileInfo::exists(global));

  writeFile(global, "[{\"target\": \"file\", ");
  CustomCommandManager broken(global);
  EXPECT_TRUE(broken.customCommands().empty());
  EXPECT_EQ(readFile(global), QByteArray("[{\"target\": \"file\", "));

  CustomCommandManager none(std::nullopt);
  EXPECT_TRUE(none.customCommands().empty());
}

TEST(CustomCommandManager, RepositoryCommandsSplitIntoTheirTwoFiles) {
  TempRepository repository;
  const GitModule module = repository.module();
  const QString sharedFile = repository.path() + QStringLiteral("/.jelv/custom-commands.json");
  const QString localFile = repository.gitDir() + QStringLiteral("/jelv/custom-commands.json");

  CustomCommandManager::saveRepositoryCommands({command(QStringLiteral("mine"), CustomCommand::Target::file),
                                                command(QStringLiteral("team"), CustomCommand::Target::file, true)},
                                               module);
  ASSERT_TRUE(QFileInfo::exists(sharedFile));
  ASSERT_TRUE(QFileInfo::exists(localFile));
  // The same object in the local file too: read from the shared file it is still shared.
  writeFile(localFile, CustomCommandCoder::encodeList({command(QStringLiteral("team"), CustomCommand::Target::file, true),
                                                       command(QStringLiteral("mine"), CustomCommand::Target::file)}));
  const auto loaded = GetCustomCommandsGitCommand::execute(module);
  ASSERT_TRUE(loaded.isSuccess());
  ASSERT_EQ(names(loaded.value()), (QStringList{QStringLiteral("team"), QStringLiteral("team"), QStringLiteral("mine")}));
  EXPECT_TRUE(loaded.value()[0]->shared);
  EXPECT_FALSE(loaded.value()[1]->shared);
  EXPECT_FALSE(loaded.value()[2]->shared);

  // No shared command left: the committed file goes, its folder stays.
  CustomCommandManager::saveRepositoryCommands({command(QStringLiteral("mine"), CustomCommand::Target::file)}, module);
  EXPECT_FALSE(QFileInfo::exists(sharedFile));
  EXPECT_TRUE(QFileInfo(repository.path() + QStringLiteral("/.jelv")).isDir());
  EXPECT_EQ(names(GetCustomCommandsGitCommand::execute(module).value()), QStringList{QStringLiteral("mine")});
}

TEST(CustomCommandManager, MenuListsGlobalThenRepositoryCommandsOfTheTarget) {
  QTemporaryDir dir;
  CustomCommandManager manager(dir.filePath(QStringLiteral("c.json")));
  using T = CustomCommand::Target;
  using R = CustomCommand::ReferenceTarget;
  manager.setCustomCommands({command(QStringLiteral("g-file"), T::file), command(QStringLiteral("g-any-ref"), T::reference),
                             command(QStringLiteral("g-tag"), T::reference, false, std::vector{R::tag})});
  const CustomCommandList repository{command(QStringLiteral("r-file"), T::file, true),
                                     command(QStringLiteral("r-branch"), T::reference, false, std::vector{R::localBranch, R::remoteBranch}),
                                     command(QStringLiteral("r-none"), T::reference, false, std::vector<R>{})};

  EXPECT_EQ(names(manager.commands(T::file, repository)), (QStringList{QStringLiteral("g-file"), QStringLiteral("r-file")}));
  EXPECT_EQ(names(manager.commands(T::reference, repository, R::tag)),
            (QStringList{QStringLiteral("g-any-ref"), QStringLiteral("g-tag")}));
  EXPECT_EQ(names(manager.commands(T::reference, repository, R::remoteBranch)),
            (QStringList{QStringLiteral("g-any-ref"), QStringLiteral("r-branch")}));
  EXPECT_TRUE(manager.commands(T::repository, repository).empty());
}
