#pragma once
// What a custom command's program printed: "<name> completed" (or " failed") with the
// program's output and error output below, in a window of its own.
#include <QDialog>

#include "Git/Process/GitResponse.h"

class QPlainTextEdit;

class CustomCommandResultController : public QDialog {
  Q_OBJECT
 public:
  CustomCommandResultController(const QString& customCommandName, const QString& actionPath, const ShellStringResponse& response,
                                QWidget* parent = nullptr);

  static CustomCommandResultController* present(QWidget* parent, const QString& customCommandName, const QString& actionPath,
                                                const ShellStringResponse& response);

  QPlainTextEdit* outputView() const { return output_; }

 private:
  QPlainTextEdit* output_ = nullptr;
};
