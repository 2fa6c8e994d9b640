#include "Models/RepositoryManager/RepositoryManagerDirectoryItem.h"
#include "Models/RepositoryManager/RepositoryManagerRepositoryItem.h"
#include "Models/RepositoryManager/RepositoryManagerTree.h"
#include "RegistryFixture.h"

namespace {

// "name:position" of the children of a parent, in sort order.
QString positionsSql(const QString& parentCondition) {
  return QStringLiteral("SELECT categoryName, position FROM categories WHERE FKParentCategoryId %1 ORDER BY position, categoryId")
      .arg(parentCondition);
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

}  // namespace

class CategoryMoveTest : public CategoriesTest {
 protected:
  void SetUp() override {
    CategoriesTest::SetUp();
    aGrandchild = makeCategory(QStringLiteral("A1x"), a1);
  }
  int64_t aGrandchild = 0;
};

TEST_F(CategoryMoveTest, MovingACategoryIntoItselfOrItsDescendantsIsRefusedAndChangesNothing) {
  const QStringList before = rows(QStringLiteral("SELECT * FROM categories ORDER BY categoryId"));
  EXPECT_FALSE(settings->moveRepositoryCategory(a, a, 0));
  EXPECT_FALSE(settings->moveRepositoryCategory(a, a1, std::nullopt));
  EXPECT_FALSE(settings->moveRepositoryCategory(a, aGrandchild, 1));
  EXPECT_EQ(rows(QStringLiteral("SELECT * FROM categories ORDER BY categoryId")), before);
  // Moving a descendant upwards is fine.
  EXPECT_TRUE(settings->moveRepositoryCategory(aGrandchild, a, std::nullopt));
}

TEST_F(CategoryMoveTest, IndexZeroPutsTheMovedOneFirstAndShiftsTheSiblings) {
  EXPECT_TRUE(settings->moveRepositoryCategory(a1, std::nullopt, 0));
  EXPECT_EQ(rows(positionsSql(QStringLiteral("IS NULL"))),
            (QStringList{QStringLiteral("A1|0"), QStringLiteral("A|1"), QStringLiteral("B|2"), QStringLiteral("C|3")}));
  // Its own child goes with it.
  EXPECT_EQ(settings->getParentCategory(aGrandchild), a1);
}

TEST_F(CategoryMoveTest, AMiddleIndexLeavesEarlierSiblingsAndAGapAtTheIndex) {
  EXPECT_TRUE(settings->moveRepositoryCategory(a1, std::nullopt, 2));
  EXPECT_EQ(rows(positionsSql(QStringLiteral("IS NULL"))),
            (QStringList{QStringLiteral("A|0"), QStringLiteral("B|1"), QStringLiteral("A1|2"), QStringLiteral("C|3")}));
}

TEST_F(CategoryMoveTest, NoIndexPutsTheMovedOneBehindAllSiblings) {
  EXPECT_TRUE(settings->moveRepositoryCategory(a, b, std::nullopt));
  EXPECT_TRUE(settings->moveRepositoryCategory(c, b, std::nullopt));
  EXPECT_EQ(rows(positionsSql(QStringLiteral("= %1").arg(b))), (QStringList{QStringLiteral("A|1"), QStringLiteral("C|2")}));
  // Re-reading through the tree shows the order users see.
  const auto tree = RepositoryManagerTree::load(*settings);
  EXPECT_EQ(describe(*tree.repositories),
            (QStringList{QStringLiteral("B/"), QStringLiteral("  A/"), QStringLiteral("    A1/"), QStringLiteral("      A1x/"),
                         QStringLiteral("  C/")}));
}

TEST_F(CategoryMoveTest, ReorderingWithinTheSameParentKeepsEveryoneOnce) {
  EXPECT_TRUE(settings->moveRepositoryCategory(c, std::nullopt, 0));
  EXPECT_TRUE(settings->moveRepositoryCategory(a, std::nullopt, std::nullopt));
  const auto tree = RepositoryManagerTree::load(*settings);
  EXPECT_EQ(describe(*tree.repositories),
            (QStringList{QStringLiteral("C/"), QStringLiteral("B/"), QStringLiteral("A/"), QStringLiteral("  A1/"),
                         QStringLiteral("    A1x/")}));
}

TEST_F(CategoryMoveTest, DeletingACategoryLiftsItsRepositoriesAndSubCategoriesOneLevel) {
  const auto inChild = settings->addRepository(QStringLiteral("/s/inChild"));
  settings->moveRepository(*inChild, a1);
  const auto inA = settings->addRepository(QStringLiteral("/s/inA"));
  settings->moveRepository(*inA, a);
  advance(100);

  settings->deleteRepositoryCategory(a1);
  EXPECT_TRUE(log.contains(QStringLiteral("Remove category %1.").arg(a1)));
  EXPECT_EQ(settings->getParentCategory(aGrandchild), a);
  EXPECT_EQ(rows(QStringLiteral("SELECT position FROM categories WHERE categoryId = %1").arg(aGrandchild)),
            QStringList{QString::number(clock.toSecsSinceEpoch())});
  EXPECT_EQ(settings->getRepositories(a).size(), 2u);

  // A top-level category hands its content to the root (NULL).
  settings->deleteRepositoryCategory(a);
  EXPECT_EQ(rows(QStringLiteral("SELECT reposityryName, FKCategoryId FROM repositories ORDER BY reposityryName")),
            (QStringList{QStringLiteral("inA|NULL"), QStringLiteral("inChild|NULL")}));
  EXPECT_FALSE(settings->getParentCategory(aGrandchild).has_value());
  const auto tree = RepositoryManagerTree::load(*settings);
  EXPECT_EQ(describe(*tree.repositories),
            (QStringList{QStringLiteral("B/"), QStringLiteral("C/"), QStringLiteral("A1x/"), QStringLiteral("inA"),
                         QStringLiteral("inChild")}));
}

TEST_F(RegistryTest, TreeShowsScanCategoriesAndOrphanedRowsAtTheTopLevel) {
  const QString root = QStringLiteral("/src");
  settings->addRepository(QStringLiteral("/src/work/api"), root);
  settings->addRepository(QStringLiteral("/src/solo"), root);
  settings->addRepository(QStringLiteral("/byhand"));
  execute(QStringLiteral("INSERT INTO repositories (reposityryName, repositoryPath, FKCategoryId) VALUES ('orphan', '/o', 77)"));
  execute(QStringLiteral("INSERT INTO categories (categoryName, position, FKParentCategoryId) VALUES ('lost', 99, 55)"));

  const auto tree = RepositoryManagerTree::load(*settings);
  EXPECT_EQ(tree.repositories->title, QStringLiteral("Repositories"));
  EXPECT_EQ(describe(*tree.repositories),
            (QStringList{QStringLiteral("lost/"), QStringLiteral("work/"), QStringLiteral("  api"), QStringLiteral("byhand"),
                         QStringLiteral("orphan"), QStringLiteral("solo")}));
  const auto* directory = dynamic_cast<const RepositoryManagerDirectoryItem*>(tree.repositories->children[1].get());
  ASSERT_NE(directory, nullptr);
  EXPECT_EQ(directory->record.parentId, -1);
}

TEST_F(RegistryTest, RecentSectionHoldsTheFiveLastOpened) {
  for (int i = 0; i < 7; ++i) {
    settings->addRepository(QStringLiteral("/s/r%1").arg(i));
    advance(10);
  }
  const auto tree = RepositoryManagerTree::load(*settings);
  EXPECT_EQ(tree.recent->title, QStringLiteral("Recent Repositories"));
  EXPECT_EQ(describe(*tree.recent), (QStringList{QStringLiteral("r6"), QStringLiteral("r5"), QStringLiteral("r4"),
                                                 QStringLiteral("r3"), QStringLiteral("r2")}));
  const auto* item = dynamic_cast<const RepositoryManagerRepositoryItem*>(tree.recent->children[0].get());
  ASSERT_NE(item, nullptr);
  EXPECT_EQ(item->record->repositoryPath, QStringLiteral("/s/r6"));
}

TEST(RepositoryManagerTreeTest, CategoriesThatFormALoopInADamagedFileAreShownAtTheTopLevel) {
  const std::vector<CategoryRecord> categories{{1, QStringLiteral("self"), 1, 1},
                                               {2, QStringLiteral("x"), 2, 3},
                                               {3, QStringLiteral("y"), 3, 2},
                                               {4, QStringLiteral("child"), 4, 2}};
  const auto tree = RepositoryManagerTree::build(categories, {}, {});
  EXPECT_EQ(describe(*tree.repositories),
            (QStringList{QStringLiteral("self/"), QStringLiteral("x/"), QStringLiteral("  child/"), QStringLiteral("y/")}));
}
