#pragma once
// The small dialog of a custom command: its title and description with the variables
// replaced, and up to two buttons. The first takes the place of the default button; a
// press closes the dialog and hands the button's action on.
#include <functional>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/CustomCommands/CustomCommand.h"
#include "Models/CustomCommands/CustomCommandEnvironment.h"

class CustomCommandUIWindowController : public JelvSheetController {
  Q_OBJECT
 public:
  using Run = std::function<void(const CustomCommandActionPtr&)>;

  CustomCommandUIWindowController(QString customCommandName, std::shared_ptr<const CustomCommandUI> customCommandUI,
                                  CustomCommandEnvironmentPtr env, Run run, QWidget* parent = nullptr);

  // Opens the dialog window-modal on `parent`'s window.
  static CustomCommandUIWindowController* present(QWidget* parent, const QString& customCommandName,
                                                  const std::shared_ptr<const CustomCommandUI>& customCommandUI,
                                                  const CustomCommandEnvironmentPtr& env, Run run);

 public Q_SLOTS:
  void submit() override;

 private:
  void press(const CustomCommandUI::Button& button);

  const QString customCommandName_;
  const std::shared_ptr<const CustomCommandUI> customCommandUI_;
  const CustomCommandEnvironmentPtr env_;
  const Run run_;
};
