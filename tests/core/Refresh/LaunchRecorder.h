#pragma once
// Records the git subcommands that child processes run while an instance lives, to
// prove which reads a refresh skipped.
#include <QStringList>
#include <mutex>
#include <vector>

#include "Git/Process/Task.h"

class LaunchRecorder {
 public:
  LaunchRecorder() {
    clear();
    Task::setLaunchObserver(&record);
  }
  ~LaunchRecorder() { Task::setLaunchObserver(nullptr); }
  LaunchRecorder(const LaunchRecorder&) = delete;
  LaunchRecorder& operator=(const LaunchRecorder&) = delete;

  void clear() {
    std::lock_guard lock(mutex());
    launches().clear();
  }
  std::vector<QStringList> all() const {
    std::lock_guard lock(mutex());
    return launches();
  }
  // "status" for "--no-optional-locks status --porcelain -z".
  QStringList subcommands() const {
    QStringList names;
    for (const QStringList& args : all()) names << subcommand(args);
    return names;
  }
  int count(const QString& name) const { return static_cast<int>(subcommands().count(name)); }
  // Launches whose arguments end with `tail` (an exact command's own list).
  int countEndingWith(const QStringList& tail) const {
    int n = 0;
    for (const QStringList& args : all()) {
      if (args.size() >= tail.size() && args.mid(args.size() - tail.size()) == tail) ++n;
    }
    return n;
  }

  static QString subcommand(const QStringList& args) {
    for (qsizetype i = 0; i < args.size(); ++i) {
      if (args[i] == QLatin1String("-c") || args[i] == QLatin1String("-C")) {
        ++i;
      } else if (!args[i].startsWith(QLatin1Char('-'))) {
        return args[i];
      }
    }
    return {};
  }

 private:
  static void record(const QStringList& arguments) {
    std::lock_guard lock(mutex());
    launches().push_back(arguments);
  }
  static std::mutex& mutex() {
    static std::mutex m;
    return m;
  }
  static std::vector<QStringList>& launches() {
    static std::vector<QStringList> list;
    return list;
  }
};
