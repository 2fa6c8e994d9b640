#include "Controllers/Sheets/PushMultipleBranchesWindowController.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {
enum Column { branchColumn = 0, targetColumn = 1 };
}

PushMultipleBranchesWindowController::PushMultipleBranchesWindowController(GitModule gitModule, std::vector<Remote> remotes, QString remote,
                                                                           std::vector<LocalBranchPtr> localBranches,
                                                                           std::vector<RemoteBranchPtr> allRemoteBranches,
                                                                           const QStringList& chosen, QWidget* parent)
    : JelvSheetController(parent), gitModule_(std::move(gitModule)), remotes_(std::move(remotes)),
      localBranches_(std::move(localBranches)), allRemoteBranches_(std::move(allRemoteBranches)) {
  setObjectName(QStringLiteral("pushMultipleBranchesSheet"));
  setWindowTitle(QStringLiteral("Push Branches"));
  messageLabel()->setText(QStringLiteral("Push branches to a remote repository"));
  informativeLabel()->setText(QStringLiteral("Each branch goes to the remote branch of its own name and tracks it afterwards."));
  informativeLabel()->show();
  remoteList_ = new QComboBox(this);
  remoteList_->setMinimumWidth(320);
  for (const Remote& r : remotes_) remoteList_->addItem(r.name);
  if (const int index = remoteList_->findText(remote); index >= 0) remoteList_->setCurrentIndex(index);
  branchList_ = new QTreeWidget(this);
  branchList_->setRootIsDecorated(false);
  branchList_->setUniformRowHeights(true);
  branchList_->setHeaderLabels({QStringLiteral("Branch"), QStringLiteral("On the remote")});
  branchList_->header()->setSectionResizeMode(branchColumn, QHeaderView::Stretch);
  branchList_->header()->setSectionResizeMode(targetColumn, QHeaderView::ResizeToContents);
  branchList_->header()->setStretchLastSection(false);
  branchList_->setMinimumSize(460, 220);
  for (const LocalBranchPtr& branch : localBranches_) {
    auto* item = new QTreeWidgetItem(branchList_, {branch->name});
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable | Qt::ItemIsSelectable);
    item->setCheckState(branchColumn, chosen.contains(branch->fullReference) ? Qt::Checked : Qt::Unchecked);
    item->setData(branchColumn, Qt::UserRole, branch->fullReference);
  }
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("Push to:"), remoteList_);
  contentLayout()->addLayout(form);
  contentLayout()->addWidget(branchList_);
  submitButton()->setText(QStringLiteral("Push"));
  describeTargets();
  connect(remoteList_, &QComboBox::currentTextChanged, this, [this] {
    describeTargets();
    validate();
  });
  connect(branchList_, &QTreeWidget::itemChanged, this, [this] { validate(); });
}

QString PushMultipleBranchesWindowController::remote() const { return remoteList_->currentText(); }

QStringList PushMultipleBranchesWindowController::fullReferences() const {
  QStringList references;
  for (int row = 0; row < branchList_->topLevelItemCount(); ++row) {
    const QTreeWidgetItem* item = branchList_->topLevelItem(row);
    if (item->checkState(branchColumn) == Qt::Checked) references << item->data(branchColumn, Qt::UserRole).toString();
  }
  return references;
}

QString PushMultipleBranchesWindowController::jobName() const {
  QStringList names;
  for (int row = 0; row < branchList_->topLevelItemCount(); ++row) {
    const QTreeWidgetItem* item = branchList_->topLevelItem(row);
    if (item->checkState(branchColumn) == Qt::Checked) names << item->text(branchColumn);
  }
  // One branch reads as the single push's job does.
  if (names.size() == 1) return QStringLiteral("Push '%1' to '%2'").arg(names.first(), remote());
  return QStringLiteral("Push %1 branches to '%2'").arg(names.size()).arg(remote());
}

void PushMultipleBranchesWindowController::describeTargets() {
  const QString chosenRemote = remote();
  const QSignalBlocker blocker(branchList_);
  for (int row = 0; row < branchList_->topLevelItemCount(); ++row) {
    QTreeWidgetItem* item = branchList_->topLevelItem(row);
    const LocalBranchPtr& local = localBranches_[size_t(row)];
    RemoteBranchPtr target;
    for (const RemoteBranchPtr& branch : allRemoteBranches_) {
      if (branch->remote == chosenRemote && branch->name == local->name) target = branch;
    }
    QString text;
    if (chosenRemote.isEmpty()) text = QString();
    else if (!target) text = QStringLiteral("new branch");
    else if (target->sha == local->sha) text = QStringLiteral("up to date");
    else text = QStringLiteral("updates %1/%2").arg(chosenRemote, local->name);
    item->setText(targetColumn, text);
  }
}

void PushMultipleBranchesWindowController::validate(bool) {
  if (isOperationInProgress()) return;
  QString problem;
  if (remotes_.empty()) problem = QStringLiteral("This repository has no remote");
  else if (fullReferences().isEmpty()) problem = QStringLiteral("Check the branches to push");
  if (problem.isEmpty()) setStatus(Status::none);
  else setStatus(Status::warning, problem);
  submitButton()->setEnabled(problem.isEmpty());
}

void PushMultipleBranchesWindowController::submit() {
  if (!submitButton()->isEnabled()) return;
  endWithSuccess();
}
