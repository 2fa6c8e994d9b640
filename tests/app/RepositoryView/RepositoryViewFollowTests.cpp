#include <gtest/gtest.h>

#include <QApplication>
#include <QMap>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include "Controllers/CommitList/CommitListView.h"
#include "ViewTestSupport.h"
#include "UI/JelvDocument.h"
#include "Controllers/RevisionDetails/RevisionHeaderView.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Controls/ChangedFilesView.h"
#include "Controls/Diff/CommitTextDiffView.h"
#include "Controls/Diff/DiffTextView.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "Jobs/JobQueue.h"
#include "Models/GitModuleSettings.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "support/TempRepository.h"
#include "support/Widgets.h"

namespace {

QStringList subjects(const CommitListView& list) {
  QStringList result;
  for (int row = 0; row < list.commitModel()->rowCount(); ++row) result << list.commitModel()->revision(row)->message();
  return result;
}

}  // namespace

TEST(RepositoryViewFollow, TheShownDiffAndTheHistoryFollowThePreferences) {
  auto& prefs = Preferences::shared();
  TempRepository repo;
  QByteArray text;
  for (int i = 1; i <= 20; ++i) text += "line " + QByteArray::number(i) + "\n";
  repo.commitFile(QStringLiteral("a.txt"), text, QStringLiteral("first"));
  repo.commitFile(QStringLiteral("a.txt"), text.replace("line 10\n", "line ten\n"), QStringLiteral("second"));

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view));
  ASSERT_EQ(view.commitList()->commitModel()->rowCount(), 2);
  if (view.diffView()->rows().empty()) {
    ASSERT_TRUE(waitFor(view, &JelvDocument::diffLoaded));
  }
  const size_t withContext = view.diffView()->rows().size();

  prefs.setValue(QStringLiteral("contextSize"), 0);
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::diffContextSizeChanged);
  ASSERT_TRUE(waitFor(view, &JelvDocument::diffLoaded));
  EXPECT_LT(view.diffView()->rows().size(), withContext);

  prefs.setValue(QStringLiteral("diffShowEntireFile"), true);
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::diffContextSizeChanged);
  ASSERT_TRUE(waitFor(view, &JelvDocument::diffLoaded));
  EXPECT_GT(view.diffView()->rows().size(), withContext);
  prefs.remove(QStringLiteral("diffShowEntireFile"));
  prefs.remove(QStringLiteral("contextSize"));

  // The commit's diff goes side by side on its own choice; the staging diff keeps its own.
  FileDiffView* pane = view.diffPane();
  ASSERT_FALSE(pane->isSideBySide());
  pane->layoutButton()->click();
  EXPECT_EQ(prefs.revisionDiffLayoutMode(), 1);
  EXPECT_EQ(prefs.commitDiffLayoutMode(), 0);
  EXPECT_TRUE(pane->leftView()->isVisibleTo(pane));
  EXPECT_TRUE(pane->leftView()->toPlainText().contains(QStringLiteral("line 10")));
  EXPECT_TRUE(pane->rightView()->toPlainText().contains(QStringLiteral("line ten")));
  EXPECT_FALSE(pane->rightView()->toPlainText().contains(QStringLiteral("line 10\n")));
  screenshot(&view, QStringLiteral("history-side-by-side"));
  // Only read: the keys find no hunk to stage.
  pane->rightView()->goToHunk(1);
  EXPECT_FALSE(pane->rightView()->activeChunk());
  pane->layoutButton()->click();
  EXPECT_EQ(prefs.revisionDiffLayoutMode(), 0);
  EXPECT_TRUE(view.diffView()->isVisibleTo(pane));
  EXPECT_FALSE(view.diffView()->rows().empty());
  prefs.remove(QStringLiteral("revisionDiffLayoutMode"));

  // A lower commit count reads the history again.
  prefs.setValue(QStringLiteral("maxCommitCount"), 1);
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::revisionOrderingChanged);
  // One commit, and the row that says the history was cut.
  EXPECT_TRUE(QTest::qWaitFor([&] { return view.commitList()->commitModel()->revisionCount() == 1; }, 20000));
  EXPECT_TRUE(view.commitList()->commitModel()->isCutRow(1));
  prefs.remove(QStringLiteral("maxCommitCount"));
}

TEST(RepositoryViewFollow, AFilteredListStaysFilteredThroughARefresh) {
  Preferences::shared().setValue(QStringLiteral("showFirstParent"), false);
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "1\n", QStringLiteral("Initial layout"));
  repo.git({"checkout", "-q", "-b", "topic"});
  repo.commitFile(QStringLiteral("t.txt"), "t\n", QStringLiteral("Topic: parser"));
  repo.commitFile(QStringLiteral("t.txt"), "tt\n", QStringLiteral("Topic: parser tests"));
  repo.git({"checkout", "-q", "-b", "feature", "main"});
  repo.commitFile(QStringLiteral("f.txt"), "f\n", QStringLiteral("Feature: settings page"));
  repo.git({"checkout", "-q", "main"});
  repo.commitFile(QStringLiteral("a.txt"), "2\n", QStringLiteral("Main: release notes"));
  repo.git({"tag", "v1.0"});
  repo.commitFile(QStringLiteral("a.txt"), "3\n", QStringLiteral("Main: bump version"));

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view, {1400, 820}));
  ASSERT_EQ(view.commitList()->commitModel()->rowCount(), 6);
  ASSERT_TRUE(QTest::qWaitFor([&] { return view.revisionHeader()->toPlainText().contains(QStringLiteral("bump version")); }, 20000));

  Q_EMIT view.sidebar()->starRequested(QStringLiteral("refs/heads/topic"), true);
  Q_EMIT view.sidebar()->starRequested(QStringLiteral("refs/heads/feature"), true);
  Q_EMIT view.sidebar()->filterRequested({QStringLiteral("refs/heads/topic"), QStringLiteral("refs/heads/feature")});
  const QStringList filtered = {"Topic: parser tests", "Topic: parser", "Feature: settings page", "Initial layout"};
  const auto sorted = [](QStringList list) {
    list.sort();
    return list;
  };
  EXPECT_EQ(sorted(subjects(*view.commitList())), sorted(filtered));
  // HEAD's commit was selected and is filtered out: its details go with it.
  EXPECT_FALSE(view.commitList()->currentRevision());
  EXPECT_FALSE(view.revisionHeader()->toPlainText().contains(QStringLiteral("bump version")));

  // The saved settings start a refresh of their own; let it end first.
  ASSERT_TRUE(QTest::qWaitFor([&] { return !view.controller()->isRefreshing(); }, 20000));
  EXPECT_EQ(sorted(subjects(*view.commitList())), sorted(filtered));

  // A new commit on main arrives with the next refresh; the filter still holds.
  repo.commitFile(QStringLiteral("a.txt"), "4\n", QStringLiteral("Main: more work"));
  view.refresh();
  ASSERT_TRUE(waitFor(view, &JelvDocument::snapshotLoaded));
  EXPECT_EQ(sorted(subjects(*view.commitList())), sorted(filtered));
  EXPECT_TRUE(view.sidebar()->content().references.starred.contains(QStringLiteral("refs/heads/topic")));
  if (qEnvironmentVariableIsSet("JELV_SCREENSHOT_DIR")) {
    view.sidebar()->expandAll();
    QSignalSpy diff(&view, &JelvDocument::diffLoaded);
    view.commitList()->selectRow(1);
    diff.wait(10000);
    screenshot(&view, QStringLiteral("commit-list-filtered"));
  }

  Q_EMIT view.sidebar()->filterRequested({});
  EXPECT_EQ(view.commitList()->commitModel()->rowCount(), 7);
  EXPECT_TRUE(GitModuleSettings::load(repo.module()).filterReferences.isEmpty());
}

TEST(RepositoryViewFollow, CommitsAheadAndBehindTheUpstreamAreMarkedFromTheRefresh) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "1\n", QStringLiteral("Shared base"));
  repo.git({"checkout", "-q", "-b", "theirs"});
  repo.commitFile(QStringLiteral("b.txt"), "1\n", QStringLiteral("Their work"));
  repo.git({"update-ref", "refs/remotes/origin/main", repo.headSha()});
  repo.git({"checkout", "-q", "main"});
  repo.git({"branch", "-q", "-D", "theirs"});
  repo.commitFile(QStringLiteral("a.txt"), "2\n", QStringLiteral("My first"));
  repo.commitFile(QStringLiteral("a.txt"), "3\n", QStringLiteral("My second"));
  repo.git({"config", "remote.origin.url", repo.path()});
  repo.git({"config", "remote.origin.fetch", "+refs/heads/*:refs/remotes/origin/*"});
  repo.git({"config", "branch.main.remote", "origin"});
  repo.git({"config", "branch.main.merge", "refs/heads/main"});

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view, {1200, 500}));
  const CommitListModel& model = *view.commitList()->commitModel();
  QMap<QString, AheadBehindState> states;
  for (int row = 0; row < model.rowCount(); ++row) {
    states[model.revision(row)->message()] =
        static_cast<AheadBehindState>(model.data(model.index(row, 0), CommitListModel::AheadBehindRole).toInt());
  }
  EXPECT_EQ(states.value(QStringLiteral("My first")), AheadBehindState::ahead);
  EXPECT_EQ(states.value(QStringLiteral("My second")), AheadBehindState::ahead);
  EXPECT_EQ(states.value(QStringLiteral("Their work")), AheadBehindState::behind);
  EXPECT_EQ(states.value(QStringLiteral("Shared base")), AheadBehindState::none);
  if (qEnvironmentVariableIsSet("JELV_SCREENSHOT_DIR")) {
    view.sidebar()->expandAll();
    QApplication::processEvents();
    screenshot(&view, QStringLiteral("commit-list-ahead-behind"));
  }
}
