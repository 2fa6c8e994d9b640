#pragma once
// Asks the user what git or ssh asks for, in a sheet on the front repository window
// (or any window), and sends the answer to the waiting helper through the bridge.
#include "Services/AskPass/AskPassBridge.h"

class QWidget;

class ShowAskPassSheetCommand {
 public:
  explicit ShowAskPassSheetCommand(AskPassBridge& bridge) : bridge_(bridge) {}

  // Makes this command the bridge's way of asking.
  void install();
  // Opens the sheet for the request on `window`; without a window it refuses at once.
  void execute(QWidget* window, const AskPassRequestArgs& args, const AskPassRequest& request);

  // The window a sheet opens on: the active one, else any visible top-level window.
  static QWidget* frontWindow();

 private:
  AskPassBridge& bridge_;
};
