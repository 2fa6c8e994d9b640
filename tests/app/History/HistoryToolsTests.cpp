// The history tools as a user reaches them in a repository tab: the commit search on
// Ctrl+F, the blame and file history windows, and the files of a commit.
#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>
#include <QTreeWidget>

#include "Commands/CommandTable.h"
#include "Commands/ShowBlameSheetCommand.h"
#include "Commands/ShowFileHistorySheetCommand.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/History/BlameView.h"
#include "Controllers/History/BlameWindowController.h"
#include "Controllers/History/FileHistoryWindowController.h"
#include "Controllers/History/RevisionFileTreeTabController.h"
#include "UI/JelvDocument.h"
#include "Controllers/Search/RevisionSearchBar.h"
#include "Controllers/Search/RevisionSearchController.h"
#include "Controllers/Search/RevisionSearchResultsView.h"
#include "Controls/ChangedFilesView.h"
#include "Controls/ContentView/FileContentView.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "support/RepositoryTab.h"
#include "support/TempRepository.h"

namespace {

// Five commits: a file grows, is renamed and grows again, beside a guide and a binary.
class HistoryTools : public ::testing::Test {
 protected:
  void SetUp() override {
    repo.commitFile("notes.txt", "alpha\n", "Start the notes");
    repo.writeFile("data.bin", QByteArray(600000, '\0'));
    repo.commitFile("docs/guide.txt", "guide\n", "Write the guide");
    repo.commitFile("notes.txt", "alpha\nbeta\n", "Add beta to the notes");
    repo.git({"mv", "notes.txt", "renamed notes.txt"});
    repo.commit("Rename the notes");
    repo.commitFile("renamed notes.txt", "alpha\nbeta\ngamma\n", "Add gamma");
  }
  TempRepository repo;
};

struct OpenRepository {
  explicit OpenRepository(const TempRepository& repo) : tab(openTab(repo.module())), view(*tab) {}
  CommandContext context(const QString& path) {
    CommandContext context = CommandContext::forRepository(&view);
    context.paths = {path};
    return context;
  }
  // Opens the history of `path` and waits until its commits are listed; null when either fails.
  FileHistoryWindowController* fileHistory(const QString& path) {
    ShowFileHistorySheetCommand::execute(context(path));
    auto* opened = window<FileHistoryWindowController>("fileHistoryWindow");
    if (!opened) return nullptr;
    QSignalSpy loaded(opened, &FileHistoryWindowController::historyLoaded);
    return loaded.wait(20000) ? opened : nullptr;
  }
  // The newest window of that name.
  template <typename Window>
  Window* window(const char* name) {
    const auto windows = view.findChildren<Window*>(QString::fromLatin1(name));
    return windows.isEmpty() ? nullptr : windows.back();
  }
  std::unique_ptr<JelvDocument> tab;
  JelvDocument& view;
};

// Whether the window, made active, closes on the keys. Which keys close the tool windows
// is the activity window's test; here each window takes them.
bool closesOn(QWidget* window, const QKeySequence& keys) {
  window->activateWindow();
  // Active itself: a dialog counts as active while its parent is (qWaitForWindowActive).
  if (!QTest::qWaitFor([window] { return QApplication::activeWindow() == window; })) return false;
  const QPointer<QWidget> closing(window);
  QTest::keySequence(window, keys);
  return !closing || !closing->isVisible();
}

QStringList markedSubjects(CommitListView* list) {
  QStringList subjects;
  auto* model = list->commitModel();
  for (int row = 0; row < model->rowCount(); ++row) {
    if (model->index(row, 0).data(CommitListModel::SearchMatchRole).toBool()) subjects << model->revision(row)->message();
  }
  return subjects;
}

TEST_F(HistoryTools, SearchMarksMatchesStepsThroughThemAndLeavesOnEscape) {
  OpenRepository open(repo);
  JelvDocument& view = open.view;
  view.searchController()->setDelay(0);
  QTest::keyClick(&view, Qt::Key_F, Qt::ControlModifier);
  RevisionSearchBar* bar = view.searchBar();
  ASSERT_TRUE(bar->isVisible());
  ASSERT_TRUE(bar->field()->hasFocus());

  QSignalSpy finished(view.searchController(), &RevisionSearchController::searchFinished);
  QTest::keyClicks(bar->field(), "NOTES");
  ASSERT_TRUE(finished.wait(20000));
  // Only the search for the whole text ends; the shorter ones were canceled or never began.
  QTest::qWait(100);
  EXPECT_EQ(finished.count(), 1);
  EXPECT_EQ(markedSubjects(view.commitList()), (QStringList{"Rename the notes", "Add beta to the notes", "Start the notes"}));
  // The first match is selected; Return and Shift+Return walk the others, wrapping.
  EXPECT_EQ(view.commitList()->currentRevision()->message(), QStringLiteral("Rename the notes"));
  EXPECT_EQ(bar->countLabel()->text(), QStringLiteral("1 of 3"));
  QTest::keyClick(bar->field(), Qt::Key_Return);
  EXPECT_EQ(view.commitList()->currentRevision()->message(), QStringLiteral("Add beta to the notes"));
  QTest::keyClick(bar->field(), Qt::Key_Return, Qt::ShiftModifier);
  QTest::keyClick(bar->field(), Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_EQ(view.commitList()->currentRevision()->message(), QStringLiteral("Start the notes"));

  // The matches are listed beside the commit list, following its selection; choosing one
  // there selects its commit.
  RevisionSearchResultsView* results = view.searchResults();
  ASSERT_TRUE(results->isVisible());
  EXPECT_EQ(results->currentItem(), results->topLevelItem(2));
  results->setCurrentItem(results->topLevelItem(1));
  EXPECT_EQ(view.commitList()->currentRevision()->message(), QStringLiteral("Add beta to the notes"));
  EXPECT_EQ(bar->countLabel()->text(), QStringLiteral("2 of 3"));
  // Down in the field goes to the list; the button hides it.
  QTest::keyClick(bar->field(), Qt::Key_Down);
  EXPECT_TRUE(results->hasFocus());
  bar->resultsButton()->click();
  EXPECT_FALSE(results->isVisible());
  bar->resultsButton()->click();

  // A path search in any case lists the files that matched; choosing one shows its change.
  bar->typeBox()->setCurrentIndex(bar->typeBox()->findText("Path"));
  bar->field()->setText("DOCS/*");
  ASSERT_TRUE(finished.wait(20000));
  QTreeWidgetItem* guide = results->topLevelItem(0);
  ASSERT_EQ(guide->childCount(), 1);
  view.commitList()->selectRow(0);
  QSignalSpy details(&view, &JelvDocument::commitDetailsLoaded);
  results->setCurrentItem(guide->child(0));
  EXPECT_EQ(view.commitList()->currentRevision()->message(), QStringLiteral("Write the guide"));
  ASSERT_TRUE(details.wait(20000));
  ASSERT_TRUE(view.revisionFiles()->currentFile());
  EXPECT_EQ(view.revisionFiles()->currentFile()->path, QStringLiteral("docs/guide.txt"));

  // A sha, abbreviated, jumps to its commit.
  const QString root = repo.git({"rev-list", "--max-parents=0", "HEAD"}).trimmed();
  bar->typeBox()->setCurrentIndex(0);
  bar->field()->setText(root.left(8));
  ASSERT_TRUE(finished.wait(20000));
  EXPECT_EQ(view.commitList()->currentRevision()->sha().toString(), root);

  QTest::keyClick(bar->field(), Qt::Key_Escape);
  EXPECT_FALSE(bar->isVisible());
  EXPECT_FALSE(results->isVisible());
  EXPECT_TRUE(markedSubjects(view.commitList()).isEmpty());
}

// Blame, then the history of a folder and of a file, in one tab.
TEST_F(HistoryTools, BlameAndFolderAndFileHistoryShowTheirCommits) {
  // Two more commits for the folder's history: one of two files, one of one.
  repo.writeFile("docs/guide.txt", "guide\nmore\n");
  repo.writeFile("docs/api.txt", "api\n");
  repo.git({"add", "."});
  repo.commit("Grow the docs");
  repo.commitFile("docs/api.txt", "api\nv2\n", "Second api");
  OpenRepository open(repo);
  ShowBlameSheetCommand::execute(open.context("renamed notes.txt"));
  auto* window = open.window<BlameWindowController>("blameWindow");
  ASSERT_TRUE(window);
  QSignalSpy loaded(window, &BlameWindowController::loaded);
  ASSERT_TRUE(loaded.wait(20000));
  BlameView* blame = window->blameView();
  EXPECT_EQ(blame->toPlainText(), QStringLiteral("alpha\nbeta\ngamma"));
  ASSERT_EQ(blame->chunks().size(), 3u);
  EXPECT_EQ(blame->chunkAtLine(1)->revisionInfo->message, QStringLiteral("Start the notes"));
  EXPECT_EQ(blame->chunkAtLine(3)->revisionInfo->message, QStringLiteral("Add gamma"));
  Q_EMIT blame->revisionClicked(blame->chunkAtLine(2)->revisionInfo->sha);
  EXPECT_EQ(open.view.commitList()->currentRevision()->message(), QStringLiteral("Add beta to the notes"));
  EXPECT_TRUE(closesOn(window, QKeySequence(Qt::Key_Escape)));

  // A binary file is refused in words.
  ShowBlameSheetCommand::execute(open.context("data.bin"));
  auto* binary = open.window<BlameWindowController>("blameWindow");
  ASSERT_TRUE(binary);
  QSignalSpy binaryLoaded(binary, &BlameWindowController::loaded);
  ASSERT_TRUE(binaryLoaded.wait(20000));
  EXPECT_EQ(binary->statusLabel()->text(), QStringLiteral("Cannot show blame for binary file: 'data.bin'"));

  // A folder's history: each commit with its files there.
  FileHistoryWindowController* folder = open.fileHistory("docs/");
  ASSERT_TRUE(folder);
  QTreeWidget* list = folder->list();
  ASSERT_EQ(list->topLevelItemCount(), 3);
  EXPECT_EQ(list->topLevelItem(1)->text(0), QStringLiteral("Grow the docs"));
  ASSERT_EQ(list->topLevelItem(1)->childCount(), 2);

  // A commit of two files waits for a file to be chosen; a commit of one file shows it.
  list->setCurrentItem(list->topLevelItem(1));
  EXPECT_FALSE(folder->isShowingDiff());
  QSignalSpy folderDiff(folder, &FileHistoryWindowController::diffLoaded);
  list->setCurrentItem(list->topLevelItem(2));
  ASSERT_TRUE(folderDiff.wait(20000));
  EXPECT_TRUE(folder->diffView()->isShowingText());

  // One file in each of two commits: the difference between them; two different files
  // are not compared.
  QTreeWidgetItem* secondApi = list->topLevelItem(0)->child(0);
  QTreeWidgetItem* firstApi = list->topLevelItem(1)->child(0);
  ASSERT_EQ(firstApi->text(0), QStringLiteral("A  docs/api.txt"));
  list->clearSelection();
  secondApi->setSelected(true);
  firstApi->setSelected(true);
  ASSERT_TRUE(folderDiff.wait(20000));
  EXPECT_TRUE(folder->diffView()->isShowingText());
  firstApi->setSelected(false);
  list->topLevelItem(2)->child(0)->setSelected(true);
  EXPECT_FALSE(folder->isShowingDiff());
  EXPECT_EQ(folder->countLabel()->text(), QStringLiteral("2 files selected"));

  // The file's history follows the rename back.
  FileHistoryWindowController* history = open.fileHistory("renamed notes.txt");
  ASSERT_TRUE(history);
  list = history->list();
  ASSERT_EQ(list->topLevelItemCount(), 4);

  QSignalSpy diff(history, &FileHistoryWindowController::diffLoaded);
  list->clearSelection();
  list->topLevelItem(0)->setSelected(true);
  list->topLevelItem(3)->setSelected(true);
  ASSERT_TRUE(diff.wait(20000));
  EXPECT_TRUE(history->diffView()->isShowingText());

  list->topLevelItem(1)->setSelected(true);
  EXPECT_FALSE(history->isShowingDiff());
  EXPECT_EQ(history->selectionLabel()->text(), QStringLiteral("Select two commits to see difference between them"));
  EXPECT_EQ(history->countLabel()->text(), QStringLiteral("3 commits selected"));

  // The File tab: the whole file as the clicked commit left it, under its name there.
  QSignalSpy fileShown(history, &FileHistoryWindowController::fileShown);
  history->setShowingFile(true);
  list->setCurrentItem(list->topLevelItem(2));
  ASSERT_TRUE(fileShown.wait(20000));
  EXPECT_EQ(history->contentView()->shownText(), QStringLiteral("alpha\nbeta\n"));
  // Last: once Ctrl+W has closed its window Qt still counts Ctrl as held, and a later
  // click in a list would add to its selection.
  EXPECT_TRUE(closesOn(history, QKeySequence(Qt::CTRL | Qt::Key_W)));
}

TEST_F(HistoryTools, TheFilesOfACommitOpenFolderByFolder) {
  OpenRepository open(repo);
  JelvDocument& view = open.view;
  const QString second = repo.git({"rev-parse", "HEAD~3"}).trimmed();
  ASSERT_TRUE(view.commitList()->selectSha(*Sha::fromHex(second)));
  CommandTable::run("browseFiles", CommandContext::forRepository(&view));
  RevisionFileTreeTabController* tree = view.revisionFileTree();
  EXPECT_EQ(view.detailsTabs()->currentWidget(), tree);
  QSignalSpy loaded(tree, &RevisionFileTreeTabController::treeItemsLoaded);
  ASSERT_TRUE(loaded.wait(20000));
  ASSERT_EQ(tree->tree()->topLevelItemCount(), 3);
  EXPECT_EQ(tree->tree()->topLevelItem(0)->text(0), QStringLiteral("docs"));  // folders first
  EXPECT_EQ(tree->tree()->topLevelItem(2)->text(0), QStringLiteral("notes.txt"));

  tree->tree()->topLevelItem(0)->setExpanded(true);
  ASSERT_TRUE(loaded.wait(20000));
  QTreeWidgetItem* guide = tree->itemForPath("docs/guide.txt");
  ASSERT_TRUE(guide);
  QSignalSpy shown(tree, &RevisionFileTreeTabController::contentShown);
  tree->tree()->setCurrentItem(guide);
  ASSERT_TRUE(shown.wait(20000));
  EXPECT_EQ(tree->contentView()->shownText(), QStringLiteral("guide\n"));

  tree->tree()->setCurrentItem(tree->itemForPath("data.bin"));
  ASSERT_TRUE(shown.wait(20000));
  EXPECT_EQ(tree->contentView()->page(), FileContentView::Page::binary);
  EXPECT_TRUE(tree->contentView()->notLfsLabel()->isVisibleTo(tree->contentView()));

  // Copy SHA in the details copies the selected commit.
  CommandTable::run("copySha", CommandContext::forRepository(&view));
  EXPECT_EQ(QApplication::clipboard()->text(), second);
}

}  // namespace
