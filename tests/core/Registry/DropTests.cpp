#include "Models/RepositoryManager/RepositoryManagerDrop.h"
#include "Models/RepositoryManager/RepositoryManagerTree.h"
#include "RegistryFixture.h"

namespace {
using Drop = RepositoryManagerDrop;
using Kind = Drop::Kind;
using Position = Drop::Position;

Drop::Node category(int64_t id) { return {Kind::category, id}; }
Drop::Node repository(int64_t id) { return {Kind::repository, id}; }
const Drop::Node topLevel{Kind::repositoriesSection, 0};
}  // namespace

// The categories, the repository "in-a" inside A and "loose" at the top level.
class DropTest : public CategoriesTest {
 protected:
  void SetUp() override {
    CategoriesTest::SetUp();
    inA = *settings->addRepository("/work/in-a");
    settings->moveRepository(inA, a);
    loose = *settings->addRepository("/work/loose");
  }

  // The names of the categories shown at the top level (or inside a parent), in order.
  QStringList topLevelOrder() const {
    QStringList names;
    const RepositoryManagerTree tree = RepositoryManagerTree::load(*settings);
    for (const auto& child : tree.repositories->children) {
      if (dynamic_cast<const RepositoryManagerFolderItem*>(child.get())) names << child->title;
    }
    return names;
  }
  std::optional<int64_t> categoryOf(int64_t repositoryId) const {
    for (const auto& record : settings->getRepositories())
      if (record->id == repositoryId) return record->categoryId;
    return std::nullopt;
  }

  int64_t inA = 0, loose = 0;
};

TEST_F(DropTest, DroppingACategoryAboveOrBelowASiblingReordersTheTopLevel) {
  ASSERT_EQ(topLevelOrder(), (QStringList{"A", "B", "C"}));
  EXPECT_TRUE(Drop::apply(*settings, category(c), category(a), Position::above));
  EXPECT_EQ(topLevelOrder(), (QStringList{"C", "A", "B"}));
  EXPECT_TRUE(Drop::apply(*settings, category(c), category(b), Position::below));
  EXPECT_EQ(topLevelOrder(), (QStringList{"A", "B", "C"}));
  EXPECT_TRUE(Drop::apply(*settings, category(a), category(b), Position::below));
  EXPECT_EQ(topLevelOrder(), (QStringList{"B", "A", "C"}));
  // A category from deeper down joins the top level at the place it was dropped.
  EXPECT_TRUE(Drop::apply(*settings, category(a1), category(a), Position::above));
  EXPECT_EQ(topLevelOrder(), (QStringList{"B", "A1", "A", "C"}));
  EXPECT_EQ(settings->getParentCategory(a1), std::nullopt);
}

TEST_F(DropTest, ReorderingAmongScannedCategoriesKeepsTheirStoredParent) {
  const int64_t s1 = settings->createCategory("S1", -1);
  advance(1);
  const int64_t s2 = settings->createCategory("S2", -1);
  EXPECT_TRUE(Drop::apply(*settings, category(s2), category(s1), Position::above));
  EXPECT_EQ(settings->getParentCategory(s2), std::optional<int64_t>(-1));
  EXPECT_LT(topLevelOrder().indexOf("S2"), topLevelOrder().indexOf("S1"));
}

TEST_F(DropTest, DroppingOntoAFolderFilesTheEntryInside) {
  // Onto a category: inside it; onto a repository: beside it; onto empty space: top level.
  EXPECT_TRUE(Drop::apply(*settings, repository(loose), category(b), Position::onItem));
  EXPECT_EQ(categoryOf(loose), std::optional<int64_t>(b));
  EXPECT_TRUE(Drop::apply(*settings, repository(loose), repository(inA), Position::below));
  EXPECT_EQ(categoryOf(loose), std::optional<int64_t>(a));
  EXPECT_TRUE(Drop::apply(*settings, repository(loose), topLevel, Position::onItem));
  EXPECT_EQ(categoryOf(loose), std::nullopt);

  EXPECT_TRUE(Drop::apply(*settings, category(c), repository(inA), Position::above));
  EXPECT_EQ(settings->getParentCategory(c), std::optional<int64_t>(a));
  EXPECT_TRUE(Drop::apply(*settings, category(c), category(a1), Position::onItem));
  EXPECT_EQ(settings->getParentCategory(c), std::optional<int64_t>(a1));
  EXPECT_TRUE(Drop::apply(*settings, category(c), topLevel, Position::onItem));
  EXPECT_EQ(settings->getParentCategory(c), std::nullopt);
  EXPECT_EQ(topLevelOrder().last(), "C");

  // A repository dropped between two categories goes to their folder: repositories sort
  // by name, so there is no place to keep.
  EXPECT_TRUE(Drop::apply(*settings, repository(loose), category(a1), Position::above));
  EXPECT_EQ(categoryOf(loose), std::optional<int64_t>(a));
}

// Moving a category up out of its parent is fine: DroppingACategoryAboveOrBelowASibling...
TEST_F(DropTest, RefusedDropsChangeNothing) {
  const int64_t aGrandchild = makeCategory("A1x", a1);
  const QStringList before = rows("SELECT * FROM categories ORDER BY categoryId");
  const QStringList repositoriesBefore = rows("SELECT * FROM repositories ORDER BY repositoryId");
  EXPECT_FALSE(Drop::apply(*settings, category(a), category(a1), Position::onItem));
  EXPECT_FALSE(Drop::apply(*settings, category(a), category(a), Position::above));
  EXPECT_FALSE(Drop::apply(*settings, category(a), repository(inA), Position::onItem));  // inA lies in A
  EXPECT_FALSE(Drop::apply(*settings, repository(loose), {Kind::recentSection, 0}, Position::onItem));
  EXPECT_FALSE(Drop::apply(*settings, repository(loose), {Kind::recentRepository, inA}, Position::onItem));
  EXPECT_FALSE(Drop::apply(*settings, topLevel, category(a), Position::onItem));
  EXPECT_FALSE(Drop::apply(*settings, repository(loose), category(9999), Position::onItem));
  // Into itself or a descendant further down, at an index or none.
  EXPECT_FALSE(settings->moveRepositoryCategory(a, a, 0));
  EXPECT_FALSE(settings->moveRepositoryCategory(a, aGrandchild, 1));
  EXPECT_FALSE(settings->moveRepositoryCategory(a, a1, std::nullopt));
  EXPECT_EQ(rows("SELECT * FROM categories ORDER BY categoryId"), before);
  EXPECT_EQ(rows("SELECT * FROM repositories ORDER BY repositoryId"), repositoriesBefore);

  // An entry of the recent list can be filed like any other.
  EXPECT_TRUE(Drop::apply(*settings, {Kind::recentRepository, loose}, category(c), Position::onItem));
  EXPECT_EQ(categoryOf(loose), std::optional<int64_t>(c));
}
