#pragma once
// Editing what a custom command (or a button of its dialog) does: run a program, open a
// URL, or (a dialog's button only) close the dialog. The fields sit in a widget of their
// own so that the command editor shows the same fields inline.
#include <QDialog>
#include <QWidget>
#include <optional>

#include "Models/CustomCommands/CustomCommandAction.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QStackedWidget;

class CustomCommandActionEditor : public QWidget {
  Q_OBJECT
 public:
  // `withCancel`: a dialog's button may also just close the dialog.
  explicit CustomCommandActionEditor(bool withCancel, QWidget* parent = nullptr);

  void setAction(const CustomCommandActionPtr& action);
  // The action as the fields stand; null when the URL is empty.
  CustomCommandActionPtr action() const;
  // Why the fields cannot be taken: "Script path not found" for a program that is not
  // there ("$git" is always there; a bare name is looked up on PATH). Nothing when fine.
  std::optional<QString> problem() const;
  static std::optional<QString> problemOf(const CustomCommandActionPtr& action);

  // Fixes the kind and hides the choice (the command editor chooses it itself).
  void setType(CustomCommandAction::Type type, bool fixed);

  QComboBox* typeBox() const { return type_; }
  QLineEdit* pathField() const { return path_; }
  QLineEdit* parametersField() const { return parameters_; }
  QCheckBox* showOutputBox() const { return showOutput_; }
  QCheckBox* waitForExitBox() const { return waitForExit_; }
  QLineEdit* urlField() const { return url_; }

 Q_SIGNALS:
  void edited();

 private:
  CustomCommandAction::Type currentType() const;

  QComboBox* type_;
  QLabel* typeLabel_;
  QStackedWidget* pages_;
  QLineEdit* path_;
  QLineEdit* parameters_;
  QCheckBox* showOutput_;
  QCheckBox* waitForExit_;
  QLineEdit* url_;
};

class EditCustomCommandActionWindowController : public QDialog {
  Q_OBJECT
 public:
  EditCustomCommandActionWindowController(const CustomCommandActionPtr& action, QWidget* parent = nullptr);

  CustomCommandActionEditor* editor() const { return editor_; }
  QLabel* errorLabel() const { return error_; }
  CustomCommandActionPtr action() const { return editor_->action(); }

  // Stays open with the reason shown while the fields cannot be taken.
  void accept() override;

  // What an action does, in a few words, for the button rows of the command editor.
  static QString summary(const CustomCommandActionPtr& action);

 private:
  CustomCommandActionEditor* editor_;
  QLabel* error_;
};
