#include "Commands/RemoteJob.h"

#include <QCoreApplication>

#include "Commands/CommandFlow.h"
#include "UI/JelvDocument.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Repository/RepositoryController.h"

namespace RemoteJob {

void schedule(const CommandContext& context, const QString& name, Subdomain changed, std::function<GitVoidResult(JobProgress&)> work,
              std::function<void(const GitVoidResult&)> after) {
  const std::shared_ptr<JobQueue> queue = context.queue();
  if (!queue) return;
  QPointer<JelvDocument> guard = context.repository;
  queue->schedule(Job::make(name, Job::Show::everywhere(), Job::ProgressType::progress,
                            [context, guard, changed, work = std::move(work), after = std::move(after)](JobProgress& progress) {
                              GitVoidResult result = work(progress);
                              if (progress.isCanceled()) result = Error::Canceled{};
                              postQueuedCall(qApp, [context, guard, changed, after, result = std::move(result)] {
                                if (!guard) return;
                                // Read again in every case: a failed pull may have stashed, a failed fetch --all fetched some.
                                if (RepositoryController* controller = context.controller()) controller->invalidate(changed);
                                if (!result) CommandFlow::showError(context, result.error());
                                if (after) after(result);
                              });
                            }));
}

QString defaultRemote(const CommandContext& context) {
  const RepositoryDataPtr data = context.data();
  if (!data || data->remotes.empty()) return {};
  for (const Remote& remote : data->remotes) {
    if (remote.name == QStringLiteral("origin")) return remote.name;
  }
  return data->remotes.front().name;
}

}  // namespace RemoteJob
