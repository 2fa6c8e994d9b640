#pragma once
// Runs the rescan of the source folder in the background and tells every window about
// it: the preferences start it, the repository manager shows its progress and reloads
// when it ends. One rescan at a time for the whole process, since each one empties the
// registry first.
#include <QObject>
#include <QString>

class AppSettings;

class RepositoryRescanner : public QObject {
  Q_OBJECT

 public:
  static RepositoryRescanner& shared();

  // Reads "defaultSourceFolder" now. False (and nothing runs) when no folder is set or
  // a rescan is already running.
  bool start(AppSettings& settings);
  bool isRunning() const { return running_; }

 Q_SIGNALS:
  void started(const QString& folder);
  // While the repositories found are validated; total is 0 while the walk is running.
  void progressChanged(int done, int total);
  // After "repositoryManagerDataUpdated" has been posted.
  void finished(int added);

 private:
  RepositoryRescanner() = default;
  bool running_ = false;
};
