#pragma once
#include <QTableView>

#include "Controllers/CommitList/CommitListModel.h"

// The commit list: fixed-height rows so that only visible rows are asked for, columns
// for graph and subject, author, date and short sha.
class CommitListView : public QTableView {
  Q_OBJECT
 public:
  explicit CommitListView(QWidget* parent = nullptr);
  CommitListModel* commitModel() const { return model_; }
  void setSource(std::shared_ptr<const RevisionGraphSource> source);
  // Selects the row of the sha, keeping it in view; false when it isn't listed.
  bool selectSha(const Sha& sha);
  RevisionPtr currentRevision() const;
  // Every selected commit in list order (newest first); the current one when none is selected.
  std::vector<RevisionPtr> selectedRevisions() const;

 Q_SIGNALS:
  void currentRevisionChanged(RevisionPtr revision);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  CommitListModel* model_;
  bool restoringSelection_ = false;
};
