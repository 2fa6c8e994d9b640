#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDropEvent>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/MergeConflicts/MergeConflictSheetController.h"
#include "Controllers/MergeConflicts/MergeSourceTextView.h"
#include "Jobs/JobQueue.h"
#include "support/Conflicts.h"

namespace {

void fiveLineConflict(const TempRepository& repo, const QString& path) {
  makeConflict(repo, path,
               {QByteArray("alpha\nbravo\ncharlie\ndelta\necho\n"), QByteArray("alpha\nbravo local\ncharlie\ndelta\necho\n"),
                QByteArray("alpha\nbravo remote\ncharlie\ndelta\necho\n")});
}

void placeCursor(MergeTextView* view, qsizetype start, qsizetype end = -1) {
  QTextCursor cursor = view->textCursor();
  cursor.setPosition(int(start));
  if (end >= 0) cursor.setPosition(int(end), QTextCursor::KeepAnchor);
  view->setTextCursor(cursor);
}

qsizetype find(MergeTextView* view, const char* text, qsizetype shift = 0) {
  const qsizetype at = view->toPlainText().indexOf(QString::fromUtf8(text));
  EXPECT_GE(at, 0) << text;
  return at + shift;
}

}  // namespace

// A conflict resolved inside the editor by a click and real key presses; every step is
// checked on the result pane, and the saved file byte for byte.
TEST(MergeEditor, ResolvedByClicksAndTypingThenSaved) {
  TempRepository repo;
  const QString path = QStringLiteral("dir/ä file.txt");
  fiveLineConflict(repo, path);

  MergeConflictSheetController sheet(repo.module(), path);
  sheet.setJobQueue(std::make_shared<JobQueue>());
  QSignalSpy loaded(&sheet, &MergeConflictSheetController::loaded);
  sheet.show();
  ASSERT_TRUE(loaded.wait(10000));
  MergeTextView* result = sheet.resultTextView();
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\n--- Merge Conflict ---\ncharlie\ndelta\necho\n"));
  EXPECT_FALSE(sheet.submitButton()->isEnabled());

  // Typing on the marker of the open conflict does nothing.
  placeCursor(result, find(result, "Merge Conflict"));
  QTest::keyClicks(result, QStringLiteral("x"));
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\n--- Merge Conflict ---\ncharlie\ndelta\necho\n"));

  // A click on the local line takes it.
  MergeSourceTextView* local = sheet.localTextView();
  QTextCursor localLine(local->document());
  localLine.setPosition(int(local->toPlainText().indexOf(QStringLiteral("bravo local")) + 2));
  QTest::mouseClick(local->viewport(), Qt::LeftButton, {}, local->cursorRect(localLine).center());
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\nbravo local\ncharlie\ndelta\necho\n"));
  EXPECT_TRUE(sheet.submitButton()->isEnabled());
  EXPECT_EQ(sheet.windowTitle(), QStringLiteral("All conflicts resolved"));

  placeCursor(result, find(result, "charlie"));
  QTest::keyClicks(result, QStringLiteral("X"));
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\nbravo local\nXcharlie\ndelta\necho\n"));
  EXPECT_EQ(result->textCursor().position(), find(result, "Xcharlie", 1));

  placeCursor(result, find(result, "bravo", 5));
  QTest::keyClick(result, Qt::Key_Return);
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\nbravo\n local\nXcharlie\ndelta\necho\n"));

  // Backspace at the start of " local" takes the newline before it.
  QTest::keyClick(result, Qt::Key_Backspace);
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\nbravo local\nXcharlie\ndelta\necho\n"));

  // From inside "bravo" to inside "delta": three lines become one.
  placeCursor(result, find(result, "bravo", 3), find(result, "delta", 2));
  QTest::keyClick(result, Qt::Key_Delete);
  // The context chunk keeps its three rows: padding below "echo".
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\nbralta\necho\n\n\n"));

  QApplication::clipboard()->setText(QStringLiteral("one\ntwo"));
  placeCursor(result, find(result, "lta"), find(result, "lta", 3));
  QTest::keyClick(result, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\nbraone\ntwo\necho\n\n\n"));

  QTest::keyClick(result, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\nbralta\necho\n\n\n"));

  // Text dropped from elsewhere lands where it is dropped, through the model.
  QMimeData dropped;
  dropped.setText(QStringLiteral("dropped\r\n"));
  QTextCursor echo(result->document());
  echo.setPosition(int(find(result, "echo")));
  const QPoint onEcho = result->cursorRect(echo).topLeft() + QPoint(1, 2);
  // The drop goes to the widget that accepted the drag's entry, as in a real drag.
  QDragEnterEvent enter(onEcho, Qt::CopyAction | Qt::MoveAction, &dropped, Qt::LeftButton, {});
  QApplication::sendEvent(result->viewport(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(onEcho), Qt::CopyAction | Qt::MoveAction, &dropped, Qt::LeftButton, {});
  QApplication::sendEvent(result->viewport(), &drop);
  EXPECT_TRUE(drop.isAccepted());
  EXPECT_TRUE(result->toPlainText().startsWith(QStringLiteral("alpha\nbralta\ndropped\necho\n"))) << result->toPlainText().toStdString();
  QTest::keyClick(result, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\nbralta\necho\n\n\n"));
  // A drag inside the result moves its selection, forward and back; one undo each.
  for (const char* target : {"echo", "alpha"}) {
    placeCursor(result, find(result, "bra"), find(result, "bra", 3));
    result->dropText(find(result, target), QStringLiteral("bra"), true);
    EXPECT_TRUE(result->toPlainText().contains(QStringLiteral("\nlta\n"))) << target;
    EXPECT_TRUE(result->toPlainText().contains(QStringLiteral("bra") + QString::fromUtf8(target))) << target;
    QTest::keyClick(result, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\nbralta\necho\n\n\n")) << target;
  }

  QSignalSpy finished(&sheet, &QDialog::finished);
  QTest::mouseClick(sheet.submitButton(), Qt::LeftButton);
  ASSERT_TRUE(finished.wait(10000));
  EXPECT_TRUE(sheet.result().isSuccess());
  EXPECT_EQ(repo.readFile(path), QByteArray("alpha\nbralta\necho\n"));
  EXPECT_EQ(repo.git({"ls-files", "--unmerged"}), QString());
  EXPECT_EQ(repo.git({"-c", "core.quotepath=false", "diff", "--cached", "--name-only"}).trimmed(), path);
  EXPECT_EQ(repo.git({"show", ":" + path}), QStringLiteral("alpha\nbralta\necho\n"));
}

TEST(MergeEditor, FileDeletedOnOneSideEndsWithAnError) {
  TempRepository repo;
  makeConflict(repo, QStringLiteral("f"), {QByteArray("a\n"), QByteArray("b\n"), std::nullopt});

  MergeConflictSheetController sheet(repo.module(), QStringLiteral("f"));
  sheet.setJobQueue(std::make_shared<JobQueue>());
  QSignalSpy finished(&sheet, &QDialog::finished);
  sheet.show();
  ASSERT_TRUE(finished.wait(10000));
  ASSERT_TRUE(sheet.result().error());
  EXPECT_EQ(repo.readFile(QStringLiteral("f")), QByteArray("b\n"));
}
