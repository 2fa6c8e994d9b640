#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QSignalSpy>

#include "Controllers/CommitList/CommitListDisplayController.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Git/Commands/Revision/GetStashesGitCommand.h"
#include "Jobs/JobProgress.h"
#include "Models/GitModuleSettings.h"
#include "Services/Preferences.h"
#include "support/TempRepository.h"

namespace {

// main: c1 - c2 - merge(c2, s1); topic: c1 - t1; side: c1 - s1; a tag on a commit no
// branch reaches; one stash on main.
struct Fixture {
  TempRepository repo;
  QString c1, c2, t1, s1, merge, tagged;
  std::shared_ptr<RevisionGraphSource> source;

  Fixture() {
    Preferences::shared().setValue(QStringLiteral("showFirstParent"), false);
    c1 = repo.commitFile("a.txt", "1\n", "c1");
    repo.git({"checkout", "-q", "-b", "topic"});
    t1 = repo.commitFile("t.txt", "t\n", "t1");
    repo.git({"checkout", "-q", "-b", "side", "main"});
    s1 = repo.commitFile("s.txt", "s\n", "s1");
    repo.git({"checkout", "-q", "-b", "lost", "main"});
    tagged = repo.commitFile("l.txt", "l\n", "tagged");
    repo.git({"tag", "v1"});
    repo.git({"checkout", "-q", "main"});
    repo.git({"branch", "-q", "-D", "lost"});
    c2 = repo.commitFile("a.txt", "2\n", "c2");
    repo.git({"merge", "-q", "--no-ff", "-m", "merge", "side"});
    merge = repo.headSha();
    repo.writeFile("a.txt", "dirty\n");
    repo.git({"stash", "-q"});
    load();
  }

  void load() {
    JobProgress progress;
    auto source = std::make_shared<RevisionGraphSource>();
    source->revisions = std::make_shared<const RevisionList>(GetRevisionsGitCommand::execute(repo.module(), true, false, progress).value());
    source->stashes = GetStashesGitCommand::execute(repo.module()).value();
    source->references =
        RepositoryReferences::make(repo.headSha(), std::nullopt, GetReferencesGitCommand::execute(repo.module(), Subdomain::references()).value());
    this->source = source;
  }

  QJsonObject settingsFile() const {
    QFile file(GitModuleSettings::filePath(repo.module()));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return QJsonDocument::fromJson(file.readAll()).object();
  }
};

struct Tab {
  RepositorySidebar sidebar;
  CommitListView list;
  CommitListDisplayController display;

  explicit Tab(const Fixture& f) : display(f.repo.module(), &sidebar, &list) {
    list.setSource(display.shaped(*f.source));
    RepositorySidebar::Content content;
    content.references = display.marked(f.source->references);
    content.stashes = f.source->stashes;
    sidebar.setContent(content);
  }

  QStringList subjects() const {
    QStringList result;
    for (int row = 0; row < list.commitModel()->rowCount(); ++row) result << list.commitModel()->revision(row)->message();
    return result;
  }
};

QTreeWidgetItem* findItem(QTreeWidget& tree, const QString& section, const QString& fullReference) {
  for (int i = 0; i < tree.topLevelItemCount(); ++i) {
    QTreeWidgetItem* top = tree.topLevelItem(i);
    if (top->text(0) != section) continue;
    QTreeWidgetItemIterator it(top);
    for (++it; *it && (*it)->parent(); ++it) {
      if ((*it)->data(0, RepositorySidebar::FullReferenceRole).toString() == fullReference) return *it;
    }
  }
  return nullptr;
}

QStringList texts(QMenu* menu) {
  QStringList result;
  for (QAction* action : menu->actions()) {
    if (!action->isSeparator()) result << action->text();
  }
  return result;
}

// Triggers the entry's menu action with that text; false when the menu lacks it.
bool trigger(QMenu* menu, const QString& text) {
  std::unique_ptr<QMenu> owned(menu);
  for (QAction* action : menu->actions()) {
    if (action->text() == text) {
      action->trigger();
      return true;
    }
  }
  ADD_FAILURE() << "no action " << text.toStdString() << " in " << texts(menu).join(", ").toStdString();
  return false;
}

bool sidebarAction(RepositorySidebar& sidebar, const QString& section, const QString& fullReference, const QString& text) {
  QTreeWidgetItem* item = findItem(sidebar, section, fullReference);
  if (!item) {
    ADD_FAILURE() << "no sidebar entry " << fullReference.toStdString();
    return false;
  }
  return trigger(sidebar.contextMenuFor(item), text);
}

}  // namespace

TEST(CommitListDisplay, StarringIsSavedInTheRepositoryAndShownAtOnce) {
  Fixture f;
  Tab tab(f);
  EXPECT_FALSE(findItem(tab.sidebar, QStringLiteral("Starred"), QStringLiteral("refs/heads/topic")));

  ASSERT_TRUE(sidebarAction(tab.sidebar, QStringLiteral("Branches"), QStringLiteral("refs/heads/topic"), QStringLiteral("Star")));
  ASSERT_TRUE(sidebarAction(tab.sidebar, QStringLiteral("Tags"), QStringLiteral("refs/tags/v1"), QStringLiteral("Star")));
  EXPECT_EQ(f.settingsFile().value(QStringLiteral("starredReferences")).toArray(),
            QJsonArray({QStringLiteral("refs/heads/topic"), QStringLiteral("refs/tags/v1")}));
  QTreeWidgetItem* starred = findItem(tab.sidebar, QStringLiteral("Starred"), QStringLiteral("refs/heads/topic"));
  ASSERT_TRUE(starred);
  EXPECT_TRUE(findItem(tab.sidebar, QStringLiteral("Starred"), QStringLiteral("refs/tags/v1")));
  EXPECT_TRUE(findItem(tab.sidebar, QStringLiteral("Branches"), QStringLiteral("refs/heads/topic"))->text(0).startsWith(QStringLiteral("★")));
  // Starring doesn't narrow anything.
  EXPECT_EQ(tab.list.commitModel()->rowCount(), static_cast<int>(f.source->revisions->size() + f.source->stashes.size()));

  // A tab opened later reads the stars from the file.
  Tab later(f);
  EXPECT_TRUE(findItem(later.sidebar, QStringLiteral("Starred"), QStringLiteral("refs/heads/topic")));

  ASSERT_TRUE(sidebarAction(later.sidebar, QStringLiteral("Starred"), QStringLiteral("refs/heads/topic"), QStringLiteral("Unstar")));
  EXPECT_EQ(f.settingsFile().value(QStringLiteral("starredReferences")).toArray(), QJsonArray({QStringLiteral("refs/tags/v1")}));
  EXPECT_FALSE(findItem(later.sidebar, QStringLiteral("Starred"), QStringLiteral("refs/heads/topic")));
  EXPECT_FALSE(findItem(later.sidebar, QStringLiteral("Branches"), QStringLiteral("refs/heads/topic"))->text(0).startsWith(QStringLiteral("★")));
}

TEST(CommitListDisplay, BranchFilterNarrowsTheListWithoutReadingAgain) {
  Fixture f;
  Tab tab(f);
  const auto history = tab.list.commitModel()->source()->revisions;
  QSignalSpy saved(&tab.display, &CommitListDisplayController::referenceSettingsChanged);

  ASSERT_TRUE(sidebarAction(tab.sidebar, QStringLiteral("Branches"), QStringLiteral("refs/heads/topic"),
                            QStringLiteral("Show Only This Branch in Commit List")));
  // HEAD's own commit joins the filter only when HEAD is detached.
  EXPECT_EQ(tab.subjects(), QStringList({"t1", "c1"}));
  EXPECT_EQ(tab.list.commitModel()->source()->revisions, history);
  EXPECT_EQ(f.settingsFile().value(QStringLiteral("filterReferences")).toArray(), QJsonArray({QStringLiteral("refs/heads/topic")}));
  EXPECT_EQ(tab.sidebar.allCommitsItem()->text(1), QStringLiteral("Filtered"));
  EXPECT_EQ(saved.count(), 1);

  ASSERT_TRUE(sidebarAction(tab.sidebar, QStringLiteral("Branches"), QStringLiteral("refs/heads/side"), QStringLiteral("Add to Commit List Filter")));
  const QStringList both = tab.subjects();
  EXPECT_EQ(QSet<QString>(both.begin(), both.end()), QSet<QString>({"t1", "s1", "c1"}));

  ASSERT_TRUE(sidebarAction(tab.sidebar, QStringLiteral("Branches"), QStringLiteral("refs/heads/topic"), QStringLiteral("Remove from Commit List Filter")));
  EXPECT_EQ(tab.subjects(), QStringList({"s1", "c1"}));

  // Several selected branches at once.
  tab.sidebar.clearSelection();
  findItem(tab.sidebar, QStringLiteral("Branches"), QStringLiteral("refs/heads/topic"))->setSelected(true);
  QTreeWidgetItem* main = findItem(tab.sidebar, QStringLiteral("Branches"), QStringLiteral("refs/heads/main"));
  main->setSelected(true);
  ASSERT_TRUE(trigger(tab.sidebar.contextMenuFor(main), QStringLiteral("Show Only Selected Branches in Commit List")));
  EXPECT_TRUE(tab.subjects().contains(QStringLiteral("t1")));
  EXPECT_TRUE(tab.subjects().contains(QStringLiteral("merge")));
  EXPECT_FALSE(tab.subjects().contains(QStringLiteral("tagged")));

  // A new tab comes up filtered, and clearing from the commit list shows everything.
  Tab later(f);
  EXPECT_EQ(later.subjects(), tab.subjects());
  ASSERT_TRUE(trigger(later.display.displayMenu(&later.list), QStringLiteral("Show All Branches in Commit List")));
  EXPECT_EQ(later.list.commitModel()->rowCount(), static_cast<int>(f.source->revisions->size() + f.source->stashes.size()));
  EXPECT_TRUE(f.settingsFile().value(QStringLiteral("filterReferences")).toArray().isEmpty());
  EXPECT_EQ(later.sidebar.allCommitsItem()->text(1), QString());
  EXPECT_EQ(later.sidebar.contextMenuFor(later.sidebar.allCommitsItem()), nullptr);
}

TEST(CommitListDisplay, HiddenReferencesStashesAndFirstParentReshapeTheList) {
  Fixture f;
  Tab tab(f);
  EXPECT_TRUE(tab.subjects().contains(QStringLiteral("tagged")));
  ASSERT_TRUE(trigger(tab.display.displayMenu(&tab.list), QStringLiteral("Hide Tags")));
  EXPECT_FALSE(tab.subjects().contains(QStringLiteral("tagged")));
  EXPECT_TRUE(f.settingsFile().value(QStringLiteral("hideTags")).toBool());
  EXPECT_TRUE(texts(tab.display.displayMenu(&tab.list)).contains(QStringLiteral("Show Tags")));

  const int withStash = tab.list.commitModel()->rowCount();
  ASSERT_TRUE(trigger(tab.display.displayMenu(&tab.list), QStringLiteral("Hide Stashes")));
  EXPECT_EQ(tab.list.commitModel()->rowCount(), withStash - 1);
  EXPECT_TRUE(f.settingsFile().value(QStringLiteral("hideStashes")).toBool());

  // First-parent mode drops the merged side branch but keeps the merge.
  QSignalSpy firstParent(&tab.display, &CommitListDisplayController::showFirstParentChanged);
  ASSERT_TRUE(trigger(tab.display.displayMenu(&tab.list), QStringLiteral("Show First Parent Only")));
  EXPECT_EQ(firstParent.count(), 1);
  EXPECT_TRUE(tab.list.commitModel()->graph().showFirstParent());
  EXPECT_TRUE(tab.subjects().contains(QStringLiteral("merge")));
  EXPECT_FALSE(tab.subjects().contains(QStringLiteral("s1")));
  EXPECT_TRUE(tab.subjects().contains(QStringLiteral("t1")));  // still a branch of its own

  // The settings survive into a new tab; showing everything again restores the rows.
  Tab later(f);
  EXPECT_FALSE(later.subjects().contains(QStringLiteral("tagged")));
  ASSERT_TRUE(trigger(later.display.displayMenu(&later.list), QStringLiteral("Show Tags")));
  ASSERT_TRUE(trigger(later.display.displayMenu(&later.list), QStringLiteral("Show Stashes")));
  later.display.setShowFirstParent(false);
  EXPECT_EQ(later.list.commitModel()->rowCount(), static_cast<int>(f.source->revisions->size() + f.source->stashes.size()));

  ASSERT_TRUE(trigger(later.display.displayMenu(&later.list), QStringLiteral("Hide Remote Branches in Commit List")));
  EXPECT_TRUE(f.settingsFile().value(QStringLiteral("hideRemoteBranches")).toBool());
}
