#pragma once
// Fetches every open repository in the background at a fixed interval, so that the
// remote branches and the ahead/behind marks stay current. Remotes excluded from
// implicit fetches are skipped; failures are only logged; only the repository in front
// is read again at once. One manager serves the process.
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <functional>
#include <memory>
#include <vector>

class JobQueue;
class RepositoryController;

class AutomaticBackgroundFetchManager : public QObject {
  Q_OBJECT
 public:
  static constexpr double defaultUpdateInterval = 900.0;

  // One open repository: its model, its tab's queue, and whether it is the front one
  // (asked when a fetch ends).
  struct Target {
    QPointer<RepositoryController> controller;
    std::weak_ptr<JobQueue> queue;
    std::function<bool()> isFront;
  };
  using TargetsProvider = std::function<std::vector<Target>()>;

  explicit AutomaticBackgroundFetchManager(TargetsProvider targets, QObject* parent = nullptr);

  // (Re)starts the repeating timer.
  void start(double intervalSeconds = defaultUpdateInterval);
  bool isActive() const { return updateTimer_.isActive(); }

  // One tick: what the timer runs.
  void updateTimerTick();

 private:
  TargetsProvider targets_;
  QTimer updateTimer_;
};
