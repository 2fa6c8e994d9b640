#pragma once
// What a command receives: the repository tab it acts on and the objects the user chose
// (a branch in the sidebar, commits in the list, files). A command reads the snapshot
// through it and never reaches into the widgets beyond what is offered here.
#include <QPointer>
#include <QStringList>
#include <memory>
#include <vector>

#include "Models/GitModule.h"
#include "Models/Reference.h"
#include "Models/RepositoryData.h"
#include "Models/RepositoryStatus.h"
#include "Models/Revision.h"
#include "Models/StashRevision.h"

class JobQueue;
class RepositoryController;
class JelvDocument;
class QWidget;

struct CommandContext {
  enum class Needs : int {
    nothing = 0,
    repository = 1,
    activeBranch = 2 | 1,   // a checked-out branch
    revision = 4 | 1,       // one commit
    reference = 8 | 1,      // a branch, remote branch or tag
    localBranch = 16 | 1,
    remoteBranch = 32 | 1,
    tag = 64 | 1,
    stash = 128 | 1,
    remote = 256 | 1,
    paths = 512 | 1,
  };

  QPointer<JelvDocument> repository;  // the tab; null outside a repository tab
  QWidget* window = nullptr;            // where sheets open
  ReferencePtr reference;
  std::vector<ReferencePtr> references;  // every chosen reference when several are selected, `reference` among them
  std::vector<RevisionPtr> revisions;   // the chosen commits, in list order (newest first)
  StashRevisionPtr stash;
  QString remote;
  QStringList paths;                    // repository-relative

  // The tab in front of `window` with its current selection, as menus and the toolbar use it.
  static CommandContext forRepository(JelvDocument* repository);

  bool satisfies(Needs needs) const;

  RepositoryController* controller() const;
  const GitModule& module() const;
  std::shared_ptr<JobQueue> queue() const;
  RepositoryDataPtr data() const;
  RepositoryStatusPtr status() const;
  RevisionPtr revision() const { return revisions.empty() ? nullptr : revisions.front(); }
  // The checked-out branch, null on a detached HEAD or without data.
  std::shared_ptr<const class LocalBranch> activeBranch() const;
  QStringList localBranchNames() const;
  // The repository's signing key; empty when its commits are not signed.
  QString signingKey() const;
};
