#include "Controllers/Sheets/GitOperationSheetController.h"

#include <QPushButton>

GitOperationSheetController::GitOperationSheetController(QWidget* parent) : JelvSheetController(parent) {
  // Return belongs to the text area, so the visible button is not the default one.
  submitButton()->setDefault(false);
  submitButton()->setAutoDefault(false);
  auto* hidden = new QPushButton(this);
  hidden->setObjectName(QStringLiteral("submitShortcut"));
  hidden->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Return));
  hidden->setFixedSize(0, 0);
  hidden->setFocusPolicy(Qt::NoFocus);
  connect(hidden, &QPushButton::clicked, this, [this] {
    if (submitButton()->isEnabled()) submit();
  });
}
