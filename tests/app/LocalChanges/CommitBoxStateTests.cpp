#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <cstdlib>

#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controllers/Sheets/RepositorySettingsController.h"
#include "Controls/Diff/CommitTextDiffView.h"
#include "LocalChangesPage.h"
#include "Models/GitModuleSettings.h"

namespace {
QString lastMessage(const TempRepository& repo) {
  return repo.git({QStringLiteral("log"), QStringLiteral("-1"), QStringLiteral("--format=%B")}).trimmed();
}

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
}  // namespace

// The menu lists the last messages newest first; choosing one fills the fields and
// becomes the draft.
TEST(CommitBox, RecentMessagesFillTheFields) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "1\n", QStringLiteral("First change"));
  repo.commitFile(QStringLiteral("a.txt"), "2\n", QStringLiteral("Second change\n\nWith a body\nof two lines"));
  repo.commitFile(QStringLiteral("a.txt"), "3\n", QStringLiteral("Third change"));

  auto queue = std::make_shared<JobQueue>();
  CommitController box(repo.module(), queue);
  ASSERT_TRUE(waitFor(&box, SIGNAL(recentMessagesLoaded()), [&] { box.loadRecentMessages(); }));
  QStringList titles;
  for (QAction* action : box.recentMessagesMenu()->actions()) titles << action->text();
  EXPECT_EQ(titles, (QStringList{QStringLiteral("Third change"), QStringLiteral("Second change"), QStringLiteral("First change")}));

  box.recentMessagesMenu()->actions().at(1)->trigger();
  EXPECT_EQ(box.subjectField()->text(), QStringLiteral("Second change"));
  EXPECT_EQ(box.descriptionField()->toPlainText(), QStringLiteral("With a body\nof two lines"));
  EXPECT_EQ(GitModuleSettings::load(repo.module()).draftMessage, QStringLiteral("Second change\n\nWith a body\nof two lines"));
}

// A squash merge fills in git's prepared message once and turns the button into
// "Squash Commits"; committing it records the squash.
TEST(CommitBox, SquashInProgressPrefillsTheMessage) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("topic")});
  repo.commitFile(QStringLiteral("b.txt"), "b\n", QStringLiteral("Topic work"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("main")});
  repo.git({QStringLiteral("merge"), QStringLiteral("--squash"), QStringLiteral("topic")});

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  view.show();
  ASSERT_TRUE(page.load());
  CommitController* box = view.commitBox();
  EXPECT_EQ(box->subjectField()->text(), QStringLiteral("Squashed commit of the following:"));
  EXPECT_TRUE(box->descriptionField()->toPlainText().contains(u"Topic work"));
  EXPECT_EQ(box->commitButton()->text(), QStringLiteral("Squash Commits"));

  // Emptied by the user, the fields stay empty at the next refresh.
  box->subjectField()->clear();
  box->descriptionField()->clear();
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { view.reload(); }));
  EXPECT_TRUE(box->subjectField()->text().isEmpty());

  box->subjectField()->setText(QStringLiteral("Squash topic"));
  ASSERT_TRUE(waitFor(box, SIGNAL(commitFinished()), [&] { QTest::mouseClick(box->commitButton(), Qt::LeftButton); }));
  EXPECT_EQ(lastMessage(repo), QStringLiteral("Squash topic"));
  EXPECT_EQ(repo.git({QStringLiteral("show"), QStringLiteral("--name-only"), QStringLiteral("--format=")}).trimmed(),
            QStringLiteral("b.txt"));
}

// A cherry-pick of two commits stops at a conflict on the first; once that is resolved and
// committed the button continues with the second.
TEST(CommitBox, ContinueCherryPickAppliesTheRemainingCommits) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "base\n", QStringLiteral("base"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("topic")});
  repo.commitFile(QStringLiteral("a.txt"), "topic\n", QStringLiteral("Topic edits a"));
  repo.commitFile(QStringLiteral("b.txt"), "b\n", QStringLiteral("Topic adds b"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("main")});
  repo.commitFile(QStringLiteral("a.txt"), "main\n", QStringLiteral("Main edits a"));
  repo.git({QStringLiteral("cherry-pick"), QStringLiteral("main..topic")}, true);  // stops on a.txt
  repo.writeFile(QStringLiteral("a.txt"), "both\n");
  repo.git({QStringLiteral("add"), QStringLiteral("a.txt")});
  repo.git({QStringLiteral("-c"), QStringLiteral("core.editor=true"), QStringLiteral("commit"), QStringLiteral("--no-edit")});

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  view.show();
  ASSERT_TRUE(page.load());
  CommitController* box = view.commitBox();
  ASSERT_EQ(box->commitButton()->text(), QStringLiteral("Continue Cherry-Pick"));
  ASSERT_TRUE(box->commitButton()->isEnabled());
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { QTest::mouseClick(box->commitButton(), Qt::LeftButton); }));
  EXPECT_EQ(lastMessage(repo), QStringLiteral("Topic adds b"));
  EXPECT_FALSE(QFile::exists(repo.gitDir() + QStringLiteral("/sequencer")));
  EXPECT_EQ(box->commitButton()->text(), QStringLiteral("Commit"));
}

// Without an identity the commit fails; the error sheet's repair opens the repository
// settings at the identity, and once it is saved the same commit goes through.
TEST(CommitBox, MissingIdentityIsRepairedThroughTheSettingsSheet) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral("a.txt"), "b\n");
  repo.stageAll();
  repo.git({QStringLiteral("config"), QStringLiteral("user.useConfigOnly"), QStringLiteral("true")});
  const QTemporaryDir emptyHome;
  WithoutIdentity noIdentity(emptyHome.path());

  QMainWindow window;
  LocalChangesPage page(repo);
  StageFileViewController* view = page.view();
  window.setCentralWidget(view);
  window.show();
  ASSERT_TRUE(page.load());
  CommitController* box = view->commitBox();
  box->subjectField()->setText(QStringLiteral("Change a"));
  const QString before = repo.headSha();
  ASSERT_TRUE(waitFor(box, SIGNAL(commitFinished()), [&] { box->commit(); }));
  EXPECT_EQ(repo.headSha(), before);

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
  EXPECT_EQ(repo.git({QStringLiteral("log"), QStringLiteral("-1"), QStringLiteral("--format=%an <%ae>")}).trimmed(),
            QStringLiteral("Ada Lovelace <ada@example.com>"));
}

// While amending, the staged list shows what the amended commit will hold: the last
// commit's changes and whatever is staged on top; off again, only the index.
TEST(CommitBox, AmendShowsTheAmendedCommitInTheStagedList) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("First"));
  repo.commitFile(QStringLiteral("b.txt"), "b\n", QStringLiteral("Add b"));
  repo.writeFile(QStringLiteral("c.txt"), "c\n");
  repo.git({QStringLiteral("add"), QStringLiteral("c.txt")});

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  view.show();
  ASSERT_TRUE(page.load());
  const auto staged = [&] {
    QStringList paths;
    for (const auto& file : view.stagedList()->files()) paths << file->path;
    return paths;
  };
  EXPECT_EQ(staged(), QStringList{QStringLiteral("c.txt")});

  CommitController* box = view.commitBox();
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { box->amendBox()->click(); }));
  EXPECT_EQ(box->subjectField()->text(), QStringLiteral("Add b"));
  EXPECT_EQ(staged(), (QStringList{QStringLiteral("b.txt"), QStringLiteral("c.txt")}));
  EXPECT_EQ(view.stagedLabel()->text(), QStringLiteral("Staged (2)"));
  // The diff of a file of the amended commit is taken against the commit before it.
  ASSERT_TRUE(waitFor(&view, SIGNAL(diffLoaded()), [&] { view.stagedList()->selectFile(QStringLiteral("b.txt")); }));
  EXPECT_TRUE(view.diffView()->toPlainText().contains(u"@@ -0,0 +1,1 @@\nb")) << view.diffView()->toPlainText().toStdString();

  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { box->amendBox()->click(); }));
  EXPECT_EQ(staged(), QStringList{QStringLiteral("c.txt")});

  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { box->amendBox()->click(); }));
  box->subjectField()->setText(QStringLiteral("Add b and c"));
  const QString parent = repo.git({QStringLiteral("rev-parse"), QStringLiteral("HEAD^")}).trimmed();
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { QTest::mouseClick(box->commitButton(), Qt::LeftButton); }));
  EXPECT_EQ(repo.git({QStringLiteral("rev-parse"), QStringLiteral("HEAD^")}).trimmed(), parent);
  EXPECT_EQ(lastMessage(repo), QStringLiteral("Add b and c"));
  EXPECT_EQ(repo.git({QStringLiteral("show"), QStringLiteral("--name-only"), QStringLiteral("--format=")}),
            QStringLiteral("b.txt\nc.txt\n"));
  EXPECT_FALSE(box->amendBox()->isChecked());
  EXPECT_TRUE(staged().isEmpty());
}
