#include "Controllers/Sheets/StashSheetController.h"

#include <QCheckBox>
#include <QDateTime>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

#include "Git/Commands/Stash/StashGitCommand.h"
#include "Services/Preferences.h"

StashSheetController::StashSheetController(GitModule module, Mode mode, QStringList paths, QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)), mode_(mode), paths_(std::move(paths)) {
  setObjectName(QStringLiteral("stashSheet"));
  message_ = new QLineEdit(this);
  message_->setObjectName(QStringLiteral("stashMessage"));
  message_->setMinimumWidth(400);
  message_->setPlaceholderText(QStringLiteral("Message (optional)"));
  switch (mode_) {
    case Mode::save:
      setWindowTitle(QStringLiteral("Stash"));
      messageLabel()->setText(QStringLiteral("Stash local changes"));
      informativeLabel()->setText(QStringLiteral("Your changes are put aside and the working tree is left clean."));
      break;
    case Mode::paths:
      setWindowTitle(QStringLiteral("Stash Selected Files"));
      messageLabel()->setText(paths_.size() == 1 ? QStringLiteral("Stash the changes of '%1'").arg(paths_.front())
                                                 : QStringLiteral("Stash the changes of %1 files").arg(paths_.size()));
      informativeLabel()->setText(QStringLiteral("The other files keep their changes."));
      break;
    case Mode::snapshot:
      setWindowTitle(QStringLiteral("Save Snapshot"));
      messageLabel()->setText(QStringLiteral("Save a snapshot of the local changes"));
      informativeLabel()->setText(QStringLiteral("The changes go onto the stash list and stay in the working tree as they are."));
      // A snapshot is found again by when it was taken.
      message_->setText(QStringLiteral("Snapshot %1").arg(QLocale().toString(QDateTime::currentDateTime(), QLocale::ShortFormat)));
      break;
  }
  informativeLabel()->show();
  contentLayout()->addWidget(message_);
  if (mode_ == Mode::save) {
    stageNewFiles_ = new QCheckBox(QStringLiteral("Stage new files"), this);
    stageNewFiles_->setToolTip(QStringLiteral("Untracked files are stashed with the rest instead of staying behind"));
    stageNewFiles_->setChecked(Preferences::shared().saveStashSheetStageNewFiles());
    contentLayout()->addWidget(stageNewFiles_);
  }
  submitButton()->setText(mode_ == Mode::snapshot ? QStringLiteral("Save Snapshot") : QStringLiteral("Stash"));
  validate();
}

void StashSheetController::validate(bool) {
  if (isOperationInProgress()) return;
  submitButton()->setEnabled(mode_ != Mode::paths || !paths_.isEmpty());
}

void StashSheetController::submit() {
  if (!submitButton()->isEnabled()) return;
  const QString message = message_->text().trimmed();
  const GitModule module = module_;
  switch (mode_) {
    case Mode::save: {
      const bool stageNewFiles = stageNewFiles_->isChecked();
      Preferences::shared().setSaveStashSheetStageNewFiles(stageNewFiles);
      runSheetJob(QStringLiteral("Stash"), QStringLiteral("Stashing..."), [module, message, stageNewFiles](JobProgress& progress) {
        return StashGitCommand::save(module, message, stageNewFiles, &progress);
      });
      break;
    }
    case Mode::paths: {
      const QStringList paths = paths_;
      runSheetJob(QStringLiteral("Stash %1 files").arg(paths.size()), QStringLiteral("Staging %1 files...").arg(paths.size()),
                  [module, message, paths](JobProgress& progress) { return StashGitCommand::savePaths(module, message, paths, &progress); });
      break;
    }
    case Mode::snapshot:
      runSheetJob(QStringLiteral("Save snapshot"), QStringLiteral("Saving snapshot..."),
                  [module, message](JobProgress& progress) { return StashGitCommand::snapshot(module, message, &progress); });
      break;
  }
}
