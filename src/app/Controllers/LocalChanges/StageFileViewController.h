#pragma once
// The "Local Changes" page: unstaged and staged files with their counts (as lists or
// folder trees), the diff of the selected file, and the commit box. Stage, unstage,
// discard and ignore run as jobs on the tab's queue; a failure opens the error sheet;
// the repository reads the status again afterwards.
#include <QPointer>
#include <QWidget>
#include <memory>

#include <functional>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/FileListTree.h"
#include "Models/GitModule.h"
#include "Models/RepositoryStatus.h"
#include "Models/SelectionMode.h"
#include "Models/UnmergedFile.h"
#include "Models/XPatch.h"

class CommitController;
class CommitTextDiffView;
class FileDiffView;
class FileListViewController;
class JobQueue;
class QLabel;
class QMenu;
struct DesktopEntry;
class RepositoryController;
class QPushButton;
class QToolButton;

class StageFileViewController : public QWidget {
  Q_OBJECT
 public:
  // The repository reads the status for the page: reloads, path refreshes and commits go
  // to it and its snapshots come back through applyStatus, so each change is read once
  // for the page and the sidebar alike.
  explicit StageFileViewController(RepositoryController& repository, QWidget* parent = nullptr);

  // Reads the working tree's status again.
  void reload();
  // Shows a status read elsewhere; a list equal to the shown one changes nothing.
  void setFiles(const ChangedFileList& files);

  void applyStatus(const RepositoryStatus& status);
  // The repository's refresh ended; a read the page asked for that brought no status
  // (a failure) still ends with reloaded.
  void repositoryRefreshEnded();

  void stage(const ChangedFileList& files);
  void unstage(const ChangedFileList& files);
  // Asks first, with the texts of the discard alert; `confirm` answers it in tests.
  void discard(const ChangedFileList& files);
  // Settles the conflicted ones among the files by taking one side whole.
  void resolveConflicts(const ChangedFileList& files, UnmergedFileVersionType version);
  // Applies the lines of a selection patch (a discard asks first), then reads the status
  // of the touched paths again.
  void applySelection(const XPatchPtr& patch, SelectionMode mode, bool wholeHunk = false);
  // "Stage All" / "Unstage All" while nothing is selected in the list.
  void updateStageButtonTitles();
  // Before files leave a list: which file takes over the diff when the shown one goes.
  void rememberNextFile(const FileListViewController* list, const ChangedFileList& moved);
  // Reads the status of these paths and puts the result in place of their entries.
  void refreshPaths(const QStringList& paths);
  void setConfirmation(std::function<bool(const QString& message, const QString& informative, const QString& button)> confirm) {
    confirm_ = std::move(confirm);
  }

  // Both lists as a flat list or a folder tree; the choice is stored ("fileListMode").
  void setFileListMode(FileListViewMode mode);
  // Appends the pattern to .gitignore by a job, then reads the status again.
  void ignore(const QString& pattern);
  // Writes the files' changes as one patch by a job; patchSaved follows, or the error sheet.
  void savePatch(const ChangedFileList& files, const QString& path);
  // "Add files to .gitignore" with the pattern to start from.
  void showIgnorePatternSheet(const QString& initialPattern);
  // The small editor sheet for a text file of the work tree (".gitignore", ".gitattributes").
  void showEditFileSheet(const QString& relativePath);
  // Shows the file in the outside diff tool of the preferences, by a job; a failure is
  // told in an alert (and by externalToolFailed).
  void externalDiff(const ChangedFilePtr& file);
  // Starts an application (or a command typed by the user) on the working file, by a job.
  void openWith(const DesktopEntry& application, const ChangedFilePtr& file);
  // The context menu of a list for its current selection; the caller owns it. Empty
  // without a selection.
  QMenu* contextMenu(FileListViewController* list);

  FileListViewController* unstagedList() const { return unstaged_; }
  FileListViewController* stagedList() const { return staged_; }
  QToolButton* fileListModeButton() const { return modeButton_; }
  QLabel* unstagedLabel() const { return unstagedLabel_; }
  QLabel* stagedLabel() const { return stagedLabel_; }
  FileDiffView* diffPane() const { return diffPane_; }
  // The unified diff of the selected file.
  CommitTextDiffView* diffView() const;
  CommitController* commitBox() const { return commitBox_; }
  QPushButton* stageButton() const { return stageButton_; }
  QPushButton* unstageButton() const { return unstageButton_; }
  QPushButton* discardButton() const { return discardButton_; }

 Q_SIGNALS:
  void reloaded();
  void diffLoaded();
  void patchSaved(const QString& path);
  // The absolute path of a submodule to open in a tab of its own.
  void openSubmoduleRequested(const QString& path);
  void externalToolFailed(const QString& text);
  // The merge editor for a conflicted path; the repository tab opens it.
  void resolveConflictsRequested(const QString& path);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // "Stash Selected Files..." for the chosen files, from the command table.
  void addStashAction(QMenu* menu, const ChangedFileList& chosen);
  void runOperation(const QString& name, std::function<GitVoidResult()> work);
  void stageNow(const ChangedFileList& files);
  void committed();
  void sheetSucceeded();
  // Under amend the staged side is `amendedFiles`: what the amended commit will hold.
  void showFiles(const ChangedFileList& files, const std::optional<ChangedFileList>& amendedFiles = std::nullopt);
  void loadDiff(const ChangedFilePtr& file, bool loadLarge = false);
  void showContextMenu(FileListViewController* list, const QPoint& position);
  void fillOpenWithMenu(QMenu* menu, const ChangedFilePtr& file);
  // The repository tab this page belongs to; null outside one.
  class JelvDocument* document() const;
  void showToolFailure(const QString& text);
  ChangedFileList selection(FileListViewController* list) const;

  GitModule module_;
  std::shared_ptr<JobQueue> queue_;
  std::function<bool(const QString&, const QString&, const QString&)> confirm_;
  bool rebuilding_ = false;  // selection events are silent while lists are refilled
  QLabel* unstagedLabel_;
  QLabel* stagedLabel_;
  FileListViewController* unstaged_;
  FileListViewController* staged_;
  QToolButton* modeButton_;
  QPushButton* stageButton_;
  QPushButton* unstageButton_;
  QPushButton* discardButton_;
  FileDiffView* diffPane_;
  CommitController* commitBox_;
  ChangedFilePtr diffFile_;
  ChangedFilePtr shownFile_;  // the file whose diff is on screen
  ChangedFileList files_;
  bool filesShown_ = false;
  QPointer<RepositoryController> repository_;
  // What the page asked the repository for and waits to see arrive.
  enum class Awaiting { nothing, status, paths } awaiting_ = Awaiting::nothing;
  std::optional<QString> nextAfterMove_;
};
