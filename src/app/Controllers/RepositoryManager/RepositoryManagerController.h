#pragma once
// The repository manager tab: the registry as a tree of categories and repositories,
// with the recent ones below, and a details pane for the selected repository. It adds
// repositories by folder picker (or folders dropped from the file manager), runs the
// rescan of the source folder, and files, renames, tags and removes entries. Removing
// only forgets a repository: nothing on disk is touched.
//
// The host shows it in a tab and opens a repository on openRepositoryRequested.
#include <QPointer>
#include <QWidget>

#include "Models/RepositoryManager/RepositoryManagerDrop.h"

class AppSettings;
class QLabel;
class QMenu;
class QMessageBox;
class QProgressBar;
class QPushButton;
class QTextBrowser;
class QToolButton;
class QTreeWidgetItem;
class RepositoryManagerTreeWidget;

class RepositoryManagerController : public QWidget {
  Q_OBJECT

 public:
  explicit RepositoryManagerController(AppSettings& settings, QWidget* parent = nullptr);

  RepositoryManagerTreeWidget* tree() const { return tree_; }

  // Reads the registry again and rebuilds the tree. Runs on "repositoryManagerDataUpdated".
  void reload();
  // Validates each path off the main thread and adds the good ones, with the source
  // folder as the root of their categories; refused paths are reported in one alert.
  void addRepositories(const QStringList& paths);
  // Asks for a folder and adds it.
  void chooseRepositoryToAdd();
  // A new category inside the selected one (or at the top level), ready to be named.
  void createCategory();
  // Removes the entry after the user confirms; a category lifts its content one level.
  void confirmDelete(const RepositoryManagerDrop::Node& node);
  void setColorTag(int64_t repositoryId, std::optional<int> colorTag);
  void startRescan();

 Q_SIGNALS:
  void openRepositoryRequested(const QString& path);
  // "Open…": the host asks for any folder and opens it.
  void openDocumentRequested();
  // "Clone…": the host opens the clone sheet.
  void cloneRequested();
  // After addRepositories has written the registry and shown any refusal.
  void addFinished(int refusedCount);
  // The selected repository's read-me is on screen.
  void readmeShown();

 private:
  QWidget* makeDetails();
  void showContextMenu(const QPoint& viewportPoint);
  void addMoveMenu(QMenu& menu, const RepositoryManagerDrop::Node& node);
  void updateDetails();
  void loadReadme(const QString& repositoryPath);
  void updateRescanButton();
  void applyDrop(const RepositoryManagerDrop::Node& dragged, const RepositoryManagerDrop::Node& target,
                 RepositoryManagerDrop::Position position);
  void rename(const RepositoryManagerDrop::Node& node, const QString& name);
  void changed(bool repositoryInfoToo = false);

  AppSettings& settings_;
  RepositoryManagerTreeWidget* tree_ = nullptr;
  QToolButton* rescanButton_ = nullptr;
  QProgressBar* progress_ = nullptr;
  QLabel* progressLabel_ = nullptr;
  QLabel* detailsTitle_ = nullptr;
  QLabel* detailsPath_ = nullptr;
  QLabel* detailsInfo_ = nullptr;
  QLabel* emptyLabel_ = nullptr;
  QPushButton* openButton_ = nullptr;
  QPushButton* showButton_ = nullptr;
  QTextBrowser* readme_ = nullptr;
  QWidget* detailsBox_ = nullptr;
  int readmeGeneration_ = 0;
};
