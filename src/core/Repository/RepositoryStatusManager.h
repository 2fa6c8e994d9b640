#pragma once
// Keeps the status of the repository in front current while the user works in other
// programs: a tick every two seconds starts a status refresh once the preference's
// interval has passed since the last one.
#include <QDateTime>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <optional>

class RepositoryController;

class RepositoryStatusManager : public QObject {
  Q_OBJECT
 public:
  static constexpr int tickMilliseconds = 2000;
  static constexpr int defaultIntervalSeconds = 60;

  explicit RepositoryStatusManager(QObject* parent = nullptr);

  // The repository to keep current; null pauses the updates. Ticks run while one is set.
  void setRepository(RepositoryController* repository);
  RepositoryController* repository() const { return repository_; }
  bool isActive() const { return delayedAction_.isActive(); }

  // One tick: starts a status refresh when one is due; gives whether it did.
  bool tick(const QDateTime& now = QDateTime::currentDateTimeUtc());
  std::optional<QDateTime> lastUpdateTime() const { return lastUpdateTime_; }

  // "automaticStatusUpdateInterval" in seconds; 0 (or less) means the default.
  static int interval();
  // Due without a previous update, or when `intervalSeconds` have passed since it.
  static bool isDue(const std::optional<QDateTime>& lastUpdate, const QDateTime& now, int intervalSeconds);

 private:
  QTimer delayedAction_;
  QPointer<RepositoryController> repository_;
  std::optional<QDateTime> lastUpdateTime_;
};
