#include "Controllers/Sheets/CreateTagController.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "Git/Commands/Repository/TagGitCommand.h"
#include "Models/ReferenceNameCheck.h"

CreateTagController::CreateTagController(GitModule module, QString sha, const QString& commitTitle, QStringList existingTags,
                                         QString signingKey, QWidget* parent)
    : GitOperationSheetController(parent), module_(std::move(module)), sha_(std::move(sha)), existingTags_(std::move(existingTags)),
      signingKey_(std::move(signingKey)) {
  setObjectName(QStringLiteral("createTagSheet"));
  setWindowTitle(QStringLiteral("New Tag"));
  messageLabel()->setText(QStringLiteral("Create a new tag"));
  informativeLabel()->setText(QStringLiteral("At %1").arg(commitTitle));
  informativeLabel()->show();
  name_ = new QLineEdit(this);
  name_->setPlaceholderText(QStringLiteral("Tag name"));
  name_->setMinimumWidth(420);
  message_ = new QPlainTextEdit(this);
  message_->setPlaceholderText(QStringLiteral("Message"));
  message_->setTabChangesFocus(true);
  message_->setFixedHeight(110);
  contentLayout()->addWidget(name_);
  contentLayout()->addWidget(message_);
  if (!signingKey_.isEmpty()) {
    sign_ = new QCheckBox(QStringLiteral("Sign the tag with key %1").arg(signingKey_), this);
    sign_->setChecked(true);
    contentLayout()->addWidget(sign_);
  }
  auto* hint = new QLabel(QStringLiteral("Ctrl+Return creates the tag"), this);
  hint->setForegroundRole(QPalette::PlaceholderText);
  contentLayout()->addWidget(hint);
  submitButton()->setText(QStringLiteral("Create Tag"));
  connect(name_, &QLineEdit::textChanged, this, [this] { validate(); });
  validate();
}

void CreateTagController::validate(bool) {
  if (isOperationInProgress()) return;
  const QString name = name_->text().trimmed();
  std::optional<QString> problem = name.isEmpty() ? std::nullopt : ReferenceNameCheck::problem(name);
  if (!problem && !name.isEmpty()) problem = ReferenceNameCheck::clash(name, existingTags_, QStringLiteral("Tag"));
  if (problem) {
    setStatus(Status::warning, *problem);
  } else {
    setStatus(Status::none);
  }
  submitButton()->setEnabled(!name.isEmpty() && !problem);
}

void CreateTagController::submit() {
  const QString name = name_->text().trimmed();
  if (name.isEmpty() || !submitButton()->isEnabled()) return;
  const GitModule module = module_;
  const QString sha = sha_;
  const QString message = message_->toPlainText();
  const QString key = sign_ && sign_->isChecked() ? signingKey_ : QString();
  runSheetJob(QStringLiteral("Create tag '%1'").arg(name), QStringLiteral("Creating tag..."),
              [module, name, sha, message, key](JobProgress& progress) { return TagGitCommand::create(module, name, sha, message, key, &progress); });
}
