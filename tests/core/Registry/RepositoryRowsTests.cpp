#include "RegistryFixture.h"

TEST_F(RegistryTest, BlankPathsAddNothingAndPathsAreTrimmed) {
  EXPECT_FALSE(settings->addRepository(QString()).has_value());
  EXPECT_FALSE(settings->addRepository("  \n\t ").has_value());
  EXPECT_TRUE(settings->getRepositories().empty());

  ASSERT_TRUE(settings->addRepository("  /src/alpha\n").has_value());
  EXPECT_TRUE(settings->repositoryItemExists("/src/alpha"));
  EXPECT_FALSE(settings->repositoryItemExists("/src/alph"));
  EXPECT_FALSE(settings->repositoryItemExists("/src/alpha/"));
}

TEST_F(RegistryTest, ANewRowIsNamedByItsFolderAndAddingItAgainOnlyTouchesLastOpened) {
  clock = QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 678), Qt::UTC);
  const auto id = settings->addRepository("/home/ada/src/parser");
  ASSERT_EQ(settings->getRepositories().size(), 1u);
  EXPECT_EQ(*settings->getRepositories()[0], (RepositoryRecord{*id, "/home/ada/src/parser", "parser", clock, {}, {}, {}}));
  // A hand addition has no category nor tag; the last opening is stored as UTC text with milliseconds.
  EXPECT_EQ(rows("SELECT FKCategoryId, colorTag, lastOpened FROM repositories"), QStringList{"NULL|NULL|2024-01-02T03:04:05.678"});

  const int64_t category = settings->createCategory("Work", std::nullopt);
  settings->renameRepository(*id, "Parser (mine)");
  settings->setRepositoryColorTag(*id, 3);
  settings->moveRepository(*id, category);
  advance(3600);
  // Another root would give other categories to a new row; a known row keeps its own.
  EXPECT_EQ(settings->addRepository("/home/ada/src/parser", "/"), id);
  const auto repositories = settings->getRepositories();
  ASSERT_EQ(repositories.size(), 1u);
  EXPECT_EQ(*repositories[0], (RepositoryRecord{*id, "/home/ada/src/parser", "Parser (mine)", clock, category, "Work", 3}));
  EXPECT_EQ(settings->getCategories().size(), 1u);
}

TEST_F(RegistryTest, ListsSortByNameWithoutRegardToCaseAndIncludeEveryCategoryAndDeletingLeavesCategories) {
  const int64_t work = settings->createCategory("Work", std::nullopt);
  for (const char* path : {"/s/beta", "/s/Alpha", "/s/gamma", "/s/Delta"}) settings->addRepository(path);
  const auto delta = settings->getRepositories()[2];
  ASSERT_EQ(delta->name, "Delta");
  settings->moveRepository(delta->id, work);

  EXPECT_EQ(names(settings->getRepositories()), (QStringList{"Alpha", "beta", "Delta", "gamma"}));
  const auto inWork = settings->getRepositories(work);
  ASSERT_EQ(inWork.size(), 1u);
  EXPECT_EQ(inWork[0]->name, "Delta");
  EXPECT_EQ(inWork[0]->categoryName, "Work");
  EXPECT_FALSE(settings->getRepositories()[0]->categoryName.has_value());

  // Deleting one or all rows leaves the categories.
  settings->deleteRepository(delta->id);
  EXPECT_EQ(names(settings->getRepositories()), (QStringList{"Alpha", "beta", "gamma"}));
  settings->deleteAllRepositories();
  EXPECT_TRUE(settings->getRepositories().empty());
  EXPECT_EQ(settings->getCategories().size(), 1u);
}

TEST_F(RegistryTest, RepositoryInfoComesFromTheRowOrFromThePath) {
  const auto id = settings->addRepository("/s/alpha");
  settings->renameRepository(*id, "The Alpha");
  settings->setRepositoryColorTag(*id, 2);

  const GitModule known{"/s/alpha", "/s/alpha/.git", std::nullopt};
  EXPECT_EQ(settings->getRepositoryInfo(known), (RepositoryInfo{known, "The Alpha", 2}));
  const GitModule unknown{"/s/elsewhere/beta", "/s/elsewhere/beta/.git", std::nullopt};
  EXPECT_EQ(settings->getRepositoryInfo(unknown), (RepositoryInfo{unknown, "beta", std::nullopt}));

  settings->setRepositoryColorTag(*id, std::nullopt);
  EXPECT_FALSE(settings->getRepositoryInfo(known).colorTag.has_value());
}

TEST_F(RegistryTest, ScanRootTurnsFoldersIntoAChainOfCategoriesSharedBySiblings) {
  const QString root = "/home/ada/src";
  settings->addRepository(root + "/work/backend/api", root);
  advance(1);
  for (const QString& path : {root + "/work/backend/db", root + "/work/site", root + "/toplevel", QString("/elsewhere/tool"),
                              QString("/home/ada/srcold/x/y")})  // a sibling whose name begins like the root is not inside it
    settings->addRepository(path, root);

  EXPECT_EQ(rows("SELECT categoryId, categoryName, FKParentCategoryId FROM categories ORDER BY categoryId"),
            (QStringList{"1|work|-1", "2|backend|1"}));
  EXPECT_EQ(rows("SELECT reposityryName, FKCategoryId FROM repositories ORDER BY repositoryId"),
            (QStringList{"api|2", "db|2", "site|1", "toplevel|-1", "tool|-1", "y|-1"}));
  // A trailing separator on the root changes nothing.
  EXPECT_EQ(settings->getCategoryId(root + "/work/backend/cache", root + "/"), 2);
}

TEST_F(RegistryTest, NewCategoriesArePlacedByTheClockBehindOlderOnes) {
  const int64_t first = settings->createCategory("First", std::nullopt);
  advance(5);
  const int64_t second = settings->createCategory("Second", first);
  EXPECT_EQ(settings->getCategories(), (std::vector<CategoryRecord>{{first, "First", clock.toSecsSinceEpoch() - 5, std::nullopt},
                                                                    {second, "Second", clock.toSecsSinceEpoch(), first}}));
  settings->renameCategory(second, "Renamed");
  EXPECT_EQ(settings->getCategories()[1].name, "Renamed");
  EXPECT_EQ(settings->getParentCategory(second), first);
  EXPECT_FALSE(settings->getParentCategory(first).has_value());
  EXPECT_FALSE(settings->getParentCategory(999).has_value());
}
