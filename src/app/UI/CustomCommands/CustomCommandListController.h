#pragma once
// A list of custom commands to add to, edit, remove from and put in order; the
// preferences page holds the global ones. Every change is reported at once, so the
// owner saves what the user sees.
#include <QWidget>

#include "Models/CustomCommands/CustomCommand.h"

class QLabel;
class QPushButton;
class QTreeWidget;
class EditCustomCommandWindowController;

class CustomCommandListController : public QWidget {
  Q_OBJECT
 public:
  // `withStorage`: the commands of a repository, each stored locally or shared.
  explicit CustomCommandListController(bool withStorage, QWidget* parent = nullptr);

  void setCommands(CustomCommandList commands);
  const CustomCommandList& commands() const { return commands_; }

  QTreeWidget* list() const { return list_; }
  QPushButton* addButton() const { return add_; }
  QPushButton* editButton() const { return edit_; }
  QPushButton* removeButton() const { return remove_; }
  QPushButton* upButton() const { return up_; }
  QPushButton* downButton() const { return down_; }

  // Open the editor for a new command, or the selected one; the list changes when the
  // editor is accepted.
  EditCustomCommandWindowController* addCommand();
  EditCustomCommandWindowController* editSelected();
  // Asks first: the command's settings are lost.
  void removeSelected();
  void moveSelected(int offset);

 Q_SIGNALS:
  void changed(const CustomCommandList& commands);

 private:
  int selectedRow() const;
  void show(int selectRow);
  void commit(CustomCommandList commands, int selectRow);
  EditCustomCommandWindowController* openEditor(const CustomCommandPtr& command, int row);
  void updateButtons();

  const bool withStorage_;
  CustomCommandList commands_;
  QTreeWidget* list_;
  QLabel* empty_;
  QPushButton* add_;
  QPushButton* edit_;
  QPushButton* remove_;
  QPushButton* up_;
  QPushButton* down_;
};
