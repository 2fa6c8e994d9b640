#pragma once
// "Clone": a URL and a destination folder; the clone runs while the sheet shows its
// progress and can be canceled. The new repository's path is the sheet's result.
#include "Controllers/Sheets/JelvSheetController.h"

class QComboBox;
class QLineEdit;
class QProgressBar;
class QTimer;

class CloneController : public JelvSheetController {
  Q_OBJECT
 public:
  explicit CloneController(QString url = {}, QWidget* parent = nullptr);

  QLineEdit* urlField() const { return url_; }
  QComboBox* destinationField() const { return destination_; }
  // The folder the repository was cloned into, once the sheet ended with success.
  const QString& clonedPath() const { return clonedPath_; }
  // The destination: the chosen folder and the name taken from the URL.
  QString destinationPath() const;

  void validate(bool force = false) override;
  void submit() override;

 private:
  void chooseFolder();

  QLineEdit* url_;
  QComboBox* destination_;
  QLineEdit* name_;
  QProgressBar* progress_;
  QTimer* poll_;
  bool nameEdited_ = false;
  QString clonedPath_;
};
