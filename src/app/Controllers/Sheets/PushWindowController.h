#pragma once
// "Push": a local branch to a branch of a remote, an existing one or a new one by name,
// with tags, tracking and a forced push on request.
#include <optional>
#include <vector>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Git/Commands/Remotes/PushGitCommand.h"
#include "Models/LocalBranch.h"
#include "Models/Remote.h"
#include "Models/RemoteBranch.h"

class QCheckBox;
class QComboBox;

class PushWindowController : public JelvSheetController {
  Q_OBJECT
 public:
  PushWindowController(std::vector<Remote> remotes, std::vector<LocalBranchPtr> localBranches,
                       std::vector<RemoteBranchPtr> allRemoteBranches, LocalBranchPtr localBranchToSelect, QWidget* parent = nullptr);

  // The push as the command takes it; the remote branch typed when it is new.
  PushBranchOptions options() const;
  QString jobName() const;

  QComboBox* localBranchList() const { return localList_; }
  QComboBox* remoteList() const { return remoteList_; }
  QComboBox* remoteBranchList() const { return remoteBranchList_; }
  QCheckBox* tagsBox() const { return tags_; }
  QCheckBox* trackBox() const { return track_; }
  QCheckBox* forceBox() const { return force_; }

  void validate(bool force = false) override;
  void submit() override;

 private:
  LocalBranchPtr selectedLocal() const;
  void fillRemoteBranches();

  std::vector<Remote> remotes_;
  std::vector<LocalBranchPtr> localBranches_;
  std::vector<RemoteBranchPtr> allRemoteBranches_;
  QComboBox* localList_;
  QComboBox* remoteList_;
  QComboBox* remoteBranchList_;
  QCheckBox* tags_;
  QCheckBox* track_;
  QCheckBox* force_;
};
