#include <gtest/gtest.h>

#include <QFile>

#include "Git/Commands/Config/GetConfigValueGitCommand.h"
#include "Git/Commands/Config/SetConfigValueGitCommand.h"
#include "Models/GitModuleSettings.h"
#include "Models/RepositoryCommitSettings.h"
#include "support/TempRepository.h"

namespace {
QString localValue(const TempRepository& repo, const QString& key) {
  int status = 0;
  return repo.git({"config", "--local", "--get", key}, true, &status).trimmed();
}
}  // namespace

TEST(ConfigValueGitCommands, ReadWriteAndRemoveLocalKeys) {
  TempRepository repo;
  const GitModule module = repo.module();
  const QString key = "user.name";

  auto missing = GetConfigValueGitCommand::execute(module, key, ConfigLocation::local);
  ASSERT_TRUE(missing.isSuccess());
  EXPECT_FALSE(missing.value().has_value());

  // Inner and trailing blanks survive the round trip.
  ASSERT_TRUE(SetConfigValueGitCommand::execute(module, key, "Ada  Lovelace ", ConfigLocation::local));
  auto written = GetConfigValueGitCommand::execute(module, key, ConfigLocation::local);
  ASSERT_TRUE(written.isSuccess());
  EXPECT_EQ(written.value(), std::optional<QString>("Ada  Lovelace "));

  ASSERT_TRUE(SetConfigValueGitCommand::execute(module, key, std::nullopt, ConfigLocation::local));
  EXPECT_TRUE(localValue(repo, key).isEmpty());
  // Removing again is no failure: the key is absent as asked.
  EXPECT_TRUE(SetConfigValueGitCommand::execute(module, key, std::nullopt, ConfigLocation::local));
  // A key without a section is refused by git and reported.
  EXPECT_TRUE(SetConfigValueGitCommand::execute(module, "nosection", "x", ConfigLocation::local).isFailure());
}

TEST(RepositoryCommitSettings, SavesOnlyWhatChangedAndReadsItBack) {
  TempRepository repo;
  const GitModule module = repo.module();

  auto loaded = RepositoryCommitSettings::load(module);
  ASSERT_TRUE(loaded.isSuccess());
  const RepositoryCommitSettings before = loaded.value();
  EXPECT_TRUE(before.userName.isEmpty());
  EXPECT_EQ(before.globalUserName, "Jelv Test");
  EXPECT_FALSE(before.templatePath.has_value());

  RepositoryCommitSettings after = before;
  after.userName = "  Ada Lovelace ";
  after.userEmail = "ada@example.com";
  after.signingKey = "ABCD1234";
  after.signOff = true;
  after.commitTemplate = "Subject\n\nWhy:\n";
  ASSERT_TRUE(RepositoryCommitSettings::save(module, before, after));
  // The config write leaves the settings file alone; the main thread stores signing.
  EXPECT_FALSE(GitModuleSettings::load(module).signOff);
  RepositoryCommitSettings::saveSigning(module, before, after);

  EXPECT_EQ(localValue(repo, "user.name"), "Ada Lovelace");
  EXPECT_EQ(localValue(repo, "user.email"), "ada@example.com");
  const GitModuleSettings stored = GitModuleSettings::load(module);
  EXPECT_EQ(stored.signingKey, std::optional<QString>("ABCD1234"));
  EXPECT_TRUE(stored.signOff);
  // Where the template goes and what it holds is the template command's test (Commit).
  const QString templatePath = localValue(repo, "commit.template");

  auto reread = RepositoryCommitSettings::load(module);
  ASSERT_TRUE(reread.isSuccess());
  EXPECT_EQ(reread.value().userName, "Ada Lovelace");
  EXPECT_EQ(reread.value().commitTemplate, "Subject\n\nWhy:\n");
  EXPECT_EQ(reread.value().signingKey, "ABCD1234");

  // Emptied fields remove the local keys; the template file stays but is no longer used.
  RepositoryCommitSettings cleared = reread.value();
  cleared.userName.clear();
  cleared.commitTemplate.clear();
  cleared.signingKey.clear();
  ASSERT_TRUE(RepositoryCommitSettings::save(module, reread.value(), cleared));
  RepositoryCommitSettings::saveSigning(module, reread.value(), cleared);
  EXPECT_TRUE(localValue(repo, "user.name").isEmpty());
  EXPECT_EQ(localValue(repo, "user.email"), "ada@example.com");
  EXPECT_TRUE(localValue(repo, "commit.template").isEmpty());
  EXPECT_TRUE(QFile::exists(templatePath));
  EXPECT_FALSE(GitModuleSettings::load(module).signingKey.has_value());
  EXPECT_TRUE(GitModuleSettings::load(module).signOff);
}

// Nothing changed: nothing is written, so even a configuration git refuses to write
// doesn't make saving fail.
TEST(RepositoryCommitSettings, AnUnchangedSheetWritesNothing) {
  TempRepository repo;
  auto loaded = RepositoryCommitSettings::load(repo.module());
  ASSERT_TRUE(loaded.isSuccess());
  // A stale config lock makes every config write fail.
  repo.writeFile(".git/config.lock", "");
  EXPECT_TRUE(RepositoryCommitSettings::save(repo.module(), loaded.value(), loaded.value()));
  RepositoryCommitSettings renamed = loaded.value();
  renamed.userName = "Someone";
  EXPECT_TRUE(RepositoryCommitSettings::save(repo.module(), loaded.value(), renamed).isFailure());
}
