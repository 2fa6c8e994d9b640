#include "Repository/RepositoryStatusManager.h"

#include "Repository/RepositoryController.h"
#include "Services/Preferences.h"

RepositoryStatusManager::RepositoryStatusManager(QObject* parent) : QObject(parent) {
  delayedAction_.setInterval(tickMilliseconds);
  connect(&delayedAction_, &QTimer::timeout, this, [this] { tick(); });
}

void RepositoryStatusManager::setRepository(RepositoryController* repository) {
  if (repository_ != repository) lastUpdateTime_.reset();
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
  if (!isDue(lastUpdateTime_, now, interval())) return false;
  // A refresh in flight reads the status anyway; restarting it would only lose its work.
  if (repository_->isRefreshing()) return false;
  repository_->refreshStatus();
  lastUpdateTime_ = now;
  return true;
}
