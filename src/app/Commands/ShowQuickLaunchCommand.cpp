#include "Commands/ShowQuickLaunchCommand.h"

#include <QWidget>

#include "Controllers/QuickLaunch/QuickLaunchWindowController.h"
#include "UI/JelvMainWindow.h"

void ShowQuickLaunchCommand::execute(const CommandContext& context) {
  auto* window = qobject_cast<JelvMainWindow*>(context.window ? context.window->window() : nullptr);
  if (window) QuickLaunchWindowController::showOver(window);
}
