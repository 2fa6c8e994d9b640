#include <gtest/gtest.h>

#include <QApplication>
#include <QSignalSpy>

#include "Controllers/MergeConflicts/MergeConflictSheetController.h"
#include "Controllers/MergeConflicts/MergeSourceTextView.h"
#include "Jobs/JobQueue.h"
#include "UI/Appearance.h"
#include "support/TempRepository.h"
#include "support/Widgets.h"

namespace {

QColor rowColour(MergeTextView* view, const QString& text) {
  QTextCursor cursor(view->document());
  cursor.setPosition(int(view->toPlainText().indexOf(text)));
  const QRect rect = view->cursorRect(cursor);
  // Right of the text, where only the row's background is drawn.
  return view->viewport()->grab().toImage().pixelColor(view->viewport()->width() - 4, rect.center().y());
}

}  // namespace

// One conflict taken from the local side, one still open: the rows are told apart by
// their backgrounds, in the light and in the dark appearance.
TEST(MergeEditorLook, ChosenAndOpenConflictsInBothAppearances) {
  TempRepository repo;
  QByteArray base, local, remote;
  for (int i = 1; i <= 24; ++i) {
    const QByteArray line = "    return parse(field" + QByteArray::number(i) + ");\n";
    base += line;
    local += i == 6 ? "    return parseStrict(field6, Mode::exact);\n" : i == 18 ? "    // keep the order of fields\n" + line : line;
    remote += i == 6 ? "    return parseLoose(field6);\n" : i == 18 ? "    return parse(field18, defaults);\n" : line;
  }
  repo.commitFile(QStringLiteral("parser.cpp"), base, QStringLiteral("base"));
  repo.git({"checkout", "-q", "-b", "loose-parsing"});
  repo.commitFile(QStringLiteral("parser.cpp"), remote, QStringLiteral("remote"));
  repo.git({"checkout", "-q", "main"});
  repo.commitFile(QStringLiteral("parser.cpp"), local, QStringLiteral("local"));
  repo.git({"merge", "loose-parsing"}, true);

  for (int appearance : {1, 2}) {
    SCOPED_TRACE(appearance);
    Appearance::apply(*qApp, appearance);
    MergeConflictSheetController sheet(repo.module(), QStringLiteral("parser.cpp"));
    sheet.setJobQueue(std::make_shared<JobQueue>());
    QSignalSpy loaded(&sheet, &MergeConflictSheetController::loaded);
    sheet.resize(1300, 640);
    sheet.show();
    ASSERT_TRUE(loaded.wait(10000));
    MergeSourceTextView* localPane = sheet.localTextView();
    const qsizetype strict = localPane->toPlainText().indexOf(QStringLiteral("parseStrict"));
    localPane->toggleChunk(strict);
    QApplication::processEvents();
    MergeTextView* result = sheet.resultTextView();
    ASSERT_TRUE(result->toPlainText().contains(QStringLiteral("parseStrict")));
    const QColor chosen = rowColour(result, QStringLiteral("parseStrict"));
    const QColor open = rowColour(result, QStringLiteral("--- Merge Conflict ---"));
    const QColor context = rowColour(result, QStringLiteral("field3)"));
    EXPECT_NE(chosen, open);
    EXPECT_NE(chosen, context);
    EXPECT_NE(open, context);
    EXPECT_EQ(Appearance::isDark(*qApp), context.lightness() < 128);
    screenshot(&sheet, appearance == 1 ? QStringLiteral("merge-editor-light") : QStringLiteral("merge-editor-dark"));
  }
  Appearance::apply(*qApp, 0);
}
