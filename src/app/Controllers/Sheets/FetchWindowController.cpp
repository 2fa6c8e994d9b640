#include "Controllers/Sheets/FetchWindowController.h"

#include <QLabel>
#include <QVBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QPushButton>

#include "Services/Preferences.h"

FetchWindowController::FetchWindowController(std::vector<Remote> remotes, QString remote, QWidget* parent)
    : JelvSheetController(parent), remotes_(std::move(remotes)) {
  setObjectName(QStringLiteral("fetchSheet"));
  setWindowTitle(QStringLiteral("Fetch"));
  messageLabel()->setText(QStringLiteral("Fetch from remote repositories"));
  remoteList_ = new QComboBox(this);
  remoteList_->setMinimumWidth(320);
  for (const Remote& r : remotes_) remoteList_->addItem(r.name);
  if (const int index = remoteList_->findText(remote); index >= 0) remoteList_->setCurrentIndex(index);
  auto& preferences = Preferences::shared();
  allRemotes_ = new QCheckBox(QStringLiteral("Fetch from all remotes"), this);
  allRemotes_->setChecked(preferences.fetchSheetFetchAllRemotes());
  prune_ = new QCheckBox(QStringLiteral("Prune tracking branches no longer present on remote(s)"), this);
  prune_->setChecked(preferences.fetchSheetPrune());
  tags_ = new QCheckBox(QStringLiteral("Fetch all tags"), this);
  tags_->setChecked(preferences.fetchSheetFetchAllTags());
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("Remote:"), remoteList_);
  contentLayout()->addLayout(form);
  contentLayout()->addWidget(allRemotes_);
  contentLayout()->addWidget(prune_);
  contentLayout()->addWidget(tags_);
  submitButton()->setText(QStringLiteral("Fetch"));
  if (remotes_.empty()) {
    informativeLabel()->setText(QStringLiteral("This repository has no remote. Add one in the repository settings."));
    informativeLabel()->show();
  }
  connect(allRemotes_, &QCheckBox::toggled, this, [this] { validate(); });
}

FetchWindowController::Values FetchWindowController::values() const {
  Values v;
  v.allRemotes = allRemotes_->isChecked();
  v.remote = v.allRemotes ? QString() : remoteList_->currentText();
  v.prune = prune_->isChecked();
  v.tags = tags_->isChecked();
  return v;
}

void FetchWindowController::validate(bool) {
  if (isOperationInProgress()) return;
  remoteList_->setEnabled(!allRemotes_->isChecked() && !remotes_.empty());
  submitButton()->setEnabled(!remotes_.empty());
}

void FetchWindowController::submit() {
  if (!submitButton()->isEnabled()) return;
  const Values v = values();
  auto& preferences = Preferences::shared();
  preferences.setFetchSheetFetchAllRemotes(v.allRemotes);
  preferences.setFetchSheetPrune(v.prune);
  preferences.setFetchSheetFetchAllTags(v.tags);
  // The job runs on without the sheet; the tab shows its progress and any failure.
  endWithSuccess();
}
