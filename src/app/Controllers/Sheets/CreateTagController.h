#pragma once
// "New Tag": an annotated tag at a commit, with a message, signed when the repository
// signs its commits.
#include <QStringList>

#include "Controllers/Sheets/GitOperationSheetController.h"
#include "Models/GitModule.h"

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;

class CreateTagController : public GitOperationSheetController {
  Q_OBJECT
 public:
  // `signingKey` is empty when the repository does not sign.
  CreateTagController(GitModule module, QString sha, const QString& commitTitle, QStringList existingTags, QString signingKey,
                      QWidget* parent = nullptr);

  QLineEdit* nameField() const { return name_; }
  QPlainTextEdit* messageField() const { return message_; }
  QCheckBox* signBox() const { return sign_; }

  void validate(bool force = false) override;
  void submit() override;

 private:
  GitModule module_;
  QString sha_;
  QStringList existingTags_;
  QString signingKey_;
  QLineEdit* name_;
  QPlainTextEdit* message_;
  QCheckBox* sign_ = nullptr;
};
