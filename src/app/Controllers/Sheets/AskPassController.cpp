#include "Controllers/Sheets/AskPassController.h"

#include <QLabel>
#include <QVBoxLayout>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

AskPassController::AskPassController(QStringList arguments, AskPassRequest request, QWidget* parent)
    : JelvSheetController(parent), arguments_(std::move(arguments)), request_(std::move(request)) {
  setObjectName(QStringLiteral("askPassSheet"));
  setWindowTitle(QStringLiteral("Authentication"));
  switch (request_.kind) {
    case AskPassRequest::Kind::repositoryUsername: requestMode_ = RequestMode::repositoryUsername; break;
    case AskPassRequest::Kind::internetPassword:
    case AskPassRequest::Kind::sshPassphrase: requestMode_ = RequestMode::repositoryPassword; break;
    case AskPassRequest::Kind::genericPassword: requestMode_ = RequestMode::genericPassword; break;
  }
  messageLabel()->setText(arguments_.isEmpty() ? QStringLiteral("Password:") : arguments_.first().trimmed());
  if (request_.kind == AskPassRequest::Kind::sshPassphrase) {
    informativeLabel()->setText(QStringLiteral("The SSH key is protected by a passphrase."));
    informativeLabel()->show();
  } else if (!request_.url.isEmpty()) {
    informativeLabel()->setText(request_.url.toString(QUrl::RemoveUserInfo));
    informativeLabel()->show();
  }
  input_ = new QLineEdit(this);
  input_->setObjectName(QStringLiteral("askPassInput"));
  input_->setMinimumWidth(360);
  secureInput_ = new QLineEdit(this);
  secureInput_->setObjectName(QStringLiteral("askPassSecureInput"));
  secureInput_->setEchoMode(QLineEdit::Password);
  secureInput_->setMinimumWidth(360);
  const bool plain = requestMode_ == RequestMode::repositoryUsername;
  input_->setVisible(plain);
  secureInput_->setVisible(!plain);
  remember_ = new QCheckBox(QStringLiteral("Remember in the keyring"), this);
  remember_->setVisible(request_.kind == AskPassRequest::Kind::internetPassword || request_.kind == AskPassRequest::Kind::sshPassphrase);
  contentLayout()->addWidget(input_);
  contentLayout()->addWidget(secureInput_);
  contentLayout()->addWidget(remember_);
  submitButton()->setText(QStringLiteral("OK"));
  (plain ? input_ : secureInput_)->setFocus();
  connect(input_, &QLineEdit::textChanged, this, [this] { validate(); });
  connect(secureInput_, &QLineEdit::textChanged, this, [this] { validate(); });
}

QString AskPassController::value() const {
  return requestMode_ == RequestMode::repositoryUsername ? input_->text() : secureInput_->text();
}

bool AskPassController::remember() const { return !remember_->isHidden() && remember_->isChecked(); }

void AskPassController::validate(bool) {
  // An empty password is a valid answer; a user name is not.
  submitButton()->setEnabled(requestMode_ != RequestMode::repositoryUsername || !input_->text().trimmed().isEmpty());
}
