#include "UI/JelvDocument.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QEvent>
#include <QMenu>
#include <QPointer>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QToolButton>
#include <QTimer>
#include <QVBoxLayout>

#include "Commands/CommandContext.h"
#include "Commands/CommandTable.h"
#include "Commands/ContextMenus.h"
#include "Commands/DropBranchCommand.h"
#include "Commands/RevisionFileCommands.h"
#include "Commands/ShowBlameSheetCommand.h"
#include "Commands/ShowFileHistorySheetCommand.h"
#include "Commands/ShowPushSheetCommand.h"
#include "Controllers/LocalChanges/CommitController.h"
#include "Controllers/ActivityManagerWindow.h"
#include "Controllers/History/RevisionFileTreeTabController.h"
#include "Controllers/History/RevisionFilesMenu.h"
#include "Controllers/LocalChanges/FileListViewController.h"
#include "Controllers/CommitList/CommitListDisplayController.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/LocalChanges/StageFileViewController.h"
#include "Controllers/Repository/NotificationBar.h"
#include "Controllers/RevisionDetails/RevisionHeaderView.h"
#include "Controllers/Search/RevisionSearchBar.h"
#include "Controllers/Search/RevisionSearchController.h"
#include "Controllers/Search/RevisionSearchResultsView.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Controls/ChangedFilesView.h"
#include "Controls/Diff/DiffContent.h"
#include "Controls/FileDiffView/FileDiffView.h"
#include "Controls/RepositoryStatusBar.h"
#include "Git/Commands/RepositoryStatus/GetRevisionChangedFilesGitCommand.h"
#include "Git/Commands/Revision/GetRevisionDetailsGitCommand.h"
#include "Git/Commands/Revision/GetRevisionFileChangesGitCommand.h"
#include "Models/FileContent/DiffSettings.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Models/LocalBranch.h"
#include "Models/RepositoryStateNotification.h"
#include "Repository/RepositoryStatusManager.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"

namespace {

struct CommitContent {
  GitResult<RevisionDetails> details = Error::Unknown{};
  GitResult<ChangedFileList> files = Error::Unknown{};
};

}  // namespace

template <typename T>
std::shared_ptr<Job> JelvDocument::run(const QString& name, int show, std::function<T(JobProgress&)> work, std::function<void(T)> done) {
  QPointer<JelvDocument> guard(this);
  auto job = Job::make(name, Job::Show{show}, Job::ProgressType::infinite, [guard, work = std::move(work), done = std::move(done)](JobProgress& progress) {
    T result = work(progress);
    if (progress.isCanceled()) return;
    QMetaObject::invokeMethod(
        qApp, [guard, done, result = std::move(result)]() mutable {
          if (guard) done(std::move(result));
        },
        Qt::QueuedConnection);
  });
  queue_->schedule(job);
  return job;
}

JelvDocument::JelvDocument(const GitModule& module, std::shared_ptr<JobQueue> queue, QWidget* parent)
    : QWidget(parent), module_(module), queue_(std::move(queue)) {
  controller_ = new RepositoryController(module_, queue_, this);
  auto& prefs = Preferences::shared();
  controller_->hideUntrackedFiles = prefs.boolean(QStringLiteral("hideUntrackedFiles"));
  controller_->showIgnoredFiles = prefs.boolean(QStringLiteral("showIgnoredFiles"));
  statusManager_ = new RepositoryStatusManager(this);
  sidebar_ = new RepositorySidebar(this);
  notificationBar_ = new NotificationBar(this);
  commitList_ = new CommitListView(this);
  header_ = new RevisionHeaderView(this);
  revisionFiles_ = new ChangedFilesView(this);
  // The page reads through the controller, whose snapshots reach the sidebar too.
  localChanges_ = new StageFileViewController(*controller_, this);
  connect(localChanges_->commitBox(), &CommitController::pushRequested, this, [this] { QuickPushCommand::execute(CommandContext::forRepository(this)); });
  diffPane_ = new FileDiffView(FileDiffView::Mode::readOnly, this);
  connect(diffPane_, &FileDiffView::loadLargeRequested, this, [this] {
    loadLargeDiff_ = true;
    loadRevisionDiff(revisionFiles_->currentFile());
  });

  // History page: list above, details below (header, files | diff).
  auto* filesAndDiff = new QSplitter(Qt::Horizontal);
  filesAndDiff->addWidget(revisionFiles_);
  filesAndDiff->addWidget(diffPane_);
  filesAndDiff->setStretchFactor(1, 3);
  // The commit's changes, or all of its files as a tree.
  fileTree_ = new RevisionFileTreeTabController(module_, queue_, this);
  detailsTabs_ = new QTabWidget;
  detailsTabs_->setDocumentMode(true);
  detailsTabs_->addTab(filesAndDiff, tr("Changes"));
  detailsTabs_->addTab(fileTree_, tr("Files"));
  auto* copySha = new QToolButton;
  copySha->setObjectName(QStringLiteral("copyShaButton"));
  copySha->setText(tr("Copy SHA"));
  copySha->setAutoRaise(true);
  detailsTabs_->setCornerWidget(copySha, Qt::TopRightCorner);
  connect(copySha, &QToolButton::clicked, this,
          [this] { CommandTable::run(QStringLiteral("copySha"), CommandContext::forRepository(this)); });
  connect(detailsTabs_, &QTabWidget::currentChanged, this, [this] {
    if (detailsTabs_->currentWidget() == fileTree_) fileTree_->setRevision(commitList_->currentRevision());
  });
  RevisionFileTreeTabController::Actions treeActions;
  const auto fileContext = [this](const RevisionPtr& revision, const QString& path) {
    CommandContext context = CommandContext::forRepository(this);
    context.revisions = {revision};
    context.paths = {path};
    return context;
  };
  treeActions.history = [fileContext](const RevisionPtr& revision, const QString& path) {
    ShowFileHistorySheetCommand::execute(fileContext(revision, path));
  };
  treeActions.blame = [fileContext](const RevisionPtr& revision, const QString& path) {
    ShowBlameSheetCommand::execute(fileContext(revision, path));
  };
  treeActions.save = [fileContext](const RevisionPtr& revision, const QString& path) {
    SaveFileAtRevisionCommand::execute(fileContext(revision, path));
  };
  treeActions.customCommands = [fileContext](QMenu* menu, const RevisionPtr& revision, const QString& path) {
    ContextMenus::addCustomCommands(menu, fileContext(revision, path), CustomCommand::Target::file);
  };
  fileTree_->setActions(std::move(treeActions));
  revisionFiles_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(revisionFiles_, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
    const RevisionPtr revision = commitList_->currentRevision();
    QTreeWidgetItem* item = revisionFiles_->itemAt(position);
    if (!revision || !item) return;
    revisionFiles_->setCurrentItem(item);
    const ChangedFilePtr file = revisionFiles_->currentFile();
    if (!file) return;
    QMenu* menu = RevisionFilesMenu::make(this, revision, file);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(revisionFiles_->viewport()->mapToGlobal(position));
  });
  auto* details = new QSplitter(Qt::Vertical);
  details->addWidget(header_);
  details->addWidget(detailsTabs_);
  details->setStretchFactor(1, 3);
  details->setSizes({110, 320});
  // The search bar sits above the list, hidden until Ctrl+F.
  searchBar_ = new RevisionSearchBar;
  searchBar_->hide();
  auto* listWithSearch = new QWidget;
  auto* listLayout = new QVBoxLayout(listWithSearch);
  listLayout->setContentsMargins(0, 0, 0, 0);
  listLayout->setSpacing(0);
  listLayout->addWidget(searchBar_);
  // The list of matches stands beside the commit list while a search is open.
  searchResults_ = new RevisionSearchResultsView;
  auto* listAndResults = new QSplitter(Qt::Horizontal);
  listAndResults->addWidget(commitList_);
  listAndResults->addWidget(searchResults_);
  listAndResults->setStretchFactor(0, 3);
  listAndResults->setStretchFactor(1, 1);
  listAndResults->setChildrenCollapsible(false);
  listLayout->addWidget(listAndResults, 1);
  auto* history = new QSplitter(Qt::Vertical);
  history->addWidget(listWithSearch);
  history->addWidget(details);
  history->setStretchFactor(0, 3);
  history->setStretchFactor(1, 2);
  history->setSizes({470, 330});

  pages_ = new QStackedWidget(this);
  pages_->addWidget(history);
  pages_->addWidget(localChanges_);

  auto* right = new QWidget;
  auto* rightLayout = new QVBoxLayout(right);
  rightLayout->setContentsMargins(0, 0, 0, 0);
  rightLayout->setSpacing(0);
  rightLayout->addWidget(notificationBar_);
  rightLayout->addWidget(pages_, 1);

  auto* main = new QSplitter(Qt::Horizontal, this);
  main->addWidget(sidebar_);
  main->addWidget(right);
  main->setStretchFactor(1, 4);
  main->setSizes({230, 900});

  statusBar_ = new RepositoryStatusBar(queue_, [this] { return repositoryLine(); }, this);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(main, 1);
  layout->addWidget(statusBar_);

  connect(commitList_, &CommitListView::currentRevisionChanged, this, [this](RevisionPtr revision) { loadCommit(revision); });
  // After the current commit's own load, which a click starts first.
  connect(commitList_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          [this] { QTimer::singleShot(0, this, &JelvDocument::showSelection); });
  connect(commitList_, &CommitListView::loadAllRequested, controller_, &RepositoryController::loadWholeHistory);
  connect(revisionFiles_, &ChangedFilesView::currentFileChanged, this, [this](ChangedFilePtr file) { loadRevisionDiff(file); });
  connect(localChanges_, &StageFileViewController::openSubmoduleRequested, this, &JelvDocument::openSubmoduleRequested);
  connect(localChanges_, &StageFileViewController::resolveConflictsRequested, this, [this](const QString& path) {
    CommandContext context = CommandContext::forRepository(this);
    context.paths = QStringList{path};
    CommandTable::run(QStringLiteral("resolveConflicts"), context);
  });
  connect(header_, &RevisionHeaderView::parentRequested, this, [this](const QString& sha) {
    if (auto parsed = Sha::fromHex(sha)) commitList_->selectSha(*parsed);
  });
  connect(sidebar_, &RepositorySidebar::localChangesSelected, this, &JelvDocument::showLocalChanges);
  connect(sidebar_, &RepositorySidebar::allCommitsSelected, this, &JelvDocument::showHistory);
  connect(sidebar_, &RepositorySidebar::commitRequested, this, [this](const QString& sha) {
    showHistory();
    if (auto parsed = Sha::fromHex(sha)) commitList_->selectSha(*parsed);
  });
  connect(statusBar_, &RepositoryStatusBar::activityRequested, this, &JelvDocument::showActivityManager);
  // The operations of the table: the sidebar's entries, a double-click, the commit list.
  connect(sidebar_, &RepositorySidebar::contextMenuOpening, this, [this](QMenu* menu, QTreeWidgetItem* item) {
    const CommandContext context = ContextMenus::contextForSidebarItem(this, item);
    CommandTable::addActions(menu, ContextMenus::forSidebarItem(item), context);
    ContextMenus::addCustomCommands(menu, context);
  });
  connect(sidebar_, &RepositorySidebar::entryActivated, this, [this](QTreeWidgetItem* item) {
    const CommandContext context = ContextMenus::contextForSidebarItem(this, item);
    if (!context.reference) return;
    if (context.reference->kind() == Reference::Kind::localBranch) CommandTable::run(QStringLiteral("checkoutBranch"), context);
    if (context.reference->kind() == Reference::Kind::remoteBranch) CommandTable::run(QStringLiteral("checkoutRemoteBranch"), context);
  });
  connect(sidebar_, &RepositorySidebar::referenceDropped, this, [this](const QString& source, const QString& target) {
    DropBranchCommand::execute(CommandContext::forRepository(this), source, target);
  });
  display_ = new CommitListDisplayController(module_, sidebar_, commitList_, this);
  connect(display_, &CommitListDisplayController::contextMenuOpening, this, [this](QMenu* menu) {
    const CommandContext context = CommandContext::forRepository(this);
    CommandTable::addActions(menu, ContextMenus::revision(), context);
    ContextMenus::addCustomCommands(menu, context, CustomCommand::Target::revision);
  });
  controller_->showFirstParent = display_->showFirstParent();
  connect(display_, &CommitListDisplayController::showFirstParentChanged, this, [this](bool on) { controller_->showFirstParent = on; });
  // Another shape of the list: the shown commit is read again, or cleared when it left.
  connect(display_, &CommitListDisplayController::showFirstParentChanged, this,
          [this] { loadCommit(commitList_->currentRevision()); });
  connect(display_, &CommitListDisplayController::referenceSettingsChanged, this,
          [this] { controller_->invalidate(Subdomain::referenceSettings()); });
  followPreferences();
  connect(controller_, &RepositoryController::repositoryDataUpdated, this, &JelvDocument::applyRepositoryData);
  connect(controller_, &RepositoryController::repositoryStatusUpdated, this, &JelvDocument::applyRepositoryStatus);
  connect(controller_, &RepositoryController::behindAheadInfoUpdated, this, &JelvDocument::updateSidebar);
  connect(controller_, &RepositoryController::refreshFailed, this, [this](const QString& message) {
    Q_EMIT loadFailed(message);
    if (!controller_->repositoryData()) diffPane_->showMessage(tr("The repository could not be read: %1").arg(message));
  });
  connect(controller_, &RepositoryController::refreshFinished, this, [this] {
    // The line names the branch now, not at the next poll.
    statusBar_->poll();
    if (controller_->repositoryData() && controller_->repositoryStatus()) Q_EMIT snapshotLoaded();
  });

  // Actions rather than bare shortcuts: the window shows them in its toolbar and its
  // Repository menu with their keys, and the keys work anywhere in the tab.
  refreshAction_ = new QAction(tr("Refresh"), this);
  refreshAction_->setObjectName(QStringLiteral("refreshAction"));
  refreshAction_->setShortcut(QKeySequence(QStringLiteral("Ctrl+R")));
  connect(refreshAction_, &QAction::triggered, this, &JelvDocument::refresh);
  searchAction_ = new QAction(tr("Search Commits"), this);
  searchAction_->setObjectName(QStringLiteral("searchAction"));
  searchAction_->setShortcuts(QKeySequence::Find);
  search_ = new RevisionSearchController(searchBar_, searchResults_, commitList_, controller_, this);
  connect(search_, &RevisionSearchController::fileRequested, this, &JelvDocument::showRevisionFile);
  connect(searchAction_, &QAction::triggered, this, [this] {
    showHistory();
    search_->activate();
  });
  for (QAction* action : {refreshAction_, searchAction_}) {
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(action);
  }

  qApp->installEventFilter(this);
  refresh();
}

JelvDocument::~JelvDocument() {
  qApp->removeEventFilter(this);
  for (const auto& weak : {commitJob_, diffJob_}) {
    if (auto job = weak.lock()) job->progress().cancel();
  }
}

bool JelvDocument::eventFilter(QObject* watched, QEvent* event) {
  // The repository may have changed while another program had the focus.
  if (event->type() == QEvent::ApplicationActivate && loaded_ && isVisible()) refreshStatus();
  return QWidget::eventFilter(watched, event);
}

void JelvDocument::showEvent(QShowEvent* event) {
  // Only the repository in front keeps its status current on its own.
  statusManager_->setRepository(controller_);
  QWidget::showEvent(event);
}

void JelvDocument::hideEvent(QHideEvent* event) {
  statusManager_->setRepository(nullptr);
  QWidget::hideEvent(event);
}

QString JelvDocument::repositoryLine() const {
  const QString folder = QDir(module_.repositoryPath).dirName();
  const RepositoryDataPtr& data = controller_->repositoryData();
  if (!data) return QStringLiteral("%1: loading...").arg(folder);
  const auto& active = data->references.activeBranch;
  if (!active) return QStringLiteral("%1: detached HEAD").arg(folder);
  return QStringLiteral("%1: %2").arg(folder, active->name);
}

void JelvDocument::refresh() { controller_->refresh(); }

void JelvDocument::refreshStatus() { controller_->refreshStatus(); }

void JelvDocument::followPreferences() {
  auto& notifier = PreferencesNotifier::shared();
  // Order and count shape the log read itself.
  connect(&notifier, &PreferencesNotifier::revisionOrderingChanged, this, [this] { controller_->invalidate(Subdomain::revisions()); });
  const auto reloadDiff = [this] {
    if (ChangedFilePtr file = revisionFiles_->currentFile()) loadRevisionDiff(file);
  };
  connect(&notifier, &PreferencesNotifier::diffContextSizeChanged, this, reloadDiff);
  connect(&notifier, &PreferencesNotifier::diffIgnoreWhitespacesChanged, this, reloadDiff);
}

void JelvDocument::applyRepositoryData() {
  const RepositoryDataPtr& data = controller_->repositoryData();
  const bool first = !loaded_;
  loaded_ = true;
  auto source = std::make_shared<RevisionGraphSource>();
  source->references = data->references;
  source->revisions = data->revisions;
  source->stashes = data->stashes;
  source->historyCut = data->revisionLimit > 0 && data->revisions && static_cast<int>(data->revisions->size()) >= data->revisionLimit;
  commitList_->setSource(display_->shaped(*source));
  updateSidebar();
  // From the first data on, what a terminal does to the repository shows by itself.
  if (first) controller_->watchForOutsideChanges();
  if (first && commitList_->commitModel()->rowCount() > 0 && !commitList_->currentRevision()) {
    const auto head = data->references.head;
    const auto headSha = head ? Sha::fromHex(*head) : std::nullopt;
    if (!headSha || !commitList_->selectSha(*headSha)) commitList_->selectRow(0);
  }
}

void JelvDocument::applyRepositoryStatus() {
  const RepositoryStatusPtr& status = controller_->repositoryStatus();
  notificationBar_->setNotification(RepositoryStateNotification::make(status->repositoryState));
  updateNotificationActions();
  updateSidebar();
}

void JelvDocument::updateSidebar() {
  const RepositoryDataPtr& data = controller_->repositoryData();
  if (!data) return;
  RepositorySidebar::Content content;
  content.references = display_->marked(data->references);
  content.stashes = data->stashes;
  content.aheadBehind = controller_->behindAheadInfoCache();
  if (const RepositoryStatusPtr& status = controller_->repositoryStatus()) content.localChangesCount = status->changedFilesCount;
  for (const auto& submodule : data->submodules) content.submodules << submodule.path;
  for (const Remote& remote : data->remotes) content.remotes << remote.name;
  sidebar_->setContent(content);
}

void JelvDocument::updateNotificationActions() {
  const RepositoryStatusPtr& status = controller_->repositoryStatus();
  if (!status) return;
  const RepositoryState& state = status->repositoryState;
  const UnmergedFileList* unmerged = state.unmergedFiles();
  QStringList identifiers;
  if (unmerged && !unmerged->empty()) {
    // The editor of conflicts when it is there, else the list of them.
    identifiers << (CommandTable::find(QStringLiteral("resolveConflicts")) ? QStringLiteral("resolveConflicts") : QStringLiteral("showConflicts"));
  }
  if (state.is<RepositoryState::BisectInProgress>()) {
    identifiers << QStringLiteral("bisectGood") << QStringLiteral("bisectBad") << QStringLiteral("bisectReset");
  } else {
    identifiers << QStringLiteral("continueOperation") << QStringLiteral("skipOperation") << QStringLiteral("abortOperation");
  }
  CommandContext context = CommandContext::forRepository(this);
  context.revisions.clear();
  if (unmerged && !unmerged->empty()) context.paths << unmerged->front().path;
  QList<QAction*> actions;
  for (const QString& identifier : identifiers) {
    QAction* action = CommandTable::action(identifier, context, notificationBar_);
    // The bar's own word for the way into the conflicts, whichever command serves it.
    if (action && (identifier == QStringLiteral("resolveConflicts") || identifier == QStringLiteral("showConflicts"))) {
      action->setText(QStringLiteral("Resolve"));
    }
    if (action && action->isEnabled()) actions << action;
    else delete action;
  }
  notificationBar_->setActions(actions);
}

bool JelvDocument::showFirstConflict() {
  const RepositoryStatusPtr& status = controller_->repositoryStatus();
  const UnmergedFileList* unmerged = status ? status->repositoryState.unmergedFiles() : nullptr;
  sidebar_->setCurrentItem(sidebar_->localChangesItem());
  showLocalChanges();
  if (!unmerged || unmerged->empty()) return false;
  return localChanges_->unstagedList()->selectFile(unmerged->front().path);
}

void JelvDocument::showLocalChanges() { pages_->setCurrentIndex(1); }

void JelvDocument::showHistory() { pages_->setCurrentIndex(0); }

namespace {

// A tab that has just opened has no sidebar entries before its first snapshot: the page
// shows at once and the sidebar follows then.
void whenSidebarIsBuilt(JelvDocument& document, std::function<void(RepositorySidebar&)> select) {
  if (document.sidebar()->localChangesItem()) {
    select(*document.sidebar());
    return;
  }
  QObject::connect(&document, &JelvDocument::snapshotLoaded, &document, [&document, select] { select(*document.sidebar()); },
                   Qt::SingleShotConnection);
}

}  // namespace

void JelvDocument::selectLocalChanges() {
  showLocalChanges();
  whenSidebarIsBuilt(*this, [](RepositorySidebar& sidebar) { sidebar.setCurrentItem(sidebar.localChangesItem()); });
}

void JelvDocument::selectHistory() {
  showHistory();
  whenSidebarIsBuilt(*this, [](RepositorySidebar& sidebar) {
    if (!sidebar.currentItem() || sidebar.currentItem() == sidebar.localChangesItem()) sidebar.setCurrentItem(sidebar.allCommitsItem());
  });
}

void JelvDocument::showRevisionFileTree() {
  showHistory();
  detailsTabs_->setCurrentWidget(fileTree_);
  fileTree_->setRevision(commitList_->currentRevision());
}

void JelvDocument::showRevisionFile(const Sha& sha, const QString& path) {
  showHistory();
  if (!commitList_->selectSha(sha)) return;
  detailsTabs_->setCurrentIndex(0);
  // Selecting another commit starts reading its files; the file is chosen when they come.
  if (!revisionFiles_->selectPath(path)) pendingFile_ = path;
}

void JelvDocument::showActivityManager() {
  if (!activity_) activity_ = new ActivityManagerWindow(queue_, this);
  activity_->show();
  activity_->raise();
  activity_->activateWindow();
}

void JelvDocument::loadCommit(const RevisionPtr& revision) {
  if (auto previous = commitJob_.lock()) previous->progress().cancel();
  revisionFiles_->setFiles({});
  comparedWith_.reset();
  pendingFile_.reset();
  if (!revision) {
    selectedSha_.clear();  // a read still under way must not show its commit
    header_->clear();
    diffPane_->showMessage(tr("Select a commit to see its changes."));
    return;
  }
  selectedSha_ = revision->sha().toString();
  if (detailsTabs_->currentWidget() == fileTree_) fileTree_->setRevision(revision);
  header_->showLoading(selectedSha_);
  diffPane_->showMessage(tr("Select a file to see its changes."));
  const GitModule module = module_;
  const QString sha = selectedSha_;
  const SubmoduleList submodules = controller_->repositoryData() ? controller_->repositoryData()->submodules : SubmoduleList{};
  commitJob_ = run<CommitContent>(
      QStringLiteral("Load commit"), 0,
      [module, sha, submodules](JobProgress&) {
        CommitContent content;
        content.details = GetRevisionDetailsGitCommand::execute(module, sha);
        content.files = GetRevisionChangedFilesGitCommand::executeInternal(module, sha, std::nullopt, submodules);
        return content;
      },
      [this, sha](CommitContent content) {
        if (sha != selectedSha_) return;
        if (content.details) {
          header_->setDetails(content.details.value());
        } else {
          header_->showError(describe(content.details.error()));
        }
        if (content.files) {
          revisionFiles_->setFiles(content.files.value());
          const std::optional<QString> wanted = std::exchange(pendingFile_, std::nullopt);
          if (!content.files.value().empty() && !(wanted && revisionFiles_->selectPath(*wanted))) {
            revisionFiles_->setCurrentItem(revisionFiles_->topLevelItem(0));
          }
        }
        Q_EMIT commitDetailsLoaded();
      });
}

void JelvDocument::loadRevisionDiff(const ChangedFilePtr& file) {
  if (auto previous = diffJob_.lock()) previous->progress().cancel();
  if (!file || selectedSha_.isEmpty()) return;
  const RevisionPtr revision = commitList_->currentRevision();
  std::optional<QString> parent = comparedWith_;
  if (!comparedWith_ && revision && !revision->parents().empty()) parent = revision->parents().front().toString();
  const GitModule module = module_;
  const QString sha = selectedSha_;
  const DiffSettings settings = DiffSettings::fromPreferences();
  const bool loadLarge = std::exchange(loadLargeDiff_, false);
  diffJob_ = run<DiffContent>(
      QStringLiteral("Load diff"), 0,
      [module, sha, parent, file, settings, loadLarge](JobProgress& progress) {
        return diffContentFrom(GetRevisionFileChangesGitCommand::execute(module, sha, parent, file, settings, &progress),
                               XFilePatch::Location::revision, loadLarge);
      },
      [this, file](DiffContent content) {
        if (revisionFiles_->currentFile() != file) return;
        diffPane_->showContent(std::move(content));
        Q_EMIT diffLoaded();
      });
}

void JelvDocument::showSelection() {
  const std::vector<RevisionPtr> selected = commitList_->selectedRevisions();
  if (selected.size() == 2) {
    // Newest first: the files show the newer tree against the older one.
    if (selectedSha_ != selected[0]->sha().toString() || comparedWith_ != selected[1]->sha().toString()) {
      loadComparison(selected[0], selected[1]);
    }
  } else if (comparedWith_) {
    loadCommit(commitList_->currentRevision());
  }
}

void JelvDocument::loadComparison(const RevisionPtr& newer, const RevisionPtr& older) {
  if (auto previous = commitJob_.lock()) previous->progress().cancel();
  revisionFiles_->setFiles({});
  selectedSha_ = newer->sha().toString();
  comparedWith_ = older->sha().toString();
  header_->showComparison(*older, *newer);
  diffPane_->showMessage(tr("Select a file to see its changes."));
  const GitModule module = module_;
  const QString sha = selectedSha_;
  const QString other = *comparedWith_;
  const SubmoduleList submodules = controller_->repositoryData() ? controller_->repositoryData()->submodules : SubmoduleList{};
  commitJob_ = run<GitResult<ChangedFileList>>(
      QStringLiteral("Compare commits"), 0,
      [module, sha, other, submodules](JobProgress&) {
        return GetRevisionChangedFilesGitCommand::executeInternal(module, sha, other, submodules);
      },
      [this, sha, other](GitResult<ChangedFileList> files) {
        if (sha != selectedSha_ || comparedWith_ != other) return;
        if (!files) {
          header_->showError(describe(files.error()));
          return;
        }
        revisionFiles_->setFiles(files.value());
        if (!files.value().empty()) revisionFiles_->setCurrentItem(revisionFiles_->topLevelItem(0));
        Q_EMIT commitDetailsLoaded();
      });
}

DiffTextView* JelvDocument::diffView() const { return diffPane_->textView(); }
