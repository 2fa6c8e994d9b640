// What the commit list selects and what the details below it show.
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "Controllers/CommitList/CommitListDisplayController.h"
#include "Controllers/CommitList/CommitListView.h"
#include "ViewTestSupport.h"
#include "UI/JelvDocument.h"
#include "Controllers/RevisionDetails/RevisionHeaderView.h"
#include "Controls/ChangedFilesView.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "Jobs/JobQueue.h"
#include "Services/Preferences.h"
#include "support/TempRepository.h"

namespace {

QStringList paths(const ChangedFileList& files) {
  QStringList list;
  for (const auto& file : files) list << file->path;
  list.sort();
  return list;
}

}  // namespace

TEST(RepositoryViewSelection, OpensOnTheCheckedOutCommitAndComparesTwoCommits) {
  Preferences::shared().setValue(QStringLiteral("showFirstParent"), false);
  TempRepository repo;
  const QString first = repo.commitFile(QStringLiteral("a.txt"), "1\n", QStringLiteral("first"));
  repo.commitFile(QStringLiteral("b.txt"), "b\n", QStringLiteral("second"));
  const QString third = repo.commitFile(QStringLiteral("c.txt"), "c\n", QStringLiteral("third"));
  // A branch far ahead, so that the checked-out commit is not among the first rows.
  QByteArray script = "reset refs/heads/ahead\nfrom " + third.toLatin1() + "\n";
  for (int i = 0; i < 60; ++i) script += "commit refs/heads/ahead\ncommitter C <c@x> " + QByteArray::number(1800000000 + i) + " +0000\ndata 5\nahead\n";
  repo.gitBytes({"fast-import", "--quiet"}, script);

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view, {1200, 760}));
  CommitListView* list = view.commitList();
  ASSERT_TRUE(list->currentRevision());
  EXPECT_EQ(list->currentRevision()->sha().toString(), third);
  QApplication::processEvents();
  const QRect row = list->visualRect(list->currentIndex());
  EXPECT_TRUE(list->viewport()->rect().contains(row)) << row.y();

  // The newest and the oldest of the three: the files of both commits after the first.
  const int older = *list->commitModel()->row(*Sha::fromHex(first));
  QSignalSpy details(&view, &JelvDocument::commitDetailsLoaded);
  list->selectionModel()->select(list->commitModel()->index(older, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  ASSERT_TRUE(QTest::qWaitFor([&] { return paths(view.revisionFiles()->files()) == QStringList{"b.txt", "c.txt"}; }, 10000))
      << paths(view.revisionFiles()->files()).join(' ').toStdString();
  EXPECT_TRUE(view.revisionHeader()->toPlainText().contains(QStringLiteral("Changes between two commits")));
  QSignalSpy diff(&view, &JelvDocument::diffLoaded);
  ASSERT_TRUE(diff.wait(10000));

  // Back to one commit: its own files again.
  list->selectionModel()->select(list->commitModel()->index(older, 0), QItemSelectionModel::Deselect | QItemSelectionModel::Rows);
  ASSERT_TRUE(QTest::qWaitFor([&] { return paths(view.revisionFiles()->files()) == QStringList{"c.txt"}; }, 10000));
}

TEST(RepositoryViewSelection, FirstParentModeClearsTheDiffOfACommitItHides) {
  Preferences::shared().setValue(QStringLiteral("showFirstParent"), false);
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "1\n", QStringLiteral("first"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("side")});
  const QString side = repo.commitFile(QStringLiteral("s.txt"), "s\n", QStringLiteral("side work"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("main")});
  repo.commitFile(QStringLiteral("a.txt"), "2\n", QStringLiteral("main work"));
  repo.git({QStringLiteral("merge"), QStringLiteral("-q"), QStringLiteral("--no-ff"), QStringLiteral("-m"), QStringLiteral("merge"), QStringLiteral("side")});
  repo.git({QStringLiteral("branch"), QStringLiteral("-q"), QStringLiteral("-D"), QStringLiteral("side")});

  JelvDocument view(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(showLoaded(view, {1200, 760}));
  ASSERT_TRUE(view.commitList()->selectSha(*Sha::fromHex(side)));
  QSignalSpy diff(&view, &JelvDocument::diffLoaded);
  ASSERT_TRUE(diff.wait(10000));
  EXPECT_TRUE(view.diffPane()->message().isEmpty());

  view.displayController()->setShowFirstParent(true);
  EXPECT_FALSE(view.commitList()->currentRevision());
  EXPECT_TRUE(view.revisionFiles()->files().empty());
  EXPECT_EQ(view.diffPane()->message(), QStringLiteral("Select a commit to see its changes."));
  view.displayController()->setShowFirstParent(false);
  Preferences::shared().setValue(QStringLiteral("showFirstParent"), false);
}
