#include "Git/Commands/Repository/InteractiveRebaseGitCommand.h"

#include "Consts.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/JobProgress.h"
#include "Logging/AdvancedLogger.h"
#include "Services/RebaseMessageResponder.h"

QString InteractiveRebaseGitCommand::editorSetting(const QString& editorPath) {
  // git runs the editor through the shell: the quotes keep a path with blanks whole.
  return QLatin1Char('"') + editorPath + QLatin1Char('"');
}

QStringList InteractiveRebaseGitCommand::arguments(const Options& options, const QString& editorPath, const QString& gpgProgram) {
  const QString c = QStringLiteral("-c");
  QStringList args;
  if (!options.signingKey.isEmpty()) args << c << QStringLiteral("gpg.program=") + gpgProgram;
  // Comments in "^" leave "#" free for the id marker behind each line.
  args << c << QStringLiteral("core.commentChar=^");
  args << c << QStringLiteral("rebase.instructionFormat=#!_%H");
  args << c << QStringLiteral("rebase.abbreviateCommands=true");
  args << c << QStringLiteral("sequence.editor=") + editorSetting(editorPath);
  args << c << QStringLiteral("core.editor=") + editorSetting(editorPath);
  args << QStringLiteral("rebase") << QStringLiteral("-i") << QStringLiteral("--autosquash");
  if (options.root) {
    args << QStringLiteral("--root");
  } else if (options.destination) {
    args << *options.destination;
  }
  if (!options.signingKey.isEmpty()) args << QStringLiteral("--gpg-sign=") + options.signingKey;
  return args;
}

bool InteractiveRebaseGitCommand::isSuccessfulStop(const QString& errorOutput) {
  return errorOutput.contains(QStringLiteral("nothing to do")) ||
         errorOutput.contains(QStringLiteral("error: Failed to merge in the changes.")) ||
         errorOutput.contains(QStringLiteral("Resolve all conflicts manually, mark them as resolved with"));
}

GitVoidResult InteractiveRebaseGitCommand::execute(const GitModule& module, const Options& options, JobProgress* progress) {
  const RebaseMessageResponder responder(module);
  const GitRequest request(module, arguments(options, Consts::Git::rebaseEditorPath(), Consts::Git::gpgWrapperPath()));
  const GitResponse response = progress ? request.executeWithProgress(*progress) : request.execute();
  if (progress && progress->isCanceled()) return Error::Canceled{};
  if (!response.isSuccess() && !isSuccessfulStop(response.failure->error + response.errorOutput)) {
    return failureResult<Unit>(response);
  }
  LOG_INFO(QStringLiteral("RI process finished"));
  return Unit{};
}
