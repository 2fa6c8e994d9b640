#pragma once
// "Apply Stash": the chosen entry back into the working tree, deleted afterwards when the
// user wants (remembered).
#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/GitModule.h"

class QCheckBox;

class ApplyStashController : public JelvSheetController {
  Q_OBJECT
 public:
  // `stash` is the name git takes ("stash@{1}"), `title` what the user knows it by.
  ApplyStashController(GitModule module, QString stash, const QString& title, QWidget* parent = nullptr);

  QCheckBox* deleteAfterApplyBox() const { return deleteAfterApply_; }
  void submit() override;

 private:
  GitModule module_;
  QString stash_;
  QCheckBox* deleteAfterApply_;
};
