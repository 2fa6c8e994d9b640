#include "Repository/RevisionSearchCommand.h"

#include <QCoreApplication>
#include <QPointer>

#include "Git/Commands/Revision/RevisionSearchGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Repository/RepositoryController.h"

namespace {

// Matches posted before a cancel may arrive after the next search has started.
bool isActive(const QPointer<RepositoryController>& controller, int jobId) {
  if (!controller) return false;
  const auto active = controller->activeSearchJob.lock();
  return active && active->id() == jobId;
}

}  // namespace

void RevisionSearchCommand::cancel(RepositoryController& controller) {
  if (auto running = controller.activeSearchJob.lock()) running->progress().cancel();
  controller.activeSearchJob.reset();
}

std::shared_ptr<Job> RevisionSearchCommand::start(RepositoryController& controller, const RevisionSearchQuery& query,
                                                  QObject* receiver, std::function<void(const RevisionWithFiles&)> onMatch,
                                                  std::function<void(const GitVoidResult&)> onEnd) {
  cancel(controller);
  if (!controller.gitModule() || !controller.jobQueue()) return nullptr;
  const GitModule module = *controller.gitModule();
  QPointer<QObject> guard(receiver);
  QPointer<RepositoryController> owner(&controller);
  auto jobId = std::make_shared<int>(0);
  auto job = Job::make(
      QStringLiteral("Search"), Job::Show::none(), Job::ProgressType::infinite,
      [module, query, guard, owner, jobId, onMatch = std::move(onMatch), onEnd = std::move(onEnd)](JobProgress& progress) {
        const int id = *jobId;
        const GitVoidResult result = RevisionSearchGitCommand::execute(
            module, query,
            [&](RevisionWithFiles match) {
              postQueuedCall(qApp, [guard, owner, id, onMatch, match = std::move(match)] {
                if (guard && isActive(owner, id)) onMatch(match);
              });
            },
            &progress);
        if (progress.isCanceled()) return;
        postQueuedCall(qApp, [guard, owner, id, onEnd, result] {
          if (!guard || !isActive(owner, id)) return;
          owner->activeSearchJob.reset();
          if (onEnd) onEnd(result);
        });
      });
  *jobId = job->id();
  controller.activeSearchJob = job;
  controller.jobQueue()->schedule(job);
  return job;
}
