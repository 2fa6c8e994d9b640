#include "Controllers/Sheets/CreateBranchController.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "Git/Commands/Repository/BranchGitCommand.h"
#include "Git/Commands/Repository/CheckoutGitCommand.h"
#include "Models/ReferenceNameCheck.h"
#include "Services/Preferences.h"

CreateBranchController::CreateBranchController(GitModule module, QString startPoint, const QString& startTitle,
                                               QStringList localBranches, QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)), startPoint_(std::move(startPoint)), localBranches_(std::move(localBranches)) {
  setObjectName(QStringLiteral("createBranchSheet"));
  setWindowTitle(QStringLiteral("New Branch"));
  messageLabel()->setText(QStringLiteral("Create a new branch"));
  informativeLabel()->setText(QStringLiteral("Starts at %1").arg(startTitle));
  informativeLabel()->show();
  name_ = new QLineEdit(this);
  name_->setPlaceholderText(QStringLiteral("Branch name"));
  name_->setMinimumWidth(380);
  checkout_ = new QCheckBox(QStringLiteral("Check out the new branch"), this);
  checkout_->setChecked(Preferences::shared().createBranchSheetCheckout());
  contentLayout()->addWidget(name_);
  contentLayout()->addWidget(checkout_);
  submitButton()->setText(QStringLiteral("Create Branch"));
  connect(name_, &QLineEdit::textChanged, this, [this] { validate(); });
}

void CreateBranchController::validate(bool) {
  if (isOperationInProgress()) return;
  const QString name = name_->text().trimmed();
  std::optional<QString> problem = name.isEmpty() ? std::nullopt : ReferenceNameCheck::problem(name);
  if (!problem && !name.isEmpty()) problem = ReferenceNameCheck::clash(name, localBranches_);
  if (problem) {
    setStatus(Status::warning, *problem);
  } else {
    setStatus(Status::none);
  }
  submitButton()->setEnabled(!name.isEmpty() && !problem);
}

void CreateBranchController::submit() {
  const QString name = name_->text().trimmed();
  if (name.isEmpty() || !submitButton()->isEnabled()) return;
  const bool checkout = checkout_->isChecked();
  auto& preferences = Preferences::shared();
  if (!preferences.createBranchSheetCheckoutDontRemember()) preferences.setCreateBranchSheetCheckout(checkout);
  const GitModule module = module_;
  const QString start = startPoint_;
  runSheetJob(QStringLiteral("Create branch '%1'").arg(name), QStringLiteral("Creating branch…"),
              [module, name, start, checkout](JobProgress& progress) {
                return checkout ? CheckoutGitCommand::newBranch(module, name, start, &progress)
                                : BranchGitCommand::create(module, name, start, &progress);
              });
}
