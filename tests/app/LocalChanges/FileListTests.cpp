#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "Controllers/LocalChanges/FileListModel.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/Sheets/AddGitIgnorePatternController.h"
#include "Controllers/Sheets/EditRepositoryFileController.h"
#include "LocalChangesPage.h"
#include "Services/Preferences.h"
#include "support/Widgets.h"

namespace {
QStringList paths(const ChangedFileList& files) {
  QStringList list;
  for (const auto& file : files) list << file->path;
  return list;
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
}  // namespace

// The tree groups by folder; a folder row stands for all its files when staging, and a
// folder the user closed stays closed when the lists are read again.
TEST(FileLists, TreeModeStagesFoldersAndKeepsCollapsedFolders) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("src/core/a.cpp"), "a\n", QStringLiteral("base"));
  repo.commitFile(QStringLiteral("src/app/b.cpp"), "b\n", QStringLiteral("base b"));
  repo.writeFile(QStringLiteral("src/core/a.cpp"), "a2\n");
  repo.writeFile(QStringLiteral("src/app/b.cpp"), "b2\n");
  repo.writeFile(QStringLiteral("docs/guide/new.md"), "new\n");
  repo.writeFile(QStringLiteral("top.txt"), "top\n");

  LocalChangesPage page(repo);
  StageFileViewController& view = *page.view();
  view.resize(900, 700);
  view.show();
  view.setFileListMode(FileListViewMode::tree);
  EXPECT_EQ(Preferences::shared().fileListMode(), 1);
  ASSERT_TRUE(page.load());
  FileListViewController* unstaged = view.unstagedList();
  EXPECT_EQ(visibleRows(unstaged), (QStringList{QStringLiteral("docs/guide"), QStringLiteral("  new.md"), QStringLiteral("src"),
                                                QStringLiteral("  app"), QStringLiteral("    b.cpp"), QStringLiteral("  core"),
                                                QStringLiteral("    a.cpp"), QStringLiteral("top.txt")}));

  // Close "docs/guide", then stage the whole "src" folder with the keyboard.
  unstaged->collapse(unstaged->fileModel()->indexOfDirectory(QStringLiteral("docs/guide")));
  const QModelIndex src = unstaged->fileModel()->indexOfDirectory(QStringLiteral("src"));
  unstaged->selectionModel()->setCurrentIndex(src, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  EXPECT_EQ(paths(unstaged->selectedFiles()), (QStringList{QStringLiteral("src/app/b.cpp"), QStringLiteral("src/core/a.cpp")}));
  unstaged->setFocus();
  ASSERT_TRUE(waitFor(&view, SIGNAL(reloaded()), [&] { QTest::keyClick(unstaged, Qt::Key_Space); }));
  EXPECT_EQ(repo.git({QStringLiteral("diff"), QStringLiteral("--cached"), QStringLiteral("--name-only")}),
            QStringLiteral("src/app/b.cpp\nsrc/core/a.cpp\n"));
  EXPECT_EQ(visibleRows(unstaged), (QStringList{QStringLiteral("docs/guide"), QStringLiteral("top.txt")}));
  EXPECT_EQ(visibleRows(view.stagedList()).first(), QStringLiteral("src"));

  // Back to the flat list from the preferences: full paths, one row per file.
  Preferences::shared().setFileListMode(0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return unstaged->mode() == FileListViewMode::list; }, 2000));
  EXPECT_EQ(visibleRows(unstaged), (QStringList{QStringLiteral("docs/guide/new.md"), QStringLiteral("top.txt")}));
  EXPECT_EQ(visibleRows(view.stagedList()), (QStringList{QStringLiteral("src/app/b.cpp"), QStringLiteral("src/core/a.cpp")}));
}

// "Custom Pattern…": the sheet lists what the pattern would ignore as it is typed, and
// adding it takes the files out of the unstaged list.
TEST(FileLists, IgnoreSheetPreviewsThePatternAndAddsIt) {
  TempRepository repo;
  repo.commitFile(QStringLiteral(".gitignore"), "build/\n", QStringLiteral("base"));
  repo.writeFile(QStringLiteral("a.log"), "x\n");
  repo.writeFile(QStringLiteral("logs/b.log"), "x\n");
  repo.writeFile(QStringLiteral("c.txt"), "x\n");

  QMainWindow window;
  LocalChangesPage page(repo);
  StageFileViewController* view = page.view();
  window.setCentralWidget(view);
  window.show();
  ASSERT_TRUE(page.load());
  EXPECT_EQ(paths(view->unstagedList()->files()), (QStringList{QStringLiteral("a.log"), QStringLiteral("c.txt"),
                                                               QStringLiteral("logs/b.log")}));

  view->showIgnorePatternSheet(QStringLiteral("*.log"));
  auto* sheet = openSheet<AddGitIgnorePatternController>(&window);
  ASSERT_NE(sheet, nullptr);
  EXPECT_EQ(sheet->windowTitle(), QStringLiteral("Add files to .gitignore"));
  QSignalSpy previews(sheet, &AddGitIgnorePatternController::previewUpdated);
  ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->previewList()->count() > 0; }, 5000));
  QStringList shown;
  for (int i = 0; i < sheet->previewList()->count(); ++i) shown << sheet->previewList()->item(i)->text();
  EXPECT_EQ(shown, (QStringList{QStringLiteral("a.log"), QStringLiteral("logs/b.log")}));

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
  EXPECT_EQ(repo.readFile(QStringLiteral(".gitignore")), QByteArray("build/\n*.log\n"));
  // The edited .gitignore itself is now the change next to c.txt.
  EXPECT_EQ(paths(view->unstagedList()->files()), (QStringList{QStringLiteral(".gitignore"), QStringLiteral("c.txt")}));

  // Its menu offers editing it; the editor saves the whole text.
  view->showEditFileSheet(QStringLiteral(".gitignore"));
  auto* editor = openSheet<EditRepositoryFileController>(&window);
  ASSERT_NE(editor, nullptr);
  EXPECT_EQ(editor->editor()->toPlainText(), QStringLiteral("build/\n*.log\n"));
  editor->editor()->setPlainText(QStringLiteral("build/\n*.log\n*.txt"));
  ASSERT_TRUE(waitFor(view, SIGNAL(reloaded()), [&] { QTest::mouseClick(editor->submitButton(), Qt::LeftButton); }));
  EXPECT_EQ(repo.readFile(QStringLiteral(".gitignore")), QByteArray("build/\n*.log\n*.txt\n"));
  EXPECT_EQ(paths(view->unstagedList()->files()), (QStringList{QStringLiteral(".gitignore")}));
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
  EXPECT_EQ(selected, (QStringList{QStringLiteral("odd/file1.txt"), QStringLiteral("even/file4000.txt")}));

  // A short list opens everything but what the user closed.
  const ChangedFileList few(files.begin(), files.begin() + 4);
  list.collapse(list.fileModel()->indexOfDirectory(QStringLiteral("odd")));
  list.setFiles(few);
  EXPECT_TRUE(open(QStringLiteral("even")));
  EXPECT_FALSE(open(QStringLiteral("odd")));
}
