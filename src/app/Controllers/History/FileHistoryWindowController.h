#pragma once
// The commits that changed one file, followed across renames, in a window of its own.
// One selected commit shows its change of the file, two show the difference between
// them; any other count says how many are selected. For a folder (a path ending in a
// slash) each commit opens to the files it changed there, and the same rules hold for
// the selected files: one shows its change, two of different commits the difference.
// The File tab shows instead the whole file as the clicked commit left it.
#include <QDialog>
#include <functional>
#include <memory>
#include <vector>

#include "Models/GitModule.h"
#include "Models/RevisionWithFiles.h"

class FileContentView;
class FileDiffView;
class Job;
class JobQueue;
class QLabel;
class QStackedWidget;
class QTabBar;
class QTreeWidget;

class FileHistoryWindowController : public QDialog {
  Q_OBJECT
 public:
  struct Actions {
    std::function<void(const QString& sha)> selectRevision;
    std::function<void(const QString& sha, const QString& path)> blame;
  };

  FileHistoryWindowController(GitModule module, std::shared_ptr<JobQueue> queue, QString path, Actions actions,
                              QWidget* parent = nullptr);
  ~FileHistoryWindowController() override;

  void load();

  QTreeWidget* list() const { return list_; }
  FileDiffView* diffView() const { return diff_; }
  QLabel* selectionLabel() const { return selectionHint_; }
  QLabel* countLabel() const { return selectionCount_; }
  bool isShowingDiff() const;
  FileContentView* contentView() const { return content_; }
  // The File tab rather than Changes.
  bool isShowingFile() const;
  void setShowingFile(bool file);
  bool isFolder() const;
  const std::vector<RevisionWithFiles>& history() const { return history_; }

  static QString selectedCountText(int count);

 Q_SIGNALS:
  void historyLoaded();
  void diffLoaded();
  void fileShown();

 private:
  void selectionChanged();
  void showFile(bool loadLarge = false);
  void showMenu(const QPoint& position);
  // One side of a comparison: a commit of the list and the file as it names it there.
  struct Side {
    int row = -1;
    ChangedFilePtr file;  // null: the followed file, by the name the commit gives it
  };
  // The sides the selection compares: one or two, else none.
  std::vector<Side> selectedSides() const;
  // The file as the commit of `row` names it: its path there, and the path before a rename.
  QString pathAt(int row) const;
  QString pathOf(const Side& side) const;

  GitModule module_;
  std::shared_ptr<JobQueue> queue_;
  QString path_;
  Actions actions_;
  std::vector<RevisionWithFiles> history_;
  std::weak_ptr<Job> loadJob_;
  std::weak_ptr<Job> showDiffJob_;
  int diffRequest_ = 0;
  QLabel* status_;
  QTreeWidget* list_;
  QStackedWidget* pages_;
  QLabel* selectionHint_;
  QLabel* selectionCount_;
  FileDiffView* diff_;
  FileContentView* content_;
  QTabBar* modes_;
};
