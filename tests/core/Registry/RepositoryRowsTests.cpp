#include "RegistryFixture.h"

namespace {
QStringList names(const std::vector<RepositoryRecordPtr>& records) {
  QStringList result;
  for (const auto& record : records) result << record->name;
  return result;
}
}  // namespace

TEST_F(RegistryTest, BlankPathsAddNothingAndPathsAreTrimmed) {
  EXPECT_FALSE(settings->addRepository(QString()).has_value());
  EXPECT_FALSE(settings->addRepository(QStringLiteral("  \n\t ")).has_value());
  EXPECT_TRUE(settings->getRepositories().empty());

  ASSERT_TRUE(settings->addRepository(QStringLiteral("  /src/alpha\n")).has_value());
  EXPECT_TRUE(settings->repositoryItemExists(QStringLiteral("/src/alpha")));
  EXPECT_FALSE(settings->repositoryItemExists(QStringLiteral("/src/alph")));
  EXPECT_FALSE(settings->repositoryItemExists(QStringLiteral("/src/alpha/")));
}

TEST_F(RegistryTest, AddingAKnownPathOnlyTouchesLastOpened) {
  const auto id = settings->addRepository(QStringLiteral("/src/alpha"));
  ASSERT_TRUE(id);
  const int64_t category = settings->createCategory(QStringLiteral("Work"), std::nullopt);
  settings->renameRepository(*id, QStringLiteral("Alpha (mine)"));
  settings->setRepositoryColorTag(*id, 3);
  settings->moveRepository(*id, category);

  advance(3600);
  // Another root would give other categories to a new row; a known row keeps its own.
  EXPECT_EQ(settings->addRepository(QStringLiteral("/src/alpha"), QStringLiteral("/")), id);

  const auto repositories = settings->getRepositories();
  ASSERT_EQ(repositories.size(), 1u);
  const RepositoryRecord& record = *repositories[0];
  EXPECT_EQ(record.name, QStringLiteral("Alpha (mine)"));
  EXPECT_EQ(record.colorTag, 3);
  EXPECT_EQ(record.categoryId, category);
  EXPECT_EQ(record.lastOpened, clock);
  EXPECT_EQ(settings->getCategories().size(), 1u);
}

TEST_F(RegistryTest, ANewRowIsNamedByItsFolderWithNoTagAndAHandAdditionHasNoCategory) {
  settings->addRepository(QStringLiteral("/home/ada/src/parser"));
  const auto repositories = settings->getRepositories();
  ASSERT_EQ(repositories.size(), 1u);
  EXPECT_EQ(repositories[0]->name, QStringLiteral("parser"));
  EXPECT_EQ(repositories[0]->lastOpened, clock);
  EXPECT_FALSE(repositories[0]->colorTag.has_value());
  EXPECT_FALSE(repositories[0]->categoryId.has_value());
  EXPECT_EQ(rows(QStringLiteral("SELECT FKCategoryId, colorTag FROM repositories")), QStringList{QStringLiteral("NULL|NULL")});
}

TEST_F(RegistryTest, ListsSortByNameWithoutRegardToCaseAndIncludeEveryCategory) {
  const int64_t work = settings->createCategory(QStringLiteral("Work"), std::nullopt);
  for (const char* path : {"/s/beta", "/s/Alpha", "/s/gamma", "/s/Delta"}) settings->addRepository(QString::fromLatin1(path));
  const auto delta = settings->getRepositories()[2];
  ASSERT_EQ(delta->name, QStringLiteral("Delta"));
  settings->moveRepository(delta->id, work);

  EXPECT_EQ(names(settings->getRepositories()),
            (QStringList{QStringLiteral("Alpha"), QStringLiteral("beta"), QStringLiteral("Delta"), QStringLiteral("gamma")}));
  const auto inWork = settings->getRepositories(work);
  ASSERT_EQ(inWork.size(), 1u);
  EXPECT_EQ(inWork[0]->name, QStringLiteral("Delta"));
  EXPECT_EQ(inWork[0]->categoryName, QStringLiteral("Work"));
  EXPECT_FALSE(settings->getRepositories()[0]->categoryName.has_value());
}

TEST_F(RegistryTest, RecentListIsNewestFirstWithNeverOpenedRowsLast) {
  settings->addRepository(QStringLiteral("/s/old"));
  advance(60);
  settings->addRepository(QStringLiteral("/s/new"));
  advance(60);
  settings->addRepository(QStringLiteral("/s/old"));  // opened again
  execute(QStringLiteral("INSERT INTO repositories (reposityryName, repositoryPath) VALUES ('never', '/s/never')"));
  advance(60);
  settings->addRepository(QStringLiteral("/s/newest"));

  EXPECT_EQ(names(settings->getRecentRepositories()),
            (QStringList{QStringLiteral("newest"), QStringLiteral("old"), QStringLiteral("new"), QStringLiteral("never")}));
}

TEST_F(RegistryTest, RepositoryInfoComesFromTheRowOrFromThePath) {
  const auto id = settings->addRepository(QStringLiteral("/s/alpha"));
  settings->renameRepository(*id, QStringLiteral("The Alpha"));
  settings->setRepositoryColorTag(*id, 2);

  const GitModule known{QStringLiteral("/s/alpha"), QStringLiteral("/s/alpha/.git"), std::nullopt};
  EXPECT_EQ(settings->getRepositoryInfo(known), (RepositoryInfo{known, QStringLiteral("The Alpha"), 2}));

  const GitModule unknown{QStringLiteral("/s/elsewhere/beta"), QStringLiteral("/s/elsewhere/beta/.git"), std::nullopt};
  EXPECT_EQ(settings->getRepositoryInfo(unknown), (RepositoryInfo{unknown, QStringLiteral("beta"), std::nullopt}));

  settings->setRepositoryColorTag(*id, std::nullopt);
  EXPECT_FALSE(settings->getRepositoryInfo(known).colorTag.has_value());
}

TEST_F(RegistryTest, DeletingOneOrAllRowsLeavesCategories) {
  const auto alpha = settings->addRepository(QStringLiteral("/s/alpha"));
  settings->addRepository(QStringLiteral("/s/beta"));
  settings->createCategory(QStringLiteral("Work"), std::nullopt);

  settings->deleteRepository(*alpha);
  EXPECT_EQ(names(settings->getRepositories()), QStringList{QStringLiteral("beta")});
  settings->deleteAllRepositories();
  EXPECT_TRUE(settings->getRepositories().empty());
  EXPECT_EQ(settings->getCategories().size(), 1u);
}

TEST_F(RegistryTest, ScanRootTurnsFoldersIntoAChainOfCategoriesSharedBySiblings) {
  const QString root = QStringLiteral("/home/ada/src");
  settings->addRepository(root + QStringLiteral("/work/backend/api"), root);
  advance(1);
  settings->addRepository(root + QStringLiteral("/work/backend/db"), root);
  settings->addRepository(root + QStringLiteral("/work/site"), root);
  settings->addRepository(root + QStringLiteral("/toplevel"), root);
  settings->addRepository(QStringLiteral("/elsewhere/tool"), root);
  // A sibling folder whose name begins like the root is not inside it.
  settings->addRepository(QStringLiteral("/home/ada/srcold/x/y"), root);

  EXPECT_EQ(rows(QStringLiteral("SELECT categoryId, categoryName, FKParentCategoryId FROM categories ORDER BY categoryId")),
            (QStringList{QStringLiteral("1|work|-1"), QStringLiteral("2|backend|1")}));
  EXPECT_EQ(rows(QStringLiteral("SELECT reposityryName, FKCategoryId FROM repositories ORDER BY repositoryId")),
            (QStringList{QStringLiteral("api|2"), QStringLiteral("db|2"), QStringLiteral("site|1"), QStringLiteral("toplevel|-1"),
                         QStringLiteral("tool|-1"), QStringLiteral("y|-1")}));
  // A trailing separator on the root changes nothing.
  EXPECT_EQ(settings->getCategoryId(root + QStringLiteral("/work/backend/cache"), root + QStringLiteral("/")), 2);
}

TEST_F(RegistryTest, NewCategoriesArePlacedByTheClockBehindOlderOnes) {
  const int64_t first = settings->createCategory(QStringLiteral("First"), std::nullopt);
  advance(5);
  const int64_t second = settings->createCategory(QStringLiteral("Second"), first);
  const auto categories = settings->getCategories();
  ASSERT_EQ(categories.size(), 2u);
  EXPECT_EQ(categories[0], (CategoryRecord{first, QStringLiteral("First"), clock.toSecsSinceEpoch() - 5, std::nullopt}));
  EXPECT_EQ(categories[1], (CategoryRecord{second, QStringLiteral("Second"), clock.toSecsSinceEpoch(), first}));
  settings->renameCategory(second, QStringLiteral("Renamed"));
  EXPECT_EQ(settings->getCategories()[1].name, QStringLiteral("Renamed"));
  EXPECT_EQ(settings->getParentCategory(second), first);
  EXPECT_FALSE(settings->getParentCategory(first).has_value());
  EXPECT_FALSE(settings->getParentCategory(999).has_value());
}
