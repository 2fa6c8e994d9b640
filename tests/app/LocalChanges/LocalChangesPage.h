#pragma once
// The local changes page as a repository tab holds it: the repository's controller reads
// the status for it. The page may be handed to a window, which then owns it.
#include <QPointer>
#include <QSignalSpy>
#include <functional>
#include <memory>

#include "Controllers/LocalChanges/StageFileViewController.h"
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
  // Runs the action and waits for the page's next reload.
  bool reloadAfter(const std::function<void()>& action) { return waitFor(view_, SIGNAL(reloaded()), action); }

 private:
  std::shared_ptr<JobQueue> queue_;
  RepositoryController controller_;
  QPointer<StageFileViewController> view_;
};
