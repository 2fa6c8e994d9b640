#pragma once
// "Add files to .gitignore": a free-form pattern with a live list of what it would
// ignore, appended to the repository's .gitignore on submit.
#include <QTimer>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/GitModule.h"

class QLabel;
class QLineEdit;
class QListWidget;

class AddGitIgnorePatternController : public JelvSheetController {
  Q_OBJECT
 public:
  AddGitIgnorePatternController(GitModule module, const QString& initialPattern, QWidget* parent = nullptr);

  QLineEdit* patternField() const { return pattern_; }
  QListWidget* previewList() const { return preview_; }
  QLabel* previewLabel() const { return previewLabel_; }

  void validate(bool force = false) override;
  void submit() override;
  // The ignore rules decide which files are listed as changed.
  Subdomain changedSubdomains() const override { return Subdomain::repositoryStatus(); }

 Q_SIGNALS:
  // The preview of the pattern now in the field is on screen.
  void previewUpdated();

 private:
  void startPreview();

  GitModule module_;
  QLineEdit* pattern_;
  QLabel* previewLabel_;
  QListWidget* preview_;
  QTimer previewTimer_;
  int generation_ = 0;  // only the newest preview may fill the list
};
