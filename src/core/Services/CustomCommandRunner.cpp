#include "Services/CustomCommandRunner.h"

#include <QStandardPaths>

#include "Git/Process/GitRequest.h"
#include "Jobs/JobOutcome.h"
#include "Jobs/JobProgress.h"

namespace CustomCommandRunner {

Invocation invocation(const ProcessCustomCommandAction& action, const CustomCommandEnvironment& env) {
  Invocation result;
  result.path = env.replace(action.path, false);
  result.program = result.path;
  if (!result.program.isEmpty() && !result.program.contains(QLatin1Char('/'))) {
    if (const QString found = QStandardPaths::findExecutable(result.program); !found.isEmpty()) result.program = found;
  }
  // No parameters at all is no argument, not one empty one.
  if (!action.parameters.isEmpty()) {
    for (const QString& piece : action.parameters.split(QLatin1Char(' '))) result.arguments << env.replace(piece, false);
  }
  result.workingDirectory = env.gitModule.repositoryPath;
  return result;
}

namespace {

GitResult<ShellStringResponse> runProgram(const Invocation& invocation, JobProgress& progress) {
  progress.appendOutput(QStringLiteral("$ ") + invocation.path + QLatin1Char(' ') + invocation.arguments.join(QLatin1Char(' ')) +
                        QLatin1Char('\n'));
  progress.update(100, QStringLiteral("running..."), JobProgressState::inProgress);
  if (invocation.program.isEmpty()) return Error::Generic{QStringLiteral("The custom command names no program to run.")};

  ShellRequest request;
  request.workingDirectory = invocation.workingDirectory;
  request.launchPath = invocation.program;
  request.arguments = invocation.arguments;
  const auto append = [&progress](const QString& line) { progress.appendOutput(line); };
  ShellStringResponse response = request.executeWithHandlers(append, append, &progress);
  if (progress.isCanceled()) return Error::Canceled{};
  if (!response.failure) return response;

  const ShellResponseError& failure = *response.failure;
  if (failure.kind != ShellResponseError::Kind::unknownError) return toResultError(failure);
  // A launch failure has its own sentence and no output; an exit status comes with what
  // the program said.
  if (failure.output.isEmpty() && failure.error.startsWith(QStringLiteral("Cannot launch"))) return Error::Generic{failure.error};
  const QString said = (failure.error.trimmed().isEmpty() ? failure.output : failure.error).trimmed();
  QString text = QStringLiteral("'%1' exited with status %2.").arg(invocation.path).arg(failure.status);
  if (!said.isEmpty()) text += QStringLiteral("\n\n") + said;
  return Error::Generic{text};
}

}  // namespace

GitResult<ShellStringResponse> run(const Invocation& invocation, JobProgress& progress) {
  GitResult<ShellStringResponse> result = runProgram(invocation, progress);
  // The activity list shows how it ended, not "running...".
  JobOutcome::report(progress, result ? GitVoidResult(Unit{}) : GitVoidResult(result.error()));
  return result;
}

}  // namespace CustomCommandRunner
