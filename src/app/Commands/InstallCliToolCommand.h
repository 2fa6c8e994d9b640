#pragma once
// Installs or removes the `jelv` tool's link on the PATH from the preferences: a
// replaced file is confirmed first, the elevated change runs off the main thread, and
// the outcome is shown.
#include <functional>

#include "Services/CliToolInstaller.h"

class QWidget;

struct InstallCliToolCommand {
  // The tool beside the application, linked as "/usr/local/bin/jelv".
  static CliToolInstaller installer();
  // `finished` runs on the main thread once the outcome is shown (not after a refusal).
  static void execute(QWidget* parent, bool install, std::function<void()> finished = {});
};
