#pragma once
// "Push Branches": several local branches at once to one remote, each to the branch of
// its own name, and each tracking that branch afterwards.
#include <vector>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/GitModule.h"
#include "Models/LocalBranch.h"
#include "Models/Remote.h"
#include "Models/RemoteBranch.h"

class QComboBox;
class QTreeWidget;

class PushMultipleBranchesWindowController : public JelvSheetController {
  Q_OBJECT
 public:
  // `chosen` are the full references checked at the start.
  PushMultipleBranchesWindowController(GitModule gitModule, std::vector<Remote> remotes, QString remote,
                                       std::vector<LocalBranchPtr> localBranches, std::vector<RemoteBranchPtr> allRemoteBranches,
                                       const QStringList& chosen, QWidget* parent = nullptr);

  const GitModule& gitModule() const { return gitModule_; }
  QString remote() const;
  // The checked branches' full references, in the list's order.
  QStringList fullReferences() const;
  QString jobName() const;

  QComboBox* remoteList() const { return remoteList_; }
  QTreeWidget* branchList() const { return branchList_; }

  void validate(bool force = false) override;
  void submit() override;

 private:
  // What the push does to each branch on the chosen remote.
  void describeTargets();

  GitModule gitModule_;
  std::vector<Remote> remotes_;
  std::vector<LocalBranchPtr> localBranches_;
  std::vector<RemoteBranchPtr> allRemoteBranches_;
  QComboBox* remoteList_;
  QTreeWidget* branchList_;
};
