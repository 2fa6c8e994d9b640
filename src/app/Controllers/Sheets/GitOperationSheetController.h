#pragma once
#include "Controllers/Sheets/JelvSheetController.h"

// A sheet with a text area: Return stays in the text, Ctrl+Return submits.
class GitOperationSheetController : public JelvSheetController {
  Q_OBJECT
 public:
  explicit GitOperationSheetController(QWidget* parent = nullptr);
};
