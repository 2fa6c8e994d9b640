#include <gtest/gtest.h>

#include <QFile>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>

#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/LocalChanges/CommitMessageEdit.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controls/SpellChecking/SpellChecker.h"
#include "LocalChangesPage.h"
#include "Services/Preferences.h"
#include "support/Widgets.h"

namespace {
// The most saturated colour drawn in the image: the counter's digits.
QColor inkOf(const QImage& image) {
  QColor best;
  int bestScore = -1;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const QColor c = image.pixelColor(x, y);
      const int score = c.hsvSaturation() * (255 - c.lightness() / 2);
      if (score > bestScore) {
        bestScore = score;
        best = c;
      }
    }
  }
  return best;
}
// The page in a window of a screenshot's size, its lists read; null when the read did
// not end.
StageFileViewController* showLoaded(QMainWindow& window, LocalChangesPage& page) {
  window.setCentralWidget(page.view());
  window.resize(1100, 720);
  window.show();
  return page.load() ? page.view() : nullptr;
}

}  // namespace

// The counter is drawn in three visibly different colours as the subject passes the
// two limits (50 and 70 by default), the error one red.
TEST(CommitBoxLook, CounterColoursAndPageGuideAreDrawn) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("src/a.cpp"), "int limit() {\n  return 50;\n}\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral("src/a.cpp"), "int limit() {\n  // Subjects up to 72 characters read well in most tools.\n  return 72;\n}\n");
  repo.writeFile(QStringLiteral("notes.txt"), "n\n");
  repo.git({QStringLiteral("add"), QStringLiteral("src/a.cpp")});

  QMainWindow window;
  LocalChangesPage page(repo);
  StageFileViewController* view = showLoaded(window, page);
  ASSERT_TRUE(view);
  // A file's diff on the right, as a user would look at it before committing.
  QSignalSpy diff(view, SIGNAL(diffLoaded()));
  view->stagedList()->selectFile(QStringLiteral("src/a.cpp"));
  diff.wait(3000);
  CommitController* box = view->commitBox();
  box->descriptionField()->setPlainText(QStringLiteral("The old limit cut long subjects; the new one is reccomended by most projects."));

  std::vector<QColor> inks;
  const std::pair<int, const char*> states[] = {{36, "commit-box-normal"}, {62, "commit-box-low"}, {78, "commit-box-high"}};
  for (const auto& [length, name] : states) {
    box->subjectField()->setText(QStringLiteral("Explain the parser's new limits").leftJustified(length, QLatin1Char('.')));
    QApplication::processEvents();
    ASSERT_FALSE(box->counterLabel()->isHidden());
    inks.push_back(inkOf(box->counterLabel()->grab().toImage()));
    screenshot(&window, QString::fromLatin1(name));
  }
  EXPECT_NE(inks[0], inks[1]);
  EXPECT_NE(inks[1], inks[2]);
  EXPECT_GT(inks[2].red(), inks[2].green() + 60);

  // A limit changed in the preferences applies at once: 78 is no longer too long.
  EXPECT_FALSE(box->counterLabel()->toolTip().isEmpty());
  Preferences::shared().setCommitSubjectLimitHigh(100);
  EXPECT_TRUE(QTest::qWaitFor([&] { return box->counterLabel()->toolTip().isEmpty(); }, 2000));
  Preferences::shared().setCommitSubjectLimitHigh(70);
}

// The guide is a faint line at its column, and none is drawn at column 0.
TEST(CommitBoxLook, PageGuideIsDrawnAtItsColumn) {
  CommitMessageEdit editor;
  editor.resize(700, 160);
  editor.setPlainText(QStringLiteral("short line"));
  editor.show();
  editor.setPageGuideColumn(40);
  const qreal x = editor.pageGuideX();
  ASSERT_GT(x, 100);
  ASSERT_LT(x, editor.viewport()->width());
  const auto inkAtGuide = [&] {
    const QImage image = editor.viewport()->grab().toImage();
    const int y = image.height() - 3;  // below the text
    const QColor background = image.pixelColor(static_cast<int>(x) + 8, y);
    return image.pixelColor(static_cast<int>(x), y) != background || image.pixelColor(static_cast<int>(x) + 1, y) != background;
  };
  EXPECT_TRUE(inkAtGuide());
  editor.setPageGuideColumn(0);
  EXPECT_LT(editor.pageGuideX(), 0);
  EXPECT_FALSE(inkAtGuide());
}

TEST(CommitBoxLook, ErrorSheetOfAFailingHook) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral(".git/hooks/pre-commit"),
                 "#!/bin/sh\necho 'error: trailing whitespace in a.txt:1' >&2\necho 'hint: run the formatter' >&2\nexit 1\n");
  QFile::setPermissions(repo.gitDir() + QStringLiteral("/hooks/pre-commit"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  repo.writeFile(QStringLiteral("a.txt"), "b \n");
  repo.git({QStringLiteral("add"), QStringLiteral("a.txt")});

  QMainWindow window;
  LocalChangesPage page(repo);
  StageFileViewController* view = showLoaded(window, page);
  ASSERT_TRUE(view);
  view->commitBox()->subjectField()->setText(QStringLiteral("Trim a"));
  QSignalSpy finished(view->commitBox(), &CommitController::commitFinished);
  view->commitBox()->commit();
  ASSERT_TRUE(finished.wait(10000));
  auto* sheet = window.findChild<ErrorWindowController*>();
  ASSERT_NE(sheet, nullptr);
  QApplication::processEvents();
  // The failed commit keeps its message for the retry.
  EXPECT_EQ(view->commitBox()->subjectField()->text(), QStringLiteral("Trim a"));
  EXPECT_TRUE(sheet->isVisible());
  screenshot(sheet, QStringLiteral("error-sheet"));
  screenshot(&window, QStringLiteral("error-sheet-window"));
}

// With the dictionary installed, a misspelt word of the description is underlined and
// the switch in the options menu takes the underlines away (and is remembered).
TEST(CommitBoxLook, MisspeltWordsAreUnderlinedWhileSpellCheckingIsOn) {
  ASSERT_TRUE(SpellChecker::shared().isAvailable()) << "needs hunspell-en-us";
  EXPECT_TRUE(SpellChecker::shared().suggestions(QStringLiteral("sentnce")).contains(QStringLiteral("sentence")));

  TempRepository repo;
  auto queue = std::make_shared<JobQueue>();
  Preferences::shared().setEnableCommitSpellChecking(true);
  CommitController box(repo.module(), queue);
  box.descriptionField()->setPlainText(QStringLiteral("This sentnce calls parseLine once."));
  box.subjectField()->setText(QStringLiteral("Fix teh parseLine crash"));
  const auto subjectWords = [&] {
    QStringList words;
    for (const WordSpan& word : box.subjectField()->misspeltWords()) words << box.subjectField()->text().mid(word.start, word.length);
    return words;
  };
  EXPECT_EQ(subjectWords(), QStringList{QStringLiteral("teh")});
  const auto underlined = [&] {
    QStringList words;
    const QTextBlock block = box.descriptionField()->document()->firstBlock();
    for (const QTextLayout::FormatRange& range : block.layout()->formats()) {
      if (range.format.underlineStyle() == QTextCharFormat::SpellCheckUnderline) words << block.text().mid(range.start, range.length);
    }
    return words;
  };
  EXPECT_EQ(underlined(), QStringList{QStringLiteral("sentnce")});

  box.spellCheckingAction()->trigger();
  EXPECT_FALSE(Preferences::shared().enableCommitSpellChecking());
  EXPECT_TRUE(underlined().isEmpty());
  EXPECT_TRUE(subjectWords().isEmpty());
  box.spellCheckingAction()->trigger();
  EXPECT_EQ(underlined(), QStringList{QStringLiteral("sentnce")});
  ASSERT_EQ(subjectWords(), QStringList{QStringLiteral("teh")});
  box.resize(520, 260);
  screenshot(&box, QStringLiteral("commit-box-spelling"));
  // A suggestion replaces the word and the underline goes with it.
  box.subjectField()->replaceWord(box.subjectField()->misspeltWords().front(), QStringLiteral("the"));
  EXPECT_EQ(box.subjectField()->text(), QStringLiteral("Fix the parseLine crash"));
  EXPECT_TRUE(subjectWords().isEmpty());
}
