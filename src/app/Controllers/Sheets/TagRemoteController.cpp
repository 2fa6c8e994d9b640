#include "Controllers/Sheets/TagRemoteController.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Git/Commands/Remotes/PushGitCommand.h"
#include "Git/Commands/Repository/TagGitCommand.h"

TagRemoteController::TagRemoteController(GitModule module, Mode mode, QString tagName, QString fullReference, QStringList remotes,
                                         QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)), mode_(mode), tagName_(std::move(tagName)),
      fullReference_(std::move(fullReference)) {
  remote_ = new QComboBox(this);
  remote_->addItems(remotes);
  remote_->setMinimumWidth(260);
  auto* form = new QFormLayout;
  if (mode_ == Mode::push) {
    setObjectName(QStringLiteral("pushTagSheet"));
    setWindowTitle(QStringLiteral("Push Tag"));
    messageLabel()->setText(QStringLiteral("Push tag '%1'").arg(tagName_));
    form->addRow(QStringLiteral("To remote:"), remote_);
    submitButton()->setText(QStringLiteral("Push"));
  } else if (mode_ == Mode::removeOnRemote) {
    setObjectName(QStringLiteral("deleteRemoteTagSheet"));
    setWindowTitle(QStringLiteral("Delete Tag on Remote"));
    messageLabel()->setText(QStringLiteral("Delete tag '%1' on a remote").arg(tagName_));
    informativeLabel()->setText(QStringLiteral("Everyone who fetches from the remote loses the tag; yours stays."));
    informativeLabel()->show();
    form->addRow(QStringLiteral("On remote:"), remote_);
    submitButton()->setText(QStringLiteral("Delete on Remote"));
  } else {
    setObjectName(QStringLiteral("deleteTagSheet"));
    setWindowTitle(QStringLiteral("Delete Tag"));
    messageLabel()->setText(QStringLiteral("Delete tag '%1'").arg(tagName_));
    informativeLabel()->setText(QStringLiteral("The tag is removed from this repository; its commit stays."));
    informativeLabel()->show();
    onRemote_ = new QCheckBox(QStringLiteral("Delete it on the remote too:"), this);
    onRemote_->setEnabled(!remotes.isEmpty());
    form->addRow(onRemote_, remote_);
    remote_->setEnabled(false);
    connect(onRemote_, &QCheckBox::toggled, remote_, &QWidget::setEnabled);
    submitButton()->setText(QStringLiteral("Delete"));
  }
  contentLayout()->addLayout(form);
  validate();
}

void TagRemoteController::validate(bool) {
  if (isOperationInProgress()) return;
  submitButton()->setEnabled(mode_ == Mode::remove || remote_->count() > 0);
  if (mode_ != Mode::remove && remote_->count() == 0) setStatus(Status::warning, QStringLiteral("The repository has no remote"));
}

void TagRemoteController::submit() {
  if (!submitButton()->isEnabled()) return;
  const GitModule module = module_;
  const QString remote = remote_->currentText();
  const QString name = tagName_;
  const QString reference = fullReference_;
  if (mode_ == Mode::removeOnRemote) {
    runSheetJob(QStringLiteral("Delete tag '%1' on '%2'").arg(name, remote), QStringLiteral("Deleting on remote..."),
                [module, remote, reference](JobProgress& progress) { return PushGitCommand::deleteReference(module, remote, reference, progress); });
    return;
  }
  if (mode_ == Mode::push) {
    runSheetJob(QStringLiteral("Push tag '%1'").arg(name), QStringLiteral("Pushing..."), [module, remote, reference](JobProgress& progress) {
      return PushGitCommand::pushReference(module, remote, reference, progress);
    });
    return;
  }
  const bool onRemote = onRemote_->isChecked() && !remote.isEmpty();
  runSheetJob(QStringLiteral("Delete tag '%1'").arg(name), QStringLiteral("Deleting tag..."),
              [module, remote, name, reference, onRemote](JobProgress& progress) -> GitVoidResult {
                // The remote first: when it cannot be reached the local tag is still there to retry with.
                if (onRemote) {
                  if (GitVoidResult result = PushGitCommand::deleteReference(module, remote, reference, progress); !result) return result;
                }
                return TagGitCommand::remove(module, name, &progress);
              });
}
