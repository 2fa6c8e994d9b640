#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "Models/ApplicationUrl.h"
#include "Models/WindowSession.h"
#include "Services/ApplicationStartup.h"
#include "Services/Preferences.h"
#include "support/TestEnvironment.h"

namespace {

// Every test starts from an empty preferences file of its own.
class Startup : public ::testing::Test {
 protected:
  void SetUp() override { Preferences::useStoreFile(dir_.filePath("prefs.ini")); }
  void TearDown() override { TestEnvironment::usePreferencesFile(); }
  Preferences& preferences() { return Preferences::shared(); }
  QTemporaryDir dir_;
};

}  // namespace

TEST(WindowSession, RoundTripKeepsWindowsTabsOrderAndFrontTab) {
  const std::vector<WindowSession> windows{
      {QByteArray("\x01\xd9\xd0\xcb\x00\x03", 6),
       {{TabSession::Kind::repository, "/src/jelv"},
        {TabSession::Kind::repositoryManager, {}},
        {TabSession::Kind::repository, "/src/with space/ünïcode"}},
       2},
      {{}, {{TabSession::Kind::repositoryManager, {}}}, 0},
  };
  EXPECT_EQ(WindowSession::decode(WindowSession::encode(windows)), windows);
}

TEST(WindowSession, DecodingIsTolerant) {
  EXPECT_TRUE(WindowSession::decode("").empty());
  EXPECT_TRUE(WindowSession::decode("{not json").empty());
  EXPECT_TRUE(WindowSession::decode(R"({"tabs":[]})").empty());

  // A bad tab drops out and the front tab still points at the same tab; a window left
  // without tabs drops out; an index out of range is clamped.
  const auto windows = WindowSession::decode(R"([
    {"tabs":[{"kind":"repository","path":"/a"},{"kind":"repository"},{"kind":"bogus","path":"/x"},
             {"kind":"repository","path":"/b"}],"currentTab":3},
    {"tabs":[{"kind":"repository","path":"  "}],"currentTab":0},
    {"tabs":[{"kind":"repositoryManager"}],"currentTab":7},
    "garbage"
  ])");
  ASSERT_EQ(windows.size(), 2u);
  ASSERT_EQ(windows[0].tabs.size(), 2u);
  EXPECT_EQ(windows[0].tabs[1].repositoryPath, "/b");
  EXPECT_EQ(windows[0].currentTab, 1);
  EXPECT_EQ(windows[1].currentTab, 0);
}

TEST(ApplicationUrl, ParsesBothSchemesAndRejectsOthers) {
  using K = ApplicationUrl::Kind;
  const std::pair<const char*, ApplicationUrl> cases[] = {
      {"github-mac://openRepo//home/ada/src/jelv", {K::openRepository, "/home/ada/src/jelv"}},
      {"github-mac://openRepo/https://example.com/ada/jelv", {K::openRepository, "https://example.com/ada/jelv"}},
      {"github-mac://openrepo//src/x", {K::openRepository, "/src/x"}},
      // The clone URL is percent-decoded as a whole, its own query included.
      {"sourcetree://cloneRepo?cloneUrl=https%3A%2F%2Fexample.com%2Fada%2Fj%20elv.git%3Fa%3D1%26b%3D2",
       {K::cloneRepository, "https://example.com/ada/j elv.git?a=1&b=2"}},
      {"sourcetree://cloneRepo?cloneUrl=git@example.com:ada/jelv.git", {K::cloneRepository, "git@example.com:ada/jelv.git"}},
  };
  for (const auto& [url, parsed] : cases) EXPECT_EQ(ApplicationUrl::parse(url), parsed) << url;
  for (const char* other : {"github-mac://openRepo/", "sourcetree://cloneRepo?cloneUrl=", "sourcetree://openRepo/x",
                            "https://example.com/", "github-mac:/openRepo/x"}) {
    EXPECT_EQ(ApplicationUrl::parse(other).kind, K::unknown) << other;
  }
}

TEST_F(Startup, CommandLineSplitsFoldersFromUrlsAndSkipsTheUntitledChoice) {
  const LaunchPlan plan = ApplicationStartup::plan(
      preferences(), {"/src/a", "Sourcetree://cloneRepo?cloneUrl=x", "", "file:///src/b", "github-mac://openRepo//src/c"});
  EXPECT_EQ(plan.folders, (QStringList{"/src/a", "file:///src/b"}));
  EXPECT_EQ(plan.urls.size(), 2);
  EXPECT_FALSE(plan.openUntitled);
  EXPECT_TRUE(ApplicationStartup::plan(preferences(), {}).openUntitled);
}

TEST_F(Startup, SavedWindowsComeBackAndReplaceTheUntitledChoice) {
  const std::vector<WindowSession> windows{{{}, {{TabSession::Kind::repository, "/src/a"}}, 0}};
  ApplicationStartup::saveWindows(preferences(), windows);
  preferences().sync();
  const LaunchPlan plan = ApplicationStartup::plan(preferences(), {});
  EXPECT_EQ(plan.restoredWindows, windows);
  EXPECT_FALSE(plan.openUntitled);
}

TEST_F(Startup, WelcomeUntilASourceFolderIsChosen) {
  preferences().setRepositorySessions({{"/src/a", false}});
  EXPECT_EQ(ApplicationStartup::applicationShouldOpenUntitledFile(preferences()).kind, UntitledFileDecision::Kind::welcome);
  // The welcome leaves the old tabs for after it.
  EXPECT_FALSE(preferences().boolean("importedOldTabs"));

  preferences().setDefaultSourceFolder("/src");
  EXPECT_EQ(ApplicationStartup::applicationShouldOpenUntitledFile(preferences(), false).kind,
            UntitledFileDecision::Kind::nothing);
}

TEST_F(Startup, OldTabsAreImportedOnceThenTheManagerOpens) {
  preferences().setDefaultSourceFolder("/src");
  preferences().setRepositorySessions({{"/src/a", false}, {"/src/b", true}, {"/src/a", false}, {"/src/c", false}});
  const UntitledFileDecision first = ApplicationStartup::applicationShouldOpenUntitledFile(preferences());
  EXPECT_EQ(first.kind, UntitledFileDecision::Kind::importedTabs);
  EXPECT_EQ(first.repositoryPaths, (QStringList{"/src/a", "/src/b", "/src/c"}));
  EXPECT_EQ(first.selectedIndex, 1);
  EXPECT_TRUE(preferences().boolean("importedOldTabs"));

  EXPECT_EQ(ApplicationStartup::applicationShouldOpenUntitledFile(preferences()).kind,
            UntitledFileDecision::Kind::repositoryManager);
}

TEST_F(Startup, NoOldTabsMeansTheManagerAndTheImportIsDone) {
  preferences().setDefaultSourceFolder("/src");
  EXPECT_EQ(ApplicationStartup::applicationShouldOpenUntitledFile(preferences()).kind,
            UntitledFileDecision::Kind::repositoryManager);
  EXPECT_TRUE(preferences().boolean("importedOldTabs"));
}

TEST(ApplicationUrl, RemoteUrlsOfOneRepositoryMatchWhateverTheirForm) {
  const QString https = "https://github.com/Ada/Jelv.git";
  for (const char* same : {"git@github.com:ada/jelv", "ssh://git@github.com/ada/jelv.git", "https://github.com/ada/jelv/",
                           "https://token@github.com/ada/jelv"}) {
    EXPECT_TRUE(ApplicationUrl::sameRepository(https, QString::fromLatin1(same))) << same;
  }
  for (const char* other : {"https://github.com/ada/jelv-docs", "https://github.com/ben/jelv", "https://gitlab.com/ada/jelv",
                            ""}) {
    EXPECT_FALSE(ApplicationUrl::sameRepository(https, QString::fromLatin1(other))) << other;
  }
  EXPECT_TRUE(
      ApplicationUrl::sameRepository("https://git.example.org/team/tools/jelv.git", "git@git.example.org:team/tools/jelv"));
  EXPECT_FALSE(ApplicationUrl::sameRepository("https://git.example.org/team/tools/jelv.git",
                                              "https://git.example.org/team/other/jelv.git"));
  EXPECT_TRUE(ApplicationUrl::sameRepository("/srv/git/jelv.git", "/srv/git/jelv"));
}

TEST(LaunchArguments, RelativeFoldersAreMadeAbsoluteBeforeTheyLeaveTheLaunch) {
  EXPECT_EQ(ApplicationStartup::absoluteArguments({".", "../other/", "/abs/x", "file:///abs/y", "github-mac://openRepo/rel"},
                                                  "/home/ada/src/jelv"),
            (QStringList{"/home/ada/src/jelv", "/home/ada/src/other", "/abs/x", "file:///abs/y", "github-mac://openRepo/rel"}));
}
