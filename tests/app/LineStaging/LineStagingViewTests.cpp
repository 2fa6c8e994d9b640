#include <gtest/gtest.h>

#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controls/GitOutputView.h"
#include "Controls/Diff/DiffSelectionPopoverController.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "Services/Preferences.h"
#include "app/LocalChanges/LocalChangesPage.h"

// These tests drive the local changes page as a user does, with the mouse on the gutter
// and the stage bar and with the keyboard in the diff, and compare what git then holds
// in the index and the working tree byte for byte.

namespace {

QByteArray numbered(int from, int to) {
  QByteArray text;
  for (int i = from; i <= to; ++i) text += "line " + QByteArray::number(i) + "\n";
  return text;
}

class LineStagingView : public LocalChangesTest {
 protected:
  QByteArray index(const QString& path) const { return repo.gitBytes({"show", ":" + path}); }

  // Runs an action that applies lines, and waits until the lists and the diff are new.
  void applyAndWait(const std::function<void()>& action) {
    QSignalSpy reloaded(view, &StageFileViewController::reloaded);
    QSignalSpy loaded(view, &StageFileViewController::diffLoaded);
    action();
    ASSERT_TRUE(reloaded.wait(10000));
    if (loaded.isEmpty()) loaded.wait(3000);
  }

  // Presses on the gutter at the first row and drags to the last.
  static void dragInGutter(CommitTextDiffView* text, int fromRow, int toRow) {
    QTest::mousePress(text->gutter(), Qt::LeftButton, {}, rowPoint(text, fromRow));
    QTest::mouseMove(text->gutter(), rowPoint(text, toRow));
    QTest::mouseRelease(text->gutter(), Qt::LeftButton, {}, rowPoint(text, toRow));
  }
};

}  // namespace

// Stage three of four added lines, unstage one of them again, discard another: the
// index and the working tree hold exactly the lines chosen.
TEST_F(LineStagingView, SelectedLinesAreStagedUnstagedAndDiscarded) {
  repo.commitFile("f.txt", numbered(1, 10), "base");
  QByteArray working = numbered(1, 3) + "added A\nadded B\nadded C\nadded D\n" + numbered(4, 4) + numbered(6, 10);
  repo.writeFile("f.txt", working);
  open();
  showDiff(QStringLiteral("f.txt"));
  CommitTextDiffView* text = view->diffView();

  dragInGutter(text, rowOf(text, QStringLiteral("added A")), rowOf(text, QStringLiteral("added C")));
  ASSERT_TRUE(text->activeChunk() && text->activeChunk()->manualSelection);
  QPushButton* stage = text->stageBar()->stageButton();
  ASSERT_TRUE(stage->isVisible());
  EXPECT_EQ(stage->text(), QStringLiteral("Stage Lines"));
  EXPECT_EQ(text->stageBar()->discardButton()->text(), QStringLiteral("Discard Lines"));
  applyAndWait([&] { QTest::mouseClick(stage, Qt::LeftButton); });
  EXPECT_EQ(index(QStringLiteral("f.txt")), numbered(1, 3) + "added A\nadded B\nadded C\n" + numbered(4, 10));
  EXPECT_EQ(repo.readFile("f.txt"), working);
  EXPECT_EQ(view->unstagedList()->files().size(), 1u);
  ASSERT_EQ(view->stagedList()->files().size(), 1u);

  // Unstage "added B" from the staged diff.
  showDiff(QStringLiteral("f.txt"), view->stagedList());
  const int rowB = rowOf(text, QStringLiteral("added B"));
  dragInGutter(text, rowB, rowB);
  EXPECT_EQ(stage->text(), QStringLiteral("Unstage Line"));
  EXPECT_FALSE(text->stageBar()->discardButton()->isVisible());
  applyAndWait([&] { QTest::mouseClick(stage, Qt::LeftButton); });
  EXPECT_EQ(index(QStringLiteral("f.txt")), numbered(1, 3) + "added A\nadded C\n" + numbered(4, 10));

  // Discard "added D" from the unstaged diff; the alert is refused once, then confirmed.
  showDiff(QStringLiteral("f.txt"));
  QStringList asked;
  bool answer = false;
  view->setConfirmation([&](const QString& message, const QString& informative, const QString& button) {
    asked = {message, informative, button};
    return answer;
  });
  const int rowD = rowOf(text, QStringLiteral("added D"));
  dragInGutter(text, rowD, rowD);
  QTest::mouseClick(text->stageBar()->discardButton(), Qt::LeftButton);
  EXPECT_EQ(asked, (QStringList{"Do you want to discard the changes in the selected lines?",
                                "You can't undo this action.", "Discard Line"}));
  QTest::qWait(200);
  EXPECT_EQ(repo.readFile("f.txt"), working);
  answer = true;
  applyAndWait([&] { QTest::mouseClick(text->stageBar()->discardButton(), Qt::LeftButton); });
  EXPECT_EQ(repo.readFile("f.txt"), numbered(1, 3) + "added A\nadded B\nadded C\n" + numbered(4, 4) + numbered(6, 10));
  EXPECT_EQ(index(QStringLiteral("f.txt")), numbered(1, 3) + "added A\nadded C\n" + numbered(4, 10));

  // A selection across a removal and an addition discards both after one question.
  const int rowB2 = rowOf(text, QStringLiteral("added B"));
  const int row5 = rowOf(text, QStringLiteral("line 5"));
  ASSERT_GT(row5, rowB2);
  dragInGutter(text, rowB2, row5);
  applyAndWait([&] { QTest::keyClick(text, Qt::Key_Delete); });
  EXPECT_EQ(asked.value(2), QStringLiteral("Discard 2 Lines"));
  EXPECT_EQ(repo.readFile("f.txt"), index(QStringLiteral("f.txt")));
  EXPECT_TRUE(view->unstagedList()->files().empty());
}

// Hovering a hunk brings the bar to that hunk; its button stages the hunk alone. The
// keyboard walks to the next hunk and stages it, and the view keeps its scroll position.
TEST_F(LineStagingView, HunksAreStagedFromTheBarAndTheKeyboard) {
  // The 120 lines with a new one after each line of `after`.
  const auto withNewLines = [](std::initializer_list<int> after) {
    QByteArray text;
    for (int i = 1; i <= 120; ++i) {
      text += "line " + QByteArray::number(i) + "\n";
      if (std::find(after.begin(), after.end(), i) != after.end()) text += "new after " + QByteArray::number(i) + "\n";
    }
    return text;
  };
  const QByteArray working = withNewLines({20, 40, 60, 80, 100, 120});
  repo.commitFile("g.txt", numbered(1, 120), "base");
  repo.writeFile("g.txt", working);
  open();
  view->resize(1200, 260);
  showDiff(QStringLiteral("g.txt"));
  CommitTextDiffView* text = view->diffView();
  ASSERT_GT(text->verticalScrollBar()->maximum(), 0);

  // Scroll to the second hunk and rest the mouse on it.
  const int row = rowOf(text, QStringLiteral("new after 40"));
  ASSERT_GT(row, 0);
  text->verticalScrollBar()->setValue(row - 3);
  const int scrolled = text->verticalScrollBar()->value();
  const QPoint point = rowPoint(text, row);
  // From elsewhere: a pointer already resting there (an earlier run's) moves nowhere.
  QTest::mouseMove(text->viewport(), QPoint(1, 1));
  QTest::mouseMove(text->viewport(), point);
  ASSERT_TRUE(text->activeChunk());
  EXPECT_FALSE(text->activeChunk()->manualSelection);
  DiffSelectionPopoverController* bar = text->stageBar();
  EXPECT_TRUE(bar->isVisible());
  EXPECT_EQ(bar->stageButton()->text(), QStringLiteral("Stage Hunk"));
  EXPECT_EQ(bar->discardButton()->text(), QStringLiteral("Discard Hunk"));
  EXPECT_EQ(bar->y(), std::max(text->activeChunk()->rect.top() + 5, 5));
  // Beside the text, never over it, whatever the lines' length.
  const QRect barOnScreen(bar->mapToGlobal(QPoint(0, 0)), bar->size());
  const QRect textOnScreen(text->viewport()->mapToGlobal(QPoint(0, 0)), text->viewport()->size());
  EXPECT_FALSE(barOnScreen.intersects(textOnScreen));
  EXPECT_TRUE(text->rect().contains(QRect(text->mapFromGlobal(barOnScreen.topLeft()), bar->size())));
  EXPECT_LE(text->activeChunk()->rect.top(), point.y());
  EXPECT_GE(text->activeChunk()->rect.bottom(), point.y());
  // Discarding the hovered hunk asks about the hunk; refused, nothing is lost.
  QStringList asked;
  view->setConfirmation([&](const QString& message, const QString&, const QString& button) {
    asked << message << button;
    return false;
  });
  QTest::mouseClick(bar->discardButton(), Qt::LeftButton);
  EXPECT_EQ(asked, (QStringList{"Do you want to discard the changes in this hunk?", "Discard Hunk"}));
  EXPECT_EQ(repo.readFile("g.txt"), working);

  applyAndWait([&] { QTest::mouseClick(bar->stageButton(), Qt::LeftButton); });
  EXPECT_EQ(index(QStringLiteral("g.txt")), withNewLines({40}));
  EXPECT_EQ(text->verticalScrollBar()->value(), scrolled);
  EXPECT_EQ(rowOf(text, QStringLiteral("new after 40")), -1);

  // Back to the top, "n" goes to the first hunk, Space stages it.
  text->setFocus();
  QTest::keyClick(text, Qt::Key_Home, Qt::ControlModifier);
  QTest::keyClick(text, Qt::Key_N);
  ASSERT_TRUE(text->activeChunk());
  applyAndWait([&] { QTest::keyClick(text, Qt::Key_Space); });
  EXPECT_EQ(index(QStringLiteral("g.txt")), withNewLines({20, 40}));
  EXPECT_EQ(repo.readFile("g.txt"), working);

  // The last hunks staged: the file leaves the unstaged list and its diff follows it.
  QTest::keyClick(text, Qt::Key_A, Qt::ControlModifier);
  applyAndWait([&] { QTest::keyClick(text, Qt::Key_Space); });
  EXPECT_EQ(index(QStringLiteral("g.txt")), working);
  EXPECT_TRUE(view->unstagedList()->files().empty());
  ASSERT_TRUE(view->stagedList()->currentFile());
  EXPECT_EQ(view->stagedList()->currentFile()->path, QStringLiteral("g.txt"));
  EXPECT_TRUE(view->diffPane()->isShowingText());
  EXPECT_TRUE(text->isStaged());
}

// Side by side: the old text left, the new right, row by row; the
// layout is remembered, and a selection on the right stages what it would in the
// unified layout.
TEST_F(LineStagingView, SideBySideShowsAndStagesTheSameChanges) {
  repo.commitFile("h.txt", numbered(1, 8), "base");
  repo.writeFile("h.txt", numbered(1, 3) + "changed 4\nchanged 5\nextra\n" + numbered(6, 8));
  Preferences::shared().setCommitDiffLayoutMode(0);
  open();
  showDiff(QStringLiteral("h.txt"));
  FileDiffView* pane = view->diffPane();
  ASSERT_FALSE(pane->isSideBySide());
  pane->layoutButton()->click();
  EXPECT_EQ(Preferences::shared().commitDiffLayoutMode(), 1);
  CommitTextDiffView* left = pane->leftView();
  CommitTextDiffView* right = pane->rightView();
  ASSERT_TRUE(left->isVisible() && right->isVisible());
  EXPECT_FALSE(pane->unifiedView()->isVisible());
  // Which side holds which line, and the padding, are PatchView's core test.
  const int removed = rowOf(left, QStringLiteral("line 4"));
  ASSERT_GE(removed, 0);
  EXPECT_EQ(rowOf(right, QStringLiteral("changed 4")), removed);

  // The new side: stage "changed 5" alone; the old side keeps its other lines as context.
  const int row = rowOf(right, QStringLiteral("changed 5"));
  dragInGutter(right, row, row);
  EXPECT_EQ(right->stageBar()->stageButton()->text(), QStringLiteral("Stage Line"));
  // One bar column, between the halves: the right half's text keeps its width and its
  // bar covers neither text.
  const int scrollBar = right->verticalScrollBar()->isVisible() ? right->verticalScrollBar()->width() : 0;
  EXPECT_LE(right->contentsRect().right() - right->viewport()->geometry().right(), scrollBar + 2);
  const auto onScreen = [](const QWidget* widget) { return QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size()); };
  const QRect bar = onScreen(right->stageBar());
  EXPECT_TRUE(right->stageBar()->isVisible());
  EXPECT_GE(bar.left(), onScreen(left->viewport()).right());
  EXPECT_LE(bar.right(), onScreen(right->viewport()).left());
  applyAndWait([&] { QTest::mouseClick(right->stageBar()->stageButton(), Qt::LeftButton); });
  EXPECT_EQ(index(QStringLiteral("h.txt")), numbered(1, 8).replace("line 5\n", "line 5\nchanged 5\n"));

  // The old side: staging "line 4" and "line 5" removes them from the index.
  const int from = rowOf(pane->leftView(), QStringLiteral("line 4"));
  const int to = rowOf(pane->leftView(), QStringLiteral("line 5"));
  ASSERT_GE(from, 0);
  dragInGutter(pane->leftView(), from, to);
  applyAndWait([&] { QTest::mouseClick(pane->leftView()->stageBar()->stageButton(), Qt::LeftButton); });
  EXPECT_EQ(index(QStringLiteral("h.txt")), numbered(1, 3) + "changed 5\n" + numbered(6, 8));

  // Back to unified: the same file, laid out again.
  pane->layoutButton()->click();
  EXPECT_EQ(Preferences::shared().commitDiffLayoutMode(), 0);
  EXPECT_TRUE(pane->unifiedView()->isVisible());
  EXPECT_GE(rowOf(pane->unifiedView(), QStringLiteral("changed 4")), 0);

  // The stored layout changed elsewhere (the preferences window) is followed.
  Preferences::shared().setCommitDiffLayoutMode(1);
  EXPECT_TRUE(pane->leftView()->isVisible());
  EXPECT_TRUE(pane->layoutButton()->isChecked());
  EXPECT_GE(rowOf(pane->rightView(), QStringLiteral("changed 4")), 0);
  Preferences::shared().setCommitDiffLayoutMode(0);
}

// A patch that no longer fits the index opens the error sheet with git's text; a locked
// index is passed over silently. Either way the lists are read again and nothing changed.
TEST_F(LineStagingView, AFailedApplyShowsTheErrorAndALockedIndexNone) {
  repo.commitFile("f.txt", numbered(1, 6), "base");
  repo.writeFile("f.txt", numbered(1, 3) + "added\n" + numbered(4, 6));
  open();
  showDiff(QStringLiteral("f.txt"));
  CommitTextDiffView* text = view->diffView();
  const int row = rowOf(text, QStringLiteral("added"));
  ASSERT_GE(row, 0);

  repo.writeFile(".git/index.lock", {});
  dragInGutter(text, row, row);
  applyAndWait([&] { QTest::keyClick(text, Qt::Key_Space); });
  EXPECT_TRUE(view->findChildren<ErrorWindowController*>().isEmpty());
  EXPECT_EQ(index(QStringLiteral("f.txt")), numbered(1, 6));
  repo.removeFile(".git/index.lock");

  // The index changes behind the view: its hunk's context is gone.
  repo.writeFile("other.txt", numbered(1, 6).replace("line 2\n", "other\n"));
  const QByteArray blob = repo.gitBytes({"hash-object", "-w", "other.txt"}).trimmed();
  repo.git({"update-index", "--cacheinfo", QStringLiteral("100644,%1,f.txt").arg(QString::fromLatin1(blob))});
  dragInGutter(text, row, row);
  applyAndWait([&] { QTest::keyClick(text, Qt::Key_Space); });
  const auto sheets = view->findChildren<ErrorWindowController*>();
  ASSERT_EQ(sheets.size(), 1);
  EXPECT_TRUE(sheets.front()->errorTextView()->rawOutput().contains(u"patch does not apply"))
      << sheets.front()->errorTextView()->rawOutput().toStdString();
  EXPECT_EQ(index(QStringLiteral("f.txt")), numbered(1, 6).replace("line 2\n", "other\n"));
}

// A changed line shows its sign just before the text, as the history's diff does; a
// context line shows none.
TEST_F(LineStagingView, ChangedLinesShowTheirSignBeforeTheText) {
  repo.commitFile("s.txt", numbered(1, 5), "base");
  repo.writeFile("s.txt", numbered(1, 5).replace("line 3\n", "third\n"));
  open();
  showDiff(QStringLiteral("s.txt"));
  CommitTextDiffView* text = view->diffView();
  const QImage gutter = text->gutter()->grab().toImage();
  const qreal scale = gutter.devicePixelRatio();
  // Pixels unlike the row's own background right of the line numbers, where the sign goes:
  // the gutter ends in a column one digit and eight pixels wide, the last three for the
  // hunk marker.
  const auto inkBeforeText = [&](const QString& line) {
    const int row = rowOf(text, line);
    EXPECT_GE(row, 0) << line.toStdString();
    const QRect cell = text->cursorRect(QTextCursor(text->document()->findBlockByNumber(row)));
    const int right = text->gutter()->width() - 4, left = right - text->fontMetrics().horizontalAdvance(QLatin1Char('9')) - 5;
    const QRgb background = gutter.pixel(int(left * scale), int(cell.center().y() * scale));
    int ink = 0;
    for (int y = cell.top() + 1; y < cell.bottom(); ++y) {
      for (int x = left; x < right; ++x) ink += gutter.pixel(int(x * scale), int(y * scale)) != background;
    }
    return ink;
  };
  EXPECT_GT(inkBeforeText(QStringLiteral("line 3")), 0);
  EXPECT_GT(inkBeforeText(QStringLiteral("third")), 0);
  EXPECT_EQ(inkBeforeText(QStringLiteral("line 2")), 0);
}
