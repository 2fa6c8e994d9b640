#include <gtest/gtest.h>

#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Models/LocalBranch.h"
#include "Models/Tag.h"

namespace {
QTreeWidgetItem* findReference(QTreeWidget& tree, const QString& text) {
  const auto found = tree.findItems(text, Qt::MatchRecursive | Qt::MatchEndsWith);
  return found.isEmpty() ? nullptr : found.first();
}
QStringList titles(QMenu* menu) {
  QStringList texts;
  for (QAction* action : menu->actions()) texts << action->text();
  return texts;
}
}  // namespace

// The filter entry names what was clicked: a tag is no branch.
TEST(RepositorySidebarMenu, TheFilterEntryNamesABranchOrATag) {
  const QDateTime t = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);
  ReferenceList all;
  all.push_back(std::make_shared<LocalBranch>("a1", "refs/heads/main", "main", "main", t, true, std::nullopt));
  all.push_back(std::make_shared<Tag>("a1", "refs/tags/v2", "v2", "v2", t, std::nullopt));
  RepositorySidebar::Content content;
  content.references = RepositoryReferences::make(QStringLiteral("a1"), std::nullopt, all);
  RepositorySidebar sidebar;
  sidebar.setContent(content);

  QTreeWidgetItem* tag = findReference(sidebar, QStringLiteral("v2"));
  QTreeWidgetItem* branch = findReference(sidebar, QStringLiteral("main"));
  ASSERT_TRUE(tag && branch);
  std::unique_ptr<QMenu> tagMenu(sidebar.contextMenuFor(tag));
  std::unique_ptr<QMenu> branchMenu(sidebar.contextMenuFor(branch));
  EXPECT_TRUE(titles(tagMenu.get()).contains(QStringLiteral("Show Only This Tag in Commit List"))) << titles(tagMenu.get()).join('|').toStdString();
  EXPECT_FALSE(titles(tagMenu.get()).contains(QStringLiteral("Show Only This Branch in Commit List")));
  EXPECT_TRUE(titles(branchMenu.get()).contains(QStringLiteral("Show Only This Branch in Commit List")));
}

TEST(RepositorySidebarMenu, AClickOnAllCommitsEndsABranchFilter) {
  const QDateTime t = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);
  ReferenceList all{std::make_shared<LocalBranch>("a1", "refs/heads/main", "main", "main", t, true, std::nullopt)};
  RepositorySidebar::Content content;
  content.references = RepositoryReferences::make(QStringLiteral("a1"), std::nullopt, all, {QStringLiteral("refs/heads/main")});
  RepositorySidebar sidebar;
  sidebar.resize(300, 400);
  sidebar.show();
  sidebar.setContent(content);
  QSignalSpy filter(&sidebar, &RepositorySidebar::filterRequested);
  const QRect row = sidebar.visualItemRect(sidebar.allCommitsItem());
  QTest::mouseClick(sidebar.viewport(), Qt::LeftButton, {}, row.center());
  ASSERT_EQ(filter.count(), 1);
  EXPECT_TRUE(filter.at(0).at(0).toStringList().isEmpty());
}
