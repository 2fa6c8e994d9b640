#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalSpy>

#include "Services/PreferencesNotifier.h"
#include "Services/RepositoryOpener.h"
#include "Services/RepositoryScan.h"
#include "ScanFixture.h"

namespace {
QStringList walk(const QString& folder, int level = RepositoryScan::startLevel) {
  QStringList found;
  RepositoryScan::findGitRepositories(folder, found, level);
  return found;
}
QStringList registeredPaths(AppSettings& settings) {
  QStringList paths;
  for (const auto& record : settings.getRepositories()) paths << record->repositoryPath;
  paths.sort();
  return paths;
}
}  // namespace

TEST_F(ScanTest, TheWalkFindsRepositoriesFiveLevelsDownButNotSixNorInsideOthers) {
  makeRepository("top");
  makeRepository("a/b/c/deepest");      // its ".git" is five levels below the root
  makeRepository("a/b/c/d/too-deep");   // six
  makeRepository("top/vendor/nested");  // inside another working tree
  makeFolder("a/empty/folder");

  EXPECT_EQ(relativeNames(walk(root)), (QStringList{"a/b/c/deepest", "top"}));
}

TEST_F(ScanTest, TheWalkFollowsLinksToFoldersButNotToFiles) {
  QTemporaryDir elsewhere;
  const QString outside = QFileInfo(elsewhere.path()).canonicalFilePath() + "/projects";
  QDir().mkpath(outside + "/tool");
  runProgram("git", {"init", "-q", outside + "/tool"});
  makeLink(outside, "projects-link");
  makeFile("notes.txt");
  makeLink(at("notes.txt"), "notes-link");
  makeLink(at("missing"), "dangling-link");

  EXPECT_EQ(relativeNames(walk(root)), QStringList{"projects-link/tool"});
  // The root itself may be a repository, and a level of 0 looks at nothing.
  EXPECT_EQ(walk(outside + "/tool", 1), QStringList{outside + "/tool"});
  EXPECT_TRUE(walk(outside + "/tool", 0).empty());
}

TEST_F(ScanTest, RescanRebuildsRowsFromDiskAndKeepsCategories) {
  makeRepository("work/api");
  makeRepository("work/web");
  makeRepository("solo");
  const QString outer = makeRepository("outer");
  // A submodule checkout holds a ".git" file, not a folder: the walk sees the parent only.
  runProgram("git", {"-c", "protocol.file.allow=always", "submodule", "add", "-q", at("solo"), "sub"}, outer);

  EXPECT_EQ(RepositoryScan::rescanRepositories(*settings, root), 4);
  EXPECT_EQ(registeredPaths(*settings), (QStringList{at("outer"), at("solo"), at("work/api"), at("work/web")}));
  const auto categories = settings->getCategories();
  ASSERT_EQ(categories.size(), 1u);
  EXPECT_EQ(categories[0].name, "work");
  EXPECT_EQ(settings->getRepositories(categories[0].id).size(), 2u);

  // What the user set on a row is lost; the category and its manual sub-category stay.
  const auto solo = settings->getRepositories()[2];
  ASSERT_EQ(solo->name, "solo");
  settings->renameRepository(solo->id, "Solo!");
  settings->setRepositoryColorTag(solo->id, 1);
  settings->createCategory("mine", categories[0].id);
  ASSERT_TRUE(QDir(at("work/web")).removeRecursively());

  EXPECT_EQ(RepositoryScan::rescanRepositories(*settings, root + "/"), 3);
  EXPECT_EQ(registeredPaths(*settings), (QStringList{at("outer"), at("solo"), at("work/api")}));
  const auto again = settings->getRepositories();
  ASSERT_EQ(again.size(), 3u);
  EXPECT_EQ(again[2]->name, "solo");
  EXPECT_FALSE(again[2]->colorTag.has_value());
  EXPECT_EQ(settings->getCategories().size(), 2u);
  EXPECT_EQ(settings->getRepositories(categories[0].id).size(), 1u);
}

TEST_F(ScanTest, RescanWithoutASourceFolderChangesNothing) {
  settings->addRepository("/kept");
  EXPECT_EQ(RepositoryScan::rescanRepositories(*settings, std::nullopt), 0);
  EXPECT_EQ(RepositoryScan::rescanRepositories(*settings, "  "), 0);
  EXPECT_EQ(registeredPaths(*settings), QStringList{"/kept"});
}

TEST_F(ScanTest, AddingByHandReportsEachRefusalAndStillAddsTheRest) {
  const QString api = makeRepository("team/api");
  const QString outer = makeRepository("outer");
  runProgram("git", {"-c", "protocol.file.allow=always", "submodule", "add", "-q", api, "sub"}, outer);
  makeFolder("plain");
  QTemporaryDir elsewhere;
  const QString outside = QFileInfo(elsewhere.path()).canonicalFilePath();
  runProgram("git", {"init", "-q", outside});

  const auto refused = RepositoryScan::addRepositories(*settings, {at("plain"), api, outer + "/sub", outside + " "}, root);
  EXPECT_EQ(refused, (std::vector<RepositoryScan::Refused>{{at("plain"), RepositoryRefusal::notARepository},
                                                           {outer + "/sub", RepositoryRefusal::submodule}}));
  EXPECT_EQ(RepositoryValidation::alertMessage(refused[1].refusal, refused[1].path),
            "'" + outer + "/sub' is a submodule. Please select a correct path.");

  QStringList expected{api, outside};
  expected.sort();
  EXPECT_EQ(registeredPaths(*settings), expected);
  // Inside the source folder the folders become categories; outside it, the root.
  const auto rows = settings->getRepositories();
  for (const auto& row : rows) {
    if (row->repositoryPath == api)
      EXPECT_EQ(row->categoryName, "team");
    else EXPECT_EQ(row->categoryId, -1);
  }
}

class OpenRepositoryTest : public ScanTest {
 protected:
  void SetUp() override {
    ScanTest::SetUp();
    opener = std::make_unique<RepositoryOpener>(*settings, [this](const GitModule& module) { opened.push_back(module); });
  }
  RepositoryOpener::Result open(const QString& url) {
    std::optional<RepositoryOpener::Result> result;
    opener->openRepository(url, [&](const RepositoryOpener::Result& r) { result = r; });
    QElapsedTimer timer;
    timer.start();
    while (!result && timer.elapsed() < 30000) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_TRUE(result.has_value()) << "no completion";
    return result.value_or(RepositoryOpener::Result{});
  }

  std::vector<GitModule> opened;
  QDateTime clock = QDateTime(QDate(2024, 6, 1), QTime(8, 0), Qt::UTC);
  std::unique_ptr<RepositoryOpener> opener;
};

TEST_F(OpenRepositoryTest, OpeningShowsTheDocumentAndPutsTheRepositoryFirstInTheRecentList) {
  settings->setClock([this] { return clock; });
  const QString alpha = makeRepository("alpha");
  const QString beta = makeRepository("beta");
  settings->addRepository(alpha);
  clock = clock.addSecs(60);
  settings->addRepository(beta);
  clock = clock.addSecs(60);

  QSignalSpy managerUpdates(&PreferencesNotifier::shared(), &PreferencesNotifier::repositoryManagerDataUpdated);
  const auto result = open("file://" + alpha);
  ASSERT_TRUE(result.gitModule.has_value());
  EXPECT_EQ(managerUpdates.count(), 1);  // the recent list of an open manager follows
  EXPECT_EQ(result.gitModule->repositoryPath, alpha);
  ASSERT_EQ(opened.size(), 1u);
  EXPECT_EQ(opened[0], *result.gitModule);
  EXPECT_EQ(settings->getRecentRepositories()[0]->repositoryPath, alpha);
  EXPECT_EQ(settings->getRepositories().size(), 2u);

  // A repository that was not known joins the registry at the root.
  const QString gamma = makeRepository("nested/gamma");
  clock = clock.addSecs(60);
  ASSERT_TRUE(open(gamma).gitModule.has_value());
  EXPECT_EQ(settings->getRecentRepositories()[0]->repositoryPath, gamma);
  EXPECT_FALSE(settings->getRecentRepositories()[0]->categoryId.has_value());
}

TEST_F(OpenRepositoryTest, ARefusedPathOpensNothingAndSaysWhy) {
  makeFolder("plain");
  const auto result = open(at("plain"));
  EXPECT_FALSE(result.gitModule.has_value());
  EXPECT_EQ(result.failureText, "The '" + at("plain") + "' is not a valid git directory.");
  EXPECT_TRUE(opened.empty());
  EXPECT_TRUE(settings->getRepositories().empty());
}
