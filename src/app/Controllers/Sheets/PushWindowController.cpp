#include "Controllers/Sheets/PushWindowController.h"

#include <QLabel>
#include <QVBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

#include "Models/ReferenceNameCheck.h"
#include "Services/Preferences.h"

PushWindowController::PushWindowController(std::vector<Remote> remotes, std::vector<LocalBranchPtr> localBranches,
                                           std::vector<RemoteBranchPtr> allRemoteBranches, LocalBranchPtr localBranchToSelect,
                                           QWidget* parent)
    : JelvSheetController(parent), remotes_(std::move(remotes)), localBranches_(std::move(localBranches)),
      allRemoteBranches_(std::move(allRemoteBranches)) {
  setObjectName(QStringLiteral("pushSheet"));
  setWindowTitle(QStringLiteral("Push"));
  messageLabel()->setText(QStringLiteral("Push a branch to a remote repository"));
  localList_ = new QComboBox(this);
  localList_->setMinimumWidth(320);
  for (const LocalBranchPtr& branch : localBranches_) localList_->addItem(branch->name);
  if (localBranchToSelect) localList_->setCurrentIndex(std::max(0, localList_->findText(localBranchToSelect->name)));
  remoteList_ = new QComboBox(this);
  for (const Remote& r : remotes_) remoteList_->addItem(r.name);
  const LocalBranchPtr local = selectedLocal();
  const QString remote = local && local->remoteName() ? *local->remoteName() : QStringLiteral("origin");
  if (const int index = remoteList_->findText(remote); index >= 0) remoteList_->setCurrentIndex(index);
  // Editable: a name the remote does not have makes a new branch there.
  remoteBranchList_ = new QComboBox(this);
  remoteBranchList_->setEditable(true);
  remoteBranchList_->setInsertPolicy(QComboBox::NoInsert);
  fillRemoteBranches();
  tags_ = new QCheckBox(QStringLiteral("Push all tags"), this);
  tags_->setChecked(Preferences::shared().pushSheetPushAllTags());
  track_ = new QCheckBox(QStringLiteral("Track remote branch"), this);
  track_->setChecked(local && !local->upstreamFullReference);
  force_ = new QCheckBox(QStringLiteral("Force push (with lease: refused when the remote moved meanwhile)"), this);
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("Branch:"), localList_);
  form->addRow(QStringLiteral("Push to:"), remoteList_);
  form->addRow(QStringLiteral("Remote branch:"), remoteBranchList_);
  contentLayout()->addLayout(form);
  contentLayout()->addWidget(tags_);
  contentLayout()->addWidget(track_);
  contentLayout()->addWidget(force_);
  submitButton()->setText(QStringLiteral("Push"));
  connect(localList_, &QComboBox::currentTextChanged, this, [this] {
    fillRemoteBranches();
    validate();
  });
  connect(remoteList_, &QComboBox::currentTextChanged, this, [this] {
    fillRemoteBranches();
    validate();
  });
  connect(remoteBranchList_, &QComboBox::currentTextChanged, this, [this] { validate(); });
  connect(force_, &QCheckBox::toggled, this, [this] { validate(); });
}

LocalBranchPtr PushWindowController::selectedLocal() const {
  for (const LocalBranchPtr& branch : localBranches_) {
    if (branch->name == localList_->currentText()) return branch;
  }
  return nullptr;
}

void PushWindowController::fillRemoteBranches() {
  const QString remote = remoteList_->currentText();
  const LocalBranchPtr local = selectedLocal();
  QString select = local ? local->name : QString();
  // The upstream's name when it lives on this remote.
  if (local && local->remoteName() == remote && local->upstreamName()) select = local->upstreamName()->mid(remote.size() + 1);
  remoteBranchList_->clear();
  for (const RemoteBranchPtr& branch : allRemoteBranches_) {
    if (branch->remote == remote && branch->name != QStringLiteral("HEAD")) remoteBranchList_->addItem(branch->name);
  }
  remoteBranchList_->setEditText(select);
}

PushBranchOptions PushWindowController::options() const {
  PushBranchOptions options;
  const LocalBranchPtr local = selectedLocal();
  options.remote = remoteList_->currentText();
  if (local) {
    options.localFullReference = local->fullReference;
    options.localName = local->name;
  }
  const QString target = remoteBranchList_->currentText().trimmed();
  if (remoteBranchList_->findText(target) >= 0) {
    options.remoteBranchName = target;
    options.remoteBranchRemote = options.remote;
  } else if (!target.isEmpty() && target != options.localName) {
    options.newName = target;
  }
  options.tags = tags_->isChecked();
  options.setUpstream = track_->isChecked();
  options.force = force_->isChecked();
  return options;
}

QString PushWindowController::jobName() const {
  return QStringLiteral("Push '%1' to '%2'").arg(localList_->currentText(), remoteList_->currentText());
}

void PushWindowController::validate(bool) {
  if (isOperationInProgress()) return;
  const QString target = remoteBranchList_->currentText().trimmed();
  std::optional<QString> problem;
  if (remotes_.empty()) problem = QStringLiteral("This repository has no remote");
  else if (!selectedLocal()) problem = QStringLiteral("Choose a local branch");
  else if (target.isEmpty()) problem = QStringLiteral("Name the remote branch");
  else if (remoteBranchList_->findText(target) < 0) problem = ReferenceNameCheck::problem(target);
  if (problem) {
    setStatus(Status::warning, *problem);
  } else if (force_->isChecked()) {
    setStatus(Status::warning, QStringLiteral("A forced push replaces the remote branch's commits"));
  } else if (remoteBranchList_->findText(target) < 0) {
    setStatus(Status::none, {});
    setStatus(Status::success, QStringLiteral("A new branch '%1' on '%2'").arg(target, remoteList_->currentText()));
  } else {
    setStatus(Status::none);
  }
  submitButton()->setEnabled(!problem);
}

void PushWindowController::submit() {
  if (!submitButton()->isEnabled()) return;
  Preferences::shared().setPushSheetPushAllTags(tags_->isChecked());
  endWithSuccess();
}
