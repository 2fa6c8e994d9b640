#include "Repository/RefreshRepositoryCommand.h"

#include <QCoreApplication>
#include <QPointer>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <future>

#include "Git/Commands/Repository/GetBehindAheadInfoGitCommand.h"
#include "Git/Commands/Repository/RefreshRepositoryDataGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetRepositoryStatusGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Logging/AdvancedLogger.h"
#include "Repository/RepositoryController.h"

namespace {

// The hand-overs of one refresh to the main thread. The job waits until every posted
// call has run (or was dropped), so that it ends after its results are in place. A
// canceled job stops waiting: the main thread may itself be waiting for the queue.
class HandOverGroup : public std::enable_shared_from_this<HandOverGroup> {
 public:
  class Ticket {
   public:
    explicit Ticket(std::shared_ptr<HandOverGroup> group) : group_(std::move(group)) {}
    ~Ticket() { group_->leave(); }
    Ticket(const Ticket&) = delete;
    Ticket& operator=(const Ticket&) = delete;

   private:
    std::shared_ptr<HandOverGroup> group_;
  };

  std::shared_ptr<Ticket> enter() {
    {
      std::lock_guard lock(lock_);
      ++pending_;
    }
    return std::make_shared<Ticket>(shared_from_this());
  }

  void wait(const JobProgress& progress) {
    std::unique_lock lock(lock_);
    while (pending_ > 0 && !progress.isCanceled()) done_.wait_for(lock, std::chrono::milliseconds(50));
  }

 private:
  void leave() {
    std::lock_guard lock(lock_);
    --pending_;
    done_.notify_all();
  }

  std::mutex lock_;
  std::condition_variable done_;
  int pending_ = 0;
};

const Subdomain kReferenceBits = Subdomain::referenceSettings() | Subdomain::references();

}  // namespace

// What the job sees: copies taken on the main thread when it was started.
struct RefreshRepositoryCommand::Input {
  GitModule module;
  QString name;
  RepositoryDataPtr data;
  RepositoryStatusPtr status;
  Subdomain subdomains;
  RefreshRepositoryCommand::UpdateOrder order = RefreshRepositoryCommand::UpdateOrder::dataFirst;
  bool showFirstParent = false;
  bool showReflogInRevisionList = false;
  bool hideUntrackedFiles = false;
  bool showIgnoredFiles = false;
  int maxCommitCount = 0;
};

void RefreshRepositoryCommand::run(const Input& in, const std::shared_ptr<Job>& job, const QPointer<RepositoryController>& guard) {
  JobProgress& progress = job->progress();
  const std::shared_ptr<JobProgress> sharedProgress = job->sharedProgress();
  const auto group = std::make_shared<HandOverGroup>();

  // Runs `work` on the main thread unless the controller is gone or a newer refresh
  // canceled this one (cancel and the check both happen on the main thread).
  auto post = [&](std::function<void(RepositoryController&)> work) {
    postQueuedCall(QCoreApplication::instance(),
                   [guard, sharedProgress, ticket = group->enter(), work = std::move(work)] {
                     if (guard && !sharedProgress->isCanceled()) work(*guard);
                   });
  };

  RepositoryDataPtr data = in.data;
  bool madeData = false;
  std::atomic<bool> failed = false;

  auto refreshRepositoryStatus = [&](const ReferenceList& references, const SubmoduleList& submodules, JobProgress& statusProgress) {
    if (!in.subdomains.intersects(Subdomain::repositoryStatus()) || statusProgress.isCanceled()) return;
    // A refresh of the changed files alone keeps the state it has.
    std::optional<RepositoryState> knownState;
    if (in.status && !in.subdomains.intersects(Subdomain::repositoryState())) knownState = in.status->repositoryState;
    auto result = GetRepositoryStatusGitCommand::execute(in.module, references, submodules, in.hideUntrackedFiles,
                                                         in.showIgnoredFiles, statusProgress, knownState);
    if (statusProgress.isCanceled() || progress.isCanceled()) return;
    if (!result) {
      failed = true;
      LOG_ERROR(QStringLiteral("Repository Status failed: %1").arg(describe(result.error())));
      return;
    }
    auto status = std::make_shared<const RepositoryStatus>(std::move(result).value());
    post([status, name = in.name](RepositoryController& controller) {
      LOG_INFO(QStringLiteral("Refresh '%1' status. Updated (%2 files).").arg(name).arg(status->changedFilesCount));
      controller.storeRepositoryStatus(status);
    });
  };
  auto refreshStatusFromData = [&] {
    refreshRepositoryStatus(data ? data->references.all : ReferenceList{}, data ? data->submodules : SubmoduleList{}, progress);
  };

  // With the data first, the status is read beside the history (most of a full read) as
  // soon as the references and submodules it needs are known. It has a progress of its
  // own, canceled with the refresh, because a progress holds one running git at a time.
  JobProgress statusProgress;
  std::future<void> statusBesideHistory;
  auto readStatusBesideHistory = [&](const RepositoryData& partial) {
    if (statusBesideHistory.valid() || !in.subdomains.intersects(Subdomain::repositoryStatus())) return;
    statusBesideHistory = std::async(std::launch::async, [&, references = partial.references.all, submodules = partial.submodules] {
      refreshRepositoryStatus(references, submodules, statusProgress);
    });
  };
  // Waits for the status read, passing on a cancel of the refresh while it runs.
  auto joinStatus = [&] {
    if (!statusBesideHistory.valid()) return false;
    while (statusBesideHistory.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready) {
      if (progress.isCanceled()) statusProgress.cancel();
    }
    statusBesideHistory.get();
    return true;
  };

  auto refreshRepositoryData = [&](bool statusBeside) {
    const Subdomain handled = in.subdomains.subtracting(Subdomain::repositoryStatus());
    if (handled.isEmpty() || progress.isCanceled()) return;
    RefreshRepositoryDataGitCommand::Options options{in.showReflogInRevisionList, in.showFirstParent, in.maxCommitCount};
    if (statusBeside) options.beforeHistory = readStatusBesideHistory;
    auto result = RefreshRepositoryDataGitCommand::execute(in.module, in.data, in.subdomains, options, progress);
    if (progress.isCanceled()) return;
    if (result) {
      data = result.value();
      madeData = true;
      post([data, handled, name = in.name](RepositoryController& controller) {
        LOG_INFO(QStringLiteral("Refresh '%1' data. Updated.").arg(name));
        controller.storeRepositoryData(data, handled);
      });
    } else if (result.isError<Error::NoChanges>()) {
      post([handled](RepositoryController& controller) { controller.clearInvalidated(handled); });
    } else {
      failed = true;
      const QString message = describe(result.error());
      LOG_ERROR(QStringLiteral("Repository Data failed: %1").arg(message));
      post([message](RepositoryController& controller) { Q_EMIT controller.refreshFailed(message); });
    }
  };

  if (in.order == RefreshRepositoryCommand::UpdateOrder::dataFirst) {
    refreshRepositoryData(true);
    // No history read (nothing changed, or it failed first): the status comes after.
    if (!joinStatus()) refreshStatusFromData();
  } else {
    refreshStatusFromData();
    refreshRepositoryData(false);
  }

  if (madeData && in.subdomains.intersects(kReferenceBits) && !progress.isCanceled()) {
    auto cache = GetBehindAheadInfoGitCommand::execute(in.module, &progress, &progress);
    if (cache && !progress.isCanceled()) {
      post([cache = cache.value()](RepositoryController& controller) { controller.storeBehindAheadInfo(cache); });
    } else if (!cache && !progress.isCanceled()) {
      LOG_WARNING(QStringLiteral("Behind/ahead info failed: %1").arg(describe(cache.error())));
    }
  }

  if (progress.isCanceled()) {
    LOG_INFO(QStringLiteral("RefreshRepository canceled"));
  } else {
    progress.setState(failed ? JobProgressState::failed : JobProgressState::succeeded);
  }
  // Always handed over, canceled or not: the controller forgets only its own active job.
  postQueuedCall(QCoreApplication::instance(), [guard, job, ticket = group->enter()] {
    if (guard) guard->finishRefresh(job.get());
  });
  group->wait(progress);
}

void RefreshRepositoryCommand::execute(RepositoryController& controller, UpdateOrder order) {
  if (!controller.gitModule()) return;
  if (activeRefreshJob_) activeRefreshJob_->progress().cancel();

  Input in;
  in.module = *controller.gitModule();
  in.name = controller.repositoryName();
  in.data = controller.repositoryData();
  in.status = controller.repositoryStatus();
  in.subdomains = controller.invalidatedSubdomains();
  // Before the first data the status would not know the submodules nor the names of
  // the marker files' commits: the data goes first then.
  in.order = in.data ? order : UpdateOrder::dataFirst;
  in.showFirstParent = controller.showFirstParent;
  in.showReflogInRevisionList = controller.showReflogInRevisionList;
  in.hideUntrackedFiles = controller.hideUntrackedFiles;
  in.showIgnoredFiles = controller.showIgnoredFiles;
  in.maxCommitCount = controller.maxCommitCount;

  // The job knows itself only weakly: the queue and this command keep it alive.
  auto self = std::make_shared<std::weak_ptr<Job>>();
  QPointer<RepositoryController> guard(&controller);
  auto job = Job::make(QString::fromLatin1(jobName), Job::Show::none(), Job::ProgressType::infinite,
                       [in = std::move(in), self, guard](JobProgress&) {
                         if (auto me = self->lock()) run(in, me, guard);
                       });
  *self = job;
  activeRefreshJob_ = job;
  controller.jobQueue()->schedule(job);
}
