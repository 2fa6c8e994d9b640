#include "Controllers/LocalChanges/StageFileViewController.h"

#include <QApplication>
#include <QActionGroup>
#include <algorithm>
#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QKeyEvent>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSplitter>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include "Commands/CommandTable.h"
#include "Commands/ContextMenus.h"
#include "Commands/ShowInFolderCommand.h"
#include "UI/JelvDocument.h"
#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/QueuedWork.h"
#include "Controllers/Sheets/AddGitIgnorePatternController.h"
#include "Controllers/Sheets/EditRepositoryFileController.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controls/Diff/CommitTextDiffView.h"
#include "Controls/Diff/DiffContent.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "Git/Commands/Merge/GetUnmergedFilesGitCommand.h"
#include "Git/Commands/Merge/ResolveConflictGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetRepositoryStateGitCommand.h"
#include "Git/Commands/RepositoryStatus/GetStagedFilesForAmendGitCommand.h"
#include "Git/Commands/Submodules/GetSubmodulesGitCommand.h"
#include "Git/Commands/WorkingDirectory/ApplySelectionPatchGitCommand.h"
#include "Git/Commands/WorkingDirectory/DiscardChangedFilesCommand.h"
#include "Git/Commands/WorkingDirectory/GetWorkingDirectoryFileChangesGitCommand.h"
#include "Git/Commands/WorkingDirectory/IgnorePatternGitCommand.h"
#include "Git/Commands/WorkingDirectory/SaveChangesAsPatchGitCommand.h"
#include "Git/Commands/WorkingDirectory/MergeConflictsResolved.h"
#include "Git/Commands/WorkingDirectory/StageFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/UnstageFilesGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobOutcome.h"
#include "Jobs/JobQueue.h"
#include "Models/FileContent/DiffSettings.h"
#include "Models/MergeMessage.h"
#include "Models/PatternMenuItems.h"
#include "Models/RepositoryState.h"
#include "Models/SelectionPatch.h"
#include "Models/StagingRefresh.h"
#include "Repository/RepositoryController.h"
#include "Services/DesktopApplications.h"
#include "Services/ExternalDiff.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"

namespace {
QPushButton* smallButton(const QString& title, QWidget* parent) {
  auto* button = new QPushButton(title, parent);
  button->setAutoDefault(false);
  return button;
}

QWidget* listSection(QLabel* label, const QList<QWidget*>& buttons, FileListViewController* list) {
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

StageFileViewController::StageFileViewController(RepositoryController& repository, QWidget* parent)
    : QWidget(parent),
      module_(repository.gitModule().value_or(GitModule{})),
      queue_(repository.jobQueue()),
      repository_(&repository) {
  connect(&repository, &RepositoryController::repositoryStatusUpdated, this, [this] {
    if (repository_->repositoryStatus()) applyStatus(*repository_->repositoryStatus());
  });
  connect(&repository, &RepositoryController::refreshFinished, this, &StageFileViewController::repositoryRefreshEnded);
  unstagedLabel_ = new QLabel(this);
  stagedLabel_ = new QLabel(this);
  unstaged_ = new FileListViewController(this);
  staged_ = new FileListViewController(this);
  modeButton_ = new QToolButton(this);
  modeButton_->setText(tr("View"));
  modeButton_->setToolTip(tr("Show the files as a list or as folders"));
  modeButton_->setPopupMode(QToolButton::InstantPopup);
  {
    auto* menu = new QMenu(modeButton_);
    auto* group = new QActionGroup(menu);
    const FileListViewMode stored = Preferences::shared().fileListMode() == 1 ? FileListViewMode::tree : FileListViewMode::list;
    for (const auto& [title, mode] : {std::pair{tr("Show as List"), FileListViewMode::list},
                                      std::pair{tr("Show as Tree"), FileListViewMode::tree}}) {
      QAction* action = menu->addAction(title, this, [this, mode = mode] { setFileListMode(mode); });
      action->setCheckable(true);
      action->setChecked(mode == stored);
      group->addAction(action);
    }
    modeButton_->setMenu(menu);
    unstaged_->setMode(stored);
    staged_->setMode(stored);
  }
  stageButton_ = smallButton(tr("Stage"), this);
  discardButton_ = smallButton(tr("Discard Changes…"), this);
  unstageButton_ = smallButton(tr("Unstage"), this);
  diffPane_ = new FileDiffView(FileDiffView::Mode::staging, this);
  commitBox_ = new CommitController(module_, queue_, this);

  auto* lists = new QSplitter(Qt::Vertical);
  lists->addWidget(listSection(unstagedLabel_, {modeButton_, stageButton_, discardButton_}, unstaged_));
  lists->addWidget(listSection(stagedLabel_, {unstageButton_}, staged_));
  lists->addWidget(commitBox_);
  // The lists get the room; the commit box keeps about its natural height.
  lists->setStretchFactor(0, 3);
  lists->setStretchFactor(1, 2);
  lists->setStretchFactor(2, 1);
  auto* split = new QSplitter(Qt::Horizontal, this);
  split->addWidget(lists);
  split->addWidget(diffPane_);
  split->setStretchFactor(1, 2);
  split->setSizes({420, 680});
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

  for (FileListViewController* list : {unstaged_, staged_}) {
    list->installEventFilter(this);
    list->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(list, &QWidget::customContextMenuRequested, this, [this, list](const QPoint& p) { showContextMenu(list, p); });
    connect(list, &FileListViewController::currentFileChanged, this, [this, list](ChangedFilePtr file) {
      if (rebuilding_ || !file) return;
      // One diff at a time: choosing in one list clears the other.
      FileListViewController* other = list == unstaged_ ? staged_ : unstaged_;
      const QSignalBlocker blocker(other);
      other->clearSelection();
      other->setCurrentIndex(QModelIndex());
      loadDiff(file);
    });
  }
  connect(unstaged_, &FileListViewController::fileActivated, this, [this] { stage(selection(unstaged_)); });
  connect(staged_, &FileListViewController::fileActivated, this, [this] { unstage(selection(staged_)); });
  connect(stageButton_, &QPushButton::clicked, this, [this] {
    const ChangedFileList chosen = selection(unstaged_);
    stage(chosen.empty() ? unstaged_->files() : chosen);
  });
  connect(unstageButton_, &QPushButton::clicked, this, [this] {
    const ChangedFileList chosen = selection(staged_);
    unstage(chosen.empty() ? staged_->files() : chosen);
  });
  connect(discardButton_, &QPushButton::clicked, this, [this] { discard(selection(unstaged_)); });
  // Without a selection the buttons act on the whole list, and say so.
  for (FileListViewController* list : {unstaged_, staged_}) {
    connect(list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &StageFileViewController::updateStageButtonTitles);
  }
  updateStageButtonTitles();
  connect(commitBox_, &CommitController::committed, this, &StageFileViewController::committed);
  connect(commitBox_, &CommitController::amendChanged, this, &StageFileViewController::reload);
  // The preferences window may change the mode too.
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::valueChanged, this, [this](const QString& key) {
    if (key != QStringLiteral("fileListMode")) return;
    const FileListViewMode mode = Preferences::shared().fileListMode() == 1 ? FileListViewMode::tree : FileListViewMode::list;
    if (mode != unstaged_->mode()) setFileListMode(mode);
  });
  connect(diffPane_, &FileDiffView::loadLargeRequested, this, [this] {
    if (diffFile_) loadDiff(diffFile_, true);
  });
  // The shown diff is read again with the context or whitespace the user now wants.
  for (auto changed : {&PreferencesNotifier::diffContextSizeChanged, &PreferencesNotifier::diffIgnoreWhitespacesChanged}) {
    connect(&PreferencesNotifier::shared(), changed, this, [this] {
      if (diffFile_) loadDiff(diffFile_, false);
    });
  }
  connect(diffPane_, &FileDiffView::selectionApplyRequested, this, &StageFileViewController::applySelection);
  connect(diffPane_, &FileDiffView::resolveConflictsRequested, this, [this] {
    if (diffFile_) Q_EMIT resolveConflictsRequested(diffFile_->path);
  });
  showFiles({});
}

CommitTextDiffView* StageFileViewController::diffView() const { return diffPane_->unifiedView(); }

void StageFileViewController::setFiles(const ChangedFileList& files) {
  // Under amend the staged list is the page's own read.
  if (commitBox_->isAmending()) return;
  const bool same = std::equal(files.begin(), files.end(), files_.begin(), files_.end(),
                               [](const ChangedFilePtr& a, const ChangedFilePtr& b) { return *a == *b; });
  // The first list is shown even when empty: it says "No local changes".
  if (!same || !filesShown_) showFiles(files);
}

ChangedFileList StageFileViewController::selection(FileListViewController* list) const { return list->selectedFiles(); }

void StageFileViewController::setFileListMode(FileListViewMode mode) {
  // The lists first: the stored value is reported back synchronously.
  unstaged_->setMode(mode);
  staged_->setMode(mode);
  const auto actions = modeButton_->menu()->actions();
  for (int i = 0; i < actions.size(); ++i) actions[i]->setChecked(i == static_cast<int>(mode));
  if (Preferences::shared().fileListMode() != static_cast<int>(mode)) Preferences::shared().setFileListMode(static_cast<int>(mode));
}

bool StageFileViewController::eventFilter(QObject* watched, QEvent* event) {
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

void StageFileViewController::reload() {
  const GitModule module = module_;
  const bool amend = commitBox_->isAmending();
  if (!repository_) return;
  repository_->refreshStatus();
  // Under amend the staged list is the amended commit's: that read stays the page's own.
  if (!amend) {
    awaiting_ = Awaiting::status;
    return;
  }
  QPointer<StageFileViewController> self(this);
  // The same options as the repository's status read, so that both agree on the list.
  const bool hideUntracked = Preferences::shared().boolean(QStringLiteral("hideUntrackedFiles"));
  const bool showIgnored = Preferences::shared().boolean(QStringLiteral("showIgnoredFiles"));
  queue_->schedule(Job::make(tr("Refresh changed files"), Job::Show::none(), Job::ProgressType::infinite,
                             [self, module, amend, hideUntracked, showIgnored](JobProgress& progress) {
                               // Submodules are discarded in their own repository, so they must be known
                               // as such; most repositories have none and pay nothing for it.
                               SubmoduleList submodules;
                               if (QFileInfo::exists(QDir(module.repositoryPath).filePath(QStringLiteral(".gitmodules")))) {
                                 auto found = GetSubmodulesGitCommand::execute(module);
                                 if (found) submodules = found.value();
                               }
                               auto result = GetChangedFilesGitCommand::execute(module, submodules, hideUntracked, showIgnored, &progress);
                               std::optional<ChangedFileList> amended;
                               if (amend && result) {
                                 auto files = GetStagedFilesForAmendGitCommand::executeInternal(module);
                                 if (files) amended = files.value();
                               }
                               // The files first: the state only changes the commit box.
                               QMetaObject::invokeMethod(qApp, [self, result, amended] {
                                 if (!self) return;
                                 if (result) self->showFiles(result.value().changedFiles, amended);
                                 else ErrorWindowController::present(self, self->module_, result.error(), self->queue_);
                               });
                               auto state = GetRepositoryStateGitCommand::execute(module, {}, &progress);
                               std::optional<CommitMessage> mergeMessage;
                               if (state && (state.value().is<RepositoryState::MergeInProgress>() ||
                                             state.value().is<RepositoryState::SquashInProgress>())) {
                                 mergeMessage = readMergeMessage(module);
                               }
                               QMetaObject::invokeMethod(qApp, [self, state, mergeMessage] {
                                 if (!self) return;
                                 if (state) self->commitBox_->setRepositoryState(state.value(), mergeMessage);
                                 Q_EMIT self->reloaded();
                               });
                             }));
}

void StageFileViewController::sheetSucceeded() {
  // The sheet has asked the repository for the refresh itself.
  awaiting_ = Awaiting::status;
}

void StageFileViewController::committed() {
  if (!repository_) return;
  // A commit moves HEAD and its branch and adds to the history, besides the status.
  awaiting_ = Awaiting::status;
  repository_->refreshRepository(Subdomain::repositoryStatus() | Subdomain::head() | Subdomain::revisions() |
                                 Subdomain::localBranches());
}

void StageFileViewController::applyStatus(const RepositoryStatus& status) {
  const Awaiting awaited = std::exchange(awaiting_, Awaiting::nothing);
  if (!commitBox_->isAmending()) {
    if (awaited == Awaiting::nothing) {
      setFiles(status.changedFiles);
    } else {
      // Asked for after a change: the diff on screen is read again even if the list is equal.
      const ChangedFilePtr shown = diffFile_;
      showFiles(status.changedFiles);
      // All lines of the file went to the other side: its diff follows them.
      if (awaited == Awaiting::paths && shown && !diffFile_) (shown->staged ? unstaged_ : staged_)->selectFile(shown->path);
    }
  }
  const RepositoryState& state = status.repositoryState;
  std::optional<CommitMessage> mergeMessage;
  // Read only when it would be used: statuses arrive at every refresh.
  const bool merging = state.is<RepositoryState::MergeInProgress>() || state.is<RepositoryState::SquashInProgress>();
  if (merging && commitBox_->takesMergeMessage()) mergeMessage = readMergeMessage(module_);
  commitBox_->setRepositoryState(state, mergeMessage);
  if (awaited != Awaiting::nothing) Q_EMIT reloaded();
}

void StageFileViewController::repositoryRefreshEnded() {
  if (awaiting_ != Awaiting::status) return;
  awaiting_ = Awaiting::nothing;
  Q_EMIT reloaded();
}

void StageFileViewController::showFiles(const ChangedFileList& files, const std::optional<ChangedFileList>& amendedFiles) {
  files_ = files;
  filesShown_ = true;
  ChangedFileList unstaged;
  ChangedFileList staged;
  for (const auto& file : files) {
    if (!file->staged) unstaged.push_back(file);
    else if (!amendedFiles) staged.push_back(file);
  }
  if (amendedFiles) staged = *amendedFiles;
  rebuilding_ = true;
  unstaged_->setFiles(unstaged);
  staged_->setFiles(staged);
  rebuilding_ = false;
  unstagedLabel_->setText(tr("Unstaged (%1)").arg(unstaged.size()));
  stagedLabel_->setText(tr("Staged (%1)").arg(staged.size()));
  stageButton_->setEnabled(!unstaged.empty());
  discardButton_->setEnabled(!unstaged.empty());
  unstageButton_->setEnabled(!staged.empty());
  updateStageButtonTitles();
  commitBox_->setStagedFilesCount(static_cast<int>(staged.size()));
  // Keep the diff of the file on screen if it is still listed on the same side.
  ChangedFilePtr current;
  for (const auto& file : diffFile_ && diffFile_->staged ? staged : unstaged) {
    if (diffFile_ && file->path == diffFile_->path) current = file;
  }
  // A file staged or unstaged from the list on screen hands the diff to the one after it.
  const std::optional<QString> next = std::exchange(nextAfterMove_, std::nullopt);
  if (!current && next) {
    for (const auto& file : diffFile_ && diffFile_->staged ? staged : unstaged) {
      if (file->path == *next) current = file;
    }
    FileListViewController* list = current && current->staged ? staged_ : unstaged_;
    if (current) {
      rebuilding_ = true;
      list->selectFile(current->path);
      rebuilding_ = false;
    }
  }
  if (current) {
    loadDiff(current);
  } else {
    diffFile_.reset();
    shownFile_.reset();
    diffPane_->showMessage(files.empty() ? tr("No local changes") : tr("Select a file to see its changes."));
  }
}

void StageFileViewController::loadDiff(const ChangedFilePtr& file, bool loadLarge) {
  diffFile_ = file;
  const GitModule module = module_;
  const bool amend = commitBox_->isAmending();
  const DiffSettings settings = DiffSettings::fromPreferences();
  QPointer<StageFileViewController> self(this);
  queue_->schedule(Job::make(tr("Load diff"), Job::Show::none(), Job::ProgressType::infinite,
                             [self, module, file, amend, settings, loadLarge](JobProgress& progress) {
                               const auto location = file->staged ? XFilePatch::Location::staged : XFilePatch::Location::unstaged;
                               DiffContent content = diffContentFrom(
                                   GetWorkingDirectoryFileChangesGitCommand::execute(module, file, amend, settings), location, loadLarge);
                               if (progress.isCanceled()) return;
                               QMetaObject::invokeMethod(qApp, [self, file, content = std::move(content)]() mutable {
                                 if (!self || self->diffFile_ != file) return;
                                 // The same file again (after a change to it) keeps its place.
                                 const ChangedFilePtr& shown = self->shownFile_;
                                 const bool same = shown && shown->path == file->path && shown->staged == file->staged;
                                 self->shownFile_ = file;
                                 self->diffPane_->showContent(std::move(content), file, same);
                                 Q_EMIT self->diffLoaded();
                               });
                             }));
}

void StageFileViewController::runOperation(const QString& name, std::function<GitVoidResult()> work) {
  QPointer<StageFileViewController> self(this);
  queue_->schedule(Job::make(name, Job::Show{3}, Job::ProgressType::infinite, [self, work](JobProgress& progress) {
    const GitVoidResult result = work();
    JobOutcome::report(progress, result);
    QMetaObject::invokeMethod(qApp, [self, result] {
      if (!self) return;
      if (result.isFailure()) {
        ErrorWindowController::present(self, self->module_, result.error(), self->queue_, [self](ErrorWindowController* sheet) {
          if (self) connect(sheet, &ErrorWindowController::repositoryChanged, self, &StageFileViewController::reload);
        });
      }
      self->reload();
    });
  }));
}

void StageFileViewController::updateStageButtonTitles() {
  stageButton_->setText(selection(unstaged_).empty() ? tr("Stage All") : tr("Stage"));
  unstageButton_->setText(selection(staged_).empty() ? tr("Unstage All") : tr("Unstage"));
}

void StageFileViewController::rememberNextFile(const FileListViewController* list, const ChangedFileList& moved) {
  nextAfterMove_.reset();
  if (!diffFile_) return;
  const ChangedFileList& listed = list->files();
  const auto isMoved = [&](const ChangedFilePtr& file) {
    return std::any_of(moved.begin(), moved.end(), [&](const ChangedFilePtr& m) { return m->path == file->path; });
  };
  if (!isMoved(diffFile_)) return;
  // The first file behind the shown one that stays, else the last before it.
  const auto shown = std::find_if(listed.begin(), listed.end(), [&](const ChangedFilePtr& file) { return file->path == diffFile_->path; });
  if (shown == listed.end()) return;
  for (auto it = shown; it != listed.end(); ++it) {
    if (!isMoved(*it)) {
      nextAfterMove_ = (*it)->path;
      return;
    }
  }
  for (auto it = std::make_reverse_iterator(shown); it != listed.rend(); ++it) {
    if (!isMoved(*it)) {
      nextAfterMove_ = (*it)->path;
      return;
    }
  }
}

void StageFileViewController::stage(const ChangedFileList& files) {
  if (files.empty()) return;
  if (std::none_of(files.begin(), files.end(), [](const ChangedFilePtr& file) { return file->changeType == ChangeType::unmerged; })) {
    stageNow(files);
    return;
  }
  // Staging marks a conflicted file resolved: one that still holds markers is asked about.
  const GitModule module = module_;
  runQueued<bool>(queue_, this, tr("Check conflict markers"), Job::Show::none(),
                  [module, files](JobProgress&) { return testMergeConflictsResolved(module, files); },
                  [this, files](const bool& resolved) {
                    if (!resolved && !confirm_(tr("The file still contains conflict markers."),
                                               tr("Staging it marks the conflict as resolved, and the markers "
                                                  "\"<<<<<<<\", \"=======\" and \">>>>>>>\" would be committed as "
                                                  "they are."),
                                               tr("Stage Anyway"))) {
                      return;
                    }
                    stageNow(files);
                  });
}

void StageFileViewController::stageNow(const ChangedFileList& files) {
  rememberNextFile(unstaged_, files);
  const GitModule module = module_;
  runOperation(tr("Stage"), [module, files] { return StageFilesGitCommand::execute(module, files); });
}

void StageFileViewController::unstage(const ChangedFileList& files) {
  if (files.empty()) return;
  rememberNextFile(staged_, files);
  const GitModule module = module_;
  runOperation(tr("Unstage"), [module, files] { return UnstageFilesGitCommand::execute(module, files); });
}

void StageFileViewController::discard(const ChangedFileList& files) {
  if (files.empty()) return;
  const DiscardChangedFilesCommand::Plan plan = DiscardChangedFilesCommand::plan(files);
  const DiscardChangedFilesCommand::Confirmation texts = DiscardChangedFilesCommand::confirmation(plan);
  if (!confirm_(texts.messageText, texts.informativeText, texts.discardButton)) return;
  const GitModule module = module_;
  runOperation(tr("Discard"), [module, plan] { return DiscardChangedFilesCommand::execute(module, plan); });
}

void StageFileViewController::addStashAction(QMenu* menu, const ChangedFileList& chosen) {
  QWidget* ancestor = parentWidget();
  while (ancestor && !qobject_cast<JelvDocument*>(ancestor)) ancestor = ancestor->parentWidget();
  if (!ancestor) return;
  CommandContext context = CommandContext::forRepository(static_cast<JelvDocument*>(ancestor));
  context.revisions.clear();
  for (const ChangedFilePtr& file : chosen) {
    if (!context.paths.contains(file->path)) context.paths << file->path;
  }
  CommandTable::addActions(menu, {QStringLiteral("createPartialStash")}, context);
}

void StageFileViewController::showContextMenu(FileListViewController* list, const QPoint& position) {
  QMenu* menu = contextMenu(list);
  if (!menu) return;
  menu->exec(list->viewport()->mapToGlobal(position));
  delete menu;
}

QMenu* StageFileViewController::contextMenu(FileListViewController* list) {
  const ChangedFileList chosen = selection(list);
  if (chosen.empty()) return nullptr;
  auto* menu = new QMenu(this);
  const bool onlySubmodules =
      std::all_of(chosen.begin(), chosen.end(), [](const ChangedFilePtr& file) { return file->changedSubmodule() != nullptr; });
  const QString root = module_.repositoryPath;
  if (list == unstaged_) {
    menu->addAction(tr("Stage"), this, [this, chosen] { stage(chosen); });
    menu->addAction(onlySubmodules ? tr("Discard Submodule Changes…") : tr("Discard Changes…"), this,
                    [this, chosen] { discard(chosen); });
    if (std::any_of(chosen.begin(), chosen.end(), [](const ChangedFilePtr& file) { return file->changeType == ChangeType::unmerged; })) {
      const auto conflicted = std::find_if(chosen.begin(), chosen.end(),
                                           [](const ChangedFilePtr& file) { return file->changeType == ChangeType::unmerged; });
      const QString conflictedPath = (*conflicted)->path;
      menu->addAction(tr("Resolve Conflicts…"), this, [this, conflictedPath] { Q_EMIT resolveConflictsRequested(conflictedPath); });
      menu->addAction(tr("Resolve Using Mine"), this, [this, chosen] { resolveConflicts(chosen, UnmergedFileVersionType::local); });
      menu->addAction(tr("Resolve Using Theirs"), this, [this, chosen] { resolveConflicts(chosen, UnmergedFileVersionType::remote); });
    }
    // Ignoring changes nothing for a file git already tracks: offered for new files only.
    if (chosen.size() == 1 && chosen.front()->isNew) {
      QMenu* ignoreMenu = menu->addMenu(tr("Ignore"));
      const std::vector<PatternMenuItem> items = ignoreMenuItems(chosen.front()->path);
      for (const PatternMenuItem& item : items) {
        if (item.kind == PatternMenuItem::Kind::pattern) {
          ignoreMenu->addAction(item.title, this, [this, pattern = item.pattern] { ignore(pattern); });
        } else if (item.kind == PatternMenuItem::Kind::customPattern) {
          ignoreMenu->addSeparator();
          // The sheet starts from the file itself, the first entry of the list.
          ignoreMenu->addAction(item.title, this, [this, start = items.front().pattern] { showIgnorePatternSheet(start); });
        }
      }
    }
  } else {
    menu->addAction(tr("Unstage"), this, [this, chosen] { unstage(chosen); });
  }
  if (chosen.size() == 1 && onlySubmodules) {
    menu->addAction(tr("Open Submodule in New Tab"), this, [this, path = QDir(root).filePath(chosen.front()->path)] {
      Q_EMIT openSubmoduleRequested(QDir::cleanPath(path));
    });
  }
  addStashAction(menu, chosen);
  menu->addAction(tr("Save as Patch…"), this, [this, chosen] {
    Preferences& preferences = Preferences::shared();
    const QString folder = preferences.recentPatchDirectory().value_or(QDir::homePath());
    const QString path = QFileDialog::getSaveFileName(this, tr("Save as Patch"), QDir(folder).filePath(QStringLiteral("changes.patch")),
                                                      tr("Patches (*.patch *.diff);;All Files (*)"));
    if (path.isEmpty()) return;
    preferences.setRecentPatchDirectory(QFileInfo(path).absolutePath());
    savePatch(chosen, path);
  });
  menu->addSeparator();
  menu->addAction(tr("Copy Full Path"), this, [root, chosen] {
    QStringList paths;
    for (const auto& file : chosen) paths << QDir(root).filePath(file->path);
    QApplication::clipboard()->setText(paths.join(QLatin1Char('\n')));
  });
  menu->addAction(tr("Copy File Name"), this, [chosen] {
    QStringList names;
    for (const auto& file : chosen) names << QFileInfo(file->path).fileName();
    QApplication::clipboard()->setText(names.join(QLatin1Char('\n')));
  });
  // One file at a time; a folder entry (an untracked folder) is no file to diff or open.
  if (chosen.size() == 1 && !onlySubmodules && !chosen.front()->isDirectory) {
    const ChangedFilePtr file = chosen.front();
    QMenu* openWithMenu = menu->addMenu(tr("Open With"));
    // The working file opens; a deleted one has nothing to open.
    openWithMenu->setEnabled(QFileInfo(QDir(root).filePath(file->path)).isFile());
    // Filled when it opens: reading the desktop's applications costs a little.
    connect(openWithMenu, &QMenu::aboutToShow, this, [this, openWithMenu, file] { fillOpenWithMenu(openWithMenu, file); });
    menu->addAction(tr("External Diff"), this, [this, file] { externalDiff(file); });
    // Who changed its lines and when, as of the checked-out commit.
    JelvDocument* repository = document();
    if (repository && file->tracked && !file->isNew) {
      CommandContext context = CommandContext::forRepository(repository);
      context.revisions.clear();
      context.paths = {file->oldPath.value_or(file->path)};
      menu->addSeparator();
      CommandTable::addActions(menu, {QStringLiteral("blame"), QStringLiteral("fileHistory")}, context);
    }
  }
  // A folder row of the tree: the history of everything under it (the slash says folder).
  if (const QString folder = list->selectedFolder(); !folder.isEmpty()) {
    if (JelvDocument* repository = document()) {
      CommandContext context = CommandContext::forRepository(repository);
      context.revisions.clear();
      context.paths = {folder + QLatin1Char('/')};
      menu->addSeparator();
      CommandTable::addActions(menu, {QStringLiteral("fileHistory")}, context);
    }
  }
  // The desktop has no "reveal"; opening the folder is what a file manager offers.
  menu->addAction(tr("Show in File Manager"), this, [this, root, file = chosen.front()] {
    ShowInFolderCommand::execute(this, QFileInfo(QDir(root).filePath(file->path)).absolutePath());
  });
  if (chosen.size() == 1) {
    const QString name = QFileInfo(chosen.front()->path).fileName();
    if (name == QStringLiteral(".gitignore") || name == QStringLiteral(".gitattributes")) {
      menu->addSeparator();
      menu->addAction(tr("Edit %1…").arg(name), this, [this, path = chosen.front()->path] { showEditFileSheet(path); });
    }
  }
  // A file of the working tree: no commit, so "$SHA" stays as written.
  if (JelvDocument* repository = document(); repository && chosen.size() == 1) {
    CommandContext context = CommandContext::forRepository(repository);
    context.revisions.clear();
    context.paths = {chosen.front()->path};
    ContextMenus::addCustomCommands(menu, context, CustomCommand::Target::file);
  }
  return menu;
}

JelvDocument* StageFileViewController::document() const {
  for (QObject* ancestor = parent(); ancestor; ancestor = ancestor->parent()) {
    if (auto* repository = qobject_cast<JelvDocument*>(ancestor)) return repository;
  }
  return nullptr;
}

void StageFileViewController::fillOpenWithMenu(QMenu* menu, const ChangedFilePtr& file) {
  menu->clear();
  const QString path = QDir(module_.repositoryPath).filePath(file->path);
  const std::vector<DesktopEntry> applications = DesktopApplications::applicationsForFile(path);
  for (size_t i = 0; i < applications.size(); ++i) {
    const DesktopEntry& application = applications[i];
    QAction* action = menu->addAction(QIcon::fromTheme(application.icon), application.name, this,
                                      [this, application, file] { openWith(application, file); });
    action->setToolTip(application.exec);
    // The first is what the desktop itself would open the file with; set it apart.
    if (i == 0 && applications.size() > 1) menu->addSeparator();
  }
  if (applications.empty()) menu->addAction(tr("No Applications Found"))->setEnabled(false);
  menu->addSeparator();
  menu->addAction(tr("Other…"), this, [this, file] {
    bool ok = false;
    const QString command = QInputDialog::getText(this, tr("Open With"),
                                                  tr("Command to open '%1' with (%f stands for the file; without it the file is added at the end):")
                                                      .arg(QFileInfo(file->path).fileName()),
                                                  QLineEdit::Normal, QString(), &ok);
    if (!ok || command.trimmed().isEmpty()) return;
    DesktopEntry entry;
    entry.name = command.trimmed();
    entry.exec = command.trimmed();
    openWith(entry, file);
  });
}

void StageFileViewController::openWith(const DesktopEntry& application, const ChangedFilePtr& file) {
  const QString root = module_.repositoryPath;
  const QString path = QDir(root).filePath(file->path);
  runQueued<std::optional<QString>>(
      queue_, this, tr("Open with %1").arg(application.name), Job::Show::none(),
      [application, path, root](JobProgress&) { return DesktopApplications::launch(application, {path}, root); },
      [this](const std::optional<QString>& failure) {
        if (failure) showToolFailure(*failure);
      });
}

void StageFileViewController::externalDiff(const ChangedFilePtr& file) {
  const GitModule module = module_;
  const bool amend = file->staged && commitBox_->isAmending();
  runQueued<std::optional<QString>>(
      queue_, this, tr("External diff"), Job::Show::none(),
      [module, file, amend](JobProgress&) { return ExternalDiff::run(module, *file, amend, Preferences::shared()); },
      [this](const std::optional<QString>& failure) {
        if (failure) showToolFailure(*failure);
      });
}

void StageFileViewController::showToolFailure(const QString& text) {
  Q_EMIT externalToolFailed(text);
  auto* alert = new QMessageBox(QMessageBox::Warning, tr("Cannot open the file"), text, QMessageBox::Ok, this);
  alert->setAttribute(Qt::WA_DeleteOnClose);
  alert->open();
}

void StageFileViewController::resolveConflicts(const ChangedFileList& files, UnmergedFileVersionType version) {
  QStringList paths;
  for (const auto& file : files) {
    if (file->changeType == ChangeType::unmerged) paths << file->path;
  }
  if (paths.isEmpty()) return;
  const GitModule module = module_;
  runOperation(version == UnmergedFileVersionType::local ? tr("Resolve using mine") : tr("Resolve using theirs"),
               [module, paths, version]() -> GitVoidResult {
                 // The index's own record of the conflicts, read when the job runs.
                 const auto unmerged = GetUnmergedFilesGitCommand::execute(module);
                 if (!unmerged) return unmerged.error();
                 for (const UnmergedFile& file : unmerged.value()) {
                   if (!paths.contains(file.path)) continue;
                   const GitVoidResult result = ResolveConflictGitCommand::execute(module, file, version);
                   if (!result) return result;
                 }
                 return Unit{};
               });
}

void StageFileViewController::savePatch(const ChangedFileList& files, const QString& path) {
  if (files.empty()) return;
  const GitModule module = module_;
  const bool amend = commitBox_->isAmending();
  runQueued<GitVoidResult>(
      queue_, this, tr("Save as patch"), Job::Show{3},
      [module, files, path, amend](JobProgress&) { return SaveChangesAsPatchGitCommand::execute(module, files, path, amend); },
      [this, path](const GitVoidResult& result) {
        if (result) Q_EMIT patchSaved(path);
        else ErrorWindowController::present(this, module_, result.error(), queue_);
      });
}

void StageFileViewController::ignore(const QString& pattern) {
  const GitModule module = module_;
  runOperation(tr("Ignore '%1'").arg(pattern), [module, pattern] { return IgnorePatternGitCommand::append(module, pattern); });
}

void StageFileViewController::showIgnorePatternSheet(const QString& initialPattern) {
  auto* sheet = new AddGitIgnorePatternController(module_, initialPattern, window());
  sheet->setRepository(repository_, repository_);
  sheet->setJobQueue(queue_);
  QPointer<StageFileViewController> self(this);
  JelvSheetController::showSheet(this, sheet, [self](const JelvSheetResult& result) {
    if (!self) return;
    if (const ResultError* error = result.error()) ErrorWindowController::present(self, self->module_, *error, self->queue_);
    if (result.isSuccess()) self->sheetSucceeded();
  });
}

void StageFileViewController::showEditFileSheet(const QString& relativePath) {
  auto* sheet = new EditRepositoryFileController(QDir(module_.repositoryPath).filePath(relativePath), window());
  sheet->setRepository(repository_, repository_);
  sheet->setJobQueue(queue_);
  QPointer<StageFileViewController> self(this);
  JelvSheetController::showSheet(this, sheet, [self](const JelvSheetResult& result) {
    if (!self) return;
    if (const ResultError* error = result.error()) ErrorWindowController::present(self, self->module_, *error, self->queue_);
    if (result.isSuccess()) self->sheetSucceeded();
  });
}

void StageFileViewController::applySelection(const XPatchPtr& patch, SelectionMode mode, bool wholeHunk) {
  if (!patch || patch->files.empty()) return;
  if (mode == SelectionMode::discard) {
    const auto texts = SelectionPatch::discardConfirmation(*patch, wholeHunk);
    if (!texts) return;
    if (!confirm_(texts->messageText, texts->informativeText, texts->confirmButtonTitle)) return;
  }
  // Only the first file is applied; its paths, with the other side of a move, are read again.
  XPatch first;
  first.files.push_back(patch->files.front());
  const QStringList paths = StagingRefresh::pathsToRead(files_, SelectionPatch::changedPaths(first));
  const GitModule module = module_;
  QPointer<StageFileViewController> self(this);
  const QString name = mode == SelectionMode::stage ? tr("Stage lines") : mode == SelectionMode::unstage ? tr("Unstage lines") : tr("Discard lines");
  queue_->schedule(Job::make(name, Job::Show{3}, Job::ProgressType::infinite, [self, module, patch, mode, paths](JobProgress& progress) {
    const GitVoidResult result = ApplySelectionPatchGitCommand::execute(module, *patch, mode);
    JobOutcome::report(progress, result);
    QMetaObject::invokeMethod(qApp, [self, result, paths] {
      if (!self) return;
      // A locked index is passing; the refresh shows that nothing happened.
      if (result.isFailure() && !result.isError<Error::RepositoryIsLocked>() && !result.isError<Error::NoChanges>()) {
        ErrorWindowController::present(self, self->module_, result.error(), self->queue_);
      }
      // Under amend the staged list comes from another read: all of it again then.
      if (self->commitBox_->isAmending()) self->reload();
      else self->refreshPaths(paths);
    });
  }));
}

void StageFileViewController::refreshPaths(const QStringList& paths) {
  if (paths.isEmpty() || !repository_) return;
  awaiting_ = Awaiting::paths;
  repository_->refreshChangedFiles(paths);
}
