#include "Services/AutomaticBackgroundFetchManager.h"

#include <QCoreApplication>
#include <QThreadPool>

#include "Git/Commands/Remotes/FetchGitCommand.h"
#include "Git/Commands/Remotes/GetRemotesGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Logging/AdvancedLogger.h"
#include "Repository/RepositoryController.h"
#include "Services/Preferences.h"

namespace {

// What a fetch changes: the remote branches, tags, and the commits they bring.
Subdomain fetchedSubdomains() { return Subdomain::references() | Subdomain::revisions() | Subdomain::remotes(); }

}  // namespace

AutomaticBackgroundFetchManager::AutomaticBackgroundFetchManager(TargetsProvider targets, QObject* parent)
    : QObject(parent), targets_(std::move(targets)) {
  connect(&updateTimer_, &QTimer::timeout, this, &AutomaticBackgroundFetchManager::updateTimerTick);
}

void AutomaticBackgroundFetchManager::start(double intervalSeconds) {
  updateTimer_.stop();
  updateTimer_.setInterval(static_cast<int>(intervalSeconds * 1000.0));
  updateTimer_.start();
}

void AutomaticBackgroundFetchManager::updateTimerTick() {
  auto& preferences = Preferences::shared();
  if (!preferences.fetchRemotesAutomatically()) return;
  FetchOptions options;
  options.tags = preferences.fetchSheetFetchAllTags();
  // Nobody is asked for a password in the background; moved tags are not forced.
  options.noPrompt = true;
  for (const Target& target : targets_ ? targets_() : std::vector<Target>{}) {
    if (!target.controller || !target.controller->gitModule()) continue;
    const GitModule module = *target.controller->gitModule();
    const QString name = target.controller->repositoryName();
    LOG_INFO(QStringLiteral("Automatically fetching '%1'").arg(name));
    QThreadPool::globalInstance()->start([target, module, name, options] {
      if (!target.controller || target.queue.expired()) return;
      const GitResult<std::vector<Remote>> remotes = GetRemotesGitCommand::execute(module);
      if (!remotes) return;
      for (const Remote& remote : remotes.value()) {
        if (remote.disableImplicitFetch) continue;
        const std::shared_ptr<JobQueue> queue = target.queue.lock();
        if (!queue) return;
        queue->schedule(Job::make(QStringLiteral("Fetch %1").arg(remote.name), Job::Show::inActivityManager(), Job::ProgressType::progress,
                                  [target, module, name, options, remoteName = remote.name](JobProgress& progress) {
                                    const GitVoidResult result = FetchGitCommand::execute(module, FetchTarget::ofRemote(remoteName), options, progress);
                                    if (progress.isCanceled()) return;
                                    if (!result) {
                                      LOG_ERROR(QStringLiteral("Error during automatic fetch of '%1': %2").arg(name, describe(result.error())));
                                      return;
                                    }
                                    postQueuedCall(qApp, [target] {
                                      // A tab behind reads its data when it comes to the front.
                                      if (target.controller && target.isFront && target.isFront()) target.controller->invalidate(fetchedSubdomains());
                                    });
                                  }));
      }
    });
  }
}
