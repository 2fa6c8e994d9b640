#pragma once
// The commit box below the file lists: subject with its character counter, description
// with its page guide, amend and sign-off, the options menu (recent messages, spell
// checking, repository settings) and the commit button. The draft is kept in the
// repository's settings as it is typed; amend parks the draft and brings it back; a
// merge or squash in progress fills in the message git prepared.
#include <QWidget>
#include <memory>
#include <optional>

#include "Controls/SpellChecking/SpellCheckedLineEdit.h"
#include "Models/CommitButtonTitle.h"
#include "Models/CommitComposer.h"
#include "Models/GitModule.h"

class CommitMessageEdit;
class ErrorWindowController;
class JobQueue;
class QCheckBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPlainTextEdit;
class QPushButton;
class QToolButton;
class RepositoryState;

class CommitController : public QWidget {
  Q_OBJECT
 public:
  CommitController(GitModule module, std::shared_ptr<JobQueue> queue, QWidget* parent = nullptr);

  void setStagedFilesCount(int count);
  // What git is in the middle of, and the message it prepared for a merge or squash
  // (filled in once, while the fields are empty).
  void setRepositoryState(const RepositoryState& state, const std::optional<CommitMessage>& mergeMessage);
  // Runs the commit job; failures open the error sheet.
  void commit();
  // After a commit made elsewhere (the error sheet's retry): empty fields, no draft.
  void clearAfterCommit();
  // Reads sign-off again from the repository's settings (after the settings sheet).
  void reloadSettings();
  // Fills the "Recent Commit Messages" menu by a job; recentMessagesLoaded follows.
  void loadRecentMessages();
  void showRepositorySettings(bool focusIdentity = false);

  SpellCheckedLineEdit* subjectField() const { return subject_; }
  QPlainTextEdit* descriptionField() const;
  CommitMessageEdit* messageEditor() const { return description_; }
  QLabel* counterLabel() const { return counter_; }
  QCheckBox* amendBox() const { return amend_; }
  QCheckBox* signOffBox() const { return signOff_; }
  QPushButton* commitButton() const { return commitButton_; }
  QToolButton* optionsButton() const { return options_; }
  QMenu* recentMessagesMenu() const { return recentMenu_; }
  QAction* spellCheckingAction() const { return spellChecking_; }
  // A merge or squash message handed over now would fill the fields (once per merge,
  // only into empty fields, not under amend).
  bool takesMergeMessage() const { return !mergeMessageShown_ && !composer_.amend() && composer_.message().isEmpty(); }
  bool isAmending() const { return composer_.amend(); }

 Q_SIGNALS:
  void committed();
  // The commit was made with " and Push": the branch goes to its remote next.
  void pushRequested();
  void commitFinished();
  void recentMessagesLoaded();
  // The amend box was turned on or off (the staged list then shows the amended commit).
  void amendChanged(bool on);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void messageEdited();
  void showMessage(const CommitMessage& message);
  void updateCounter();
  void updateButton();
  void setOptionKeyPressed(bool pressed);
  CommitButtonTitle buttonTitle() const;
  // Goes on with the rebase or cherry-pick under way, each commit keeping its message.
  void continueSequence(bool rebase);
  void amendToggled(bool on);
  void connectErrorSheet(ErrorWindowController* sheet);

  GitModule module_;
  std::shared_ptr<JobQueue> queue_;
  CommitComposer composer_;
  int stagedCount_ = 0;
  CommitPhase phase_ = CommitPhase::none;
  bool mergeMessageShown_ = false;
  std::optional<CommitMessage> shownMergeMessage_;  // as put in the fields, to take back after an abort
  bool busy_ = false;
  bool mergeReadyToCommit_ = false;
  bool filling_ = false;  // the fields are set by code, not typed
  bool optionKeyPressed_ = false;  // Alt is held: the button offers " and Push"
  SpellCheckedLineEdit* subject_;
  QLabel* counter_;
  CommitMessageEdit* description_;
  QCheckBox* amend_;
  QCheckBox* signOff_;
  QToolButton* options_;
  QMenu* recentMenu_;
  QAction* spellChecking_;
  QPushButton* commitButton_;
};
