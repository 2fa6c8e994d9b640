#pragma once
// The local changes page as a repository tab holds it: the repository's controller reads
// the status for it. The page may be handed to a window, which then owns it.
#include <gtest/gtest.h>

#include <QMainWindow>
#include <QPointer>
#include <QSignalSpy>
#include <QTextBlock>
#include <functional>
#include <memory>

#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "Controls/Diff/CommitTextDiffView.h"
#include "Jobs/JobQueue.h"
#include "Repository/RepositoryController.h"
#include "support/TempRepository.h"

// Runs the action and waits for the signal (a wait that ends without one still counts
// one that came during the action).
inline bool waitFor(QObject* sender, const char* signal, const std::function<void()>& action) {
  QSignalSpy spy(sender, signal);
  action();
  return spy.wait(10000) || spy.count() > 0;
}

class LocalChangesPage {
 public:
  explicit LocalChangesPage(const TempRepository& repo)
      : queue_(std::make_shared<JobQueue>()),
        controller_(repo.module(), queue_),
        view_(new StageFileViewController(controller_)) {}
  ~LocalChangesPage() { delete view_.data(); }
  LocalChangesPage(const LocalChangesPage&) = delete;
  LocalChangesPage& operator=(const LocalChangesPage&) = delete;

  StageFileViewController* operator->() const { return view_; }
  StageFileViewController* view() const { return view_; }
  RepositoryController& controller() { return controller_; }

  // Reads the status and waits until the lists show it.
  bool load() { return waitFor(view_, SIGNAL(reloaded()), [this] { view_->reload(); }); }
  // The page as the window's central widget (its sheets need a window), shown and read.
  bool showIn(QMainWindow& window) {
    window.setCentralWidget(view_);
    window.show();
    return load();
  }
  // Runs the action and waits for the page's next reload.
  bool reloadAfter(const std::function<void()>& action) { return waitFor(view_, SIGNAL(reloaded()), action); }

 private:
  std::shared_ptr<JobQueue> queue_;
  RepositoryController controller_;
  QPointer<StageFileViewController> view_;
};

// A repository the test fills, then the page shown on it.
class LocalChangesTest : public ::testing::Test {
 protected:
  void open() {
    page = std::make_unique<LocalChangesPage>(repo);
    view = page->view();
    view->resize(1200, 700);
    view->show();
    ASSERT_TRUE(page->load());
  }
  // Chooses the file in the list (the unstaged one by default) and waits for its diff.
  void showDiff(const QString& path, FileListViewController* list = nullptr) {
    if (!list) list = view->unstagedList();
    QSignalSpy loaded(view, &StageFileViewController::diffLoaded);
    if (list->currentFile() && list->currentFile()->path == path) list->setCurrentIndex(QModelIndex());
    ASSERT_TRUE(list->selectFile(path)) << path.toStdString();
    ASSERT_TRUE(loaded.wait(10000));
  }
  static int rowOf(CommitTextDiffView* text, const QString& line) {
    for (QTextBlock block = text->document()->firstBlock(); block.isValid(); block = block.next()) {
      if (block.text() == line) return block.blockNumber();
    }
    return -1;
  }
  static QPoint rowPoint(CommitTextDiffView* text, int row, int x = 5) {
    return QPoint(x, text->cursorRect(QTextCursor(text->document()->findBlockByNumber(row))).center().y());
  }

  TempRepository repo;
  std::unique_ptr<LocalChangesPage> page;
  StageFileViewController* view = nullptr;
};
