#include "Controllers/Sheets/PullWindowController.h"

#include <QLabel>
#include <QVBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QPushButton>

#include "Services/Preferences.h"

PullWindowController::PullWindowController(std::vector<Remote> remotes, std::vector<RemoteBranchPtr> allRemoteBranches,
                                           std::optional<QString> upstreamOfActiveBranch, QString localName, bool submodulesExist,
                                           QWidget* parent)
    : JelvSheetController(parent), remotes_(std::move(remotes)), allRemoteBranches_(std::move(allRemoteBranches)),
      submodulesExist_(submodulesExist) {
  setObjectName(QStringLiteral("pullSheet"));
  setWindowTitle(QStringLiteral("Pull"));
  messageLabel()->setText(QStringLiteral("Pull from a remote branch into '%1'").arg(localName));
  remoteList_ = new QComboBox(this);
  remoteList_->setMinimumWidth(320);
  for (const Remote& r : remotes_) remoteList_->addItem(r.name);
  branchList_ = new QComboBox(this);
  QString remote = QStringLiteral("origin");
  QString branch = localName;
  if (upstreamOfActiveBranch) {
    for (const RemoteBranchPtr& candidate : allRemoteBranches_) {
      if (candidate->fullName == *upstreamOfActiveBranch) {
        remote = candidate->remote;
        branch = candidate->name;
      }
    }
  }
  if (const int index = remoteList_->findText(remote); index >= 0) remoteList_->setCurrentIndex(index);
  fillBranches(branch);
  auto& preferences = Preferences::shared();
  rebase_ = new QCheckBox(QStringLiteral("Rebase instead of merge (WARNING: make sure you haven't pushed your changes)"), this);
  rebase_->setChecked(preferences.pullSheetRebase());
  stash_ = new QCheckBox(QStringLiteral("Stash and reapply local changes"), this);
  stash_->setChecked(preferences.pullSheetStashAndReapply());
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("Remote:"), remoteList_);
  form->addRow(QStringLiteral("Remote branch:"), branchList_);
  contentLayout()->addLayout(form);
  contentLayout()->addWidget(rebase_);
  contentLayout()->addWidget(stash_);
  submitButton()->setText(QStringLiteral("Pull"));
  connect(remoteList_, &QComboBox::currentTextChanged, this, [this] {
    fillBranches(branchList_->currentText());
    validate();
  });
  connect(branchList_, &QComboBox::currentTextChanged, this, [this] { validate(); });
}

void PullWindowController::fillBranches(const QString& select) {
  const QString remote = remoteList_->currentText();
  branchList_->clear();
  for (const RemoteBranchPtr& branch : allRemoteBranches_) {
    // "origin/HEAD" is no branch to pull.
    if (branch->remote == remote && branch->name != QStringLiteral("HEAD")) branchList_->addItem(branch->name);
  }
  if (const int index = branchList_->findText(select); index >= 0) branchList_->setCurrentIndex(index);
}

PullWindowController::Values PullWindowController::values() const {
  return {remoteList_->currentText(), branchList_->currentText(), rebase_->isChecked(), stash_->isChecked()};
}

void PullWindowController::validate(bool) {
  if (isOperationInProgress()) return;
  const bool ready = !remoteList_->currentText().isEmpty() && !branchList_->currentText().isEmpty();
  if (remotes_.empty()) {
    setStatus(Status::warning, QStringLiteral("This repository has no remote"));
  } else if (!ready) {
    setStatus(Status::warning, QStringLiteral("The remote has no branch to pull; fetch it first"));
  } else {
    setStatus(Status::none);
  }
  submitButton()->setEnabled(ready);
}

void PullWindowController::submit() {
  if (!submitButton()->isEnabled()) return;
  auto& preferences = Preferences::shared();
  preferences.setPullSheetRebase(rebase_->isChecked());
  preferences.setPullSheetStashAndReapply(stash_->isChecked());
  endWithSuccess();
}
