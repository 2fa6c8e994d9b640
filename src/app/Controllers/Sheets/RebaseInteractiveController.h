#pragma once
// The todo list of an interactive rebase, edited in a sheet instead of a text editor.
// Git starts as soon as the sheet opens and hands over its list through the rebase
// editor; the user reorders and chooses an action per commit; submit writes the list
// back and lets git go on, cancel tells the editor to fail so that nothing changes.
// Every way out of the sheet gives the waiting editor one of its two answers.
#include <QPointer>
#include <optional>
#include <vector>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Git/Commands/Repository/InteractiveRebaseGitCommand.h"
#include "Models/GitModule.h"
#include "Models/TodoListItem.h"

class DistributedNotificationObserver;
class QCheckBox;
class QLabel;
class QListView;
class QPlainTextEdit;
class TodoListModel;

class RebaseInteractiveController : public JelvSheetController {
  Q_OBJECT
 public:
  // The change the sheet opens with, so that a quick action needs only a submit.
  struct Action {
    enum class Kind { squash, fixup, reword, drop, edit, selectFirst };
    Kind kind = Kind::selectFirst;
    QStringList shas;
  };
  enum class State { loading, editing, waiting, ended };

  // `source` names the branch that is rewritten (for the backup); `destination` is the
  // commit it is rebased on, none with `root`.
  RebaseInteractiveController(GitModule module, QString source, std::optional<QString> destination, bool root,
                              std::optional<Action> initialAction, QString signingKey, QWidget* parent = nullptr);
  ~RebaseInteractiveController() override;

  State state() const { return state_; }
  TodoListModel* model() const { return model_; }
  QListView* listView() const { return list_; }
  QPlainTextEdit* messageField() const { return message_; }
  QPlainTextEdit* groupMessageView() const { return groupMessage_; }
  QCheckBox* createBackupCheckBox() const { return createBackup_; }
  QString todoListPath() const { return todoListPath_; }
  std::vector<int> selectedRows() const;
  void selectRows(const std::vector<int>& rows);

  // Applies a command to the selected rows, as the buttons and keys do.
  void applyCommand(InteractiveRebaseCommand command);
  void moveSelection(int delta);

  void validate(bool force = false) override;
  void submit() override;
  void cancel() override;

 protected:
  void showEvent(QShowEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void startRebase();
  void prepareTodoListForRebase(const QString& path);
  void todoListLoaded(const GitResult<std::vector<TodoListItem>>& list);
  void runInitialAction();
  void rebaseEnded(const GitVoidResult& result);
  void answer(bool finish);
  void selectionChanged();
  void messageEdited();

  GitModule module_;
  QString source_;
  InteractiveRebaseGitCommand::Options options_;
  std::optional<Action> initialAction_;
  State state_ = State::loading;
  bool started_ = false;
  bool answered_ = false;
  bool cancelRequested_ = false;
  std::optional<ResultError> pendingError_;
  QString todoListPath_;
  DistributedNotificationObserver* observer_;
  TodoListModel* model_;
  QListView* list_;
  QLabel* details_;
  QPlainTextEdit* message_;
  QWidget* groupBox_;
  QPlainTextEdit* groupMessage_;
  QCheckBox* createBackup_;
  bool showingMessage_ = false;
};
