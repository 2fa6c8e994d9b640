#include "Repository/RepositoryController.h"

#include <QDir>

#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"

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

void RepositoryController::storeRepositoryData(RepositoryDataPtr data, Subdomain handled) {
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
  Q_EMIT refreshFinished();
}
