#pragma once
// The "Local Changes" page: unstaged and staged files with their counts, the diff of the
// selected file, and the commit box. Stage, unstage and discard run as jobs on the tab's
// queue; a failure opens the error sheet; the status is read again afterwards.
#include <QWidget>
#include <memory>

#include <functional>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"

class ChangedFilesView;
class CommitBoxView;
class DiffTextView;
class JobQueue;
class QLabel;
class QPushButton;
class QStackedWidget;

class LocalChangesView : public QWidget {
  Q_OBJECT
 public:
  LocalChangesView(GitModule module, std::shared_ptr<JobQueue> queue, QWidget* parent = nullptr);

  // Reads the working tree's status again.
  void reload();

  void stage(const ChangedFileList& files);
  void unstage(const ChangedFileList& files);
  // Asks first, with the texts of the discard alert; `confirm` answers it in tests.
  void discard(const ChangedFileList& files);
  void setConfirmation(std::function<bool(const QString& message, const QString& informative, const QString& button)> confirm) {
    confirm_ = std::move(confirm);
  }

  ChangedFilesView* unstagedList() const { return unstaged_; }
  ChangedFilesView* stagedList() const { return staged_; }
  QLabel* unstagedLabel() const { return unstagedLabel_; }
  QLabel* stagedLabel() const { return stagedLabel_; }
  DiffTextView* diffView() const { return diff_; }
  CommitBoxView* commitBox() const { return commitBox_; }
  QPushButton* stageButton() const { return stageButton_; }
  QPushButton* unstageButton() const { return unstageButton_; }
  QPushButton* discardButton() const { return discardButton_; }

 Q_SIGNALS:
  void reloaded();
  void diffLoaded();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void runOperation(const QString& name, std::function<GitVoidResult()> work);
  void showFiles(const ChangedFileList& files);
  void loadDiff(const ChangedFilePtr& file);
  void showContextMenu(ChangedFilesView* list, const QPoint& position);
  ChangedFileList selection(ChangedFilesView* list) const;

  GitModule module_;
  std::shared_ptr<JobQueue> queue_;
  std::function<bool(const QString&, const QString&, const QString&)> confirm_;
  bool rebuilding_ = false;  // selection events are silent while lists are refilled
  QLabel* unstagedLabel_;
  QLabel* stagedLabel_;
  ChangedFilesView* unstaged_;
  ChangedFilesView* staged_;
  QPushButton* stageButton_;
  QPushButton* unstageButton_;
  QPushButton* discardButton_;
  QStackedWidget* diffStack_;
  QLabel* diffMessage_;
  DiffTextView* diff_;
  CommitBoxView* commitBox_;
  ChangedFilePtr diffFile_;
};
