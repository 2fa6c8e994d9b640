#include "Git/Commands/Remotes/RemoteGitCommand.h"

#include "Git/Commands/RunGitCommand.h"

QStringList RemoteGitCommand::addArguments(const QString& name, const QString& url) {
  return {QStringLiteral("remote"), QStringLiteral("add"), name, url};
}

QStringList RemoteGitCommand::removeArguments(const QString& name) { return {QStringLiteral("remote"), QStringLiteral("remove"), name}; }

QStringList RemoteGitCommand::renameArguments(const QString& oldName, const QString& newName) {
  return {QStringLiteral("remote"), QStringLiteral("rename"), oldName, newName};
}

QStringList RemoteGitCommand::setUrlArguments(const QString& name, const QString& url) {
  return {QStringLiteral("remote"), QStringLiteral("set-url"), name, url};
}

QStringList RemoteGitCommand::implicitFetchArguments(const QString& name, bool disabled) {
  const QString key = QStringLiteral("remote.%1.disableimplicitfetch").arg(name);
  // Unset rather than "false": the key is only there while it means something.
  if (!disabled) return {QStringLiteral("config"), QStringLiteral("--unset"), key};
  return {QStringLiteral("config"), key, QStringLiteral("true")};
}

GitVoidResult RemoteGitCommand::add(const GitModule& module, const QString& name, const QString& url, JobProgress* progress) {
  return runGitCommand(module, addArguments(name, url), progress);
}

GitVoidResult RemoteGitCommand::remove(const GitModule& module, const QString& name, JobProgress* progress) {
  return runGitCommand(module, removeArguments(name), progress);
}

GitVoidResult RemoteGitCommand::rename(const GitModule& module, const QString& oldName, const QString& newName, JobProgress* progress) {
  return runGitCommand(module, renameArguments(oldName, newName), progress);
}

GitVoidResult RemoteGitCommand::setUrl(const GitModule& module, const QString& name, const QString& url, JobProgress* progress) {
  return runGitCommand(module, setUrlArguments(name, url), progress);
}

GitVoidResult RemoteGitCommand::setImplicitFetchDisabled(const GitModule& module, const QString& name, bool disabled,
                                                         JobProgress* progress) {
  GitVoidResult result = runGitCommand(module, implicitFetchArguments(name, disabled), progress);
  // "config --unset" of a key that is not there exits with 5: already as wanted.
  if (!disabled && result.isFailure() && std::holds_alternative<Error::GitUnknownError>(result.error())) {
    const auto& error = std::get<Error::GitUnknownError>(result.error());
    if (error.error.isEmpty() && error.output.isEmpty()) return Unit{};
  }
  return result;
}

GitVoidResult RemoteGitCommand::edit(const GitModule& module, const Edit& before, const Edit& after, JobProgress* progress) {
  if (after.url != before.url) {
    if (GitVoidResult result = setUrl(module, before.name, after.url, progress); !result) return result;
  }
  if (after.disableImplicitFetch != before.disableImplicitFetch) {
    if (GitVoidResult result = setImplicitFetchDisabled(module, before.name, after.disableImplicitFetch, progress); !result) return result;
  }
  if (after.name != before.name) return rename(module, before.name, after.name, progress);
  return Unit{};
}
