#include "Commands/CommandContext.h"

#include "Controllers/CommitList/CommitListView.h"
#include "UI/JelvDocument.h"
#include "Models/LocalBranch.h"
#include "Repository/RepositoryController.h"

CommandContext CommandContext::forRepository(JelvDocument* repository) {
  CommandContext context;
  context.repository = repository;
  context.window = repository ? repository->window() : nullptr;
  if (!repository) return context;
  context.revisions = repository->commitList()->selectedRevisions();
  return context;
}

bool CommandContext::satisfies(Needs needs) const {
  const int bits = static_cast<int>(needs);
  const auto has = [bits](Needs need) { return (bits & static_cast<int>(need)) == static_cast<int>(need); };
  if (has(Needs::repository) && (!repository || !data())) return false;
  if (has(Needs::activeBranch) && !activeBranch()) return false;
  if (has(Needs::revision) && revisions.empty()) return false;
  if (has(Needs::reference) && !reference) return false;
  if (has(Needs::localBranch) && (!reference || reference->kind() != Reference::Kind::localBranch)) return false;
  if (has(Needs::remoteBranch) && (!reference || reference->kind() != Reference::Kind::remoteBranch)) return false;
  if (has(Needs::tag) && (!reference || reference->kind() != Reference::Kind::tag)) return false;
  if (has(Needs::stash) && !stash) return false;
  if (has(Needs::remote) && remote.isEmpty()) return false;
  if (has(Needs::paths) && paths.isEmpty()) return false;
  return true;
}

RepositoryController* CommandContext::controller() const { return repository ? repository->controller() : nullptr; }

const GitModule& CommandContext::module() const {
  static const GitModule none;
  return repository ? repository->gitModule() : none;
}

std::shared_ptr<JobQueue> CommandContext::queue() const { return repository ? repository->jobQueue() : nullptr; }

RepositoryDataPtr CommandContext::data() const { return controller() ? controller()->repositoryData() : nullptr; }

RepositoryStatusPtr CommandContext::status() const { return controller() ? controller()->repositoryStatus() : nullptr; }

LocalBranchPtr CommandContext::activeBranch() const {
  const RepositoryDataPtr snapshot = data();
  return snapshot ? snapshot->references.activeBranch : nullptr;
}

QStringList CommandContext::localBranchNames() const {
  QStringList names;
  if (const RepositoryDataPtr snapshot = data()) {
    for (const auto& branch : snapshot->references.localBranches) names << branch->name;
  }
  return names;
}

QString CommandContext::signingKey() const {
  const RepositoryDataPtr snapshot = data();
  return snapshot && snapshot->settings.signingKey ? *snapshot->settings.signingKey : QString();
}
