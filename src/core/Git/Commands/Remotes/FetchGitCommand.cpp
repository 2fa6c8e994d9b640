#include "Git/Commands/Remotes/FetchGitCommand.h"

#include "Git/Commands/Remotes/RemoteOperation.h"

QStringList FetchGitCommand::arguments(const FetchTarget& target, const FetchOptions& options) {
  QStringList args{QStringLiteral("fetch")};
  if (options.prune) args << QStringLiteral("--prune");
  if (options.tags) args << QStringLiteral("--tags");
  if (options.force) args << QStringLiteral("--force");
  switch (target.kind) {
    case FetchTarget::Kind::remote: args << target.remote; break;
    case FetchTarget::Kind::all: args << QStringLiteral("--all"); break;
    case FetchTarget::Kind::defaultTarget: break;
  }
  args << QStringLiteral("--verbose") << QStringLiteral("--progress");
  return args;
}

GitVoidResult FetchGitCommand::execute(const GitModule& module, const FetchTarget& target, const FetchOptions& options,
                                       JobProgress& progress) {
  RemoteOperation operation;
  operation.kind = RemoteOperation::Kind::fetch;
  if (target.kind == FetchTarget::Kind::remote) operation.remote = target.remote;
  operation.noPrompt = options.noPrompt;
  return operation.run(module, arguments(target, options), progress);
}
