#pragma once
// Records the git argument lists that child processes run while an instance lives, to
// prove which reads a refresh skipped.
#include <QStringList>
#include <mutex>

#include "Git/Process/Task.h"

class LaunchRecorder {
 public:
  LaunchRecorder() {
    clear();
    Task::setLaunchObserver([](const QStringList& arguments) {
      std::lock_guard lock(state().mutex);
      state().launches.push_back(arguments);
    });
  }
  ~LaunchRecorder() { Task::setLaunchObserver(nullptr); }
  LaunchRecorder(const LaunchRecorder&) = delete;
  LaunchRecorder& operator=(const LaunchRecorder&) = delete;

  void clear() {
    std::lock_guard lock(state().mutex);
    state().launches.clear();
  }
  // "status" for "--no-optional-locks status --porcelain -z": the first word that is no
  // option nor the value of "-c" or "-C".
  QStringList subcommands() const {
    std::lock_guard lock(state().mutex);
    QStringList names;
    for (const QStringList& args : state().launches) {
      qsizetype i = 0;
      while (i < args.size() && args[i].startsWith('-')) i += (args[i] == "-c" || args[i] == "-C") ? 2 : 1;
      if (i < args.size()) names << args[i];
    }
    return names;
  }
  int count(const QString& name) const { return static_cast<int>(subcommands().count(name)); }
  // Launches whose arguments end with `tail` (an exact command's own list).
  int countEndingWith(const QStringList& tail) const {
    std::lock_guard lock(state().mutex);
    return static_cast<int>(std::count_if(state().launches.begin(), state().launches.end(), [&](const QStringList& args) {
      return args.size() >= tail.size() && args.sliced(args.size() - tail.size()) == tail;
    }));
  }

 private:
  struct State {
    std::mutex mutex;
    QList<QStringList> launches;
  };
  static State& state() {
    static State shared;
    return shared;
  }
};
