#include "Jobs/JobOutcome.h"

#include "Jobs/JobProgress.h"

void JobOutcome::report(JobProgress& progress, const GitVoidResult& result) {
  if (progress.isCanceled()) return;  // the cancel is what happened
  if (result.isSuccess()) {
    progress.update(100, QStringLiteral("done"), JobProgressState::succeeded);
    return;
  }
  if (result.isError<Error::Canceled>()) {
    progress.setState(JobProgressState::canceled);
    return;
  }
  const QString text = describe(result.error()).trimmed();
  progress.appendOutput(text + QLatin1Char('\n'));
  progress.update(100, QStringLiteral("failed: ") + text.section(QLatin1Char('\n'), 0, 0), JobProgressState::failed);
}
