#pragma once
// Editing one custom command: where it appears (its target, and for a branch command the
// kinds of reference), its name, and what it does: a program, a URL, or a small dialog
// with up to two buttons, each with its own action. The variables of the chosen target
// are listed beside.
#include <QDialog>
#include <array>

#include "Models/CustomCommands/CustomCommand.h"

class CustomCommandActionEditor;
class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QStackedWidget;

class EditCustomCommandWindowController : public QDialog {
  Q_OBJECT
 public:
  // `withStorage`: a repository's command, stored in the Git directory or shared in the
  // work tree.
  EditCustomCommandWindowController(const CustomCommandPtr& command, bool withStorage, QWidget* parent = nullptr);

  // A new command of `target` with its default name and an empty program.
  static CustomCommandPtr newCommand(CustomCommand::Target target);
  static QString defaultName(CustomCommand::Target target);

  // The command as the fields stand.
  CustomCommandPtr command() const;

  // Stays open with the reason shown while the fields cannot be taken.
  void accept() override;

  QLineEdit* nameField() const { return name_; }
  QComboBox* targetBox() const { return target_; }
  QComboBox* kindBox() const { return kind_; }
  CustomCommandActionEditor* actionEditor() const { return action_; }
  QLabel* variablesLabel() const { return variables_; }
  QLabel* errorLabel() const { return error_; }

 private:
  enum Kind { program = 0, url = 1, dialog = 2 };
  struct ButtonRow {
    QLineEdit* title = nullptr;
    QLabel* summary = nullptr;
    CustomCommandActionPtr action;
  };

  CustomCommand::Target target() const;
  void targetChanged();
  void kindChanged();
  void editButtonAction(int index);
  std::optional<QString> problem() const;

  QLineEdit* name_;
  QComboBox* target_;
  QWidget* referenceKinds_;
  std::array<QCheckBox*, 3> referenceBoxes_{};
  QComboBox* storage_ = nullptr;
  QComboBox* kind_;
  QStackedWidget* pages_;
  CustomCommandActionEditor* action_;
  QLineEdit* dialogTitle_;
  QPlainTextEdit* dialogDescription_;
  std::array<ButtonRow, 2> buttons_;
  QLabel* variables_;
  QLabel* error_;
  CustomCommand::Target lastTarget_ = CustomCommand::Target::repository;
};
