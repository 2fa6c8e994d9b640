#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QFile>
#include <QImage>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextLayout>
#include <cstdlib>

#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/LocalChanges/CommitMessageEdit.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controllers/Sheets/RepositorySettingsController.h"
#include "Controls/SpellChecking/SpellChecker.h"
#include "LocalChangesPage.h"
#include "Models/GitModuleSettings.h"
#include "Services/Preferences.h"
#include "support/Widgets.h"

namespace {
QString lastMessage(const TempRepository& repo) { return repo.git({"log", "-1", "--format=%B"}).trimmed(); }

// Takes the identity away from git for one test: no environment, and a home folder
// without a global file. The repository forbids guessing from the host name.
class WithoutIdentity {
 public:
  explicit WithoutIdentity(const QString& home) {
    for (const char* name : kNames) {
      const char* value = std::getenv(name);
      saved_.push_back(value ? std::optional<QByteArray>(value) : std::nullopt);
      ::unsetenv(name);
    }
    ::setenv("HOME", home.toLocal8Bit().constData(), 1);
  }
  ~WithoutIdentity() {
    for (size_t i = 0; i < saved_.size(); ++i) {
      if (saved_[i]) ::setenv(kNames[i], saved_[i]->constData(), 1);
    }
  }

 private:
  static constexpr const char* kNames[] = {"GIT_AUTHOR_NAME", "GIT_AUTHOR_EMAIL", "GIT_COMMITTER_NAME", "GIT_COMMITTER_EMAIL",
                                           "HOME"};
  std::vector<std::optional<QByteArray>> saved_;
};

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

}  // namespace

// The menu lists the last messages newest first; choosing one fills the fields and
// becomes the draft.
TEST(CommitBox, RecentMessagesFillTheFields) {
  TempRepository repo;
  repo.commitFile("a.txt", "1\n", "First change");
  repo.commitFile("a.txt", "2\n", "Second change\n\nWith a body\nof two lines");
  repo.commitFile("a.txt", "3\n", "Third change");

  CommitController box(repo.module(), std::make_shared<JobQueue>());
  ASSERT_TRUE(waitFor(&box, SIGNAL(recentMessagesLoaded()), [&] { box.loadRecentMessages(); }));
  QStringList titles;
  for (QAction* action : box.recentMessagesMenu()->actions()) titles << action->text();
  EXPECT_EQ(titles, (QStringList{"Third change", "Second change", "First change"}));

  box.recentMessagesMenu()->actions().at(1)->trigger();
  EXPECT_EQ(box.subjectField()->text(), QStringLiteral("Second change"));
  EXPECT_EQ(box.descriptionField()->toPlainText(), QStringLiteral("With a body\nof two lines"));
  EXPECT_EQ(GitModuleSettings::load(repo.module()).draftMessage, QStringLiteral("Second change\n\nWith a body\nof two lines"));
}

// A squash merge fills in git's prepared message once and turns the button into
// "Squash Commits"; the commit takes the message the user gave.
TEST_F(LocalChangesTest, SquashInProgressPrefillsTheMessage) {
  repo.commitFile("a.txt", "a\n", "base");
  repo.git({"checkout", "-q", "-b", "topic"});
  repo.commitFile("b.txt", "b\n", "Topic work");
  repo.git({"checkout", "-q", "main"});
  repo.git({"merge", "--squash", "topic"});

  open();
  CommitController* box = view->commitBox();
  EXPECT_EQ(box->subjectField()->text(), QStringLiteral("Squashed commit of the following:"));
  EXPECT_TRUE(box->descriptionField()->toPlainText().contains(u"Topic work"));
  EXPECT_EQ(box->commitButton()->text(), QStringLiteral("Squash Commits"));

  // Emptied by the user, the fields stay empty at the next refresh.
  box->subjectField()->clear();
  box->descriptionField()->clear();
  ASSERT_TRUE(page->reloadAfter([&] { view->reload(); }));
  EXPECT_TRUE(box->subjectField()->text().isEmpty());

  box->subjectField()->setText(QStringLiteral("Squash topic"));
  ASSERT_TRUE(waitFor(box, SIGNAL(commitFinished()), [&] { QTest::mouseClick(box->commitButton(), Qt::LeftButton); }));
  EXPECT_EQ(lastMessage(repo), QStringLiteral("Squash topic"));
}

// A cherry-pick of two commits stops at a conflict on the first; once that is resolved and
// committed the button continues with the second.
TEST_F(LocalChangesTest, ContinueCherryPickAppliesTheRemainingCommits) {
  repo.commitFile("a.txt", "base\n", "base");
  repo.git({"checkout", "-q", "-b", "topic"});
  repo.commitFile("a.txt", "topic\n", "Topic edits a");
  repo.commitFile("b.txt", "b\n", "Topic adds b");
  repo.git({"checkout", "-q", "main"});
  repo.commitFile("a.txt", "main\n", "Main edits a");
  repo.git({"cherry-pick", "main..topic"}, true);  // stops on a.txt
  repo.writeFile("a.txt", "both\n");
  repo.git({"add", "a.txt"});
  repo.git({"-c", "core.editor=true", "commit", "--no-edit"});

  open();
  CommitController* box = view->commitBox();
  ASSERT_EQ(box->commitButton()->text(), QStringLiteral("Continue Cherry-Pick"));
  ASSERT_TRUE(box->commitButton()->isEnabled());
  ASSERT_TRUE(page->reloadAfter([&] { QTest::mouseClick(box->commitButton(), Qt::LeftButton); }));
  EXPECT_EQ(lastMessage(repo), QStringLiteral("Topic adds b"));
  EXPECT_FALSE(QFile::exists(repo.gitDir() + QStringLiteral("/sequencer")));
  EXPECT_EQ(box->commitButton()->text(), QStringLiteral("Commit"));
}

// Without an identity the commit fails; the error sheet's repair opens the repository
// settings at the identity, and once it is saved the same commit goes through.
TEST(CommitBox, MissingIdentityIsRepairedThroughTheSettingsSheet) {
  TempRepository repo;
  repo.commitFile("a.txt", "a\n", "base");
  repo.writeFile("a.txt", "b\n");
  repo.stageAll();
  repo.git({"config", "user.useConfigOnly", "true"});
  const QTemporaryDir emptyHome;
  WithoutIdentity noIdentity(emptyHome.path());

  QMainWindow window;
  LocalChangesPage page(repo);
  StageFileViewController* view = page.view();
  ASSERT_TRUE(page.showIn(window));
  CommitController* box = view->commitBox();
  box->subjectField()->setText(QStringLiteral("Change a"));
  const QString before = repo.headSha();
  ASSERT_TRUE(waitFor(box, SIGNAL(commitFinished()), [&] { box->commit(); }));
  EXPECT_EQ(repo.headSha(), before);
  EXPECT_EQ(box->subjectField()->text(), QStringLiteral("Change a"));  // kept for the retry

  auto* errorSheet = window.findChild<ErrorWindowController*>();
  ASSERT_NE(errorSheet, nullptr);
  ASSERT_TRUE(errorSheet->firstButton()->isVisible());
  EXPECT_EQ(errorSheet->firstButton()->text(), QStringLiteral("Setup identity for this repository"));
  QTest::mouseClick(errorSheet->firstButton(), Qt::LeftButton);

  RepositorySettingsController* settings = nullptr;
  ASSERT_TRUE(QTest::qWaitFor([&] {
    settings = window.findChild<RepositorySettingsController*>();
    return settings && settings->isLoaded();
  }, 10000));
  settings->nameField()->setText(QStringLiteral("Ada Lovelace"));
  settings->emailField()->setText(QStringLiteral("ada@example.com"));
  QSignalSpy ended(settings, &QDialog::finished);
  QTest::mouseClick(settings->submitButton(), Qt::LeftButton);
  ASSERT_TRUE(ended.wait(10000));

  ASSERT_TRUE(waitFor(box, SIGNAL(commitFinished()), [&] { box->commit(); }));
  EXPECT_NE(repo.headSha(), before);
  EXPECT_EQ(repo.git({"log", "-1", "--format=%an <%ae>"}).trimmed(), QStringLiteral("Ada Lovelace <ada@example.com>"));
}

// The draft survives a reopen. While amending, the fields hold the last message and the
// staged list what the amended commit will hold; off again, the draft and the index come
// back. Ctrl+Return commits and empties the box and the draft.
TEST_F(LocalChangesTest, AmendShowsTheAmendedCommitAndGivesTheDraftBack) {
  repo.commitFile("a.txt", "a\n", "First");
  repo.commitFile("b.txt", "b\n", "Add b");
  repo.writeFile("c.txt", "c\n");
  repo.git({"add", "c.txt"});
  {
    LocalChangesPage first(repo);
    first->commitBox()->subjectField()->setText(QStringLiteral("Draft subject"));
    first->commitBox()->descriptionField()->setPlainText(QStringLiteral("Draft body"));
  }
  EXPECT_EQ(GitModuleSettings::load(repo.module()).draftMessage, QStringLiteral("Draft subject\n\nDraft body"));

  open();
  const auto staged = [&] {
    QStringList paths;
    for (const auto& file : view->stagedList()->files()) paths << file->path;
    return paths;
  };
  CommitController* box = view->commitBox();
  EXPECT_EQ(box->subjectField()->text(), QStringLiteral("Draft subject"));
  EXPECT_EQ(staged(), QStringList{"c.txt"});

  ASSERT_TRUE(page->reloadAfter([&] { box->amendBox()->click(); }));
  EXPECT_EQ(box->subjectField()->text(), QStringLiteral("Add b"));
  EXPECT_EQ(staged(), (QStringList{"b.txt", "c.txt"}));
  // The diff of a file of the amended commit is taken against the commit before it.
  ASSERT_TRUE(waitFor(view, SIGNAL(diffLoaded()), [&] { view->stagedList()->selectFile(QStringLiteral("b.txt")); }));
  EXPECT_TRUE(view->diffView()->toPlainText().contains(u"@@ -0,0 +1,1 @@\nb")) << view->diffView()->toPlainText().toStdString();

  ASSERT_TRUE(page->reloadAfter([&] { box->amendBox()->click(); }));
  EXPECT_EQ(staged(), QStringList{"c.txt"});
  EXPECT_EQ(box->subjectField()->text(), QStringLiteral("Draft subject"));

  ASSERT_TRUE(page->reloadAfter([&] { box->amendBox()->click(); }));
  box->subjectField()->setText(QStringLiteral("Add b and c"));
  const QString parent = repo.git({"rev-parse", "HEAD^"}).trimmed();
  box->subjectField()->setFocus();
  ASSERT_TRUE(page->reloadAfter([&] { QTest::keyClick(box->subjectField(), Qt::Key_Return, Qt::ControlModifier); }));
  EXPECT_EQ(repo.git({"rev-parse", "HEAD^"}).trimmed(), parent);
  EXPECT_EQ(lastMessage(repo), QStringLiteral("Add b and c"));
  EXPECT_EQ(repo.git({"show", "--name-only", "--format="}), QStringLiteral("b.txt\nc.txt\n"));
  EXPECT_FALSE(box->amendBox()->isChecked());
  EXPECT_TRUE(staged().isEmpty());
  EXPECT_TRUE(box->subjectField()->text().isEmpty());
  EXPECT_TRUE(GitModuleSettings::load(repo.module()).draftMessage.isEmpty());
}

// The merge's message fills the empty fields; an abort takes it back, unless the user
// wrote their own meanwhile.
TEST(CommitBox, AnAbortedMergeTakesItsMessageBack) {
  TempRepository repo;
  repo.commitFile("a.txt", "a\n", "base");
  CommitController box(repo.module(), std::make_shared<JobQueue>());
  const CommitMessage merge{QStringLiteral("Merge branch 'topic'"), QStringLiteral("# Conflicts:\n#\ta.txt")};
  box.setRepositoryState(RepositoryState::MergeInProgress{}, merge);
  ASSERT_EQ(box.subjectField()->text(), merge.subject);
  box.setRepositoryState(RepositoryState::Ok{}, std::nullopt);
  EXPECT_TRUE(box.subjectField()->text().isEmpty());
  EXPECT_TRUE(box.descriptionField()->toPlainText().isEmpty());

  box.setRepositoryState(RepositoryState::MergeInProgress{}, merge);
  ASSERT_EQ(box.subjectField()->text(), merge.subject);
  box.subjectField()->setText(QStringLiteral("My own words"));
  box.setRepositoryState(RepositoryState::Ok{}, std::nullopt);
  EXPECT_EQ(box.subjectField()->text(), QStringLiteral("My own words"));
}

// The counter is drawn in three visibly different colours as the subject passes the
// two limits (50 and 70 by default), the error one red.
TEST(CommitBoxLook, CounterColoursAreDrawnAndFollowThePreferences) {
  TempRepository repo;
  CommitController box(repo.module(), std::make_shared<JobQueue>());
  box.resize(520, 260);
  box.show();
  std::vector<QColor> inks;
  for (const int length : {36, 62, 78}) {
    box.subjectField()->setText(QStringLiteral("Explain the parser's new limits").leftJustified(length, QLatin1Char('.')));
    QApplication::processEvents();
    ASSERT_FALSE(box.counterLabel()->isHidden());
    inks.push_back(inkOf(box.counterLabel()->grab().toImage()));
  }
  EXPECT_NE(inks[0], inks[1]);
  EXPECT_NE(inks[1], inks[2]);
  EXPECT_GT(inks[2].red(), inks[2].green() + 60);

  // A limit changed in the preferences applies at once: 78 is no longer too long.
  EXPECT_FALSE(box.counterLabel()->toolTip().isEmpty());
  Preferences::shared().setCommitSubjectLimitHigh(100);
  EXPECT_TRUE(QTest::qWaitFor([&] { return box.counterLabel()->toolTip().isEmpty(); }, 2000));
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

// With the dictionary installed, a misspelt word of the description is underlined and
// the switch in the options menu takes the underlines away (and is remembered).
TEST(CommitBoxLook, MisspeltWordsAreUnderlinedWhileSpellCheckingIsOn) {
  ASSERT_TRUE(SpellChecker::shared().isAvailable()) << "needs hunspell-en-us";
  EXPECT_TRUE(SpellChecker::shared().suggestions(QStringLiteral("sentnce")).contains(QStringLiteral("sentence")));

  TempRepository repo;
  Preferences::shared().setEnableCommitSpellChecking(true);
  CommitController box(repo.module(), std::make_shared<JobQueue>());
  box.descriptionField()->setPlainText(QStringLiteral("This sentnce calls parseLine once."));
  box.subjectField()->setText(QStringLiteral("Fix teh parseLine crash"));
  const auto subjectWords = [&] {
    QStringList words;
    for (const WordSpan& word : box.subjectField()->misspeltWords()) words << box.subjectField()->text().mid(word.start, word.length);
    return words;
  };
  EXPECT_EQ(subjectWords(), QStringList{"teh"});
  const auto underlined = [&] {
    QStringList words;
    const QTextBlock block = box.descriptionField()->document()->firstBlock();
    for (const QTextLayout::FormatRange& range : block.layout()->formats()) {
      if (range.format.underlineStyle() == QTextCharFormat::SpellCheckUnderline) words << block.text().mid(range.start, range.length);
    }
    return words;
  };
  EXPECT_EQ(underlined(), QStringList{"sentnce"});

  box.spellCheckingAction()->trigger();
  EXPECT_FALSE(Preferences::shared().enableCommitSpellChecking());
  EXPECT_TRUE(underlined().isEmpty());
  EXPECT_TRUE(subjectWords().isEmpty());
  box.spellCheckingAction()->trigger();
  EXPECT_EQ(underlined(), QStringList{"sentnce"});
  ASSERT_EQ(subjectWords(), QStringList{"teh"});
  box.resize(520, 260);
  screenshot(&box, QStringLiteral("commit-box-spelling"));
  // A suggestion replaces the word and the underline goes with it.
  box.subjectField()->replaceWord(box.subjectField()->misspeltWords().front(), QStringLiteral("the"));
  EXPECT_EQ(box.subjectField()->text(), QStringLiteral("Fix the parseLine crash"));
  EXPECT_TRUE(subjectWords().isEmpty());
}
