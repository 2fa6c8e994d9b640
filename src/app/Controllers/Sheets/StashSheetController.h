#pragma once
// "Stash": a message for the local changes put aside, in three forms: all changes
// (optionally with new files), the chosen files only, or a snapshot that leaves the
// working tree as it is.
#include <QStringList>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/GitModule.h"

class QCheckBox;
class QLineEdit;

class StashSheetController : public JelvSheetController {
  Q_OBJECT
 public:
  enum class Mode { save, paths, snapshot };

  // `paths` are the chosen files of the paths mode.
  StashSheetController(GitModule module, Mode mode, QStringList paths = {}, QWidget* parent = nullptr);

  QLineEdit* messageField() const { return message_; }
  // Present in the save mode only.
  QCheckBox* stageNewFilesBox() const { return stageNewFiles_; }

  void validate(bool force = false) override;
  void submit() override;

 private:
  GitModule module_;
  Mode mode_;
  QStringList paths_;
  QLineEdit* message_;
  QCheckBox* stageNewFiles_ = nullptr;
};
