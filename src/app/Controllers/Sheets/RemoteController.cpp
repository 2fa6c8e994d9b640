#include "Controllers/Sheets/RemoteController.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "Models/ReferenceNameCheck.h"

RemoteController::RemoteController(GitModule module, std::optional<RemoteGitCommand::Edit> editing, QStringList otherRemotes,
                                   QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)), editing_(std::move(editing)), otherRemotes_(std::move(otherRemotes)) {
  setObjectName(editing_ ? QStringLiteral("editRemoteSheet") : QStringLiteral("addRemoteSheet"));
  setWindowTitle(editing_ ? QStringLiteral("Edit Remote") : QStringLiteral("Add Remote"));
  messageLabel()->setText(editing_ ? QStringLiteral("Edit remote '%1'").arg(editing_->name) : QStringLiteral("Add a remote"));
  name_ = new QLineEdit(this);
  name_->setPlaceholderText(QStringLiteral("origin"));
  url_ = new QLineEdit(this);
  url_->setPlaceholderText(QStringLiteral("https://host/owner/repository.git"));
  url_->setMinimumWidth(400);
  noImplicitFetch_ = new QCheckBox(QStringLiteral("Leave out of the automatic fetch"), this);
  noImplicitFetch_->setToolTip(QStringLiteral("Fetched only when you ask for it"));
  if (editing_) {
    name_->setText(editing_->name);
    url_->setText(editing_->url);
    noImplicitFetch_->setChecked(editing_->disableImplicitFetch);
  }
  auto* form = new QFormLayout;
  form->addRow(QStringLiteral("Name:"), name_);
  form->addRow(QStringLiteral("URL:"), url_);
  form->addRow(QString(), noImplicitFetch_);
  contentLayout()->addLayout(form);
  submitButton()->setText(editing_ ? QStringLiteral("Save") : QStringLiteral("Add Remote"));
  connect(name_, &QLineEdit::textChanged, this, [this] { validate(); });
  connect(url_, &QLineEdit::textChanged, this, [this] { validate(); });
  validate();
}

RemoteGitCommand::Edit RemoteController::values() const {
  return {name_->text().trimmed(), url_->text().trimmed(), noImplicitFetch_->isChecked()};
}

void RemoteController::validate(bool) {
  if (isOperationInProgress()) return;
  const RemoteGitCommand::Edit now = values();
  std::optional<QString> problem;
  if (!now.name.isEmpty()) problem = ReferenceNameCheck::problem(now.name);
  if (!problem && !now.name.isEmpty()) problem = ReferenceNameCheck::clash(now.name, otherRemotes_, QStringLiteral("Remote"));
  if (!problem && editing_ && now.name != editing_->name) {
    problem = QStringLiteral("Renaming moves the remote's branches; others who track them must follow");
    setStatus(Status::warning, *problem);
    problem.reset();  // a warning only
  } else if (problem) {
    setStatus(Status::warning, *problem);
  } else {
    setStatus(Status::none);
  }
  submitButton()->setEnabled(!now.name.isEmpty() && !now.url.isEmpty() && !problem);
}

void RemoteController::submit() {
  if (!submitButton()->isEnabled()) return;
  const GitModule module = module_;
  const RemoteGitCommand::Edit after = values();
  if (!editing_) {
    runSheetJob(QStringLiteral("Add remote '%1'").arg(after.name), QStringLiteral("Adding remote..."),
                [module, after](JobProgress& progress) -> GitVoidResult {
                  if (GitVoidResult added = RemoteGitCommand::add(module, after.name, after.url, &progress); !added) return added;
                  if (!after.disableImplicitFetch) return Unit{};
                  return RemoteGitCommand::setImplicitFetchDisabled(module, after.name, true, &progress);
                });
    return;
  }
  const RemoteGitCommand::Edit before = *editing_;
  runSheetJob(QStringLiteral("Edit remote '%1'").arg(before.name), QStringLiteral("Saving..."),
              [module, before, after](JobProgress& progress) { return RemoteGitCommand::edit(module, before, after, &progress); });
}
