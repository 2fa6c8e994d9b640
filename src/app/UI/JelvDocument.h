#pragma once
// One open repository: its module and the content of its tab (the sidebar, the commit
// list with its notification bar, the selected commit's details, files and diff, the
// working tree's changes, and the status line). The repository's model lives in its RepositoryController; this view
// shows each snapshot the controller hands over and runs the reads of the selected
// commit and file as jobs on the tab's queue. It holds no Git logic of its own.
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "Models/GitModule.h"
#include "Repository/RepositoryController.h"

class JobQueue;
class Job;
class JobProgress;
class CommitListView;
class RepositorySidebar;
class NotificationBar;
class RevisionHeaderView;
class ChangedFilesView;
class DiffTextView;
class FileDiffView;
class StageFileViewController;
class RepositoryStatusBar;
class ActivityManagerWindow;
class QAction;
class QStackedWidget;
class RepositoryStatusManager;
class CommitListDisplayController;
class RevisionSearchBar;
class RevisionFileTreeTabController;
class QTabWidget;
class RevisionSearchController;
class RevisionSearchResultsView;

class JelvDocument : public QWidget {
  Q_OBJECT
 public:
  JelvDocument(const GitModule& module, std::shared_ptr<JobQueue> queue, QWidget* parent = nullptr);
  ~JelvDocument() override;

  const GitModule& gitModule() const { return module_; }
  const std::shared_ptr<JobQueue>& jobQueue() const { return queue_; }
  RepositoryController* controller() const { return controller_; }
  RepositoryStatusManager* statusManager() const { return statusManager_; }
  CommitListDisplayController* displayController() const { return display_; }
  RevisionSearchController* searchController() const { return search_; }
  RevisionSearchBar* searchBar() const { return searchBar_; }
  RevisionSearchResultsView* searchResults() const { return searchResults_; }
  // Ctrl+R and Ctrl+F: refresh, and the commit search over the history.
  QAction* refreshAction() const { return refreshAction_; }
  QAction* searchAction() const { return searchAction_; }
  RevisionFileTreeTabController* revisionFileTree() const { return fileTree_; }
  QTabWidget* detailsTabs() const { return detailsTabs_; }

  // Reads everything again; a refresh in flight is canceled first and its wishes kept.
  void refresh();
  // Reads the state and the changed files only.
  void refreshStatus();
  void showLocalChanges();
  void showHistory();
  // The same pages chosen through the sidebar, so that it and the toolbar mark them; a
  // branch chosen in the sidebar stays chosen for the history.
  void selectLocalChanges();
  void selectHistory();
  // Local Changes with the first conflicted file selected; false when there is none.
  bool showFirstConflict();
  void showActivityManager();
  // The selected commit's files as a tree, in the details.
  void showRevisionFileTree();
  // Selects the commit and, once its files are read, the change of `path` in it.
  void showRevisionFile(const Sha& sha, const QString& path);

  // The repository line of the status bar: "<folder>: <branch>" and its variants.
  QString repositoryLine() const;

  CommitListView* commitList() const { return commitList_; }
  RepositorySidebar* sidebar() const { return sidebar_; }
  NotificationBar* notificationBar() const { return notificationBar_; }
  RepositoryStatusBar* statusBar() const { return statusBar_; }
  ChangedFilesView* revisionFiles() const { return revisionFiles_; }
  StageFileViewController* localChangesView() const { return localChanges_; }
  // The diff of the selected commit's file.
  DiffTextView* diffView() const;
  RevisionHeaderView* revisionHeader() const { return header_; }
  FileDiffView* diffPane() const { return diffPane_; }

 Q_SIGNALS:
  // A refresh has ended with both snapshots in place.
  void snapshotLoaded();
  void loadFailed(const QString& message);
  void commitDetailsLoaded();
  void diffLoaded();
  // The absolute path of a submodule the user wants in a tab of its own.
  void openSubmoduleRequested(const QString& path);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  // Runs work on the tab's queue and hands its result to done on the main thread, if
  // this view still exists then.
  template <typename T>
  std::shared_ptr<Job> run(const QString& name, int show, std::function<T(JobProgress&)> work, std::function<void(T)> done);

  // Reloads what the preferences window changes: the history's order and count, the diff.
  void followPreferences();
  void applyRepositoryData();
  void applyRepositoryStatus();
  void updateSidebar();
  // The buttons of the notification bar for the state under way.
  void updateNotificationActions();
  void loadCommit(const RevisionPtr& revision);
  void loadRevisionDiff(const ChangedFilePtr& file);
  // Two selected commits show the difference between them; back to one, that commit.
  void showSelection();
  void loadComparison(const RevisionPtr& newer, const RevisionPtr& older);

  GitModule module_;
  std::shared_ptr<JobQueue> queue_;
  RepositoryController* controller_;
  RepositoryStatusManager* statusManager_;
  CommitListDisplayController* display_;
  std::weak_ptr<Job> commitJob_;
  std::weak_ptr<Job> diffJob_;
  QString selectedSha_;
  std::optional<QString> comparedWith_;  // the older of two compared commits
  bool loaded_ = false;

  RepositorySidebar* sidebar_;
  NotificationBar* notificationBar_;
  QStackedWidget* pages_;
  CommitListView* commitList_;
  RevisionHeaderView* header_;
  ChangedFilesView* revisionFiles_;
  StageFileViewController* localChanges_;
  FileDiffView* diffPane_;
  bool loadLargeDiff_ = false;
  RepositoryStatusBar* statusBar_;
  ActivityManagerWindow* activity_ = nullptr;
  RevisionSearchBar* searchBar_;
  RevisionSearchResultsView* searchResults_;
  QAction* refreshAction_;
  QAction* searchAction_;
  std::optional<QString> pendingFile_;  // wanted in the commit whose files are being read
  RevisionSearchController* search_;
  QTabWidget* detailsTabs_;
  RevisionFileTreeTabController* fileTree_;
};
