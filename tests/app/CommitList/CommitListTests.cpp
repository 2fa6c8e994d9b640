// The commit list: what it computes, marks and shows on histories made in memory, its
// keys and clipboard, the lanes' width and the end of a cut history; and on a real
// repository, what its display menu and the sidebar's entries narrow, hide and star.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/CommitList/CommitListDisplayController.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Git/Commands/Revision/GetStashesGitCommand.h"
#include "Graph/GraphRowGeometry.h"
#include "Jobs/JobProgress.h"
#include "Models/GitModuleSettings.h"
#include "Models/LocalBranch.h"
#include "Services/Preferences.h"
#include "support/TempRepository.h"
#include "support/Widgets.h"

namespace {

QString hexFor(int n) { return QStringLiteral("%1").arg(n + 1, 40, 16, QLatin1Char('0')); }
ReferencePtr branch(const QString& name, int row, bool active = false) {
  return std::make_shared<LocalBranch>(hexFor(row), "refs/heads/" + name, name, name, QDateTime(), active, std::nullopt);
}

// A linear history of `count` commits, newest first, HEAD at `headRow`; a cut history's
// oldest commit keeps its parent, since older commits exist.
std::shared_ptr<RevisionGraphSource> linearHistory(int count, int headRow = 0, bool cut = false, ReferenceList references = {}) {
  auto revisions = std::make_shared<RevisionList>();
  for (int i = 0; i < count; ++i) {
    const QStringList parents = i + 1 < count || cut ? QStringList{hexFor(i + 1)} : QStringList{};
    revisions->push_back(Revision::create(hexFor(i), hexFor(0), parents, QStringLiteral("Commit %1").arg(i), "Ada",
                                          "ada@example.com", 1700000000 - i * 60));
  }
  auto source = std::make_shared<RevisionGraphSource>();
  source->references = RepositoryReferences::make(hexFor(headRow), std::nullopt, std::move(references));
  source->revisions = revisions;
  source->historyCut = cut;
  return source;
}
// "main" at headRow, "ahead" at the top.
std::shared_ptr<RevisionGraphSource> withBranches(int count, int headRow) {
  return linearHistory(count, headRow, false, {branch("main", headRow, true), branch("ahead", 0)});
}

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
  QAction* action = findAction(menu, text);
  if (!action) ADD_FAILURE() << "no action " << text.toStdString() << " in " << texts(menu).join(", ").toStdString();
  if (action) action->trigger();
  return action;
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

TEST(CommitListView, OpensALongHistoryComputingOnlyWhatItShows) {
  CommitListView view;
  view.resize(900, 600);
  view.setSource(withBranches(50000, 0));
  view.show();
  QApplication::processEvents();
  view.viewport()->repaint();
  EXPECT_EQ(view.commitModel()->rowCount(), 50000);
  EXPECT_GT(view.commitModel()->computedGraphRows(), 0);
  EXPECT_LE(view.commitModel()->computedGraphRows(), 1024);

  view.scrollToBottom();
  view.viewport()->repaint();
  EXPECT_EQ(view.commitModel()->computedGraphRows(), 50000);
}

TEST(CommitListView, RowsAboveHeadAreUnreachableAndSelectionSurvivesARefresh) {
  CommitListView view;
  view.resize(900, 600);
  view.setSource(withBranches(20, 3));
  auto* model = view.commitModel();
  for (int row = 0; row < 20; ++row) {
    EXPECT_EQ(model->data(model->index(row, CommitListModel::GraphColumn), CommitListModel::ReachableRole).toBool(), row >= 3) << row;
  }
  EXPECT_TRUE(model->decoration(3).isHead);
  ASSERT_EQ(model->decoration(3).references.size(), 1u);
  EXPECT_EQ(model->decoration(3).references[0].reference->name, QStringLiteral("main"));
  EXPECT_EQ(model->data(model->index(5, CommitListModel::ShaColumn)).toString(), hexFor(5).left(7));

  ASSERT_TRUE(view.selectSha(*Sha::fromHex(hexFor(7))));
  view.setSource(withBranches(25, 3));
  ASSERT_TRUE(view.currentRevision());
  EXPECT_EQ(view.currentRevision()->sha().toString(), hexFor(7));
}

TEST(CommitListModel, RelativeDatesReadNaturally) {
  const QDateTime now = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);
  EXPECT_EQ(CommitListModel::relativeDate(now.addSecs(-30), now), QStringLiteral("just now"));
  EXPECT_EQ(CommitListModel::relativeDate(now.addSecs(-7200), now), QStringLiteral("2 h ago"));
  EXPECT_EQ(CommitListModel::relativeDate(now.addDays(-3), now), QStringLiteral("3 d ago"));
}

// Rows are painted at different moments; two commits of the same second still read alike
// when a minute boundary passes between the two reads.
TEST(CommitListModel, CommitsOfTheSameSecondReadAlike) {
  ASSERT_TRUE(QTest::qWaitFor([] { return QDateTime::currentDateTimeUtc().time().msec() < 300; }, 2000));
  const qint64 when = QDateTime::currentSecsSinceEpoch() - 59;
  auto revisions = std::make_shared<RevisionList>();
  revisions->push_back(Revision::create(hexFor(0), hexFor(0), {hexFor(1)}, QStringLiteral("Second"), QStringLiteral("Ada"),
                                        QStringLiteral("ada@example.com"), when));
  revisions->push_back(Revision::create(hexFor(1), hexFor(0), {}, QStringLiteral("First"), QStringLiteral("Ada"),
                                        QStringLiteral("ada@example.com"), when));
  auto source = std::make_shared<RevisionGraphSource>();
  source->references = RepositoryReferences::make(hexFor(0), std::nullopt, {});
  source->revisions = revisions;
  CommitListModel model;
  model.setSource(source);
  const QString first = model.data(model.index(0, CommitListModel::DateColumn)).toString();
  QTest::qWait(1200);
  EXPECT_EQ(model.data(model.index(1, CommitListModel::DateColumn)).toString(), first);
}

// Home and End go to the first and the last commit, not to the note that ends a cut
// history; the note loads the rest.
TEST(CommitListNavigation, HomeEndCopyAndTheNoteThatEndsACutHistory) {
  CommitListView view;
  view.resize(900, 400);
  view.setSource(linearHistory(100, 0, true));
  view.show();
  view.setCurrentIndex(view.commitModel()->index(50, 0));
  QTest::keyClick(&view, Qt::Key_End);
  EXPECT_EQ(view.currentIndex().row(), 99);
  QTest::keyClick(&view, Qt::Key_Home);
  EXPECT_EQ(view.currentIndex().row(), 0);
  view.selectionModel()->select(view.commitModel()->index(3, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  QTest::keyClick(&view, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), hexFor(0) + QLatin1Char('\n') + hexFor(3));

  CommitListModel* model = view.commitModel();
  ASSERT_EQ(model->rowCount(), 101);
  EXPECT_TRUE(model->isCutRow(100));
  EXPECT_FALSE(model->revision(100));
  EXPECT_FALSE(model->flags(model->index(100, 0)) & Qt::ItemIsSelectable);
  EXPECT_EQ(model->index(100, 0).data().toString(), CommitListModel::cutRowText(100));
  view.scrollToBottom();
  view.viewport()->repaint();  // the fading lanes of the note paint without a commit

  auto* button = view.findChild<QPushButton*>(QStringLiteral("loadAllCommits"));
  ASSERT_TRUE(button);
  QSignalSpy loadAll(&view, &CommitListView::loadAllRequested);
  button->click();
  EXPECT_EQ(loadAll.count(), 1);

  // The whole history: no note.
  view.setSource(linearHistory(100));
  EXPECT_EQ(model->rowCount(), 100);
  EXPECT_FALSE(view.findChild<QPushButton*>(QStringLiteral("loadAllCommits")));
}

TEST(CommitListNavigation, TheLanesWidthIsRememberedWithinItsBounds) {
  {
    CommitListView view;
    view.setGraphCapFraction(0.5);
    EXPECT_DOUBLE_EQ(view.graphCapFraction(), 0.5);
    view.setGraphCapFraction(3.0);
    EXPECT_DOUBLE_EQ(view.graphCapFraction(), GraphRowGeometry::maximumCapFraction);
    view.setGraphCapFraction(0.45);
  }
  CommitListView next;
  EXPECT_DOUBLE_EQ(next.graphCapFraction(), 0.45);
  Preferences::shared().remove(QStringLiteral("commitListGraphWidth"));
  CommitListView fresh;
  EXPECT_DOUBLE_EQ(fresh.graphCapFraction(), GraphRowGeometry::defaultCapFraction);
}

// Stars, filters and what the display menu hides are saved in the repository's settings,
// shown at once and read by a tab opened later.
TEST(CommitListDisplay, StarsFiltersAndHiddenReferencesAreSavedAndShownAtOnce) {
  Fixture f;
  Tab tab(f);
  EXPECT_FALSE(findItem(tab.sidebar, "Starred", "refs/heads/topic"));

  ASSERT_TRUE(sidebarAction(tab.sidebar, "Branches", "refs/heads/topic", "Star"));
  ASSERT_TRUE(sidebarAction(tab.sidebar, "Tags", "refs/tags/v1", "Star"));
  EXPECT_EQ(f.settingsFile().value(QStringLiteral("starredReferences")).toArray(),
            QJsonArray({QStringLiteral("refs/heads/topic"), QStringLiteral("refs/tags/v1")}));
  QTreeWidgetItem* starred = findItem(tab.sidebar, "Starred", "refs/heads/topic");
  ASSERT_TRUE(starred);
  EXPECT_TRUE(findItem(tab.sidebar, "Starred", "refs/tags/v1"));
  EXPECT_TRUE(findItem(tab.sidebar, "Branches", "refs/heads/topic")->text(0).startsWith(QStringLiteral("★")));
  // Starring doesn't narrow anything.
  EXPECT_EQ(tab.list.commitModel()->rowCount(), static_cast<int>(f.source->revisions->size() + f.source->stashes.size()));

  // A tab opened later reads the stars from the file.
  Tab later(f);
  EXPECT_TRUE(findItem(later.sidebar, "Starred", "refs/heads/topic"));

  ASSERT_TRUE(sidebarAction(later.sidebar, "Starred", "refs/heads/topic", "Unstar"));
  EXPECT_EQ(f.settingsFile().value(QStringLiteral("starredReferences")).toArray(), QJsonArray({QStringLiteral("refs/tags/v1")}));
  EXPECT_FALSE(findItem(later.sidebar, "Starred", "refs/heads/topic"));
  EXPECT_FALSE(findItem(later.sidebar, "Branches", "refs/heads/topic")->text(0).startsWith(QStringLiteral("★")));

  // A branch filter narrows the list without reading the history again.
  const auto history = tab.list.commitModel()->source()->revisions;
  QSignalSpy saved(&tab.display, &CommitListDisplayController::referenceSettingsChanged);

  ASSERT_TRUE(sidebarAction(tab.sidebar, "Branches", "refs/heads/topic", "Show Only This Branch in Commit List"));
  // HEAD's own commit joins the filter only when HEAD is detached.
  EXPECT_EQ(tab.subjects(), QStringList({"t1", "c1"}));
  EXPECT_EQ(tab.list.commitModel()->source()->revisions, history);
  EXPECT_EQ(f.settingsFile().value(QStringLiteral("filterReferences")).toArray(), QJsonArray({QStringLiteral("refs/heads/topic")}));
  EXPECT_EQ(tab.sidebar.allCommitsItem()->text(1), QStringLiteral("Filtered"));
  EXPECT_EQ(saved.count(), 1);

  ASSERT_TRUE(sidebarAction(tab.sidebar, "Branches", "refs/heads/side", "Add to Commit List Filter"));
  const QStringList both = tab.subjects();
  EXPECT_EQ(QSet<QString>(both.begin(), both.end()), QSet<QString>({"t1", "s1", "c1"}));

  ASSERT_TRUE(sidebarAction(tab.sidebar, "Branches", "refs/heads/topic", "Remove from Commit List Filter"));
  EXPECT_EQ(tab.subjects(), QStringList({"s1", "c1"}));

  // Several selected branches at once.
  tab.sidebar.clearSelection();
  findItem(tab.sidebar, "Branches", "refs/heads/topic")->setSelected(true);
  QTreeWidgetItem* main = findItem(tab.sidebar, "Branches", "refs/heads/main");
  main->setSelected(true);
  ASSERT_TRUE(trigger(tab.sidebar.contextMenuFor(main), "Show Only Selected Branches in Commit List"));
  EXPECT_TRUE(tab.subjects().contains(QStringLiteral("t1")));
  EXPECT_TRUE(tab.subjects().contains(QStringLiteral("merge")));
  EXPECT_FALSE(tab.subjects().contains(QStringLiteral("tagged")));

  // A new tab comes up filtered, and clearing from the commit list shows everything.
  Tab filtered(f);
  EXPECT_EQ(filtered.subjects(), tab.subjects());
  ASSERT_TRUE(trigger(filtered.display.displayMenu(&filtered.list), "Show All Branches in Commit List"));
  EXPECT_EQ(filtered.list.commitModel()->rowCount(), static_cast<int>(f.source->revisions->size() + f.source->stashes.size()));
  EXPECT_TRUE(f.settingsFile().value(QStringLiteral("filterReferences")).toArray().isEmpty());
  EXPECT_EQ(filtered.sidebar.allCommitsItem()->text(1), QString());
  EXPECT_EQ(filtered.sidebar.contextMenuFor(filtered.sidebar.allCommitsItem()), nullptr);

  // Hidden tags and stashes and the first-parent mode reshape the list (the tab that shows
  // everything again).
  EXPECT_TRUE(filtered.subjects().contains(QStringLiteral("tagged")));
  ASSERT_TRUE(trigger(filtered.display.displayMenu(&filtered.list), "Hide Tags"));
  EXPECT_FALSE(filtered.subjects().contains(QStringLiteral("tagged")));
  EXPECT_TRUE(f.settingsFile().value(QStringLiteral("hideTags")).toBool());
  EXPECT_TRUE(texts(filtered.display.displayMenu(&filtered.list)).contains(QStringLiteral("Show Tags")));

  const int withStash = filtered.list.commitModel()->rowCount();
  ASSERT_TRUE(trigger(filtered.display.displayMenu(&filtered.list), "Hide Stashes"));
  EXPECT_EQ(filtered.list.commitModel()->rowCount(), withStash - 1);
  EXPECT_TRUE(f.settingsFile().value(QStringLiteral("hideStashes")).toBool());

  // First-parent mode drops the merged side branch.
  QSignalSpy firstParent(&filtered.display, &CommitListDisplayController::showFirstParentChanged);
  ASSERT_TRUE(trigger(filtered.display.displayMenu(&filtered.list), "Show First Parent Only"));
  EXPECT_EQ(firstParent.count(), 1);
  EXPECT_TRUE(filtered.list.commitModel()->graph().showFirstParent());
  EXPECT_FALSE(filtered.subjects().contains(QStringLiteral("s1")));  // which rows stay is the graph's tests' business

  // The settings survive into a new tab; showing everything again restores the rows.
  Tab reshaped(f);
  EXPECT_FALSE(reshaped.subjects().contains(QStringLiteral("tagged")));
  ASSERT_TRUE(trigger(reshaped.display.displayMenu(&reshaped.list), "Show Tags"));
  ASSERT_TRUE(trigger(reshaped.display.displayMenu(&reshaped.list), "Show Stashes"));
  reshaped.display.setShowFirstParent(false);
  EXPECT_EQ(reshaped.list.commitModel()->rowCount(), static_cast<int>(f.source->revisions->size() + f.source->stashes.size()));

  ASSERT_TRUE(trigger(reshaped.display.displayMenu(&reshaped.list), "Hide Remote Branches in Commit List"));
  EXPECT_TRUE(f.settingsFile().value(QStringLiteral("hideRemoteBranches")).toBool());
}
