#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSignalSpy>

#include "Services/PreferencesNotifier.h"
#include "Services/RepositoryOpener.h"
#include "Services/RepositoryScan.h"
#include "ScanFixture.h"

namespace {
QStringList registeredPaths(AppSettings& settings) {
  QStringList paths;
  for (const auto& record : settings.getRepositories()) paths << record->repositoryPath;
  paths.sort();
  return paths;
}
}  // namespace

TEST_F(ScanTest, TheWalkFindsRepositoriesFiveLevelsDownButNotSixNorInsideOthers) {
  makeRepository(QStringLiteral("top"));
  makeRepository(QStringLiteral("a/b/c/deepest"));    // its ".git" is five levels below the root
  makeRepository(QStringLiteral("a/b/c/d/too-deep"));  // six
  makeRepository(QStringLiteral("top/vendor/nested"));  // inside another working tree
  makeFolder(QStringLiteral("a/empty/folder"));

  QStringList found;
  RepositoryScan::findGitRepositories(root, found, RepositoryScan::startLevel);
  EXPECT_EQ(relativeNames(found), (QStringList{QStringLiteral("a/b/c/deepest"), QStringLiteral("top")}));
}

TEST_F(ScanTest, TheWalkFollowsLinksToFoldersButNotToFiles) {
  QTemporaryDir elsewhere;
  const QString outside = QFileInfo(elsewhere.path()).canonicalFilePath() + QStringLiteral("/projects");
  QDir().mkpath(outside + QStringLiteral("/tool"));
  runProgram(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("-q"), outside + QStringLiteral("/tool")});
  makeLink(outside, QStringLiteral("projects-link"));
  makeFile(QStringLiteral("notes.txt"));
  makeLink(at(QStringLiteral("notes.txt")), QStringLiteral("notes-link"));
  makeLink(at(QStringLiteral("missing")), QStringLiteral("dangling-link"));

  QStringList found;
  RepositoryScan::findGitRepositories(root, found, RepositoryScan::startLevel);
  EXPECT_EQ(relativeNames(found), QStringList{QStringLiteral("projects-link/tool")});

  // The root itself may be a repository, and a level of 0 looks at nothing.
  QStringList self;
  RepositoryScan::findGitRepositories(outside + QStringLiteral("/tool"), self, 1);
  EXPECT_EQ(self, QStringList{outside + QStringLiteral("/tool")});
  QStringList none;
  RepositoryScan::findGitRepositories(outside + QStringLiteral("/tool"), none, 0);
  EXPECT_TRUE(none.empty());
}

TEST_F(ScanTest, RescanRebuildsRowsFromDiskAndKeepsCategories) {
  makeRepository(QStringLiteral("work/api"));
  makeRepository(QStringLiteral("work/web"));
  makeRepository(QStringLiteral("solo"));
  const QString outer = makeRepository(QStringLiteral("outer"));
  // A submodule checkout holds a ".git" file, not a folder: the walk sees the parent only.
  runProgram(QStringLiteral("git"),
             {QStringLiteral("-c"), QStringLiteral("protocol.file.allow=always"), QStringLiteral("submodule"), QStringLiteral("add"),
              QStringLiteral("-q"), at(QStringLiteral("solo")), QStringLiteral("sub")},
             outer);

  EXPECT_EQ(RepositoryScan::rescanRepositories(*settings, root), 4);
  EXPECT_EQ(registeredPaths(*settings), (QStringList{at(QStringLiteral("outer")), at(QStringLiteral("solo")), at(QStringLiteral("work/api")),
                                                     at(QStringLiteral("work/web"))}));
  const auto categories = settings->getCategories();
  ASSERT_EQ(categories.size(), 1u);
  EXPECT_EQ(categories[0].name, QStringLiteral("work"));
  EXPECT_EQ(settings->getRepositories(categories[0].id).size(), 2u);

  // What the user set on a row is lost; the category and its manual sub-category stay.
  const auto solo = settings->getRepositories()[2];
  ASSERT_EQ(solo->name, QStringLiteral("solo"));
  settings->renameRepository(solo->id, QStringLiteral("Solo!"));
  settings->setRepositoryColorTag(solo->id, 1);
  settings->createCategory(QStringLiteral("mine"), categories[0].id);
  ASSERT_TRUE(QDir(at(QStringLiteral("work/web"))).removeRecursively());

  EXPECT_EQ(RepositoryScan::rescanRepositories(*settings, root + QStringLiteral("/")), 3);
  EXPECT_EQ(registeredPaths(*settings), (QStringList{at(QStringLiteral("outer")), at(QStringLiteral("solo")), at(QStringLiteral("work/api"))}));
  const auto again = settings->getRepositories();
  ASSERT_EQ(again.size(), 3u);
  EXPECT_EQ(again[2]->name, QStringLiteral("solo"));
  EXPECT_FALSE(again[2]->colorTag.has_value());
  EXPECT_EQ(settings->getCategories().size(), 2u);
  EXPECT_EQ(settings->getRepositories(categories[0].id).size(), 1u);
}

TEST_F(ScanTest, RescanWithoutASourceFolderChangesNothing) {
  settings->addRepository(QStringLiteral("/kept"));
  EXPECT_EQ(RepositoryScan::rescanRepositories(*settings, std::nullopt), 0);
  EXPECT_EQ(RepositoryScan::rescanRepositories(*settings, QStringLiteral("  ")), 0);
  EXPECT_EQ(registeredPaths(*settings), QStringList{QStringLiteral("/kept")});
}

TEST_F(ScanTest, AddingByHandReportsEachRefusalAndStillAddsTheRest) {
  const QString api = makeRepository(QStringLiteral("team/api"));
  const QString outer = makeRepository(QStringLiteral("outer"));
  runProgram(QStringLiteral("git"),
             {QStringLiteral("-c"), QStringLiteral("protocol.file.allow=always"), QStringLiteral("submodule"), QStringLiteral("add"),
              QStringLiteral("-q"), api, QStringLiteral("sub")},
             outer);
  makeFolder(QStringLiteral("plain"));
  QTemporaryDir elsewhere;
  const QString outside = QFileInfo(elsewhere.path()).canonicalFilePath();
  runProgram(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("-q"), outside});

  const auto refused = RepositoryScan::addRepositories(
      *settings, {at(QStringLiteral("plain")), api, outer + QStringLiteral("/sub"), outside + QStringLiteral(" ")}, root);
  EXPECT_EQ(refused, (std::vector<RepositoryScan::Refused>{{at(QStringLiteral("plain")), RepositoryRefusal::notARepository},
                                                           {outer + QStringLiteral("/sub"), RepositoryRefusal::submodule}}));
  EXPECT_EQ(RepositoryValidation::alertMessage(refused[1].refusal, refused[1].path),
            QStringLiteral("'") + outer + QStringLiteral("/sub' is a submodule. Please select a correct path."));

  QStringList expected{api, outside};
  expected.sort();
  EXPECT_EQ(registeredPaths(*settings), expected);
  // Inside the source folder the folders become categories; outside it, the root.
  const auto rows = settings->getRepositories();
  for (const auto& row : rows) {
    if (row->repositoryPath == api) EXPECT_EQ(row->categoryName, QStringLiteral("team"));
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
  const QString alpha = makeRepository(QStringLiteral("alpha"));
  const QString beta = makeRepository(QStringLiteral("beta"));
  settings->addRepository(alpha);
  clock = clock.addSecs(60);
  settings->addRepository(beta);
  clock = clock.addSecs(60);

  QSignalSpy managerUpdates(&PreferencesNotifier::shared(), &PreferencesNotifier::repositoryManagerDataUpdated);
  const auto result = open(QStringLiteral("file://") + alpha);
  ASSERT_TRUE(result.gitModule.has_value());
  EXPECT_EQ(managerUpdates.count(), 1);  // the recent list of an open manager follows
  EXPECT_EQ(result.gitModule->repositoryPath, alpha);
  ASSERT_EQ(opened.size(), 1u);
  EXPECT_EQ(opened[0], *result.gitModule);
  EXPECT_EQ(settings->getRecentRepositories()[0]->repositoryPath, alpha);
  EXPECT_EQ(settings->getRepositories().size(), 2u);

  // A repository that was not known joins the registry at the root.
  const QString gamma = makeRepository(QStringLiteral("nested/gamma"));
  clock = clock.addSecs(60);
  ASSERT_TRUE(open(gamma).gitModule.has_value());
  EXPECT_EQ(settings->getRecentRepositories()[0]->repositoryPath, gamma);
  EXPECT_FALSE(settings->getRecentRepositories()[0]->categoryId.has_value());
}

TEST_F(OpenRepositoryTest, ARefusedPathOpensNothingAndSaysWhy) {
  makeFolder(QStringLiteral("plain"));
  const auto result = open(at(QStringLiteral("plain")));
  EXPECT_FALSE(result.gitModule.has_value());
  EXPECT_EQ(result.failureText, QStringLiteral("The '") + at(QStringLiteral("plain")) + QStringLiteral("' is not a valid git directory."));
  EXPECT_TRUE(opened.empty());
  EXPECT_TRUE(settings->getRepositories().empty());
}
