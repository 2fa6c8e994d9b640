#pragma once
// The commit box below the file lists: subject with its character counter, description,
// amend and sign-off, and the commit button. The draft is kept in the repository's
// settings as it is typed; amend parks the draft and brings it back.
#include <QWidget>
#include <memory>

#include "Models/CommitComposer.h"
#include "Models/GitModule.h"

class JobQueue;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

class CommitBoxView : public QWidget {
  Q_OBJECT
 public:
  CommitBoxView(GitModule module, std::shared_ptr<JobQueue> queue, QWidget* parent = nullptr);

  void setStagedFilesCount(int count);
  // Runs the commit job; failures open the error sheet.
  void commit();
  // After a commit made elsewhere (the error sheet's retry): empty fields, no draft.
  void clearAfterCommit();

  QLineEdit* subjectField() const { return subject_; }
  QPlainTextEdit* descriptionField() const { return description_; }
  QLabel* counterLabel() const { return counter_; }
  QCheckBox* amendBox() const { return amend_; }
  QCheckBox* signOffBox() const { return signOff_; }
  QPushButton* commitButton() const { return commitButton_; }

 Q_SIGNALS:
  void committed();
  void commitFinished();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void messageEdited();
  void showMessage(const CommitMessage& message);
  void updateCounter();
  void updateButton();
  void amendToggled(bool on);

  GitModule module_;
  std::shared_ptr<JobQueue> queue_;
  CommitComposer composer_;
  int stagedCount_ = 0;
  bool busy_ = false;
  bool filling_ = false;  // the fields are set by code, not typed
  QLineEdit* subject_;
  QLabel* counter_;
  QPlainTextEdit* description_;
  QCheckBox* amend_;
  QCheckBox* signOff_;
  QPushButton* commitButton_;
};
