#pragma once
// What the commit button says and does, decided from the repository's state at each
// status update. A pure function so the view only shows the result.
#include <QString>

class RepositoryState;

// The repository states that change the button; all others count as `none`.
enum class CommitPhase { none, rebaseInProgress, cherryPickInProgress, squashInProgress };

enum class CommitButtonAction { commit, amendLastCommit, continueRebase, continueCherryPick, squashCommits };

struct CommitButtonInput {
  CommitPhase phase = CommitPhase::none;
  bool amend = false;
  int stagedFilesCount = 0;
  bool pushAutomaticallyOnCommit = false;  // the preference
  bool optionKeyPressed = false;
};

struct CommitButtonTitle {
  QString text;
  CommitButtonAction action = CommitButtonAction::commit;
  bool andPush = false;  // a push of the current branch follows a successful commit

  bool operator==(const CommitButtonTitle&) const = default;
};

// A rebase, a cherry-pick (single or through the sequencer) or a squash; else none.
CommitPhase commitPhase(const RepositoryState& state);

CommitButtonTitle commitButtonTitle(const CommitButtonInput& input);
