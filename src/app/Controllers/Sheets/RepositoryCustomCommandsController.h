#pragma once
// The repository's own custom commands, each stored in the Git directory (only for this
// clone) or in the work tree (shared: committed with the repository). Saving writes both
// files; a side left without commands loses its file.
#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/CustomCommands/CustomCommand.h"
#include "Models/GitModule.h"

class CustomCommandListController;

class RepositoryCustomCommandsController : public JelvSheetController {
  Q_OBJECT
 public:
  RepositoryCustomCommandsController(GitModule module, CustomCommandList commands, QWidget* parent = nullptr);

  CustomCommandListController* list() const { return list_; }
  // Something differs from the files as they were read.
  bool saveRequired() const;

  void validate(bool force = false) override;
  void submit() override;

 private:
  const GitModule module_;
  const CustomCommandList loaded_;
  CustomCommandListController* list_;
};
