#include "UI/CustomCommands/CustomCommandUIWindowController.h"

#include <QLabel>
#include <QPushButton>

CustomCommandUIWindowController::CustomCommandUIWindowController(QString customCommandName,
                                                                 std::shared_ptr<const CustomCommandUI> customCommandUI,
                                                                 CustomCommandEnvironmentPtr env, Run run, QWidget* parent)
    : JelvSheetController(parent), customCommandName_(std::move(customCommandName)), customCommandUI_(std::move(customCommandUI)),
      env_(std::move(env)), run_(std::move(run)) {
  setObjectName(QStringLiteral("customCommandDialog"));
  setWindowTitle(customCommandName_);
  messageLabel()->setText(env_->replace(customCommandUI_->title, false));
  const QString description = env_->replace(customCommandUI_->description, false);
  informativeLabel()->setText(description);
  informativeLabel()->setVisible(!description.isEmpty());

  const auto& buttons = customCommandUI_->buttons;
  if (buttons.empty()) {
    submitButton()->hide();
    return;
  }
  submitButton()->setText(env_->replace(buttons.front().title, false));
  if (buttons.size() > 1) {
    // The second button stands beside the default one, where the sheet's Cancel was.
    cancelButton()->setText(buttons[1].title);
    disconnect(cancelButton(), nullptr, this, nullptr);
    connect(cancelButton(), &QPushButton::clicked, this, [this] { press(customCommandUI_->buttons[1]); });
  }
}

void CustomCommandUIWindowController::submit() {
  if (customCommandUI_->buttons.empty()) {
    endWithCancel();
    return;
  }
  press(customCommandUI_->buttons.front());
}

void CustomCommandUIWindowController::press(const CustomCommandUI::Button& button) {
  const CustomCommandActionPtr action = button.action;
  const Run run = run_;
  endWithSuccess();
  if (run) run(action);
}

CustomCommandUIWindowController* CustomCommandUIWindowController::present(QWidget* parent, const QString& customCommandName,
                                                                          const std::shared_ptr<const CustomCommandUI>& customCommandUI,
                                                                          const CustomCommandEnvironmentPtr& env, Run run) {
  if (!customCommandUI || !env) return nullptr;
  auto* sheet = new CustomCommandUIWindowController(customCommandName, customCommandUI, env, std::move(run), parent);
  JelvSheetController::showSheet(parent, sheet, [](const JelvSheetResult&) {});
  return sheet;
}
