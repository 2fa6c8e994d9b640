#include "Models/RepositoryManager/RepositoryManagerDirectoryItem.h"
#include "Models/RepositoryManager/RepositoryManagerRepositoryItem.h"
#include "Models/RepositoryManager/RepositoryManagerTree.h"
#include "RegistryFixture.h"

namespace {

// "name:position" of the children of a parent, in sort order.
QString positionsSql(const QString& parentCondition) {
  return "SELECT categoryName, position FROM categories WHERE FKParentCategoryId " + parentCondition +
         " ORDER BY position, categoryId";
}

// The tree as indented text, one line per item: categories end with "/".
void describe(const RepositoryManagerItem& item, int depth, QStringList& out) {
  const QString indent(depth * 2, QLatin1Char(' '));
  if (const auto* folder = dynamic_cast<const RepositoryManagerFolderItem*>(&item)) {
    out << indent + item.title + QLatin1Char('/');
    for (const auto& child : folder->children) describe(*child, depth + 1, out);
  } else {
    out << indent + item.title;
  }
}
QStringList describe(const RepositoryManagerFolderItem& section) {
  QStringList out;
  for (const auto& child : section.children) describe(*child, 0, out);
  return out;
}
QStringList shownTree(AppSettings& settings) { return describe(*RepositoryManagerTree::load(settings).repositories); }

}  // namespace

TEST_F(CategoriesTest, NoIndexPutsTheMovedOneBehindAllSiblings) {
  EXPECT_TRUE(settings->moveRepositoryCategory(a, b, std::nullopt));
  EXPECT_TRUE(settings->moveRepositoryCategory(c, b, std::nullopt));
  EXPECT_EQ(rows(positionsSql(QStringLiteral("= %1").arg(b))), (QStringList{"A|1", "C|2"}));
  // Re-reading through the tree shows the order users see.
  EXPECT_EQ(shownTree(*settings), (QStringList{"B/", "  A/", "    A1/", "  C/"}));
}

TEST_F(CategoriesTest, DeletingACategoryLiftsItsRepositoriesAndSubCategoriesOneLevel) {
  const int64_t aGrandchild = makeCategory("A1x", a1);
  settings->moveRepository(*settings->addRepository("/s/inChild"), a1);
  settings->moveRepository(*settings->addRepository("/s/inA"), a);
  advance(100);

  settings->deleteRepositoryCategory(a1);
  EXPECT_TRUE(log.contains(QStringLiteral("Remove category %1.").arg(a1)));
  EXPECT_EQ(settings->getParentCategory(aGrandchild), a);
  EXPECT_EQ(rows(QStringLiteral("SELECT position FROM categories WHERE categoryId = %1").arg(aGrandchild)),
            QStringList{QString::number(clock.toSecsSinceEpoch())});
  EXPECT_EQ(settings->getRepositories(a).size(), 2u);

  // A top-level category hands its content to the root (NULL).
  settings->deleteRepositoryCategory(a);
  EXPECT_EQ(rows("SELECT reposityryName, FKCategoryId FROM repositories ORDER BY reposityryName"),
            (QStringList{"inA|NULL", "inChild|NULL"}));
  EXPECT_FALSE(settings->getParentCategory(aGrandchild).has_value());
  EXPECT_EQ(shownTree(*settings), (QStringList{"B/", "C/", "A1x/", "inA", "inChild"}));
}

TEST_F(RegistryTest, TreeShowsScanCategoriesAndOrphanedRowsAtTheTopLevel) {
  settings->addRepository("/src/work/api", "/src");
  settings->addRepository("/src/solo", "/src");
  settings->addRepository("/byhand");
  execute("INSERT INTO repositories (reposityryName, repositoryPath, FKCategoryId) VALUES ('orphan', '/o', 77)");
  execute("INSERT INTO categories (categoryName, position, FKParentCategoryId) VALUES ('lost', 99, 55)");

  const auto tree = RepositoryManagerTree::load(*settings);
  EXPECT_EQ(tree.repositories->title, "Repositories");
  EXPECT_EQ(describe(*tree.repositories), (QStringList{"lost/", "work/", "  api", "byhand", "orphan", "solo"}));
  const auto* directory = dynamic_cast<const RepositoryManagerDirectoryItem*>(tree.repositories->children[1].get());
  ASSERT_NE(directory, nullptr);
  EXPECT_EQ(directory->record.parentId, -1);
}

// The recent list is newest first with never-opened rows last; the section shows five.
TEST_F(RegistryTest, RecentSectionHoldsTheFiveLastOpened) {
  for (int i = 0; i < 7; ++i) {
    settings->addRepository(QStringLiteral("/s/r%1").arg(i));
    advance(10);
  }
  execute("INSERT INTO repositories (reposityryName, repositoryPath) VALUES ('never', '/s/never')");
  settings->addRepository("/s/r1");  // opened again
  EXPECT_EQ(names(settings->getRecentRepositories()), (QStringList{"r1", "r6", "r5", "r4", "r3", "r2", "r0", "never"}));
  const auto tree = RepositoryManagerTree::load(*settings);
  EXPECT_EQ(tree.recent->title, "Recent Repositories");
  EXPECT_EQ(describe(*tree.recent), (QStringList{"r1", "r6", "r5", "r4", "r3"}));
  const auto* item = dynamic_cast<const RepositoryManagerRepositoryItem*>(tree.recent->children[0].get());
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->record->repositoryPath, "/s/r1");
}

TEST(RepositoryManagerTreeTest, CategoriesThatFormALoopInADamagedFileAreShownAtTheTopLevel) {
  const std::vector<CategoryRecord> categories{{1, "self", 1, 1}, {2, "x", 2, 3}, {3, "y", 3, 2}, {4, "child", 4, 2}};
  EXPECT_EQ(describe(*RepositoryManagerTree::build(categories, {}, {}).repositories),
            (QStringList{"self/", "x/", "  child/", "y/"}));
}
