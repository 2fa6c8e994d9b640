#pragma once
// What opens when the application starts, decided apart from the windows so that it
// can be checked against a preferences file.
//
// Saved windows come back first. Folders and URLs from the command line open on top of
// them. Only when neither gives a window does the "untitled" decision run: the welcome
// window while no source folder is chosen, else the tabs of an older version's
// "repositorySessions" once, else a repository-manager tab.
#include <QString>
#include <QStringList>
#include <vector>

#include "Models/WindowSession.h"

class Preferences;

struct UntitledFileDecision {
  enum class Kind { nothing, welcome, repositoryManager, importedTabs };
  Kind kind = Kind::nothing;
  QStringList repositoryPaths;  // importedTabs: one tab each, in order
  int selectedIndex = -1;       // importedTabs: the tab that was in front, if any

  bool operator==(const UntitledFileDecision&) const = default;
};

struct LaunchPlan {
  std::vector<WindowSession> restoredWindows;
  QStringList folders;  // command-line folders, one tab each
  QStringList urls;     // command-line URLs of the application's schemes
  bool openUntitled = false;
};

class ApplicationStartup {
 public:
  // Splits the command line (arguments without the program) and reads the saved windows.
  static LaunchPlan plan(const Preferences& preferences, const QStringList& arguments);

  // Folders given relative to the launch's folder made absolute, so that they mean the
  // same in the process they are handed to. URLs stay as they are.
  static QStringList absoluteArguments(const QStringList& arguments, const QString& workingDirectory);

  // Sets "importedOldTabs" when it takes the old tabs, so the import runs once.
  // An application that is not active opens nothing.
  static UntitledFileDecision applicationShouldOpenUntitledFile(Preferences& preferences, bool applicationActive = true);

  static void saveWindows(Preferences& preferences, const std::vector<WindowSession>& windows);
  static std::vector<WindowSession> savedWindows(const Preferences& preferences);
};
