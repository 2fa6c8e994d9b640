#include "Controllers/Sheets/ApplyStashController.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Git/Commands/Stash/StashGitCommand.h"
#include "Services/Preferences.h"

ApplyStashController::ApplyStashController(GitModule module, QString stash, const QString& title, QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)), stash_(std::move(stash)) {
  setObjectName(QStringLiteral("applyStashSheet"));
  setWindowTitle(QStringLiteral("Apply Stash"));
  messageLabel()->setText(QStringLiteral("Apply stash '%1'").arg(title));
  informativeLabel()->setText(QStringLiteral("Its changes are applied to the working tree."));
  informativeLabel()->show();
  deleteAfterApply_ = new QCheckBox(QStringLiteral("Delete the stash after applying it"), this);
  deleteAfterApply_->setChecked(Preferences::shared().deleteStashAfterApply());
  contentLayout()->addWidget(deleteAfterApply_);
  submitButton()->setText(QStringLiteral("Apply"));
  setMinimumWidth(420);
  validate();
}

void ApplyStashController::submit() {
  const bool pop = deleteAfterApply_->isChecked();
  Preferences::shared().setDeleteStashAfterApply(pop);
  const GitModule module = module_;
  const QString stash = stash_;
  // git keeps the entry when the changes conflict, so nothing is lost by popping.
  runSheetJob(QStringLiteral("Apply stash"), QStringLiteral("Applying stash..."),
              [module, stash, pop](JobProgress& progress) { return StashGitCommand::apply(module, stash, pop, &progress); });
}
