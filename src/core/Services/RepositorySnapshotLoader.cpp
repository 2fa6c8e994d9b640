#include "Services/RepositorySnapshotLoader.h"

#include <QDir>
#include <QFileInfo>

#include "Git/Commands/Repository/GetBehindAheadInfoGitCommand.h"
#include "Git/Commands/Repository/GetHeadGitCommand.h"
#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetRepositoryStateGitCommand.h"
#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Git/Commands/Revision/GetStashesGitCommand.h"
#include "Git/Commands/Submodules/GetSubmodulesGitCommand.h"
#include "Git/Process/GitRequest.h"
#include "Jobs/JobProgress.h"
#include "Services/Preferences.h"

GitResult<GitModule> RepositorySnapshotLoader::moduleForPath(const QString& path) {
  const GitResponse response =
      GitRequest(path, {QStringLiteral("rev-parse"), QStringLiteral("--show-toplevel"), QStringLiteral("--absolute-git-dir")}).execute(true);
  if (!response.isSuccess()) return failureResult<GitModule>(response);
  const QStringList lines = response.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  if (lines.size() < 2) return Error::Generic{QStringLiteral("'%1' is not inside a Git working tree.").arg(path)};
  return GitModule{lines[0], lines[1], std::nullopt};
}

GitResult<RepositoryStatus> RepositorySnapshotLoader::loadStatus(const GitModule& module, const ReferenceList& references,
                                                                 const SubmoduleList& submodules, JobProgress& progress) {
  auto state = GetRepositoryStateGitCommand::execute(module, references, &progress);
  if (!state) return state.mapError<RepositoryStatus>();
  if (progress.isCanceled()) return Error::Canceled{};
  auto& prefs = Preferences::shared();
  auto files = GetChangedFilesGitCommand::execute(module, submodules, prefs.boolean(QStringLiteral("hideUntrackedFiles")),
                                                  prefs.boolean(QStringLiteral("showIgnoredFiles")), &progress);
  if (!files) return files.mapError<RepositoryStatus>();
  RepositoryStatus status;
  status.repositoryState = std::move(state).value();
  status.changedFiles = files.value().changedFiles;
  status.changedFilesCount = files.value().filesCount;
  return status;
}

GitResult<RepositorySnapshot> RepositorySnapshotLoader::load(const GitModule& module, JobProgress& progress,
                                                             const RevisionGraphOptions& options) {
  RepositorySnapshot snapshot;
  // A repository without commits has no HEAD to resolve; that is not an error here.
  const auto head = GetHeadGitCommand::execute(module);
  std::optional<QString> headSha;
  if (head && !head.value().isEmpty()) headSha = head.value();

  auto references = GetReferencesGitCommand::execute(module, Subdomain::references());
  if (!references) return references.mapError<RepositorySnapshot>();
  if (progress.isCanceled()) return Error::Canceled{};

  auto submodules = GetSubmodulesGitCommand::execute(module);
  if (submodules) snapshot.submodules = submodules.value();

  auto source = std::make_shared<RevisionGraphSource>();
  source->options = options;
  source->references = RepositoryReferences::make(headSha, std::nullopt, references.value());
  if (headSha) {
    auto revisions = GetRevisionsGitCommand::execute(module, GetRevisionsGitCommand::useTopologicalCommitOrder(), false, progress);
    if (!revisions) return revisions.mapError<RepositorySnapshot>();
    source->revisions = std::make_shared<const RevisionList>(std::move(revisions).value());
  } else {
    source->revisions = std::make_shared<const RevisionList>();
  }
  if (progress.isCanceled()) return Error::Canceled{};
  if (auto stashes = GetStashesGitCommand::execute(module)) source->stashes = stashes.value();

  if (auto aheadBehind = GetBehindAheadInfoGitCommand::execute(module, &progress)) snapshot.aheadBehind = aheadBehind.value();
  if (progress.isCanceled()) return Error::Canceled{};

  auto status = loadStatus(module, source->references.all, snapshot.submodules, progress);
  if (!status) return status.mapError<RepositorySnapshot>();
  snapshot.status = std::move(status).value();
  snapshot.graph = std::move(source);
  return snapshot;
}
