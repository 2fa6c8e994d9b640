#include "Models/CommitButtonTitle.h"

#include "Models/RepositoryState.h"

namespace {
CommitButtonTitle ordinaryTitle(const CommitButtonInput& input) {
  CommitButtonTitle title;
  if (input.stagedFilesCount > 1) {
    title.text = QStringLiteral("Commit %1 Files").arg(input.stagedFilesCount);
  } else if (input.stagedFilesCount == 1) {
    title.text = QStringLiteral("Commit 1 File");
  } else {
    title.text = QStringLiteral("Commit");
  }
  if (input.pushAutomaticallyOnCommit || input.optionKeyPressed) {
    title.text += QStringLiteral(" and Push");
    title.andPush = true;
  }
  return title;
}
}  // namespace

CommitPhase commitPhase(const RepositoryState& state) {
  if (state.is<RepositoryState::RebaseInProgress>()) return CommitPhase::rebaseInProgress;
  if (state.is<RepositoryState::CherryPickInProgress>() || state.is<RepositoryState::SequencerInProgress>()) {
    return CommitPhase::cherryPickInProgress;
  }
  if (state.is<RepositoryState::SquashInProgress>()) return CommitPhase::squashInProgress;
  return CommitPhase::none;
}

CommitButtonTitle commitButtonTitle(const CommitButtonInput& input) {
  const bool hasStaged = input.stagedFilesCount > 0;
  switch (input.phase) {
    case CommitPhase::rebaseInProgress:
      if (input.amend) return {QStringLiteral("Amend Last Commit"), CommitButtonAction::amendLastCommit, false};
      if (hasStaged) return ordinaryTitle(input);
      return {QStringLiteral("Continue Rebase"), CommitButtonAction::continueRebase, false};
    case CommitPhase::cherryPickInProgress:
      if (!hasStaged) return {QStringLiteral("Continue Cherry-Pick"), CommitButtonAction::continueCherryPick, false};
      return ordinaryTitle(input);
    case CommitPhase::squashInProgress:
      return {QStringLiteral("Squash Commits"), CommitButtonAction::squashCommits, false};
    case CommitPhase::none:
      break;
  }
  return ordinaryTitle(input);
}
