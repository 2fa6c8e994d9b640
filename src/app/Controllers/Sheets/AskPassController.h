#pragma once
// The password sheet: git's or ssh's prompt, one field (plain for a user name, hidden for
// a password or passphrase), and "remember" where the store can keep the answer.
#include <QStringList>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Services/AskPass/AskPassRequest.h"

class QCheckBox;
class QLineEdit;

class AskPassController : public JelvSheetController {
  Q_OBJECT
 public:
  enum class RequestMode { repositoryUsername, repositoryPassword, genericPassword };

  AskPassController(QStringList arguments, AskPassRequest request, QWidget* parent = nullptr);

  RequestMode requestMode() const { return requestMode_; }
  const AskPassRequest& request() const { return request_; }
  QString value() const;
  bool remember() const;

  QLineEdit* inputField() const { return input_; }
  QLineEdit* secureInputField() const { return secureInput_; }
  QCheckBox* rememberInKeychainCheckBox() const { return remember_; }

  void validate(bool force = false) override;

 private:
  QStringList arguments_;
  AskPassRequest request_;
  RequestMode requestMode_;
  QLineEdit* input_;
  QLineEdit* secureInput_;
  QCheckBox* remember_;
};
