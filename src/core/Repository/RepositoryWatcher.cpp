#include "Repository/RepositoryWatcher.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QPointer>
#include <QSocketNotifier>
#include <cerrno>

#include "Git/Commands/WorkingDirectory/GetWorkTreeFoldersGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Logging/AdvancedLogger.h"
#include "Repository/OutsideChange.h"

namespace {

// Closing a file after writing covers appends to the logs; git renames everything
// else into place.
constexpr uint32_t kMask = IN_CLOSE_WRITE | IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_DELETE_SELF | IN_ONLYDIR;

QString joined(const QString& folder, const QString& name) { return folder.isEmpty() ? name : folder + QLatin1Char('/') + name; }

// A HEAD that names no branch: a commit made there is on no branch the log would list.
bool headIsDetached(const QString& gitDirectory) {
  QFile file(gitDirectory + QStringLiteral("/HEAD"));
  return file.open(QIODevice::ReadOnly) && !file.read(5).startsWith("ref:");
}

}  // namespace

RepositoryWatcher::RepositoryWatcher(GitModule module, std::function<bool()> ownWork, QObject* parent)
    : QObject(parent), module_(std::move(module)), ownWork_(std::move(ownWork)) {
  quiet_.setSingleShot(true);
  quiet_.setInterval(quietMilliseconds);
  longest_.setSingleShot(true);
  longest_.setInterval(longestWaitMilliseconds);
  connect(&quiet_, &QTimer::timeout, this, &RepositoryWatcher::flush);
  connect(&longest_, &QTimer::timeout, this, &RepositoryWatcher::flush);
  fd_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (fd_ < 0) {
    LOG_WARNING(QStringLiteral("Can't watch '%1' for outside changes: %2").arg(module_.repositoryPath, QString::fromLocal8Bit(strerror(errno))));
    return;
  }
  notifier_ = new QSocketNotifier(fd_, QSocketNotifier::Read, this);
  connect(notifier_, &QSocketNotifier::activated, this, &RepositoryWatcher::readEvents);
}

RepositoryWatcher::~RepositoryWatcher() {
  if (fd_ >= 0) ::close(fd_);
}

int RepositoryWatcher::systemWatchLimit() {
  QFile file(QStringLiteral("/proc/sys/fs/inotify/max_user_watches"));
  bool ok = false;
  const int limit = file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toInt(&ok) : 0;
  return ok && limit > 0 ? limit : 8192;
}

int RepositoryWatcher::addWatch(const QString& absolute, Watch watch) {
  if (fd_ < 0) return -1;
  const int wd = inotify_add_watch(fd_, QFile::encodeName(absolute).constData(), kMask);
  if (wd >= 0) {
    watches_.insert(wd, std::move(watch));
    roots_.insert(wd, absolute);
  }
  return wd;
}

void RepositoryWatcher::watchGitFolder(const QString& root, const QString& relative, bool recursive) {
  const QString absolute = relative.isEmpty() ? root : root + QLatin1Char('/') + relative;
  if (!QFileInfo(absolute).isDir()) return;
  if (addWatch(absolute, {Watch::Area::gitDirectory, relative}) >= 0) ++gitWatches_;
  if (!recursive) return;
  for (const QString& child : QDir(absolute).entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::Hidden)) {
    watchGitFolder(root, joined(relative, child), true);
  }
}

void RepositoryWatcher::start(const std::shared_ptr<JobQueue>& queue) {
  if (fd_ < 0) return;
  // A linked work tree keeps HEAD and the index here, refs and config in the common one.
  QStringList roots{module_.gitDirectoryUrl};
  QFile common(module_.gitDirectoryPath(QStringLiteral("commondir")));
  if (common.open(QIODevice::ReadOnly)) {
    roots << QDir::cleanPath(QDir(module_.gitDirectoryUrl).absoluteFilePath(QString::fromLocal8Bit(common.readAll().trimmed())));
  }
  for (const QString& root : roots) {
    watchGitFolder(root, QString(), false);
    watchGitFolder(root, QStringLiteral("refs"), true);
    watchGitFolder(root, QStringLiteral("logs"), false);
    watchGitFolder(root, QStringLiteral("logs/refs"), false);
    watchGitFolder(root, QStringLiteral("hooks"), false);
    for (const char* state : {"rebase-merge", "rebase-apply", "sequencer"}) watchGitFolder(root, QLatin1String(state), false);
  }

  if (!queue || !QFileInfo(module_.repositoryPath).isDir()) return;
  QPointer<RepositoryWatcher> self(this);
  const GitModule module = module_;
  queue->schedule(Job::make(QStringLiteral("Watch work tree"), Job::Show::none(), Job::ProgressType::infinite,
                            [self, module](JobProgress& progress) {
                              auto folders = GetWorkTreeFoldersGitCommand::execute(module, &progress);
                              if (progress.isCanceled()) return;
                              postQueuedCall(QCoreApplication::instance(), [self, folders] {
                                if (!self) return;
                                if (folders) {
                                  self->watchWorkTree(folders.value());
                                } else {
                                  self->dropWorkTree(describe(folders.error()));
                                }
                              });
                            }));
}

void RepositoryWatcher::watchWorkTree(const QStringList& folders) {
  // Other programs (editors, other clients) need watches of their own: take half.
  const int budget = systemWatchLimit() / 2;
  if (folders.size() > budget) {
    dropWorkTree(QStringLiteral("%1 folders, more than the %2 watches it may take").arg(folders.size()).arg(budget));
    return;
  }
  for (const QString& folder : folders) {
    const QString absolute = folder.isEmpty() ? module_.repositoryPath : module_.repositoryPath + QLatin1Char('/') + folder;
    if (addWatch(absolute, {Watch::Area::workTree, folder}) < 0 && errno == ENOSPC) {
      dropWorkTree(QStringLiteral("the system's limit of watches is reached"));
      return;
    }
  }
  workTreeWatched_ = true;
  Q_EMIT workTreeWatchSettled(true);
}

void RepositoryWatcher::dropWorkTree(const QString& reason) {
  for (auto it = watches_.begin(); it != watches_.end();) {
    if (it->area == Watch::Area::workTree) {
      inotify_rm_watch(fd_, it.key());
      roots_.remove(it.key());
      it = watches_.erase(it);
    } else {
      ++it;
    }
  }
  workTreeWatched_ = false;
  LOG_INFO(QStringLiteral("Work tree of '%1' is not watched (%2); its status is read by the timer")
               .arg(QDir(module_.repositoryPath).dirName(), reason));
  Q_EMIT workTreeWatchSettled(false);
}

void RepositoryWatcher::readEvents() {
  alignas(inotify_event) char buffer[16384];
  const bool own = ownWork_ && ownWork_();
  for (;;) {
    const ssize_t length = ::read(fd_, buffer, sizeof buffer);
    if (length <= 0) break;
    for (ssize_t offset = 0; offset < length;) {
      const auto* event = reinterpret_cast<const inotify_event*>(buffer + offset);
      offset += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
      if (event->mask & IN_Q_OVERFLOW) {
        // Events were lost: read everything.
        if (!own) note(Subdomain::all());
        continue;
      }
      const auto it = watches_.constFind(event->wd);
      if (it == watches_.cend()) continue;
      const Watch watch = *it;
      if (event->mask & (IN_IGNORED | IN_DELETE_SELF)) {
        watches_.remove(event->wd);
        roots_.remove(event->wd);
        continue;
      }
      const QString name = event->len > 0 ? QFile::decodeName(event->name) : QString();
      const QString path = joined(watch.relative, name);
      const bool isGit = watch.area == Watch::Area::gitDirectory;
      if ((event->mask & IN_ISDIR) && (event->mask & (IN_CREATE | IN_MOVED_TO))) {
        // New branch folders, a rebase starting, a new folder of the work tree.
        const QString absolute = roots_.value(event->wd) + QLatin1Char('/') + name;
        const bool wanted = isGit ? (path.startsWith(QLatin1String("refs/")) || OutsideChange::inGitDirectory(path) != Subdomain::none())
                                  : name != QLatin1String(".git") && workTreeWatched_;
        if (wanted) addWatch(absolute, {watch.area, path});
      }
      if (own) continue;
      Subdomain bits = isGit ? OutsideChange::inGitDirectory(path) : OutsideChange::inWorkTree(path);
      if (isGit && path == QLatin1String("HEAD") && headIsDetached(module_.gitDirectoryUrl)) bits |= Subdomain::revisions();
      if (!bits.isEmpty()) note(bits);
    }
  }
}

void RepositoryWatcher::note(Subdomain subdomains) {
  pending_ |= subdomains;
  quiet_.start();
  if (!longest_.isActive()) longest_.start();
}

void RepositoryWatcher::flush() {
  quiet_.stop();
  longest_.stop();
  const Subdomain bits = std::exchange(pending_, Subdomain::none());
  // An operation of ours that started meanwhile refreshes what it finds.
  if (bits.isEmpty() || (ownWork_ && ownWork_())) return;
  Q_EMIT changed(bits);
}
