#pragma once
// The preferences window: General (source folder and its rescan, the Git instance with
// the versions found, appearance), Commit List, Diff (with the outside diff tool),
// Status Updates, Integration and the global Custom Commands. Every control writes its
// key through Preferences at once and posts the key's notification, so open views
// follow without a restart.
#include <QWidget>
#include <vector>

#include "Services/GitInstanceVersions.h"

class AppSettings;
class CustomCommandListController;
class PreferenceControls;
class QComboBox;
class QFontComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QTabWidget;

class PreferencesWindowController : public QWidget {
  Q_OBJECT

 public:
  explicit PreferencesWindowController(AppSettings& settings, QWidget* parent = nullptr);

  // The one window of the process: made on first use, then raised.
  static PreferencesWindowController* showWindow(AppSettings& settings);

  QTabWidget* tabs() const { return tabs_; }
  CustomCommandListController* customCommands() const { return customCommands_; }
  // Shows the stored values again; the Git instances are read anew in the background.
  void reload();
  void setSourceFolder(const QString& folder);
  void chooseCustomGitInstance();
  // Stores a git executable of the user's own and lists the instances again.
  void useCustomGitInstance(const QString& path);

 Q_SIGNALS:
  void gitInstancesLoaded();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* makeGeneralPage();
  QWidget* makeCommitListPage();
  QWidget* makeDiffPage();
  QWidget* makeStatusPage();
  // Whether links of the two schemes open in Jelv, and making them do.
  QWidget* makeIntegrationPage();
  // The jelv tool's link on the PATH: its state, Install and Uninstall.
  QWidget* makeCliToolRow(QWidget* page);
  // The global custom commands.
  QWidget* makeCustomCommandsPage();
  void loadGitInstances();
  void showGitInstances(const std::vector<GitInstanceVersions::Entry>& entries);
  void gitInstanceChosen(int index);
  void loadFont();
  // The outside diff tool's choices and custom fields, from the store.
  void loadDiffTool();
  void fontChanged();

  AppSettings& settings_;
  PreferenceControls* controls_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  CustomCommandListController* customCommands_ = nullptr;
  QLineEdit* sourceFolder_ = nullptr;
  QPushButton* rescanButton_ = nullptr;
  QLabel* rescanStatus_ = nullptr;
  QComboBox* gitInstance_ = nullptr;
  QLabel* gitStatus_ = nullptr;
  QFontComboBox* fontFamily_ = nullptr;
  QSpinBox* fontSize_ = nullptr;
  QComboBox* diffTool_ = nullptr;
  QLineEdit* diffToolPath_ = nullptr;
  QPushButton* diffToolBrowse_ = nullptr;
  QLineEdit* diffToolArguments_ = nullptr;
  std::vector<GitInstanceVersions::Entry> gitEntries_;
  int gitLoadGeneration_ = 0;
  bool loadingGit_ = false;
  bool loadingFont_ = false;
  bool loadingDiffTool_ = false;
};
