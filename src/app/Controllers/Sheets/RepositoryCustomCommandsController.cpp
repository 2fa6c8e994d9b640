#include "Controllers/Sheets/RepositoryCustomCommandsController.h"

#include <QFileInfo>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "Services/CustomCommandManager.h"
#include "UI/CustomCommands/CustomCommandListController.h"

RepositoryCustomCommandsController::RepositoryCustomCommandsController(GitModule module, CustomCommandList commands, QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)), loaded_(std::move(commands)) {
  setObjectName(QStringLiteral("repositoryCustomCommandsSheet"));
  setWindowTitle(QStringLiteral("Custom Commands"));
  messageLabel()->setText(tr("Custom commands of '%1'").arg(QFileInfo(module_.repositoryPath).fileName()));
  informativeLabel()->setText(tr("Shared commands are written to .jelv/custom-commands.json in the work tree, to be committed "
                                 "for everyone who clones the repository; the others to .git/jelv/custom-commands.json, for "
                                 "this clone only. Your own commands for every repository are in the preferences."));
  informativeLabel()->show();
  list_ = new CustomCommandListController(true, this);
  list_->setCommands(loaded_);
  list_->setMinimumSize(620, 260);
  contentLayout()->addWidget(list_);
  submitButton()->setText(tr("Save"));
  connect(list_, &CustomCommandListController::changed, this, [this] { validate(); });
}

bool RepositoryCustomCommandsController::saveRequired() const {
  const CustomCommandList& now = list_->commands();
  if (now.size() != loaded_.size()) return true;
  for (size_t i = 0; i < now.size(); ++i) {
    if (!(*now[i] == *loaded_[i])) return true;
  }
  return false;
}

void RepositoryCustomCommandsController::validate(bool) { submitButton()->setEnabled(saveRequired()); }

void RepositoryCustomCommandsController::submit() {
  if (!saveRequired()) {
    endWithCancel();
    return;
  }
  const CustomCommandList commands = list_->commands();
  const GitModule module = module_;
  runSheetJob(QStringLiteral("Save custom commands"), tr("Saving…"), [commands, module](JobProgress&) -> GitVoidResult {
    CustomCommandManager::saveRepositoryCommands(commands, module);
    return Unit{};
  });
}
