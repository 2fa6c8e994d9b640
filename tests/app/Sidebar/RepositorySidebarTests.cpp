#include <gtest/gtest.h>

#include <QMenu>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Models/LocalBranch.h"
#include "Models/RemoteBranch.h"
#include "Models/Tag.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"

namespace {
QTreeWidgetItem* findTop(QTreeWidget& tree, const QString& title) {
  for (int i = 0; i < tree.topLevelItemCount(); ++i) {
    if (tree.topLevelItem(i)->text(0) == title) return tree.topLevelItem(i);
  }
  return nullptr;
}

QStringList titles(QMenu* menu) {
  QStringList texts;
  for (QAction* action : menu->actions()) texts << action->text();
  return texts;
}

RepositorySidebar::Content content(const QSet<QString>& filter = {}) {
  const QDateTime t = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);
  ReferenceList all;
  all.push_back(std::make_shared<LocalBranch>("a1", "refs/heads/main", "main", "main", t, true, "refs/remotes/origin/main"));
  all.push_back(std::make_shared<LocalBranch>("b2", "refs/heads/topic", "topic", "topic", t.addDays(1), false, std::nullopt));
  all.push_back(std::make_shared<RemoteBranch>("a1", "refs/remotes/origin/main", "main", "origin/main", t, "origin"));
  all.push_back(std::make_shared<RemoteBranch>("c3", "refs/remotes/fork/wip", "wip", "fork/wip", t, "fork"));
  all.push_back(std::make_shared<Tag>("d4", "refs/tags/v1.9", "v1.9", "v1.9", t, std::optional<QString>("e5")));
  all.push_back(std::make_shared<Tag>("f6", "refs/tags/v1.10", "v1.10", "v1.10", t, std::nullopt));
  RepositorySidebar::Content c;
  c.references = RepositoryReferences::make(QStringLiteral("a1"), std::nullopt, all, filter);
  c.aheadBehind.entries.insert(QStringLiteral("refs/heads/main"), BehindAheadInfo{2, 1});
  c.localChangesCount = 7;
  return c;
}
}  // namespace

TEST(RepositorySidebar, ShowsBranchesRemotesAndTagsWithTheirMarks) {
  Preferences::shared().setValue(QStringLiteral("tagSortOrder"), 1);
  Preferences::shared().setValue(QStringLiteral("localBranchSortOrder"), 0);
  RepositorySidebar sidebar;
  sidebar.setContent(content());
  EXPECT_EQ(sidebar.localChangesItem()->text(1), QStringLiteral("7"));

  QTreeWidgetItem* branches = findTop(sidebar, QStringLiteral("Branches"));
  ASSERT_TRUE(branches);
  ASSERT_EQ(branches->childCount(), 2);
  EXPECT_EQ(branches->child(0)->text(0), QStringLiteral("● main"));
  EXPECT_TRUE(branches->child(0)->font(0).bold());
  EXPECT_EQ(branches->child(0)->text(1), QStringLiteral("1↑ 2↓"));
  EXPECT_EQ(branches->child(1)->text(1), QString());

  QTreeWidgetItem* remotes = findTop(sidebar, QStringLiteral("Remotes"));
  ASSERT_TRUE(remotes);
  EXPECT_EQ(remotes->childCount(), 2);  // one group per remote

  QTreeWidgetItem* tags = findTop(sidebar, QStringLiteral("Tags"));
  ASSERT_TRUE(tags);
  ASSERT_EQ(tags->childCount(), 2);
  EXPECT_EQ(tags->child(0)->text(0), QStringLiteral("v1.10"));  // by name, descending, numbers as numbers

  // An annotated tag leads to the commit it points at.
  QSignalSpy spy(&sidebar, &RepositorySidebar::commitRequested);
  sidebar.setCurrentItem(tags->child(1));
  ASSERT_EQ(spy.count(), 1);
  EXPECT_EQ(spy.at(0).at(0).toString(), QStringLiteral("e5"));

  // A new sort order re-sorts the shown lists at once.
  Preferences::shared().setValue(QStringLiteral("localBranchSortOrder"), 1);
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::referenceSortOrderChanged);
  QCoreApplication::processEvents();
  branches = findTop(sidebar, QStringLiteral("Branches"));
  ASSERT_EQ(branches->childCount(), 2);
  EXPECT_EQ(branches->child(0)->text(0), QStringLiteral("topic"));
  Preferences::shared().setValue(QStringLiteral("localBranchSortOrder"), 0);
}

TEST(RepositorySidebar, RebuildingKeepsTheSelectionAndEmitsNothing) {
  Preferences::shared().setValue(QStringLiteral("localBranchSortOrder"), 0);  // main, then topic
  RepositorySidebar sidebar;
  sidebar.setContent(content());
  QTreeWidgetItem* branches = findTop(sidebar, QStringLiteral("Branches"));
  sidebar.setCurrentItem(branches->child(1));
  QSignalSpy spy(&sidebar, &RepositorySidebar::commitRequested);
  sidebar.setContent(content());
  EXPECT_EQ(spy.count(), 0);
  ASSERT_TRUE(sidebar.currentItem());
  EXPECT_EQ(sidebar.currentItem()->text(0), QStringLiteral("topic"));
  EXPECT_EQ(RepositorySidebar::aheadBehindText(BehindAheadInfo{0, 0}), QString());
}

// The filter entry names what was clicked: a tag is no branch (the commit list's display
// test runs a branch's entry).
TEST(RepositorySidebar, TheFilterEntryOfATagNamesATag) {
  RepositorySidebar sidebar;
  sidebar.setContent(content());
  std::unique_ptr<QMenu> tagMenu(sidebar.contextMenuFor(findTop(sidebar, "Tags")->child(0)));
  EXPECT_TRUE(titles(tagMenu.get()).contains("Show Only This Tag in Commit List")) << titles(tagMenu.get()).join('|').toStdString();
  EXPECT_FALSE(titles(tagMenu.get()).contains("Show Only This Branch in Commit List"));
}

TEST(RepositorySidebar, AClickOnAllCommitsEndsABranchFilter) {
  RepositorySidebar sidebar;
  sidebar.resize(300, 400);
  sidebar.show();
  sidebar.setContent(content({"refs/heads/main"}));
  QSignalSpy filter(&sidebar, &RepositorySidebar::filterRequested);
  QTest::mouseClick(sidebar.viewport(), Qt::LeftButton, {}, sidebar.visualItemRect(sidebar.allCommitsItem()).center());
  ASSERT_EQ(filter.count(), 1);
  EXPECT_TRUE(filter.at(0).at(0).toStringList().isEmpty());
}
