#include "Repository/CommitGraphMaintenance.h"

#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <chrono>

#include "Git/Commands/Repository/WriteCommitGraphGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Logging/AdvancedLogger.h"
#include "Services/Preferences.h"

namespace {

QString commonDirectory(const GitModule& module) {
  QFile common(module.gitDirectoryPath(QStringLiteral("commondir")));
  if (!common.open(QIODevice::ReadOnly)) return module.gitDirectoryUrl;
  return QDir::cleanPath(QDir(module.gitDirectoryUrl).absoluteFilePath(QString::fromLocal8Bit(common.readAll().trimmed())));
}

}  // namespace

QString CommitGraphMaintenance::objectsDirectory(const GitModule& module) { return commonDirectory(module) + QStringLiteral("/objects"); }

bool CommitGraphMaintenance::isBehind(const GitModule& module) {
  const QString info = objectsDirectory(module) + QStringLiteral("/info");
  QFileInfo graph(info + QStringLiteral("/commit-graphs/commit-graph-chain"));
  if (!graph.exists()) graph = QFileInfo(info + QStringLiteral("/commit-graph"));
  if (!graph.exists()) return true;
  // A fetch brings a pack; a graph older than the newest one lacks its commits.
  const QFileInfoList packs = QDir(objectsDirectory(module) + QStringLiteral("/pack"))
                                  .entryInfoList({QStringLiteral("*.pack")}, QDir::Files, QDir::Time);
  return !packs.isEmpty() && packs.first().lastModified() > graph.lastModified();
}

bool CommitGraphMaintenance::isLocked(const GitModule& module) {
  const QString common = commonDirectory(module);
  for (const QString& lock : {module.gitDirectoryPath(QStringLiteral("index.lock")), module.gitDirectoryPath(QStringLiteral("HEAD.lock")),
                              common + QStringLiteral("/packed-refs.lock"),
                              objectsDirectory(module) + QStringLiteral("/info/commit-graphs/commit-graph-chain.lock"),
                              objectsDirectory(module) + QStringLiteral("/info/commit-graph.lock")}) {
    if (QFileInfo::exists(lock)) return true;
  }
  return false;
}

std::shared_ptr<Job> CommitGraphMaintenance::scheduleIfNeeded(const GitModule& module, int commitCount,
                                                             const std::shared_ptr<JobQueue>& queue) {
  auto& prefs = Preferences::shared();
  if (!queue || !prefs.keepCommitGraphUpToDate() || commitCount <= minimumCommitCount || !isBehind(module)) return nullptr;
  const bool changedPaths = prefs.commitGraphChangedPaths();
  std::weak_ptr<JobQueue> owner = queue;
  auto job = Job::make(QString::fromLatin1(jobName), Job::Show::none(), Job::ProgressType::infinite,
                       [module, changedPaths, owner](JobProgress& progress) {
                         // The user's own operations go first; the next load or fetch tries again.
                         const auto queue = owner.lock();
                         if (!queue || queue->hasUserWork(std::chrono::milliseconds(0)) || isLocked(module)) {
                           LOG_INFO(QStringLiteral("Commit-graph of '%1' not written: the repository is busy").arg(module.repositoryPath));
                           return;
                         }
                         // Linux keeps a nice value per thread; the git started from this
                         // job's own thread inherits it.
                         setpriority(PRIO_PROCESS, static_cast<id_t>(syscall(SYS_gettid)), 10);
                         const auto result = WriteCommitGraphGitCommand::execute(module, changedPaths, &progress);
                         if (!result && !progress.isCanceled()) {
                           LOG_WARNING(QStringLiteral("Commit-graph of '%1' not written: %2").arg(module.repositoryPath, describe(result.error())));
                         } else if (result) {
                           LOG_INFO(QStringLiteral("Commit-graph of '%1' written").arg(module.repositoryPath));
                         }
                       });
  queue->schedule(job);
  return job;
}
