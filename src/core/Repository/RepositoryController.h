#pragma once
// Owns one open repository's model on the main thread: the two snapshots, the ahead and
// behind counts and the bits that wait for a refresh. Refreshes run as jobs on the tab's
// queue and hand their results back here; the signals tell the views that a snapshot
// was replaced. No widgets: views hold a pointer and read the snapshots.
#include <QObject>
#include <QString>
#include <memory>
#include <optional>

#include "Models/BehindAheadInfoCache.h"
#include "Models/GitModule.h"
#include "Models/RepositoryData.h"
#include "Models/RepositoryStatus.h"
#include "Models/Subdomain.h"
#include "Repository/RefreshProtocol.h"
#include "Repository/RefreshRepositoryCommand.h"

class Job;
class JobQueue;
class RepositoryWatcher;

class RepositoryController : public QObject, public RefreshProtocol {
  Q_OBJECT
 public:
  RepositoryController(std::optional<GitModule> gitModule, std::shared_ptr<JobQueue> queue, QObject* parent = nullptr);
  // Cancels the refresh in flight; its results are dropped.
  ~RepositoryController() override;

  const std::optional<GitModule>& gitModule() const { return gitModule_; }
  const std::shared_ptr<JobQueue>& jobQueue() const { return queue_; }
  // Absent until the first refresh has read them.
  const RepositoryDataPtr& repositoryData() const { return repositoryData_; }
  const RepositoryStatusPtr& repositoryStatus() const { return repositoryStatus_; }
  const BehindAheadInfoCache& behindAheadInfoCache() const { return behindAheadInfoCache_; }
  Subdomain invalidatedSubdomains() const { return invalidatedSubdomains_; }
  RefreshRepositoryCommand& refreshRepositoryCommand() { return refreshRepositoryCommand_; }
  bool isRefreshing() const { return refreshRepositoryCommand_.activeRefreshJob() != nullptr; }

  bool showFirstParent = false;
  bool showReflogInRevisionList = false;
  bool hideUntrackedFiles = false;
  bool showIgnoredFiles = false;
  // The most commits the history reads; 0 is the preference's count.
  int maxCommitCount = 0;
  // The commit search under way; a new one cancels it.
  std::weak_ptr<Job> activeSearchJob;

  // Adds the bits of what a command changed and starts a refresh.
  void invalidate(Subdomain subdomains, RefreshRepositoryCommand::UpdateOrder order = RefreshRepositoryCommand::UpdateOrder::dataFirst);
  // Everything, data first.
  void refresh() { invalidate(Subdomain::all()); }
  // The state and the changed files, ahead of any data that waits.
  void refreshStatus() { invalidate(Subdomain::repositoryStatus(), RefreshRepositoryCommand::UpdateOrder::statusFirst); }

  // The status alone goes first, so the lists follow an operation at once.
  void refreshRepository(Subdomain changed) override;
  // Reads the status of these paths only and puts the entries in place of theirs in a
  // new status snapshot (after a line operation). Without a status yet, or when the read
  // fails, the whole status is read.
  void refreshChangedFiles(const QStringList& paths);

  // Starts noticing what other programs change in the repository; each burst of such
  // changes refreshes what it touched. Once; does nothing without a module.
  void watchForOutsideChanges();
  RepositoryWatcher* watcher() const { return watcher_; }
  // The work tree's folders are watched: no timer needs to poll its status.
  bool isWatchingWorkTree() const;

  // Reads the history again without the preference's limit.
  void loadWholeHistory();

  // "repo" for "/home/me/repo": the name in the log lines.
  QString repositoryName() const;

 Q_SIGNALS:
  void repositoryDataUpdated();
  void repositoryStatusUpdated();
  void behindAheadInfoUpdated();
  // The data read failed for another reason than cancellation; the old snapshot stays.
  void refreshFailed(const QString& message);
  // The active refresh has ended; nothing is running now.
  void refreshFinished();

 private:
  friend class RefreshRepositoryCommand;
  void storeRepositoryData(RepositoryDataPtr data, Subdomain handled);
  void storeRepositoryStatus(RepositoryStatusPtr status);
  void clearInvalidated(Subdomain handled) { invalidatedSubdomains_ = invalidatedSubdomains_.subtracting(handled); }
  void storeBehindAheadInfo(BehindAheadInfoCache cache);
  void finishRefresh(const Job* job);

  std::optional<GitModule> gitModule_;
  std::shared_ptr<JobQueue> queue_;
  RepositoryDataPtr repositoryData_;
  RepositoryStatusPtr repositoryStatus_;
  BehindAheadInfoCache behindAheadInfoCache_;
  Subdomain invalidatedSubdomains_ = Subdomain::all();
  RefreshRepositoryCommand refreshRepositoryCommand_;
  RepositoryWatcher* watcher_ = nullptr;
  // A first load or a read of the remote branches (a fetch) may have left git's
  // commit-graph behind; checked once the refresh has ended.
  bool commitGraphCheckDue_ = false;
  std::weak_ptr<Job> commitGraphJob_;
};
