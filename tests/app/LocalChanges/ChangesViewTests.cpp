#include <gtest/gtest.h>

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QTest>

#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/LocalChanges/FileListModel.h"
#include "Controllers/Sheets/AddGitIgnorePatternController.h"
#include "Controllers/Sheets/EditRepositoryFileController.h"
#include "Controls/FileDiffView/ConflictDiffView.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "LocalChangesPage.h"
#include "Services/MergeTool.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "support/Conflicts.h"
#include "support/Widgets.h"

namespace {
QString status(const TempRepository& repo) { return repo.git({"status", "--porcelain"}); }

QStringList paths(const ChangedFileList& files) {
  QStringList list;
  for (const auto& file : files) list << file->path;
  return list;
}

QStringList menuTitles(StageFileViewController* view, FileListViewController* list, const QString& path) {
  EXPECT_TRUE(list->selectFile(path));
  std::unique_ptr<QMenu> menu(view->contextMenu(list));
  QStringList titles;
  for (QAction* action : menu->actions()) titles << action->text();
  return titles;
}

// The text of the top-level rows and, indented, of the rows under expanded folders.
QStringList visibleRows(FileListViewController* list, const QModelIndex& parent = {}, int depth = 0) {
  QStringList rows;
  QAbstractItemModel* model = list->model();
  for (int row = 0; row < model->rowCount(parent); ++row) {
    const QModelIndex index = model->index(row, 0, parent);
    rows << QString(depth * 2, QLatin1Char(' ')) + index.data().toString();
    if (list->isExpanded(index)) rows << visibleRows(list, index, depth + 1);
  }
  return rows;
}

QByteArray png() {
  QImage image(4, 4, QImage::Format_RGB32);
  image.fill(Qt::red);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return bytes;
}

QByteArray read(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable: ") + path.toUtf8() + '>';
}

struct DiffToolPreferences {
  ~DiffToolPreferences() {
    for (const char* key : {"externalDiffTool", "externalDiffToolCustomPath", "externalDiffToolCustomArguments"}) {
      Preferences::shared().remove(QString::fromLatin1(key));
    }
  }
};

}  // namespace

// Keyboard and buttons move whole files between the lists, as git sees it; staging the
// shown file shows the next one; discard asks with the alert's texts before it throws
// anything away; without a selection the buttons act on all. Each operation says how it
// went in the status bar and the activity manager: done, or why not.
TEST_F(LocalChangesTest, StageUnstageAndDiscardFiles) {
  const QString b = QStringLiteral("d\u00e9j\u00e0 vu.txt");
  repo.commitFile("a.txt", "a\n", "base");
  repo.commitFile(b, "b\n", "base b");
  repo.writeFile("a.txt", "a changed\n");
  repo.writeFile(b, "b changed\n");
  repo.writeFile("new.txt", "new\n");
  open();
  EXPECT_EQ(view->unstagedLabel()->text(), QStringLiteral("Unstaged (3)"));
  EXPECT_EQ(view->stageButton()->text(), QStringLiteral("Stage All"));
  EXPECT_EQ(view->unstageButton()->text(), QStringLiteral("Unstage All"));
  showDiff("a.txt");
  EXPECT_TRUE(view->diffView()->toPlainText().contains(u"\na changed"));
  EXPECT_EQ(view->stageButton()->text(), QStringLiteral("Stage"));

  // Space stages the shown file; the next one is shown, a name beyond ASCII in its title.
  view->unstagedList()->setFocus();
  QSignalSpy diffLoaded(view, &StageFileViewController::diffLoaded);
  ASSERT_TRUE(page->reloadAfter([&] { QTest::keyClick(view->unstagedList(), Qt::Key_Space); }));
  EXPECT_TRUE(status(repo).contains(u"M  a.txt"));
  EXPECT_EQ(view->stagedLabel()->text(), QStringLiteral("Staged (1)"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !diffLoaded.isEmpty() && view->unstagedList()->files().size() == 2; }, 10000));
  ASSERT_TRUE(view->unstagedList()->currentFile());
  EXPECT_EQ(view->unstagedList()->currentFile()->path, b);
  EXPECT_EQ(view->diffPane()->title(), b);
  EXPECT_TRUE(view->diffView()->document()->firstBlock().text().contains(b)) << view->diffView()->toPlainText().toStdString();
  EXPECT_TRUE(view->diffView()->toPlainText().contains(QStringLiteral("b changed")));

  // Return in the staged list takes it back out.
  ASSERT_TRUE(view->stagedList()->selectFile("a.txt"));
  ASSERT_TRUE(page->reloadAfter([&] { QTest::keyClick(view->stagedList(), Qt::Key_Return); }));
  EXPECT_TRUE(status(repo).contains(u" M a.txt"));

  // Discard: a refusal keeps the change, a confirmation throws it away.
  QStringList asked;
  bool answer = false;
  view->setConfirmation([&](const QString& message, const QString& informative, const QString& button) {
    asked << message << informative << button;
    return answer;
  });
  ASSERT_TRUE(view->unstagedList()->selectFile(b));
  view->discard({view->unstagedList()->currentFile()});
  EXPECT_EQ(asked, (QStringList{"Do you want to discard all your changes in the selected files?",
                                "All uncommitted changes will be lost.", "Discard"}));
  EXPECT_EQ(repo.readFile(b), "b changed\n");
  answer = true;
  ASSERT_TRUE(page->reloadAfter([&] { view->discard({view->unstagedList()->currentFile()}); }));
  EXPECT_EQ(repo.readFile(b), "b\n");

  view->unstagedList()->clearSelection();
  EXPECT_EQ(view->stageButton()->text(), QStringLiteral("Stage All"));
  ASSERT_TRUE(page->reloadAfter([&] { QTest::mouseClick(view->stageButton(), Qt::LeftButton); }));
  EXPECT_EQ(status(repo), QStringLiteral("M  a.txt\nA  new.txt\n"));
  EXPECT_EQ(view->unstagedLabel()->text(), QStringLiteral("Unstaged (0)"));
  EXPECT_EQ(view->commitBox()->commitButton()->text(), QStringLiteral("Commit 2 Files"));

  // The newest job of the operation; refreshes follow it in the history.
  const auto lastJob = [&](const QString& name) -> std::shared_ptr<Job> {
    const auto jobs = page->controller().jobQueue()->userJobs();
    for (auto it = jobs.rbegin(); it != jobs.rend(); ++it) {
      if ((*it)->name() == name) return *it;
    }
    return nullptr;
  };
  const std::shared_ptr<Job> staged = lastJob(QStringLiteral("Stage"));
  ASSERT_TRUE(staged);
  EXPECT_EQ(staged->progress().message(), QStringLiteral("done"));
  EXPECT_EQ(staged->progress().state(), JobProgressState::succeeded);
  repo.writeFile(".git/index.lock", "");
  view->unstage(view->stagedList()->files());
  std::shared_ptr<Job> unstaged;
  ASSERT_TRUE(QTest::qWaitFor([&] {
    unstaged = lastJob(QStringLiteral("Unstage"));
    return unstaged && unstaged->status() == Job::Status::finished && unstaged->progress().state() != JobProgressState::succeeded;
  }, 10000));
  EXPECT_EQ(unstaged->progress().state(), JobProgressState::failed);
  EXPECT_TRUE(unstaged->progress().message().startsWith(QStringLiteral("failed: "))) << unstaged->progress().message().toStdString();
  EXPECT_TRUE(unstaged->progress().output().contains(QStringLiteral("index.lock")));
}

TEST_F(LocalChangesTest, AModifiedImageThatDoesNotDecodeIsNotCalledDeleted) {
  repo.commitFile("pic.png", png(), "base");
  repo.writeFile("pic.png", QByteArray("\x89PNG\r\n\x1a\n broken", 16));
  open();
  showDiff("pic.png");
  ASSERT_TRUE(view->diffPane()->isShowingImages());
  EXPECT_FALSE(view->diffPane()->hasNewImage());
  EXPECT_EQ(view->diffPane()->newImageText(), QStringLiteral("This image cannot be shown"));
}

// The page shows the combined diff of a conflicted file, and its button asks for the
// merge editor of that path. Settled from the page, their side lands in the work tree
// and the index, and the file moves to the staged list.
TEST_F(LocalChangesTest, AConflictedFileShowsItsCombinedDiffAndTheirsIsTaken) {
  makeConflict(repo, "a.txt", {QByteArray("base\n"), QByteArray("mine\n"), QByteArray("theirs\n")});
  open();
  showDiff("a.txt");
  ConflictDiffView* conflict = view->diffPane()->conflictView();
  ASSERT_TRUE(conflict);
  EXPECT_TRUE(conflict->diffText().contains(QStringLiteral("++<<<<<<< HEAD\n +mine\n++=======\n+ theirs\n++>>>>>>> theirs")));
  QSignalSpy requested(view, &StageFileViewController::resolveConflictsRequested);
  QTest::mouseClick(conflict->resolveButton(), Qt::LeftButton);
  ASSERT_EQ(requested.size(), 1);
  EXPECT_EQ(requested.front().front().toString(), QStringLiteral("a.txt"));

  const ChangedFileList unstaged = view->unstagedList()->files();
  ASSERT_EQ(unstaged.size(), 1u);
  ASSERT_EQ(unstaged[0]->changeType, ChangeType::unmerged);
  ASSERT_TRUE(page->reloadAfter([&] { view->resolveConflicts(unstaged, UnmergedFileVersionType::remote); }));
  EXPECT_EQ(repo.readFile("a.txt"), "theirs\n");
  EXPECT_TRUE(view->unstagedList()->files().empty());
  EXPECT_EQ(paths(view->stagedList()->files()), QStringList{"a.txt"});
}

// Staging a file that still holds conflict markers asks first; "no" leaves it conflicted,
// a file without markers is staged without a word.
TEST_F(LocalChangesTest, StagingAFileWithConflictMarkersAsksFirst) {
  makeConflict(repo, "a.txt", {QByteArray("base\n"), QByteArray("mine\n"), QByteArray("theirs\n")});
  open();
  QStringList asked;
  view->setConfirmation([&](const QString& message, const QString&, const QString& button) {
    asked << message + QLatin1Char('|') + button;
    return false;
  });
  QSignalSpy reloaded(view, &StageFileViewController::reloaded);
  view->stage(view->unstagedList()->files());
  EXPECT_FALSE(reloaded.wait(1500));
  ASSERT_EQ(asked, QStringList{"The file still contains conflict markers.|Stage Anyway"});
  EXPECT_NE(repo.git({"ls-files", "--unmerged"}), QString());

  repo.writeFile("a.txt", "mine and theirs\n");
  ASSERT_TRUE(page->reloadAfter([&] { view->stage(view->unstagedList()->files()); }));
  EXPECT_EQ(asked.size(), 1);
  EXPECT_EQ(repo.git({"ls-files", "--unmerged"}), QString());
  EXPECT_EQ(repo.git({"show", ":a.txt"}), QStringLiteral("mine and theirs\n"));
}

// The list's External Diff hands the custom tool two real files, the index's version and
// the working file. Which versions each side takes (staged, new, deleted files) and how
// the user's arguments are filled in are the diff files' and the tool finder's tests.
// Without a usable tool the user is told why.
TEST_F(LocalChangesTest, ExternalDiffGivesTheCustomToolBothSides) {
  DiffToolPreferences restore;
  // A stand-in diff tool: writes the arguments it got, one a line, then ends.
  TempRepository bin(false, QStringLiteral("bin"));
  bin.writeExecutable("fake diff", "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.args.tmp\" && mv \"$0.args.tmp\" \"$0.args\"\n");
  const QString path = QStringLiteral("docs/résumé notes.txt");
  repo.commitFile(path, "head\n", "Base");
  repo.writeFile(path, "staged\n");
  repo.stageAll();
  repo.writeFile(path, "working\n");
  Preferences::shared().setExternalDiffTool(int(MergeTool::Kind::custom));
  open();
  QSignalSpy failed(view, SIGNAL(externalToolFailed(QString)));
  view->externalDiff(view->unstagedList()->files().front());
  ASSERT_TRUE(failed.wait(10000));
  EXPECT_TRUE(failed.front().front().toString().startsWith(QStringLiteral("No custom diff tool is set")));

  Preferences::shared().setExternalDiffToolCustomPath(bin.path() + QStringLiteral("/fake diff"));
  ASSERT_TRUE(view->unstagedList()->selectFile(path));
  std::unique_ptr<QMenu> menu(view->contextMenu(view->unstagedList()));
  QAction* action = findAction(menu.get(), QStringLiteral("External Diff"));
  ASSERT_TRUE(action);
  action->trigger();
  ASSERT_TRUE(QTest::qWaitFor([&] { return QFileInfo::exists(bin.path() + QStringLiteral("/fake diff.args")); }, 10000));
  const QStringList sides = QString::fromUtf8(bin.readFile("fake diff.args")).split(u'\n', Qt::SkipEmptyParts);
  ASSERT_EQ(sides.size(), 2) << sides.join(u'|').toStdString();
  EXPECT_EQ(read(sides[0]), QByteArray("staged\n"));
  EXPECT_EQ(sides[1], QDir(repo.path()).filePath(path));
}

TEST_F(LocalChangesTest, TheShownDiffIsReadAgainWithTheNewContext) {
  QByteArray text;
  for (int i = 1; i <= 20; ++i) text += "line " + QByteArray::number(i) + "\n";
  repo.commitFile("a.txt", text, "base");
  repo.writeFile("a.txt", QByteArray(text).replace("line 10\n", "line ten\n"));
  open();
  showDiff("a.txt");
  EXPECT_TRUE(view->diffView()->toPlainText().contains(QStringLiteral("line 7")));

  Preferences::shared().setValue(QStringLiteral("contextSize"), 1);
  QSignalSpy diff(view, &StageFileViewController::diffLoaded);
  PreferencesNotifier::shared().post(PreferencesNotifier::Notification::diffContextSizeChanged);
  ASSERT_TRUE(diff.wait(10000));
  EXPECT_FALSE(view->diffView()->toPlainText().contains(QStringLiteral("line 7")));
  EXPECT_TRUE(view->diffView()->toPlainText().contains(QStringLiteral("line 9")));
  Preferences::shared().remove(QStringLiteral("contextSize"));
}

// The tree groups by folder; a folder row stands for all its files when staging, and a
// folder the user closed stays closed when the lists are read again.
TEST(FileLists, TreeModeStagesFoldersAndKeepsCollapsedFolders) {
  TempRepository repo;
  repo.commitFile("src/core/a.cpp", "a\n", "base");
  repo.commitFile("src/app/b.cpp", "b\n", "base b");
  repo.writeFile("src/core/a.cpp", "a2\n");
  repo.writeFile("src/app/b.cpp", "b2\n");
  repo.writeFile("docs/guide/new.md", "new\n");
  repo.writeFile("top.txt", "top\n");

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  view.resize(900, 700);
  view.show();
  view.setFileListMode(FileListViewMode::tree);
  EXPECT_EQ(Preferences::shared().fileListMode(), 1);
  ASSERT_TRUE(page.load());
  FileListViewController* unstaged = view.unstagedList();
  EXPECT_EQ(visibleRows(unstaged), (QStringList{"docs/guide", "  new.md", "src", "  app", "    b.cpp", "  core",
                                                "    a.cpp", "top.txt"}));

  // Close "docs/guide", then stage the whole "src" folder with the keyboard.
  unstaged->collapse(unstaged->fileModel()->indexOfDirectory(QStringLiteral("docs/guide")));
  const QModelIndex src = unstaged->fileModel()->indexOfDirectory(QStringLiteral("src"));
  unstaged->selectionModel()->setCurrentIndex(src, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  EXPECT_EQ(paths(unstaged->selectedFiles()), (QStringList{"src/app/b.cpp", "src/core/a.cpp"}));
  unstaged->setFocus();
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { QTest::keyClick(unstaged, Qt::Key_Space); }));
  EXPECT_EQ(repo.git({"diff", "--cached", "--name-only"}), QStringLiteral("src/app/b.cpp\nsrc/core/a.cpp\n"));
  EXPECT_EQ(visibleRows(unstaged), (QStringList{"docs/guide", "top.txt"}));
  EXPECT_EQ(visibleRows(view.stagedList()).first(), QStringLiteral("src"));

  // Back to the flat list from the preferences: full paths, one row per file.
  Preferences::shared().setFileListMode(0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return unstaged->mode() == FileListViewMode::list; }, 2000));
  EXPECT_EQ(visibleRows(unstaged), (QStringList{"docs/guide/new.md", "top.txt"}));
  EXPECT_EQ(visibleRows(view.stagedList()), (QStringList{"src/app/b.cpp", "src/core/a.cpp"}));
}

// "Custom Pattern…": the sheet lists what the pattern would ignore as it is typed, and
// adding it takes the files out of the unstaged list.
TEST(FileLists, IgnoreSheetPreviewsThePatternAndAddsIt) {
  TempRepository repo;
  repo.commitFile(".gitignore", "build/\n", "base");
  repo.writeFile("a.log", "x\n");
  repo.writeFile("logs/b.log", "x\n");
  repo.writeFile("c.txt", "x\n");

  QMainWindow window;
  LocalChangesPage page(repo);
  StageFileViewController* view = page.view();
  ASSERT_TRUE(page.showIn(window));

  view->showIgnorePatternSheet(QStringLiteral("*.log"));
  auto* sheet = openSheet<AddGitIgnorePatternController>(&window);
  ASSERT_NE(sheet, nullptr);
  EXPECT_EQ(sheet->windowTitle(), QStringLiteral("Add files to .gitignore"));
  QSignalSpy previews(sheet, &AddGitIgnorePatternController::previewUpdated);
  ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->previewList()->count() > 0; }, 5000));
  QStringList shown;
  for (int i = 0; i < sheet->previewList()->count(); ++i) shown << sheet->previewList()->item(i)->text();
  EXPECT_EQ(shown, (QStringList{"a.log", "logs/b.log"}));

  // Anchored at the root, only the top file matches.
  sheet->patternField()->setText(QStringLiteral("/a.log"));
  ASSERT_TRUE(previews.wait(5000));
  ASSERT_EQ(sheet->previewList()->count(), 1);
  EXPECT_EQ(sheet->previewList()->item(0)->text(), QStringLiteral("a.log"));
  sheet->patternField()->clear();
  EXPECT_FALSE(sheet->submitButton()->isEnabled());
  sheet->patternField()->setText(QStringLiteral("*.log"));
  EXPECT_TRUE(sheet->submitButton()->isEnabled());

  ASSERT_TRUE(waitFor(view, SIGNAL(reloaded()), [&] { QTest::mouseClick(sheet->submitButton(), Qt::LeftButton); }));
  // The edited .gitignore itself is now the change next to c.txt; Ignore is offered for
  // new files only.
  EXPECT_EQ(paths(view->unstagedList()->files()), (QStringList{".gitignore", "c.txt"}));
  EXPECT_TRUE(menuTitles(view, view->unstagedList(), "c.txt").contains("Ignore"));
  EXPECT_FALSE(menuTitles(view, view->unstagedList(), ".gitignore").contains("Ignore"));

  // Its menu offers editing it; the editor saves the whole text.
  view->showEditFileSheet(QStringLiteral(".gitignore"));
  auto* editor = openSheet<EditRepositoryFileController>(&window);
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->editor()->toPlainText(), QStringLiteral("build/\n*.log\n"));
  editor->editor()->setPlainText(QStringLiteral("build/\n*.log\n*.txt"));
  ASSERT_TRUE(waitFor(view, SIGNAL(reloaded()), [&] { QTest::mouseClick(editor->submitButton(), Qt::LeftButton); }));
  EXPECT_EQ(repo.readFile(".gitignore"), QByteArray("build/\n*.log\n*.txt\n"));
  EXPECT_EQ(paths(view->unstagedList()->files()), (QStringList{".gitignore"}));
}

// A very long list starts with its folders closed; what the user opens stays open when
// the list is filled again.
TEST(FileLists, LongTreesStartClosedAndKeepWhatTheUserOpened) {
  ChangedFileList files;
  for (size_t i = 0; i <= FileListViewController::expandAllLimit; ++i) {
    auto file = std::make_shared<ChangedFile>();
    file->path = QStringLiteral("%1/file%2.txt").arg(i % 2 ? QStringLiteral("odd") : QStringLiteral("even")).arg(i);
    file->changeType = ChangeType::modified;
    files.push_back(file);
  }
  FileListViewController list;
  list.setMode(FileListViewMode::tree);
  list.setFiles(files);
  const auto open = [&](const QString& folder) { return list.isExpanded(list.fileModel()->indexOfDirectory(folder)); };
  EXPECT_FALSE(open(QStringLiteral("even")));
  EXPECT_FALSE(open(QStringLiteral("odd")));
  list.expand(list.fileModel()->indexOfDirectory(QStringLiteral("odd")));
  list.setFiles(files);
  EXPECT_TRUE(open(QStringLiteral("odd")));
  EXPECT_FALSE(open(QStringLiteral("even")));

  // The selection survives the refill, by path.
  for (const QString& path : {QStringLiteral("odd/file1.txt"), QStringLiteral("even/file4000.txt")}) {
    list.selectionModel()->select(list.fileModel()->indexOfFile(path), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }
  list.setFiles(files);
  QStringList selected;
  for (const auto& file : list.selectedFiles()) selected << file->path;
  EXPECT_EQ(selected, (QStringList{"odd/file1.txt", "even/file4000.txt"}));
}
