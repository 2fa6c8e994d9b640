#include "Controllers/LocalChanges/LocalChangesView.h"

#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include "Controllers/LocalChanges/CommitBoxView.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controls/ChangedFilesView.h"
#include "Controls/Diff/DiffTextView.h"
#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/DiscardChangedFilesCommand.h"
#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Git/Commands/WorkingDirectory/StageFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/UnstageFilesGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Models/PatchParser.h"
#include "Models/XPatch.h"
#include "Services/Preferences.h"

namespace {
QPushButton* smallButton(const QString& title, QWidget* parent) {
  auto* button = new QPushButton(title, parent);
  button->setAutoDefault(false);
  return button;
}

QWidget* listSection(QLabel* label, const QList<QPushButton*>& buttons, ChangedFilesView* list) {
  auto* section = new QWidget;
  auto* layout = new QVBoxLayout(section);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* header = new QHBoxLayout;
  header->addWidget(label, 1);
  for (auto* button : buttons) header->addWidget(button);
  layout->addLayout(header);
  layout->addWidget(list, 1);
  return section;
}
}  // namespace

LocalChangesView::LocalChangesView(GitModule module, std::shared_ptr<JobQueue> queue, QWidget* parent)
    : QWidget(parent), module_(std::move(module)), queue_(std::move(queue)) {
  unstagedLabel_ = new QLabel(this);
  stagedLabel_ = new QLabel(this);
  unstaged_ = new ChangedFilesView(this);
  staged_ = new ChangedFilesView(this);
  stageButton_ = smallButton(tr("Stage"), this);
  discardButton_ = smallButton(tr("Discard Changes…"), this);
  unstageButton_ = smallButton(tr("Unstage"), this);
  diff_ = new DiffTextView(this);
  diffMessage_ = new QLabel(tr("Select a file to see its changes."), this);
  diffMessage_->setAlignment(Qt::AlignCenter);
  diffStack_ = new QStackedWidget(this);
  diffStack_->addWidget(diffMessage_);
  diffStack_->addWidget(diff_);
  commitBox_ = new CommitBoxView(module_, queue_, this);

  auto* lists = new QSplitter(Qt::Vertical);
  lists->addWidget(listSection(unstagedLabel_, {stageButton_, discardButton_}, unstaged_));
  lists->addWidget(listSection(stagedLabel_, {unstageButton_}, staged_));
  lists->addWidget(commitBox_);
  auto* split = new QSplitter(Qt::Horizontal, this);
  split->addWidget(lists);
  split->addWidget(diffStack_);
  split->setStretchFactor(1, 2);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(split);

  confirm_ = [this](const QString& message, const QString& informative, const QString& button) {
    QMessageBox box(QMessageBox::Warning, message, message, QMessageBox::NoButton, this);
    box.setInformativeText(informative);
    QAbstractButton* yes = box.addButton(button, QMessageBox::DestructiveRole);
    box.addButton(tr("Cancel"), QMessageBox::RejectRole);
    box.exec();
    return box.clickedButton() == yes;
  };

  for (ChangedFilesView* list : {unstaged_, staged_}) {
    list->installEventFilter(this);
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(list, &QWidget::customContextMenuRequested, this, [this, list](const QPoint& p) { showContextMenu(list, p); });
    connect(list, &ChangedFilesView::currentFileChanged, this, [this, list](ChangedFilePtr file) {
      if (rebuilding_ || !file) return;
      // One diff at a time: choosing in one list clears the other.
      ChangedFilesView* other = list == unstaged_ ? staged_ : unstaged_;
      const QSignalBlocker blocker(other);
      other->clearSelection();
      other->setCurrentItem(nullptr);
      loadDiff(file);
    });
  }
  connect(unstaged_, &QTreeWidget::itemDoubleClicked, this, [this] { stage(selection(unstaged_)); });
  connect(staged_, &QTreeWidget::itemDoubleClicked, this, [this] { unstage(selection(staged_)); });
  connect(stageButton_, &QPushButton::clicked, this, [this] {
    const ChangedFileList chosen = selection(unstaged_);
    stage(chosen.empty() ? unstaged_->files() : chosen);
  });
  connect(unstageButton_, &QPushButton::clicked, this, [this] {
    const ChangedFileList chosen = selection(staged_);
    unstage(chosen.empty() ? staged_->files() : chosen);
  });
  connect(discardButton_, &QPushButton::clicked, this, [this] { discard(selection(unstaged_)); });
  connect(commitBox_, &CommitBoxView::committed, this, &LocalChangesView::reload);
  showFiles({});
}

ChangedFileList LocalChangesView::selection(ChangedFilesView* list) const {
  ChangedFileList chosen;
  for (QTreeWidgetItem* item : list->selectedItems()) {
    const int row = list->indexOfTopLevelItem(item);
    if (row >= 0 && row < static_cast<int>(list->files().size())) chosen.push_back(list->files()[static_cast<size_t>(row)]);
  }
  return chosen;
}

bool LocalChangesView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && (watched == unstaged_ || watched == staged_)) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) {
      if (watched == unstaged_) stage(selection(unstaged_));
      else unstage(selection(staged_));
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void LocalChangesView::reload() {
  const GitModule module = module_;
  QPointer<LocalChangesView> self(this);
  queue_->schedule(Job::make(tr("Refresh changed files"), Job::Show::none(), Job::ProgressType::infinite,
                             [self, module](JobProgress& progress) {
                               auto result = GetChangedFilesGitCommand::execute(module, {}, false, false, &progress);
                               QMetaObject::invokeMethod(qApp, [self, result] {
                                 if (!self) return;
                                 if (result) self->showFiles(result.value().changedFiles);
                                 else ErrorWindowController::present(self, self->module_, result.error(), self->queue_);
                                 Q_EMIT self->reloaded();
                               });
                             }));
}

void LocalChangesView::showFiles(const ChangedFileList& files) {
  ChangedFileList unstaged;
  ChangedFileList staged;
  for (const auto& file : files) (file->staged ? staged : unstaged).push_back(file);
  rebuilding_ = true;
  unstaged_->setFiles(unstaged);
  staged_->setFiles(staged);
  rebuilding_ = false;
  unstagedLabel_->setText(tr("Unstaged (%1)").arg(unstaged.size()));
  stagedLabel_->setText(tr("Staged (%1)").arg(staged.size()));
  stageButton_->setEnabled(!unstaged.empty());
  discardButton_->setEnabled(!unstaged.empty());
  unstageButton_->setEnabled(!staged.empty());
  commitBox_->setStagedFilesCount(static_cast<int>(staged.size()));
  // Keep the diff of the file on screen if it is still listed on the same side.
  ChangedFilePtr current;
  for (const auto& file : files) {
    if (diffFile_ && file->path == diffFile_->path && file->staged == diffFile_->staged) current = file;
  }
  if (current) {
    loadDiff(current);
  } else {
    diffFile_.reset();
    diffMessage_->setText(files.empty() ? tr("No local changes") : tr("Select a file to see its changes."));
    diffStack_->setCurrentWidget(diffMessage_);
  }
}

void LocalChangesView::loadDiff(const ChangedFilePtr& file) {
  diffFile_ = file;
  const GitModule module = module_;
  QPointer<LocalChangesView> self(this);
  queue_->schedule(Job::make(tr("Load diff"), Job::Show::none(), Job::ProgressType::infinite,
                             [self, module, file](JobProgress&) {
                               const GitResult<QString> text = GetWorkingDirectoryFileChangesGitCommand::getChangesAsPatch(module, *file, false);
                               QMetaObject::invokeMethod(qApp, [self, file, text] {
                                 if (!self || self->diffFile_ != file) return;
                                 const XPatchPtr patch =
                                     text ? PatchParser().parse(text.value(), file->staged ? XFilePatch::Location::staged
                                                                                       : XFilePatch::Location::unstaged)
                                          : XPatchPtr();
                                 if (patch && !patch->files.empty() && !patch->files.front().chunks.empty()) {
                                   self->diff_->setRows(unifiedDiffRows(patch->files.front()));
                                   self->diffStack_->setCurrentWidget(self->diff_);
                                 } else {
                                   self->diffMessage_->setText(text ? tr("No text changes.") : describe(text.error()));
                                   self->diffStack_->setCurrentWidget(self->diffMessage_);
                                 }
                                 Q_EMIT self->diffLoaded();
                               });
                             }));
}

void LocalChangesView::runOperation(const QString& name, std::function<GitVoidResult()> work) {
  QPointer<LocalChangesView> self(this);
  queue_->schedule(Job::make(name, Job::Show{3}, Job::ProgressType::infinite, [self, work](JobProgress&) {
    const GitVoidResult result = work();
    QMetaObject::invokeMethod(qApp, [self, result] {
      if (!self) return;
      if (result.isFailure()) {
        auto* sheet = ErrorWindowController::present(self, self->module_, result.error(), self->queue_);
        connect(sheet, &ErrorWindowController::repositoryChanged, self, &LocalChangesView::reload);
      }
      self->reload();
    });
  }));
}

void LocalChangesView::stage(const ChangedFileList& files) {
  if (files.empty()) return;
  const GitModule module = module_;
  runOperation(tr("Stage"), [module, files] { return StageFilesGitCommand::execute(module, files); });
}

void LocalChangesView::unstage(const ChangedFileList& files) {
  if (files.empty()) return;
  const GitModule module = module_;
  runOperation(tr("Unstage"), [module, files] { return UnstageFilesGitCommand::execute(module, files); });
}

void LocalChangesView::discard(const ChangedFileList& files) {
  if (files.empty()) return;
  const DiscardChangedFilesCommand::Plan plan = DiscardChangedFilesCommand::plan(files);
  const DiscardChangedFilesCommand::Confirmation texts = DiscardChangedFilesCommand::confirmation(plan);
  if (!confirm_(texts.messageText, texts.informativeText, texts.discardButton)) return;
  const GitModule module = module_;
  runOperation(tr("Discard"), [module, plan] { return DiscardChangedFilesCommand::execute(module, plan); });
}

void LocalChangesView::showContextMenu(ChangedFilesView* list, const QPoint& position) {
  const ChangedFileList chosen = selection(list);
  if (chosen.empty()) return;
  QMenu menu(this);
  if (list == unstaged_) {
    menu.addAction(tr("Stage"), this, [this, chosen] { stage(chosen); });
    menu.addAction(tr("Discard Changes…"), this, [this, chosen] { discard(chosen); });
  } else {
    menu.addAction(tr("Unstage"), this, [this, chosen] { unstage(chosen); });
  }
  menu.addSeparator();
  const QString root = module_.repositoryPath;
  menu.addAction(tr("Copy Full Path"), this, [root, chosen] {
    QStringList paths;
    for (const auto& file : chosen) paths << root + QLatin1Char('/') + file->path;
    QApplication::clipboard()->setText(paths.join(QLatin1Char('\n')));
  });
  menu.addAction(tr("Copy File Name"), this, [chosen] {
    QStringList names;
    for (const auto& file : chosen) names << QFileInfo(file->path).fileName();
    QApplication::clipboard()->setText(names.join(QLatin1Char('\n')));
  });
  menu.exec(list->viewport()->mapToGlobal(position));
}
