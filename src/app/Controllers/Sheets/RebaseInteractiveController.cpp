#include "Controllers/Sheets/RebaseInteractiveController.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDateTime>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "Controllers/QueuedWork.h"
#include "Controllers/Sheets/TodoListDelegate.h"
#include "Controllers/Sheets/TodoListModel.h"
#include "Git/Commands/Repository/BranchGitCommand.h"
#include "Git/Commands/Repository/RebaseTodoListGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Logging/AdvancedLogger.h"
#include "Services/DistributedNotificationCenter.h"
#include "Services/Preferences.h"

namespace names = DistributedNotificationNames;
using Command = InteractiveRebaseCommand;

namespace {

struct CommandButton {
  Command command;
  const char* title;
  const char* objectName;
  const char* key;
};
const CommandButton commandButtons[] = {
    {Command::pick, "Pick", "pickButton", "P"},       {Command::reword, "Reword", "rewordButton", "R"},
    {Command::edit, "Edit", "editButton", "E"},       {Command::squash, "Squash", "squashButton", "S"},
    {Command::fixup, "Fixup", "fixupButton", "F"},    {Command::drop, "Drop", "dropButton", "D"},
};

}  // namespace

RebaseInteractiveController::RebaseInteractiveController(GitModule module, QString source, std::optional<QString> destination,
                                                         bool root, std::optional<Action> initialAction, QString signingKey,
                                                         QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)), source_(std::move(source)), initialAction_(std::move(initialAction)) {
  options_.destination = std::move(destination);
  options_.root = root;
  options_.signingKey = std::move(signingKey);
  setObjectName(QStringLiteral("rebaseInteractiveSheet"));
  setWindowTitle(QStringLiteral("Interactive Rebase"));
  messageLabel()->setText(source_.isEmpty() ? QStringLiteral("Rebase interactively")
                                            : QStringLiteral("Rebase '%1' interactively").arg(source_));
  informativeLabel()->setText(
      QStringLiteral("Newest commit first. Drag rows or use Ctrl+Up and Ctrl+Down to reorder; choose what happens to each "
                     "commit with the buttons or the keys P, R, E, S, F and D."));
  informativeLabel()->show();

  model_ = new TodoListModel(this);
  list_ = new QListView(this);
  list_->setObjectName(QStringLiteral("todoList"));
  list_->setModel(model_);
  list_->setItemDelegate(new TodoListDelegate(list_));
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setDragDropMode(QAbstractItemView::InternalMove);
  list_->setDefaultDropAction(Qt::MoveAction);
  list_->setDragEnabled(true);
  list_->setAcceptDrops(true);
  list_->setDropIndicatorShown(true);
  list_->setUniformItemSizes(true);
  list_->setMinimumSize(560, 320);
  list_->installEventFilter(this);

  auto* buttons = new QHBoxLayout;
  for (const CommandButton& entry : commandButtons) {
    auto* button = new QPushButton(QString::fromLatin1(entry.title), this);
    button->setObjectName(QString::fromLatin1(entry.objectName));
    button->setToolTip(QStringLiteral("Key %1").arg(QString::fromLatin1(entry.key)));
    button->setAutoDefault(false);
    const Command command = entry.command;
    connect(button, &QPushButton::clicked, this, [this, command] { applyCommand(command); });
    buttons->addWidget(button);
  }
  buttons->addStretch(1);
  for (const auto& [title, delta] : {std::pair{"Move Up", -1}, std::pair{"Move Down", 1}}) {
    auto* button = new QPushButton(QString::fromLatin1(title), this);
    button->setObjectName(delta < 0 ? QStringLiteral("moveUpButton") : QStringLiteral("moveDownButton"));
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, delta = delta] { moveSelection(delta); });
    buttons->addWidget(button);
  }

  auto* left = new QVBoxLayout;
  left->addWidget(list_, 1);
  left->addLayout(buttons);

  details_ = new QLabel(this);
  details_->setWordWrap(true);
  details_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  message_ = new QPlainTextEdit(this);
  message_->setObjectName(QStringLiteral("rewordField"));
  message_->setPlaceholderText(QStringLiteral("Select one commit to change its message"));
  // A read-only field of its own: group messages of real histories run to dozens of
  // lines and must scroll rather than push the sheet's buttons off the window.
  groupBox_ = new QWidget(this);
  groupMessage_ = new QPlainTextEdit(groupBox_);
  groupMessage_->setObjectName(QStringLiteral("groupMessage"));
  groupMessage_->setReadOnly(true);
  auto* groupLayout = new QVBoxLayout(groupBox_);
  groupLayout->setContentsMargins(0, 0, 0, 0);
  groupLayout->addWidget(new QLabel(QStringLiteral("<b>Message of the squashed commit</b>"), groupBox_));
  groupLayout->addWidget(groupMessage_, 1);
  groupBox_->hide();
  auto* right = new QVBoxLayout;
  right->addWidget(details_);
  right->addWidget(new QLabel(QStringLiteral("Message"), this));
  right->addWidget(message_, 1);
  right->addWidget(groupBox_, 1);

  auto* columns = new QHBoxLayout;
  columns->addLayout(left, 3);
  columns->addLayout(right, 2);
  contentLayout()->addLayout(columns, 1);

  createBackup_ = new QCheckBox(QStringLiteral("Create a backup branch before rewriting"), this);
  createBackup_->setObjectName(QStringLiteral("createBackupCheckBox"));
  createBackup_->setChecked(Preferences::shared().createInteractiveRabaseBackup());
  createBackup_->setEnabled(!source_.isEmpty());
  contentLayout()->addWidget(createBackup_);
  submitButton()->setText(QStringLiteral("Start Rebase"));
  resize(980, 620);

  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { selectionChanged(); });
  connect(model_, &QAbstractItemModel::dataChanged, this, [this] { selectionChanged(); });
  connect(message_, &QPlainTextEdit::textChanged, this, [this] { messageEdited(); });

  observer_ = new DistributedNotificationObserver({names::editTodoListForRebase()}, this);
  connect(observer_, &DistributedNotificationObserver::received, this,
          [this](const QString&, const QString& path) { prepareTodoListForRebase(path); });
  setControlsEnabled(false);
  setStatus(Status::busy, QStringLiteral("Waiting for git…"));
}

RebaseInteractiveController::~RebaseInteractiveController() {
  // A sheet that goes away with git still waiting must not leave it hanging.
  if (!todoListPath_.isEmpty() && !answered_) answer(false);
}

void RebaseInteractiveController::showEvent(QShowEvent* event) {
  JelvSheetController::showEvent(event);
  if (!started_) {
    started_ = true;
    startRebase();
  }
}

void RebaseInteractiveController::startRebase() {
  const std::shared_ptr<JobQueue> queue = jobQueue();
  if (!queue) {
    endWithError(Error::CannotReachHere{QStringLiteral("The rebase sheet has no job queue")});
    return;
  }
  if (!observer_->isListening()) {
    endWithError(Error::Generic{QStringLiteral("The interactive rebase needs the desktop session bus, which is not available.")});
    return;
  }
  const GitModule module = module_;
  const InteractiveRebaseGitCommand::Options options = options_;
  QPointer<RebaseInteractiveController> guard(this);
  // Not on the status bar: its cancel button would kill git while it waits for this
  // sheet and leave a half-started rebase; the sheet's own Cancel is the way out.
  queue->schedule(Job::make(QStringLiteral("Interactive Rebase"), Job::Show::inActivityManager(), Job::ProgressType::infinite,
                            [guard, module, options](JobProgress& progress) {
                              GitVoidResult result = InteractiveRebaseGitCommand::execute(module, options, &progress);
                              postQueuedCall(qApp, [guard, result = std::move(result)] {
                                if (guard) guard->rebaseEnded(result);
                              });
                            }));
}

void RebaseInteractiveController::prepareTodoListForRebase(const QString& path) {
  if (state_ != State::loading || !todoListPath_.isEmpty() || !RebaseTodoListGitCommand::belongsTo(module_, path)) return;
  todoListPath_ = path;
  if (cancelRequested_) {
    answer(false);
    return;
  }
  const GitModule module = module_;
  runQueued<GitResult<std::vector<TodoListItem>>>(
      jobQueue(), this, QStringLiteral("Read the rebase todo list"), Job::Show::none(),
      [module, path](JobProgress&) { return RebaseTodoListGitCommand::read(module, path); },
      [this](const GitResult<std::vector<TodoListItem>>& list) { todoListLoaded(list); });
}

void RebaseInteractiveController::todoListLoaded(const GitResult<std::vector<TodoListItem>>& list) {
  if (state_ != State::loading) return;
  if (cancelRequested_ || !list) {
    if (!list) pendingError_ = list.error();
    state_ = State::waiting;
    answer(false);
    return;
  }
  model_->setItems(list.value());
  state_ = State::editing;
  setStatus(Status::none);
  setControlsEnabled(true);
  createBackup_->setEnabled(!source_.isEmpty());
  // Focus first: a reword quick action moves it on to the message field.
  list_->setFocus();
  runInitialAction();
  validate();
}

void RebaseInteractiveController::runInitialAction() {
  if (model_->rowCount() > 0) selectRows({0});
  if (!initialAction_) return;
  using Kind = Action::Kind;
  const Action& action = *initialAction_;
  if (action.kind == Kind::selectFirst) return;
  std::vector<int> rows;
  for (const QString& sha : action.shas) {
    const int row = model_->rowOf(sha);
    if (row < 0) {
      LOG_WARNING(action.kind == Kind::squash ? QStringLiteral("Cant find '%1' for squash").arg(sha)
                                              : QStringLiteral("Cant find '%1'").arg(sha));
      continue;
    }
    rows.push_back(row);
  }
  if (rows.empty()) return;
  selectRows(rows);
  switch (action.kind) {
    case Kind::squash: model_->setCommand(rows, Command::squash); break;
    case Kind::fixup: model_->setCommand(rows, Command::fixup); break;
    case Kind::drop: model_->setCommand(rows, Command::drop); break;
    case Kind::edit: model_->setCommand(rows, Command::edit); break;
    case Kind::reword:
      model_->setCommand(rows, Command::reword);
      message_->setFocus();
      message_->selectAll();
      return;
    case Kind::selectFirst: break;
  }
}

std::vector<int> RebaseInteractiveController::selectedRows() const {
  std::vector<int> rows;
  for (const QModelIndex& index : list_->selectionModel()->selectedRows()) rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

void RebaseInteractiveController::selectRows(const std::vector<int>& rows) {
  QItemSelection selection;
  for (int row : rows) selection.select(model_->index(row), model_->index(row));
  list_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  if (!rows.empty()) list_->selectionModel()->setCurrentIndex(model_->index(rows.front()), QItemSelectionModel::NoUpdate);
}

void RebaseInteractiveController::applyCommand(InteractiveRebaseCommand command) {
  if (state_ != State::editing) return;
  const std::vector<int> rows = selectedRows();
  if (rows.empty()) return;
  if (!model_->setCommand(rows, command)) {
    setStatus(Status::warning, QStringLiteral("The oldest commit has nothing below it to fold into."));
  } else {
    setStatus(Status::none);
  }
  if (command == Command::reword && rows.size() == 1) message_->setFocus();
}

void RebaseInteractiveController::moveSelection(int delta) {
  if (state_ != State::editing) return;
  selectRows(model_->shift(selectedRows(), delta));
}

void RebaseInteractiveController::selectionChanged() {
  const std::vector<int> rows = selectedRows();
  const bool one = rows.size() == 1 && state_ == State::editing;
  const TodoListItem* item = rows.size() == 1 ? &model_->items()[rows.front()] : nullptr;
  showingMessage_ = true;
  if (item) {
    details_->setText(QStringLiteral("%1 · %2 · %3").arg(item->sha.left(10), item->author,
                                                          QLocale().toString(item->authorDate, QLocale::ShortFormat)));
    if (message_->toPlainText() != item->message()) message_->setPlainText(item->message());
  } else {
    details_->setText(rows.empty() ? QString() : QStringLiteral("%1 commits selected").arg(rows.size()));
    message_->clear();
  }
  showingMessage_ = false;
  message_->setEnabled(one && item->command != Command::drop && item->command != Command::fixup);
  // The group's message, shown at any row of the group.
  std::optional<QString> group;
  if (item && item->squashType != SquashType::none) {
    // A group's rows are contiguous down to its target.
    const auto& items = model_->items();
    for (int row = rows.front(); row < static_cast<int>(items.size()); ++row) {
      if (items[row].squashType != SquashType::target) continue;
      group = items[row].groupMessage;
      break;
    }
  }
  groupBox_->setVisible(group.has_value());
  if (group && groupMessage_->toPlainText() != *group) groupMessage_->setPlainText(*group);
}

void RebaseInteractiveController::messageEdited() {
  if (showingMessage_ || state_ != State::editing) return;
  const std::vector<int> rows = selectedRows();
  if (rows.size() != 1) return;
  showingMessage_ = true;
  model_->setMessage(rows.front(), message_->toPlainText());
  showingMessage_ = false;
  validate();
}

void RebaseInteractiveController::validate(bool) {
  if (state_ != State::editing) return;
  bool emptyMessage = false;
  for (const TodoListItem& item : model_->items()) {
    if (item.command == Command::reword && item.message().trimmed().isEmpty()) emptyMessage = true;
  }
  if (emptyMessage) {
    setStatus(Status::warning, QStringLiteral("A reworded commit needs a message."));
  } else if (status() == Status::warning && statusLabel()->text().startsWith(QStringLiteral("A reworded"))) {
    setStatus(Status::none);
  }
  submitButton()->setEnabled(!emptyMessage);
}

bool RebaseInteractiveController::eventFilter(QObject* watched, QEvent* event) {
  if (watched != list_ || event->type() != QEvent::KeyPress || state_ != State::editing) {
    return JelvSheetController::eventFilter(watched, event);
  }
  auto* key = static_cast<QKeyEvent*>(event);
  const Qt::KeyboardModifiers modifiers = key->modifiers() & ~Qt::KeypadModifier;
  if (modifiers == Qt::ControlModifier && (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down)) {
    moveSelection(key->key() == Qt::Key_Up ? -1 : 1);
    return true;
  }
  if (modifiers == Qt::NoModifier || modifiers == Qt::ShiftModifier) {
    for (const CommandButton& entry : commandButtons) {
      if (key->text().compare(QString::fromLatin1(entry.key), Qt::CaseInsensitive) == 0) {
        applyCommand(entry.command);
        return true;
      }
    }
    if (key->key() == Qt::Key_Delete || key->key() == Qt::Key_Backspace) {
      applyCommand(Command::drop);
      return true;
    }
  }
  return JelvSheetController::eventFilter(watched, event);
}

void RebaseInteractiveController::submit() {
  if (state_ != State::editing || !submitButton()->isEnabled()) return;
  state_ = State::waiting;
  setControlsEnabled(false);
  cancelButton()->setEnabled(false);  // git is rewriting now; abort comes from the repository's state bar
  setStatus(Status::busy, QStringLiteral("Rebasing…"));
  const bool backup = createBackup_->isChecked();
  Preferences::shared().setCreateInteractiveRabaseBackup(backup);
  const QString branch = backup && !source_.isEmpty() ? RebaseTodoListGitCommand::backupBranchName(source_, QDateTime::currentDateTime())
                                                      : QString();
  const std::vector<TodoListItem> items = model_->items();
  const QString path = todoListPath_;
  const GitModule module = module_;
  runQueued<GitVoidResult>(
      jobQueue(), this, QStringLiteral("Write the rebase todo list"), Job::Show::none(),
      [module, path, items, branch](JobProgress& progress) -> GitVoidResult {
        if (GitVoidResult written = RebaseTodoListGitCommand::write(path, items); !written) return written;
        if (!branch.isEmpty()) return BranchGitCommand::create(module, branch, QStringLiteral("HEAD"), &progress);
        return Unit{};
      },
      [this](const GitVoidResult& result) {
        if (!result) pendingError_ = result.error();
        answer(result.isSuccess());
      });
}

void RebaseInteractiveController::cancel() {
  switch (state_) {
    case State::loading:
      // The editor gets its answer as soon as it asks.
      cancelRequested_ = true;
      setStatus(Status::busy, QStringLiteral("Canceling…"));
      return;
    case State::editing:
      cancelRequested_ = true;
      state_ = State::waiting;
      setControlsEnabled(false);
      cancelButton()->setEnabled(false);
      setStatus(Status::busy, QStringLiteral("Canceling…"));
      answer(false);
      return;
    case State::waiting:
    case State::ended:
      return;
  }
}

void RebaseInteractiveController::answer(bool finish) {
  if (answered_ || todoListPath_.isEmpty()) return;
  answered_ = true;
  DistributedNotificationCenter::post(finish ? names::rebaseEditorFinish() : names::rebaseEditorCancel(), todoListPath_);
}

void RebaseInteractiveController::rebaseEnded(const GitVoidResult& result) {
  if (state_ == State::ended) return;
  state_ = State::ended;
  if (pendingError_) {
    endWithError(*pendingError_);
  } else if (cancelRequested_) {
    endWithCancel();
  } else if (result) {
    endWithSuccess();
  } else {
    endWithError(result.error());
  }
}
