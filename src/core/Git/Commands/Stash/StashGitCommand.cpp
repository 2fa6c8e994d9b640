#include "Git/Commands/Stash/StashGitCommand.h"

#include "Git/Commands/RunGitCommand.h"
#include "Jobs/JobProgress.h"

namespace {

const QString kNothingToSave = QStringLiteral("There are no local changes to stash.");

void say(JobProgress* progress, const QString& text) {
  if (progress) progress->update(progress->progress(), text, progress->state());
}

}  // namespace

QStringList StashGitCommand::pushArguments(const QString& message, const QStringList& paths) {
  QStringList arguments{QStringLiteral("stash"), QStringLiteral("push"), QStringLiteral("-m"), message};
  if (!paths.isEmpty()) arguments << QStringLiteral("--") << paths;
  return arguments;
}

QStringList StashGitCommand::untrackedFilesArguments() {
  return {QStringLiteral("ls-files"), QStringLiteral("-z"), QStringLiteral("--others"), QStringLiteral("--exclude-standard")};
}

QStringList StashGitCommand::stagePathsArguments(const QStringList& paths) {
  // -A takes deletions of the chosen paths too.
  return QStringList{QStringLiteral("add"), QStringLiteral("-A"), QStringLiteral("--")} + paths;
}

QStringList StashGitCommand::createArguments() { return {QStringLiteral("stash"), QStringLiteral("create")}; }

QStringList StashGitCommand::storeArguments(const QString& commit, const QString& message) {
  return {QStringLiteral("stash"), QStringLiteral("store"), QStringLiteral("-m"), message, commit};
}

QStringList StashGitCommand::applyArguments(const QString& stash, bool pop) {
  return {QStringLiteral("stash"), pop ? QStringLiteral("pop") : QStringLiteral("apply"), stash};
}

QStringList StashGitCommand::dropArguments(const QString& stash) { return {QStringLiteral("stash"), QStringLiteral("drop"), stash}; }

QStringList StashGitCommand::parsePaths(const QString& output) {
  return output.split(QChar(0), Qt::SkipEmptyParts);
}

GitVoidResult StashGitCommand::save(const GitModule& module, const QString& message, bool stageNewFiles, JobProgress* progress) {
  if (stageNewFiles) {
    const GitResult<GitResponse> untracked = runGitCommandWithResponse(module, untrackedFilesArguments(), progress);
    if (!untracked) return untracked.error();
    const QStringList paths = parsePaths(untracked.value().output);
    if (!paths.isEmpty()) {
      say(progress, QStringLiteral("Staging %1 files...").arg(paths.size()));
      if (GitVoidResult staged = runGitCommand(module, stagePathsArguments(paths), progress); !staged) return staged;
    }
  }
  say(progress, QStringLiteral("Stashing..."));
  const GitResult<GitResponse> result = runGitCommandWithResponse(module, pushArguments(message), progress);
  if (!result) return result.error();
  // git is content with nothing to save; the user asked for a stash and got none.
  if (result.value().output.contains(QStringLiteral("No local changes to save"))) return Error::Generic{kNothingToSave};
  return Unit{};
}

GitVoidResult StashGitCommand::savePaths(const GitModule& module, const QString& message, const QStringList& paths,
                                         JobProgress* progress) {
  say(progress, QStringLiteral("Staging %1 files...").arg(paths.size()));
  if (GitVoidResult staged = runGitCommand(module, stagePathsArguments(paths), progress); !staged) return staged;
  say(progress, QStringLiteral("Stashing..."));
  const GitResult<GitResponse> result = runGitCommandWithResponse(module, pushArguments(message, paths), progress);
  if (!result) return result.error();
  if (result.value().output.contains(QStringLiteral("No local changes to save"))) return Error::Generic{kNothingToSave};
  return Unit{};
}

GitVoidResult StashGitCommand::snapshot(const GitModule& module, const QString& message, JobProgress* progress) {
  const GitResult<GitResponse> created = runGitCommandWithResponse(module, createArguments(), progress);
  if (!created) return created.error();
  // "stash create" prints nothing when there is nothing to keep.
  const QString commit = created.value().output.trimmed();
  if (commit.isEmpty()) return Error::Generic{kNothingToSave};
  return runGitCommand(module, storeArguments(commit, message), progress);
}

GitVoidResult StashGitCommand::apply(const GitModule& module, const QString& stash, bool pop, JobProgress* progress) {
  return runGitCommand(module, applyArguments(stash, pop), progress);
}

GitVoidResult StashGitCommand::drop(const GitModule& module, const QString& stash, JobProgress* progress) {
  return runGitCommand(module, dropArguments(stash), progress);
}
