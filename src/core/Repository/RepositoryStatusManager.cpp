#include "Repository/RepositoryStatusManager.h"

#include "Repository/RepositoryController.h"
#include "Services/Preferences.h"

RepositoryStatusManager::RepositoryStatusManager(QObject* parent) : QObject(parent) {
  delayedAction_.setInterval(tickMilliseconds);
  connect(&delayedAction_, &QTimer::timeout, this, [this] { tick(); });
}

void RepositoryStatusManager::setRepository(RepositoryController* repository) {
  if (repository_ != repository) {
    lastUpdateTime_.reset();
    if (repository_) disconnect(repository_, nullptr, this, nullptr);
    // Any status read counts, the first one at open included: the timer doesn't read it
    // again right after.
    if (repository) {
      connect(repository, &RepositoryController::repositoryStatusUpdated, this,
              [this] { lastUpdateTime_ = QDateTime::currentDateTimeUtc(); });
    }
  }
  repository_ = repository;
  if (repository) {
    delayedAction_.start();
  } else {
    delayedAction_.stop();
  }
}

int RepositoryStatusManager::interval() {
  const int seconds = Preferences::shared().automaticStatusUpdateInterval();
  return seconds > 0 ? seconds : defaultIntervalSeconds;
}

bool RepositoryStatusManager::isDue(const std::optional<QDateTime>& lastUpdate, const QDateTime& now, int intervalSeconds) {
  return !lastUpdate || lastUpdate->secsTo(now) >= intervalSeconds;
}

bool RepositoryStatusManager::tick(const QDateTime& now) {
  if (!repository_ || Preferences::shared().disableAutomaticStatusUpdate()) return false;
  // A watched work tree reports its changes itself.
  if (repository_->isWatchingWorkTree()) return false;
  if (!isDue(lastUpdateTime_, now, interval())) return false;
  // A refresh in flight reads the status anyway; restarting it would only lose its work.
  if (repository_->isRefreshing()) return false;
  repository_->refreshStatus();
  lastUpdateTime_ = now;
  return true;
}
