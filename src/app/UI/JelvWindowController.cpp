#include "UI/JelvWindowController.h"

#include <QAction>
#include <QActionGroup>
#include <QDesktopServices>
#include <QDir>
#include <QLabel>
#include <QHash>
#include <QItemSelectionModel>
#include <QMenu>
#include <QToolButton>
#include <QMessageBox>
#include <QStyle>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

#include "Commands/CommandTable.h"
#include "Commands/ContextMenus.h"
#include "Controllers/CommitList/CommitListView.h"
#include "UI/JelvDocument.h"
#include "Controllers/RepositoryManager/RepositoryColorTags.h"
#include "Commands/ShowInFolderCommand.h"
#include "Controllers/RepositoryManager/RepositoryManagerController.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Jobs/JobQueue.h"
#include "Jobs/ReleasedQueues.h"
#include "Models/AppSettings.h"
#include "Models/LocalBranch.h"
#include "Repository/RepositoryController.h"
#include "Services/Preferences.h"

namespace {
JelvWindowController::RepositoryManagerFactory& managerFactory() {
  static JelvWindowController::RepositoryManagerFactory factory = [](AppSettings& registry, QWidget* parent) -> QWidget* {
    return new RepositoryManagerController(registry, parent);
  };
  return factory;
}
}  // namespace

void JelvWindowController::setRepositoryManagerFactory(RepositoryManagerFactory factory) {
  managerFactory() = std::move(factory);
}

JelvWindowController::JelvWindowController(Kind kind, QWidget* parent)
    : QWidget(parent), jobQueue_(std::make_shared<JobQueue>()), kind_(kind) {
  layout_ = new QVBoxLayout(this);
  layout_->setContentsMargins(0, 0, 0, 0);
  layout_->setSpacing(0);
}

JelvWindowController* JelvWindowController::newRepositoryManager(AppSettings& registry, QWidget* parent) {
  auto* tab = new JelvWindowController(Kind::repositoryManager, parent);
  tab->title_ = tr("Repositories");
  tab->registry_ = &registry;
  tab->repositoryManagerController_ = managerFactory()(registry, tab);
  tab->layout_->addWidget(tab->repositoryManagerController_);
  // Connected by name: the manager view is built apart from the shell.
  QWidget* manager = tab->repositoryManagerController_;
  if (manager->metaObject()->indexOfSignal("openRepositoryRequested(QString)") >= 0) {
    connect(manager, SIGNAL(openRepositoryRequested(QString)), tab, SLOT(forwardOpenRepository(QString)));
  }
  if (manager->metaObject()->indexOfSignal("openDocumentRequested()") >= 0) {
    connect(manager, SIGNAL(openDocumentRequested()), tab, SLOT(forwardOpenDocument()));
  }
  if (manager->metaObject()->indexOfSignal("cloneRequested()") >= 0) {
    connect(manager, SIGNAL(cloneRequested()), tab, SIGNAL(cloneRequested()));
  }
  return tab;
}

JelvWindowController* JelvWindowController::opening(const QString& path, QWidget* parent) {
  auto* tab = new JelvWindowController(Kind::opening, parent);
  tab->path_ = path;
  const QString name = QDir(path).dirName();
  tab->title_ = name.isEmpty() ? path : name;
  tab->openingLabel_ = new QLabel(tr("Opening %1…").arg(path), tab);
  tab->openingLabel_->setAlignment(Qt::AlignCenter);
  tab->layout_->addWidget(tab->openingLabel_);
  return tab;
}

JelvWindowController::~JelvWindowController() {
  // The view's jobs hold the queue too; cancel before the widgets go. A job slow to stop
  // must not hold up the window: the queue is let go and ends on its own.
  ReleasedQueues::letGo(jobQueue_);
}

void JelvWindowController::closeTab() { jobQueue_->cancelAllTasks(); }

void JelvWindowController::showRepository(const GitModule& module, AppSettings& registry) {
  if (kind_ != Kind::opening) return;
  kind_ = Kind::repository;
  module_ = module;
  registry_ = &registry;
  path_ = module.repositoryPath;
  delete openingLabel_;
  openingLabel_ = nullptr;
  // The view first: the toolbar shows some of its actions.
  document_ = new JelvDocument(module, jobQueue_, this);
  connect(document_, &JelvDocument::openSubmoduleRequested, this, &JelvWindowController::openSubmoduleRequested);
  buildToolbar();
  layout_->addWidget(document_, 1);
  auto markPage = [this] {
    RepositorySidebar* sidebar = document_->sidebar();
    const bool changes = sidebar->currentItem() && sidebar->currentItem() == sidebar->localChangesItem();
    if (QAction* page = findChild<QAction*>(changes ? QStringLiteral("localChangesAction") : QStringLiteral("historyAction"))) {
      page->setChecked(true);
    }
  };
  connect(document_->sidebar(), &QTreeWidget::currentItemChanged, this, markPage);
  markPage();
  connect(document_->controller(), &RepositoryController::repositoryDataUpdated, this, &JelvWindowController::updateCommandActions);
  connect(document_->controller(), &RepositoryController::repositoryStatusUpdated, this, &JelvWindowController::updateCommandActions);
  // Cherry-Pick, Revert and Reset act on the selected commits: their keys follow the selection.
  const QItemSelectionModel* selection = document_->commitList()->selectionModel();
  connect(selection, &QItemSelectionModel::selectionChanged, this, &JelvWindowController::updateCommandActions);
  connect(selection, &QItemSelectionModel::currentChanged, this, &JelvWindowController::updateCommandActions);
  connect(document_->controller(), &RepositoryController::behindAheadInfoUpdated, this, &JelvWindowController::updateRemoteCounts);
  connect(document_->controller(), &RepositoryController::repositoryDataUpdated, this, &JelvWindowController::updateRemoteCounts);
  updateCommandActions();
  updateTitle();
}

void JelvWindowController::buildToolbar() {
  toolbar_ = new QToolBar(this);
  toolbar_->setObjectName(QStringLiteral("repositoryToolbar"));
  toolbar_->setMovable(false);
  toolbar_->setIconSize(QSize(18, 18));
  toolbar_->setToolButtonStyle(Preferences::shared().useOldToolbarStyleWithLabels() ? Qt::ToolButtonTextUnderIcon
                                                                                   : Qt::ToolButtonTextBesideIcon);
  // Only what the repository tab can already do; further operations join as they exist.
  auto add = [this](const QString& name, const QString& text, QStyle::StandardPixmap icon, const QString& tip,
                    auto slot) {
    QAction* action = toolbar_->addAction(style()->standardIcon(icon), text);
    action->setObjectName(name);
    action->setToolTip(tip);
    connect(action, &QAction::triggered, this, slot);
    return action;
  };
  QAction* refresh = document_->refreshAction();
  refresh->setIcon(style()->standardIcon(QStyle::SP_BrowserReload));
  refresh->setToolTip(tr("Read the repository again (Ctrl+R)"));
  toolbar_->addAction(refresh);
  toolbar_->addSeparator();
  QAction* localChanges = add(QStringLiteral("localChangesAction"), tr("Local Changes"), QStyle::SP_FileDialogDetailedView,
                              tr("Show the working tree's changes"), [this] {
                                document_->sidebar()->setCurrentItem(document_->sidebar()->localChangesItem());
                              });
  QAction* history = add(QStringLiteral("historyAction"), tr("History"), QStyle::SP_FileDialogListView, tr("Show all commits"), [this] {
    document_->sidebar()->setCurrentItem(document_->sidebar()->allCommitsItem());
  });
  // Keys for the toolbar's own actions, anywhere in the tab; the Repository menu shows them.
  for (const auto& [action, keys] : {std::pair{localChanges, QStringLiteral("Ctrl+1")}, std::pair{history, QStringLiteral("Ctrl+2")}}) {
    action->setShortcut(QKeySequence(keys));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(action);
  }
  QAction* search = document_->searchAction();
  search->setIcon(style()->standardIcon(QStyle::SP_FileDialogContentsView));
  search->setIconText(tr("Search"));
  search->setToolTip(tr("Search the commits by message, author, content or path (Ctrl+F)"));
  toolbar_->addAction(search);
  // The page on screen stays marked, whichever way it was chosen.
  auto* pages = new QActionGroup(this);
  for (QAction* page : {localChanges, history}) {
    page->setCheckable(true);
    pages->addAction(page);
  }
  toolbar_->addSeparator();
  QAction* showInFolder = add(QStringLiteral("showInFolderAction"), tr("Show in Folder"), QStyle::SP_DirOpenIcon,
      tr("Open the working tree in the file manager"), [this] { ShowInFolderCommand::execute(this, path_); });
  QAction* activity = add(QStringLiteral("activityAction"), tr("Activity"), QStyle::SP_FileDialogInfoView,
                          tr("Show the running and finished operations of this tab"),
                          [this] { document_->showActivityManager(); });
  for (const auto& [action, keys] : {std::pair{showInFolder, QStringLiteral("Ctrl+Shift+O")}, std::pair{activity, QStringLiteral("Ctrl+Shift+Y")}}) {
    action->setShortcut(QKeySequence(keys));
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(action);
  }
  // Its drop-down opens the working tree in other ways: the repository's custom commands.
  if (auto* button = qobject_cast<QToolButton*>(toolbar_->widgetForAction(showInFolder))) {
    auto* openIn = new QMenu(button);
    openIn->setObjectName(QStringLiteral("openInMenu"));
    connect(openIn, &QMenu::aboutToShow, this, [this, openIn, showInFolder] {
      openIn->clear();
      openIn->addAction(showInFolder);
      if (document_) ContextMenus::addCustomCommands(openIn, CommandContext::forRepository(document_), CustomCommand::Target::repository);
    });
    button->setMenu(openIn);
    button->setPopupMode(QToolButton::MenuButtonPopup);
  }
  buildCommandActions();
  layout_->addWidget(toolbar_);
}

void JelvWindowController::buildCommandActions() {
  // One action per listed command for this tab: the shortcut works anywhere in the tab,
  // and the toolbar and the Repository menu show the same object.
  bool firstOnToolbar = true;
  for (const CommandDescriptor& descriptor : CommandTable::all()) {
    if (descriptor.places == CommandDescriptor::nowhere) continue;
    auto* action = new QAction(descriptor.name, this);
    action->setObjectName(descriptor.identifier + QStringLiteral("Action"));
    action->setShortcut(descriptor.shortcut);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setProperty("section", descriptor.section);
    action->setProperty("inRepositoryMenu", (descriptor.places & CommandDescriptor::repositoryMenu) != 0);
    const QString identifier = descriptor.identifier;
    connect(action, &QAction::triggered, this, [this, identifier] {
      if (document_) CommandTable::run(identifier, CommandContext::forRepository(document_));
    });
    addAction(action);
    commandActions_.push_back(action);
    if (descriptor.places & CommandDescriptor::toolbar) {
      if (firstOnToolbar) toolbar_->addSeparator();
      firstOnToolbar = false;
      QString title = descriptor.name;
      title.remove(QStringLiteral("..."));
      action->setIconText(title);
      action->setToolTip(descriptor.shortcut.isEmpty() ? descriptor.name
                                                       : QStringLiteral("%1 (%2)").arg(descriptor.name, descriptor.shortcut.toString(QKeySequence::NativeText)));
      toolbar_->addAction(action);
    }
  }
  // After the loop: the quick entries come later in the table than their buttons.
  for (QAction* action : commandActions_) {
    QString identifier = action->objectName();
    identifier.chop(int(qstrlen("Action")));
    addQuickMenu(action, identifier);
  }
}

void JelvWindowController::addQuickMenu(QAction* action, const QString& identifier) {
  // The remote buttons open their sheet on a click; their menu runs at once with the
  // remembered options.
  static const QHash<QString, QString> quick{{QStringLiteral("fetch"), QStringLiteral("quickFetch")},
                                             {QStringLiteral("pull"), QStringLiteral("quickPull")},
                                             {QStringLiteral("push"), QStringLiteral("quickPush")}};
  const QString quickIdentifier = quick.value(identifier);
  if (quickIdentifier.isEmpty()) return;
  auto* button = qobject_cast<QToolButton*>(toolbar_->widgetForAction(action));
  if (!button) return;
  auto* menu = new QMenu(button);
  for (QAction* candidate : commandActions_) {
    if (candidate->objectName() == quickIdentifier + QStringLiteral("Action")) menu->addAction(candidate);
  }
  button->setMenu(menu);
  button->setPopupMode(QToolButton::MenuButtonPopup);
}

void JelvWindowController::updateRemoteCounts() {
  // Commits to pull and to push of the checked-out branch, on the two buttons.
  const CommandContext context = CommandContext::forRepository(document_);
  const LocalBranchPtr active = context.activeBranch();
  std::optional<BehindAheadInfo> info;
  if (active && context.controller()) info = context.controller()->behindAheadInfoCache().info(active->fullReference);
  for (QAction* action : commandActions_) {
    const bool isPull = action->objectName() == QStringLiteral("pullAction");
    if (!isPull && action->objectName() != QStringLiteral("pushAction")) continue;
    const QString title = isPull ? tr("Pull") : tr("Push");
    const int count = info ? (isPull ? info->behind : info->ahead) : 0;
    action->setIconText(count > 0 ? QStringLiteral("%1 (%2)").arg(title).arg(count) : title);
  }
}

void JelvWindowController::updateCommandActions() {
  const CommandContext context = CommandContext::forRepository(document_);
  for (QAction* action : commandActions_) {
    QString identifier = action->objectName();
    identifier.chop(int(qstrlen("Action")));
    if (const CommandDescriptor* descriptor = CommandTable::find(identifier)) action->setEnabled(descriptor->isAvailable(context));
  }
}

QIcon JelvWindowController::tabIcon() const {
  return RepositoryColorTags::isValid(colorTag_) ? RepositoryColorTags::icon(colorTag_) : QIcon();
}

QString JelvWindowController::repositoryPath() const { return path_; }

QString JelvWindowController::tabToolTip() const { return kind_ == Kind::repositoryManager ? title_ : path_; }

TabSession JelvWindowController::session() const {
  if (kind_ == Kind::repositoryManager) return {TabSession::Kind::repositoryManager, {}};
  return {TabSession::Kind::repository, path_};
}

void JelvWindowController::updateTitle() {
  if (kind_ != Kind::repository || !module_ || !registry_) return;
  const RepositoryInfo info = registry_->getRepositoryInfo(*module_);
  if (info.name == title_ && info.colorTag == colorTag_) return;
  title_ = info.name;
  colorTag_ = info.colorTag;
  Q_EMIT titleChanged();
}

void JelvWindowController::forwardOpenRepository(const QString& path) { Q_EMIT openRepositoryRequested(path); }

void JelvWindowController::forwardOpenDocument() { Q_EMIT openDocumentRequested(); }
