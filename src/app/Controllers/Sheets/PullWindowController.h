#pragma once
// "Pull": a remote branch into the checked-out branch, by merge or rebase, local changes
// stashed and reapplied when asked.
#include <optional>
#include <vector>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/Remote.h"
#include "Models/RemoteBranch.h"

class QCheckBox;
class QComboBox;

class PullWindowController : public JelvSheetController {
  Q_OBJECT
 public:
  // `upstreamOfActiveBranch` preselects remote and branch; else "origin" and `localName`.
  PullWindowController(std::vector<Remote> remotes, std::vector<RemoteBranchPtr> allRemoteBranches,
                       std::optional<QString> upstreamOfActiveBranch, QString localName, bool submodulesExist, QWidget* parent = nullptr);

  struct Values {
    QString remote;
    QString branch;
    bool rebase = false;
    bool stashAndReapply = false;
  };
  Values values() const;
  bool submodulesExist() const { return submodulesExist_; }

  QComboBox* remoteList() const { return remoteList_; }
  QComboBox* branchList() const { return branchList_; }
  QCheckBox* rebaseBox() const { return rebase_; }
  QCheckBox* stashBox() const { return stash_; }

  void validate(bool force = false) override;
  void submit() override;

 private:
  void fillBranches(const QString& select);

  std::vector<Remote> remotes_;
  std::vector<RemoteBranchPtr> allRemoteBranches_;
  bool submodulesExist_;
  QComboBox* remoteList_;
  QComboBox* branchList_;
  QCheckBox* rebase_;
  QCheckBox* stash_;
};
