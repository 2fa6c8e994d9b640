#pragma once
// "New Branch": a name, the commit it starts at, and whether to check it out.
#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/GitModule.h"

class QCheckBox;
class QLineEdit;

class CreateBranchController : public JelvSheetController {
  Q_OBJECT
 public:
  // `startPoint` is a sha or a reference; `startTitle` says which commit it is.
  CreateBranchController(GitModule module, QString startPoint, const QString& startTitle, QStringList localBranches,
                         QWidget* parent = nullptr);

  QLineEdit* nameField() const { return name_; }
  QCheckBox* checkoutBox() const { return checkout_; }

  void validate(bool force = false) override;
  void submit() override;

 private:
  GitModule module_;
  QString startPoint_;
  QStringList localBranches_;
  QLineEdit* name_;
  QCheckBox* checkout_;
};
