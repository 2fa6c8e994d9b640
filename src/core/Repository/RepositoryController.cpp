#include "Repository/RepositoryController.h"

#include <QDir>
#include <limits>

#include <QCoreApplication>
#include <QPointer>

#include "Git/Commands/Repository/RefreshRepositoryReferencesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetPathsStatusGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Logging/AdvancedLogger.h"
#include "Models/StagingRefresh.h"
#include "Repository/CommitGraphMaintenance.h"
#include "Repository/RepositoryWatcher.h"

RepositoryController::RepositoryController(std::optional<GitModule> gitModule, std::shared_ptr<JobQueue> queue, QObject* parent)
    : QObject(parent), gitModule_(std::move(gitModule)), queue_(std::move(queue)) {}

RepositoryController::~RepositoryController() {
  if (const auto& job = refreshRepositoryCommand_.activeRefreshJob()) job->progress().cancel();
}

QString RepositoryController::repositoryName() const {
  return gitModule_ ? QDir(gitModule_->repositoryPath).dirName() : QString();
}

void RepositoryController::invalidate(Subdomain subdomains, RefreshRepositoryCommand::UpdateOrder order) {
  invalidatedSubdomains_ |= subdomains;
  refreshRepositoryCommand_.execute(*this, order);
}

void RepositoryController::refreshRepository(Subdomain changed) {
  const bool statusOnly = Subdomain::repositoryStatus().contains(changed);
  invalidate(changed, statusOnly ? RefreshRepositoryCommand::UpdateOrder::statusFirst : RefreshRepositoryCommand::UpdateOrder::dataFirst);
}

void RepositoryController::watchForOutsideChanges() {
  if (!gitModule_ || watcher_) return;
  // An operation of ours refreshes what it changed; what it writes is not news. The
  // grace covers events that the main thread reads after the operation ended.
  std::weak_ptr<JobQueue> queue = queue_;
  watcher_ = new RepositoryWatcher(
      *gitModule_,
      [queue] {
        const auto owner = queue.lock();
        return owner && owner->hasUserWork(std::chrono::milliseconds(400));
      },
      this);
  connect(watcher_, &RepositoryWatcher::changed, this, [this](Subdomain changed) {
    LOG_DEBUG(QStringLiteral("Outside change in '%1': %2").arg(repositoryName(), changed.description()));
    refreshRepository(changed);
  });
  watcher_->start(queue_);
}

void RepositoryController::loadWholeHistory() {
  maxCommitCount = std::numeric_limits<int>::max();
  invalidate(Subdomain::revisions());
}

bool RepositoryController::isWatchingWorkTree() const { return watcher_ && watcher_->isWatchingWorkTree(); }

void RepositoryController::refreshChangedFiles(const QStringList& paths) {
  if (paths.isEmpty()) return;
  // A refresh in flight may have read the status before the change and would store it
  // after this read; restarting it reads everything after the change instead.
  if (!gitModule_ || !repositoryStatus_ || isRefreshing()) {
    refreshStatus();
    return;
  }
  const GitModule module = *gitModule_;
  const bool hideUntracked = hideUntrackedFiles;
  const bool showIgnored = showIgnoredFiles;
  const SubmoduleList submodules = repositoryData_ ? repositoryData_->submodules : SubmoduleList{};
  QPointer<RepositoryController> self(this);
  queue_->schedule(Job::make(QStringLiteral("Refresh changed files"), Job::Show::none(), Job::ProgressType::infinite,
                             [self, module, paths, submodules, hideUntracked, showIgnored](JobProgress&) {
                               auto fresh = GetPathsStatusGitCommand::execute(module, paths, submodules, hideUntracked, showIgnored);
                               postQueuedCall(QCoreApplication::instance(), [self, paths, fresh] {
                                 if (!self) return;
                                 // A failed read, or no status to merge into: the whole status is read.
                                 if (!fresh || !self->repositoryStatus_) {
                                   if (!fresh) LOG_WARNING(QStringLiteral("Refresh of changed files failed: %1").arg(describe(fresh.error())));
                                   self->refreshStatus();
                                   return;
                                 }
                                 auto status = std::make_shared<RepositoryStatus>(*self->repositoryStatus_);
                                 const auto before = static_cast<int>(status->changedFiles.size());
                                 status->changedFiles = StagingRefresh::merged(status->changedFiles, paths, fresh.value());
                                 // The count includes entries beyond a cut list.
                                 status->changedFilesCount += static_cast<int>(status->changedFiles.size()) - before;
                                 self->storeRepositoryStatus(std::move(status));
                               });
                             }));
}

void RepositoryController::storeRepositoryData(RepositoryDataPtr data, Subdomain handled) {
  if (!repositoryData_ || handled.contains(Subdomain::remoteBranches())) commitGraphCheckDue_ = true;
  if (gitModule_ && data && repositoryData_) {
    RefreshRepositoryReferencesGitCommand::storeFollowedFilter(*gitModule_, &repositoryData_->references, data->references,
                                                                data->settings.filterReferences);
  }
  repositoryData_ = std::move(data);
  clearInvalidated(handled);
  Q_EMIT repositoryDataUpdated();
}

void RepositoryController::storeRepositoryStatus(RepositoryStatusPtr status) {
  repositoryStatus_ = std::move(status);
  clearInvalidated(Subdomain::repositoryStatus());
  Q_EMIT repositoryStatusUpdated();
}

void RepositoryController::storeBehindAheadInfo(BehindAheadInfoCache cache) {
  behindAheadInfoCache_ = std::move(cache);
  Q_EMIT behindAheadInfoUpdated();
}

void RepositoryController::finishRefresh(const Job* job) {
  if (refreshRepositoryCommand_.activeRefreshJob_.get() != job) return;
  refreshRepositoryCommand_.activeRefreshJob_.reset();
  if (std::exchange(commitGraphCheckDue_, false) && gitModule_ && repositoryData_ && commitGraphJob_.expired()) {
    const int commits = repositoryData_->revisions ? static_cast<int>(repositoryData_->revisions->size()) : 0;
    commitGraphJob_ = CommitGraphMaintenance::scheduleIfNeeded(*gitModule_, commits, queue_);
  }
  Q_EMIT refreshFinished();
}
