#include <gtest/gtest.h>

#include <QFileInfo>
#include <thread>

#include "Models/GitModuleSettings.h"
#include "support/LogCapture.h"
#include "support/TempRepository.h"

namespace {

class GitModuleSettingsTest : public ::testing::Test {
 protected:
  void writeSettings(const QByteArray& content) { repo.writeFile(".git/jelv-settings", content); }
  GitModuleSettings load() { return GitModuleSettings::load(repo.module()); }

  TempRepository repo;
};

TEST_F(GitModuleSettingsTest, MissingBrokenOrForeignFilesGiveTheDefaults) {
  const GitModuleSettings defaults;
  EXPECT_EQ(load(), defaults);

  for (const QByteArray& content : {QByteArray("{\"tabWidth\": 8,"), QByteArray("[{\"tabWidth\": 8}]"),
                                    QByteArray("\"tabWidth\""), QByteArray("\xff\xfe{}"), QByteArray()}) {
    writeSettings(content);
    EXPECT_EQ(load(), defaults) << content.toStdString();
  }
  // A broken file stays on disk until the next save replaces it.
  writeSettings("{\"tabWidth\": 8,");
  load();
  EXPECT_EQ(repo.readFile(".git/jelv-settings"), QByteArray("{\"tabWidth\": 8,"));
}

TEST_F(GitModuleSettingsTest, EachKeyIsReadOnItsOwn) {
  writeSettings(R"({"draftMessage": "wip: parser", "signingKey": "ABCD1234", "signOff": true,
                    "starredReferences": ["refs/heads/main", 7, "refs/tags/v1"], "filterReferences": "refs/heads/x",
                    "tabWidth": "eight", "hideTags": 1, "hideRemoteBranches": true, "hideStashes": true,
                    "showBugtrackerLinks": false, "trustSharedCommands": true, "unknownKey": {}})");
  LogCapture log;
  const GitModuleSettings settings = load();
  EXPECT_EQ(settings.draftMessage, "wip: parser");
  EXPECT_EQ(settings.signingKey, "ABCD1234");
  EXPECT_TRUE(settings.signOff);
  EXPECT_EQ(settings.starredReferences, (QStringList{"refs/heads/main", "refs/tags/v1"}));  // the number drops out
  EXPECT_TRUE(settings.filterReferences.isEmpty());  // a string is not a list
  EXPECT_EQ(settings.tabWidth, 4);
  EXPECT_FALSE(settings.hideTags);  // 1 is not a boolean
  EXPECT_TRUE(settings.hideRemoteBranches && settings.hideStashes && settings.trustSharedCommands);
  EXPECT_FALSE(settings.showBugtrackerLinks);
  EXPECT_EQ(log.messages(AdvancedLogger::Level::warning).size(), 1);
}

TEST_F(GitModuleSettingsTest, OlderPinnedReferencesAreReadWhenTheNewKeyIsMissing) {
  // The older key alone is read by RevisionListDisplay's test.
  writeSettings(R"({"pinnedReferences": ["refs/heads/old"], "starredReferences": ["refs/heads/new"]})");
  EXPECT_EQ(load().starredReferences, QStringList{"refs/heads/new"});

  writeSettings(R"({"pinnedReferences": ["refs/heads/old"], "starredReferences": null})");
  EXPECT_EQ(load().starredReferences, QStringList{"refs/heads/old"});

  // The next save writes the new key only.
  GitModuleSettings settings = load();
  settings.save(repo.module());
  const QByteArray saved = repo.readFile(".git/jelv-settings");
  EXPECT_TRUE(saved.contains("\"starredReferences\":[\"refs/heads/old\"]"));
  EXPECT_FALSE(saved.contains("pinnedReferences"));
}

TEST_F(GitModuleSettingsTest, EncodesKeysInTheirOrderAndRoundTrips) {
  GitModuleSettings settings;
  settings.draftMessage = "Fix \"quotes\"\nand \u00e4 lines";
  settings.starredReferences = {"refs/heads/main"};
  settings.tabWidth = 2;
  EXPECT_EQ(*settings.encode(),
            QByteArray(R"({"draftMessage":"Fix \"quotes\"\nand )") + "\xc3\xa4" +
                R"( lines","signOff":false,"starredReferences":["refs/heads/main"],"filterReferences":[],"tabWidth":2,)"
                R"("hideTags":false,"hideRemoteBranches":false,"hideStashes":false,"showBugtrackerLinks":true,)"
                R"("trustSharedCommands":false})");

  settings.signingKey = "KEY";
  settings.hideStashes = true;
  const QByteArray withKey = *settings.encode();
  EXPECT_TRUE(withKey.startsWith(R"({"draftMessage":)"));
  EXPECT_LT(withKey.indexOf("\"draftMessage\""), withKey.indexOf("\"signingKey\":\"KEY\""));
  EXPECT_LT(withKey.indexOf("\"signingKey\""), withKey.indexOf("\"signOff\""));

  settings.save(repo.module());
  EXPECT_EQ(load(), settings);
}

TEST_F(GitModuleSettingsTest, SaveFailuresOnlyReachTheLog) {
  GitModule gone = repo.module();
  gone.gitDirectoryUrl = repo.path() + "/no/such/directory";
  LogCapture log;
  GitModuleSettings().save(gone);
  EXPECT_TRUE(log.contains("Cannot write settings to '" + gone.gitDirectoryUrl + "/jelv-settings'"));
  EXPECT_FALSE(QFileInfo::exists(gone.gitDirectoryUrl));
}

// A load-change-save on a worker races the main thread's writers (a draft, a star) and
// loses one of the changes: only the main thread writes.
TEST_F(GitModuleSettingsTest, ASaveOffTheMainThreadIsRefused) {
  GitModuleSettings starred;
  starred.starredReferences = {"refs/heads/main"};
  starred.save(repo.module());
  LogCapture log;
  std::thread worker([&] {
    GitModuleSettings other = load();
    other.draftMessage = "from a worker";
    other.starredReferences.clear();
    other.save(repo.module());
  });
  worker.join();
  EXPECT_EQ(load(), starred);
  EXPECT_TRUE(log.contains("only the main thread writes them"));
}

TEST_F(GitModuleSettingsTest, ASubmoduleKeepsItsSettingsInItsOwnGitDirectory) {
  TempRepository library(true, "library");
  library.commitFile("lib.txt", "1\n", "library");
  repo.commitFile("main.txt", "main\n", "main");
  repo.git({"-c", "protocol.file.allow=always", "submodule", "add", "-q", library.path(), "lib"});

  const QString submodulePath = repo.path() + "/lib";
  const QString gitDirectory = QString::fromUtf8(runProgram("git", {"rev-parse", "--absolute-git-dir"}, submodulePath)).trimmed();
  ASSERT_TRUE(QFileInfo(submodulePath + "/.git").isFile());  // a "gitdir:" pointer, not the directory
  const GitModule submodule{submodulePath, gitDirectory, repo.path()};

  GitModuleSettings settings;
  settings.tabWidth = 3;
  settings.save(submodule);
  EXPECT_TRUE(QFileInfo::exists(repo.gitDir() + "/modules/lib/jelv-settings"));
  EXPECT_EQ(GitModuleSettings::load(submodule).tabWidth, 3);
  EXPECT_EQ(load().tabWidth, 4);  // the superproject's settings are its own
}

}  // namespace
