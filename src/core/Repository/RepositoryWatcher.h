#pragma once
// Notices what other programs do to a repository: a commit, checkout, branch, stash or
// merge in a terminal, an edit in the work tree. inotify watches the Git directory (the
// files git renames into place and the logs it appends to) and the work tree's folders
// that git doesn't ignore; each change becomes the bits of what it touched, and a burst
// of changes becomes one `changed` signal once it has been quiet for a moment.
//
// Changes made while one of the application's own operations runs are its own: that
// operation refreshes what it changed, so they are dropped. A work tree with more
// folders than the system lets a user watch is left to the periodic status update.
#include <QHash>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>

#include "Models/GitModule.h"
#include "Models/Subdomain.h"

class QSocketNotifier;
class JobQueue;

class RepositoryWatcher : public QObject {
  Q_OBJECT
 public:
  // A burst ends after this long without a change, or this long after its first one.
  static constexpr int quietMilliseconds = 150;
  static constexpr int longestWaitMilliseconds = 700;

  // `ownWork` tells whether the application's own operations are running (or just
  // ended): changes seen then are dropped.
  RepositoryWatcher(GitModule module, std::function<bool()> ownWork, QObject* parent = nullptr);
  ~RepositoryWatcher() override;

  // Watches the Git directory at once; the work tree's folders are listed by a job on
  // `queue` and watched when it ends.
  void start(const std::shared_ptr<JobQueue>& queue);

  bool isWatchingGitDirectory() const { return gitWatches_ > 0; }
  bool isWatchingWorkTree() const { return workTreeWatched_; }
  // Watches one user may hold, from the system's setting (8192 when unreadable).
  static int systemWatchLimit();

 Q_SIGNALS:
  // One per burst of outside changes, with everything it touched.
  void changed(Subdomain subdomains);
  // The work tree's folders are watched, or it was left to the timer.
  void workTreeWatchSettled(bool watched);

 private:
  struct Watch {
    enum class Area { gitDirectory, workTree };
    Area area = Area::gitDirectory;
    QString relative;  // of the folder, from the Git directory or the work tree's top
  };

  int addWatch(const QString& absolute, Watch watch);
  void watchGitFolder(const QString& root, const QString& relative, bool recursive);
  void watchWorkTree(const QStringList& folders);
  void dropWorkTree(const QString& reason);
  void readEvents();
  void note(Subdomain subdomains);
  void flush();

  GitModule module_;
  std::function<bool()> ownWork_;
  int fd_ = -1;
  QSocketNotifier* notifier_ = nullptr;
  QHash<int, Watch> watches_;
  QHash<int, QString> roots_;  // watch -> the absolute folder it names
  int gitWatches_ = 0;
  bool workTreeWatched_ = false;
  Subdomain pending_;
  QTimer quiet_;
  QTimer longest_;
};
