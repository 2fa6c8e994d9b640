#include "Services/RepositoryRescanner.h"

#include <QThreadPool>

#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "Services/RepositoryScan.h"

RepositoryRescanner& RepositoryRescanner::shared() {
  static RepositoryRescanner instance;
  return instance;
}

bool RepositoryRescanner::start(AppSettings& settings) {
  const std::optional<QString> folder = Preferences::shared().defaultSourceFolder();
  if (running_ || !folder || folder->trimmed().isEmpty()) return false;
  running_ = true;
  Q_EMIT started(*folder);
  Q_EMIT progressChanged(0, 0);
  QThreadPool::globalInstance()->start([this, &settings, folder] {
    // The signal crosses to the main thread queued; the counts arrive in order.
    const int added = RepositoryScan::rescanRepositories(settings, folder, [this](int done, int total) {
      QMetaObject::invokeMethod(this, [this, done, total] { Q_EMIT progressChanged(done, total); }, Qt::QueuedConnection);
    });
    QMetaObject::invokeMethod(
        this,
        [this, added] {
          running_ = false;
          PreferencesNotifier::shared().post(PreferencesNotifier::Notification::repositoryManagerDataUpdated);
          Q_EMIT finished(added);
        },
        Qt::QueuedConnection);
  });
  return true;
}
