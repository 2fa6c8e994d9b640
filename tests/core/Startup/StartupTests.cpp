#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "Models/ApplicationUrl.h"
#include "Models/WindowSession.h"
#include "Services/ApplicationStartup.h"
#include "Services/Preferences.h"

namespace {

// Every test starts from an empty preferences file of its own.
class Startup : public ::testing::Test {
 protected:
  void SetUp() override { Preferences::useStoreFile(dir_.filePath(QStringLiteral("prefs.ini"))); }
  Preferences& preferences() { return Preferences::shared(); }
  QTemporaryDir dir_;
};

}  // namespace

TEST(WindowSession, RoundTripKeepsWindowsTabsOrderAndFrontTab) {
  const std::vector<WindowSession> windows{
      {QByteArray("\x01\xd9\xd0\xcb\x00\x03", 6),
       {{TabSession::Kind::repository, QStringLiteral("/src/jelv")},
        {TabSession::Kind::repositoryManager, {}},
        {TabSession::Kind::repository, QStringLiteral("/src/with space/ünïcode")}},
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
  EXPECT_EQ(windows[0].tabs[1].repositoryPath, QStringLiteral("/b"));
  EXPECT_EQ(windows[0].currentTab, 1);
  EXPECT_EQ(windows[1].currentTab, 0);
}

TEST(ApplicationUrl, ParsesBothSchemesAndRejectsOthers) {
  EXPECT_EQ(ApplicationUrl::parse(QStringLiteral("github-mac://openRepo//home/ada/src/jelv")),
            (ApplicationUrl{ApplicationUrl::Kind::openRepository, QStringLiteral("/home/ada/src/jelv")}));
  EXPECT_EQ(ApplicationUrl::parse(QStringLiteral("github-mac://openRepo/https://example.com/ada/jelv")),
            (ApplicationUrl{ApplicationUrl::Kind::openRepository, QStringLiteral("https://example.com/ada/jelv")}));
  // The clone URL is percent-decoded as a whole, its own query included.
  EXPECT_EQ(ApplicationUrl::parse(QStringLiteral(
                "sourcetree://cloneRepo?cloneUrl=https%3A%2F%2Fexample.com%2Fada%2Fj%20elv.git%3Fa%3D1%26b%3D2")),
            (ApplicationUrl{ApplicationUrl::Kind::cloneRepository, QStringLiteral("https://example.com/ada/j elv.git?a=1&b=2")}));
  EXPECT_EQ(ApplicationUrl::parse(QStringLiteral("sourcetree://cloneRepo?cloneUrl=git@example.com:ada/jelv.git")).target,
            QStringLiteral("git@example.com:ada/jelv.git"));

  EXPECT_EQ(ApplicationUrl::parse(QStringLiteral("github-mac://openrepo//src/x")).target, QStringLiteral("/src/x"));

  for (const char* other : {"github-mac://openRepo/", "sourcetree://cloneRepo?cloneUrl=", "sourcetree://openRepo/x",
                            "https://example.com/", "github-mac:/openRepo/x"}) {
    EXPECT_EQ(ApplicationUrl::parse(QString::fromLatin1(other)).kind, ApplicationUrl::Kind::unknown) << other;
  }
}

TEST_F(Startup, CommandLineSplitsFoldersFromUrlsAndSkipsTheUntitledChoice) {
  const LaunchPlan plan = ApplicationStartup::plan(
      preferences(), {QStringLiteral("/src/a"), QStringLiteral("Sourcetree://cloneRepo?cloneUrl=x"), QStringLiteral(""),
                      QStringLiteral("file:///src/b"), QStringLiteral("github-mac://openRepo//src/c")});
  EXPECT_EQ(plan.folders, (QStringList{"/src/a", "file:///src/b"}));
  EXPECT_EQ(plan.urls.size(), 2);
  EXPECT_FALSE(plan.openUntitled);
  EXPECT_TRUE(ApplicationStartup::plan(preferences(), {}).openUntitled);
}

TEST_F(Startup, SavedWindowsComeBackAndReplaceTheUntitledChoice) {
  const std::vector<WindowSession> windows{{{}, {{TabSession::Kind::repository, QStringLiteral("/src/a")}}, 0}};
  ApplicationStartup::saveWindows(preferences(), windows);
  preferences().sync();
  const LaunchPlan plan = ApplicationStartup::plan(preferences(), {});
  EXPECT_EQ(plan.restoredWindows, windows);
  EXPECT_FALSE(plan.openUntitled);
}

TEST_F(Startup, WelcomeUntilASourceFolderIsChosen) {
  preferences().setRepositorySessions({{QStringLiteral("/src/a"), false}});
  EXPECT_EQ(ApplicationStartup::applicationShouldOpenUntitledFile(preferences()).kind, UntitledFileDecision::Kind::welcome);
  // The welcome leaves the old tabs for after it.
  EXPECT_FALSE(preferences().boolean(QStringLiteral("importedOldTabs")));

  preferences().setDefaultSourceFolder(QStringLiteral("/src"));
  EXPECT_EQ(ApplicationStartup::applicationShouldOpenUntitledFile(preferences(), false).kind,
            UntitledFileDecision::Kind::nothing);
}

TEST_F(Startup, OldTabsAreImportedOnceThenTheManagerOpens) {
  preferences().setDefaultSourceFolder(QStringLiteral("/src"));
  preferences().setRepositorySessions({{QStringLiteral("/src/a"), false},
                                       {QStringLiteral("/src/b"), true},
                                       {QStringLiteral("/src/a"), false},
                                       {QStringLiteral("/src/c"), false}});
  const UntitledFileDecision first = ApplicationStartup::applicationShouldOpenUntitledFile(preferences());
  EXPECT_EQ(first.kind, UntitledFileDecision::Kind::importedTabs);
  EXPECT_EQ(first.repositoryPaths, (QStringList{"/src/a", "/src/b", "/src/c"}));
  EXPECT_EQ(first.selectedIndex, 1);
  EXPECT_TRUE(preferences().boolean(QStringLiteral("importedOldTabs")));

  EXPECT_EQ(ApplicationStartup::applicationShouldOpenUntitledFile(preferences()).kind,
            UntitledFileDecision::Kind::repositoryManager);
}

TEST_F(Startup, NoOldTabsMeansTheManagerAndTheImportIsDone) {
  preferences().setDefaultSourceFolder(QStringLiteral("/src"));
  EXPECT_EQ(ApplicationStartup::applicationShouldOpenUntitledFile(preferences()).kind,
            UntitledFileDecision::Kind::repositoryManager);
  EXPECT_TRUE(preferences().boolean(QStringLiteral("importedOldTabs")));
}

TEST(ApplicationUrl, RemoteUrlsOfOneRepositoryMatchWhateverTheirForm) {
  const QString https = QStringLiteral("https://github.com/Ada/Jelv.git");
  for (const char* same : {"git@github.com:ada/jelv", "ssh://git@github.com/ada/jelv.git", "https://github.com/ada/jelv/",
                           "https://token@github.com/ada/jelv"}) {
    EXPECT_TRUE(ApplicationUrl::sameRepository(https, QString::fromLatin1(same))) << same;
  }
  for (const char* other : {"https://github.com/ada/jelv-docs", "https://github.com/ben/jelv", "https://gitlab.com/ada/jelv",
                            ""}) {
    EXPECT_FALSE(ApplicationUrl::sameRepository(https, QString::fromLatin1(other))) << other;
  }
  EXPECT_TRUE(ApplicationUrl::sameRepository(QStringLiteral("https://git.example.org/team/tools/jelv.git"),
                                             QStringLiteral("git@git.example.org:team/tools/jelv")));
  EXPECT_FALSE(ApplicationUrl::sameRepository(QStringLiteral("https://git.example.org/team/tools/jelv.git"),
                                              QStringLiteral("https://git.example.org/team/other/jelv.git")));
  EXPECT_TRUE(ApplicationUrl::sameRepository(QStringLiteral("/srv/git/jelv.git"), QStringLiteral("/srv/git/jelv")));
}

TEST(LaunchArguments, RelativeFoldersAreMadeAbsoluteBeforeTheyLeaveTheLaunch) {
  EXPECT_EQ(ApplicationStartup::absoluteArguments({QStringLiteral("."), QStringLiteral("../other/"), QStringLiteral("/abs/x"),
                                                   QStringLiteral("file:///abs/y"), QStringLiteral("github-mac://openRepo/rel")},
                                                  QStringLiteral("/home/ada/src/jelv")),
            (QStringList{"/home/ada/src/jelv", "/home/ada/src/other", "/abs/x", "file:///abs/y", "github-mac://openRepo/rel"}));
}
