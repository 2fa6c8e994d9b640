#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/MergeConflicts/MergeConflictSheetController.h"
#include "Controllers/MergeConflicts/MergeConflictViewController.h"
#include "Controllers/MergeConflicts/MergeSourceTextView.h"
#include "Jobs/JobQueue.h"
#include "Services/Preferences.h"
#include "UI/Appearance.h"
#include "support/Conflicts.h"
#include "support/Widgets.h"

namespace {

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

// The merge tool preference pointed at a program of the test's own on PATH; restored after.
struct ScriptMergeTool {
  explicit ScriptMergeTool(const QByteArray& script) {
    bin.writeExecutable("jelv-test-merge", script);
    oldPath = qgetenv("PATH");
    qputenv("PATH", bin.path().toUtf8() + ":" + oldPath);
    Preferences& preferences = Preferences::shared();
    preferences.setMergeTool(6);  // custom
    preferences.setExternalMergeToolCustomPath(QStringLiteral("jelv-test-merge"));
    preferences.setExternalMergeToolCustomArguments(QStringLiteral("$LOCAL $REMOTE \"$BASE\" $MERGED"));
  }
  ~ScriptMergeTool() {
    qputenv("PATH", oldPath);
    Preferences& preferences = Preferences::shared();
    preferences.remove(QStringLiteral("mergeTool"));
    preferences.remove(QStringLiteral("externalMergeToolCustomPath"));
    preferences.remove(QStringLiteral("externalMergeToolCustomArguments"));
  }
  TempRepository bin{false, QStringLiteral("bin")};
  QByteArray oldPath;
};

std::unique_ptr<MergeConflictViewController> openChoice(const TempRepository& repo, const QString& path) {
  auto sheet = std::make_unique<MergeConflictViewController>(repo.module(), path);
  sheet->setJobQueue(std::make_shared<JobQueue>());
  QSignalSpy loaded(sheet.get(), &MergeConflictViewController::loaded);
  sheet->show();
  EXPECT_TRUE(loaded.wait(10000));
  return sheet;
}

QStringList leftovers(const TempRepository& repo) {
  return QDir(repo.path() + QStringLiteral("/dir")).entryList({QStringLiteral("*.~*")}, QDir::Files);
}

QColor rowColour(MergeTextView* view, const QString& text) {
  QTextCursor cursor(view->document());
  cursor.setPosition(int(view->toPlainText().indexOf(text)));
  const QRect rect = view->cursorRect(cursor);
  // Right of the text, where only the row's background is drawn.
  return view->viewport()->grab().toImage().pixelColor(view->viewport()->width() - 4, rect.center().y());
}

}  // namespace

// A conflict resolved inside the editor by a click and real key presses; every step is
// checked on the result pane, and the saved file byte for byte.
TEST(MergeEditor, ResolvedByClicksAndTypingThenSaved) {
  TempRepository repo;
  const QString path = QStringLiteral("dir/ä file.txt");
  makeConflict(repo, path, {QByteArray("alpha\nbravo\ncharlie\ndelta\necho\n"), QByteArray("alpha\nbravo local\ncharlie\ndelta\necho\n"),
                            QByteArray("alpha\nbravo remote\ncharlie\ndelta\necho\n")});

  MergeConflictSheetController sheet(repo.module(), path);
  sheet.setJobQueue(std::make_shared<JobQueue>());
  QSignalSpy loaded(&sheet, &MergeConflictSheetController::loaded);
  sheet.show();
  ASSERT_TRUE(loaded.wait(10000));
  MergeTextView* result = sheet.resultTextView();
  EXPECT_EQ(result->toPlainText(), QStringLiteral("alpha\n--- Merge Conflict ---\ncharlie\ndelta\necho\n"));
  EXPECT_FALSE(sheet.submitButton()->isEnabled());

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
  EXPECT_EQ(repo.git({"show", ":" + path}), QStringLiteral("alpha\nbralta\necho\n"));
}

// The outside tool gets the three versions and the working file: here a script that
// writes them one after another. The versions are gone afterwards.
TEST(ResolveChoice, OutsideToolWritesTheWorkingFile) {
  const struct {
    const char* name;
    std::optional<QByteArray> base;
    QByteArray expected;
  } cases[] = {
      {"with base", QByteArray("base\n"), "L:local\nR:remote\nB:base\n"},
      {"added on both sides", std::nullopt, "L:local\nR:remote\nB:\n"},
  };
  ScriptMergeTool tool(
      "#!/bin/sh\n"
      "{ printf 'L:'; cat \"$1\"; printf 'R:'; cat \"$2\"; printf 'B:'; [ -n \"$3\" ] && cat \"$3\" || echo; } > \"$4.new\"\n"
      "mv \"$4.new\" \"$4\"\n");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    TempRepository repo;
    const QString path = QStringLiteral("dir/a b.txt");
    makeConflict(repo, path, {c.base, QByteArray("local\n"), QByteArray("remote\n")});
    auto sheet = openChoice(repo, path);
    EXPECT_EQ(sheet->toolButton()->text(), QStringLiteral("Merge in Custom"));
    ASSERT_TRUE(sheet->toolButton()->isEnabled());
    QSignalSpy finished(sheet.get(), &QDialog::finished);
    QTest::mouseClick(sheet->toolButton(), Qt::LeftButton);
    ASSERT_TRUE(finished.wait(10000));
    EXPECT_TRUE(sheet->result().isSuccess());
    EXPECT_EQ(repo.readFile(path), c.expected);
    EXPECT_TRUE(leftovers(repo).isEmpty()) << leftovers(repo).join(u' ').toStdString();
  }
}

// A side that deleted the file: the editor, opened anyway, ends with an error and leaves
// the file be; the choice offers no merge, only the sides, one of which deletes it.
TEST(ResolveChoice, DeletedSide) {
  TempRepository repo;
  const QString path = QStringLiteral("dir/f");
  makeConflict(repo, path, {QByteArray("a\n"), QByteArray("changed\n"), std::nullopt});
  {
    MergeConflictSheetController editor(repo.module(), path);
    editor.setJobQueue(std::make_shared<JobQueue>());
    QSignalSpy ended(&editor, &QDialog::finished);
    editor.show();
    ASSERT_TRUE(ended.wait(10000));
    ASSERT_TRUE(editor.result().error());
    EXPECT_EQ(repo.readFile(path), QByteArray("changed\n"));
  }
  auto sheet = openChoice(repo, path);
  const auto labels = sheet->findChildren<QLabel*>();
  QStringList texts;
  for (QLabel* label : labels) texts << label->text();
  EXPECT_TRUE(texts.contains(QStringLiteral("Local: (modified)")));
  EXPECT_TRUE(texts.contains(QStringLiteral("Remote: (deleted)")));
  EXPECT_EQ(sheet->localButton()->text(), QStringLiteral("Choose 'Local'"));
  EXPECT_EQ(sheet->remoteButton()->text(), QStringLiteral("Delete file"));
  EXPECT_TRUE(sheet->editorButton()->isHidden());
  EXPECT_TRUE(sheet->toolButton()->isHidden());
  QSignalSpy finished(sheet.get(), &QDialog::finished);
  QTest::mouseClick(sheet->remoteButton(), Qt::LeftButton);
  ASSERT_TRUE(finished.wait(10000));
  EXPECT_FALSE(QFile::exists(repo.path() + QLatin1Char('/') + path));
  EXPECT_EQ(repo.git({"ls-files", "--unmerged"}), QString());
  EXPECT_EQ(repo.git({"ls-files", path}), QString());
}

// One conflict taken from the local side, one still open: the rows are told apart by
// their backgrounds, in the light appearance and after a switch to the dark one while
// the editor is open.
TEST(MergeEditorLook, ChosenAndOpenConflictsInBothAppearances) {
  TempRepository repo;
  QByteArray base, local, remote;
  for (int i = 1; i <= 24; ++i) {
    const QByteArray line = "    return parse(field" + QByteArray::number(i) + ");\n";
    base += line;
    local += i == 6 ? "    return parseStrict(field6, Mode::exact);\n" : i == 18 ? "    // keep the order of fields\n" + line : line;
    remote += i == 6 ? "    return parseLoose(field6);\n" : i == 18 ? "    return parse(field18, defaults);\n" : line;
  }
  makeConflict(repo, "parser.cpp", {base, local, remote});

  Appearance::apply(*qApp, 1);
  MergeConflictSheetController sheet(repo.module(), QStringLiteral("parser.cpp"));
  sheet.setJobQueue(std::make_shared<JobQueue>());
  QSignalSpy loaded(&sheet, &MergeConflictSheetController::loaded);
  sheet.resize(1300, 640);
  sheet.show();
  ASSERT_TRUE(loaded.wait(10000));
  MergeSourceTextView* localPane = sheet.localTextView();
  localPane->toggleChunk(localPane->toPlainText().indexOf(QStringLiteral("parseStrict")));
  MergeTextView* result = sheet.resultTextView();
  ASSERT_TRUE(result->toPlainText().contains(QStringLiteral("parseStrict")));
  for (int appearance : {1, 2}) {
    SCOPED_TRACE(appearance);
    Appearance::apply(*qApp, appearance);
    QApplication::processEvents();
    const QColor chosen = rowColour(result, QStringLiteral("parseStrict"));
    const QColor open = rowColour(result, QStringLiteral("--- Merge Conflict ---"));
    const QColor context = rowColour(result, QStringLiteral("field3)"));
    EXPECT_NE(chosen, open);
    EXPECT_NE(chosen, context);
    EXPECT_NE(open, context);
    for (const QColor& row : {chosen, open, context}) EXPECT_EQ(Appearance::isDark(*qApp), row.lightness() < 128) << row.name().toStdString();
    screenshot(&sheet, appearance == 1 ? QStringLiteral("merge-editor-light") : QStringLiteral("merge-editor-dark"));
  }
  Appearance::apply(*qApp, 0);
}
