#include "UI/JelvMainWindow.h"

#include "Commands/CommandTable.h"
#include "Commands/ShowCloneSheetCommand.h"
#include "Jobs/JobQueue.h"

#include <QAction>
#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>

#include "Controllers/CommitList/CommitListDisplayController.h"
#include "UI/JelvDocument.h"
#include "Jobs/ExportProfilingDataCommand.h"
#include "Jobs/JobQueue.h"
#include "UI/AboutWindow.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvWindowController.h"

JelvMainWindow::JelvMainWindow(JelvDocumentController& documents, QWidget* parent)
    : QMainWindow(parent), documents_(documents), tabs_(new QTabWidget(this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setObjectName(QStringLiteral("jelvMainWindow"));
  tabs_->setDocumentMode(true);
  tabs_->setTabsClosable(true);
  tabs_->setMovable(true);
  tabs_->setElideMode(Qt::ElideRight);
  tabs_->tabBar()->setExpanding(false);
  auto* plus = new QToolButton(tabs_);
  plus->setObjectName(QStringLiteral("newTabButton"));
  plus->setText(QStringLiteral("+"));
  plus->setToolTip(tr("New tab (Ctrl+T)"));
  plus->setAutoRaise(true);
  tabs_->setCornerWidget(plus, Qt::TopRightCorner);
  setCentralWidget(tabs_);
  resize(1200, 760);

  // One repositories tab per window is enough: "+" brings it forward when there is one.
  connect(plus, &QToolButton::clicked, this, [this] {
    for (int i = 0; i < tabCount(); ++i) {
      if (tab(i)->kind() == JelvWindowController::Kind::repositoryManager) {
        selectTab(tab(i));
        return;
      }
    }
    documents_.newRepositoryManagerAsTab(this);
  });
  connect(tabs_, &QTabWidget::tabCloseRequested, this, &JelvMainWindow::closeTabAt);
  connect(tabs_, &QTabWidget::currentChanged, this, [this] {
    updateTitle();
    Q_EMIT tabsChanged();
  });
  connect(tabs_->tabBar(), &QTabBar::tabMoved, this, &JelvMainWindow::tabsChanged);
  tabs_->tabBar()->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(tabs_->tabBar(), &QWidget::customContextMenuRequested, this, &JelvMainWindow::showTabMenu);
  setAcceptDrops(true);
  buildMenus();
  updateTitle();
}

JelvMainWindow::~JelvMainWindow() = default;

void JelvMainWindow::exportProfilingData() {
  // Every tab with a repository, window by window, in the order they stand.
  std::vector<ExportProfilingDataCommand::Window> windows;
  for (JelvMainWindow* window : documents_.windows()) {
    for (int index = 0; index < window->tabCount(); ++index) {
      const JelvWindowController* tab = window->tab(index);
      if (!tab->gitModule() || !tab->jobQueue()) continue;
      windows.push_back({tab->gitModule()->repositoryPath, tab->jobQueue()->userJobs()});
    }
  }
  if (!ExportProfilingDataCommand::execute(windows)) {
    QMessageBox::warning(this, tr("Export Profiling Data"), tr("The trace file could not be written to the temporary folder."));
  }
}

void JelvMainWindow::showCloneSheet(const QString& url) {
  JelvWindowController* tab = currentTab();
  ShowCloneSheetCommand::execute(this, tab ? tab->jobQueue() : std::make_shared<JobQueue>(), url,
                                 [this](const QString& path) { documents_.openRepository(path, this); });
}

void JelvMainWindow::buildMenus() {
  auto add = [this](QMenu* menu, const QString& name, const QString& text, const QList<QKeySequence>& keys, auto slot) {
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, slot);
    return action;
  };
  QMenu* file = menuBar()->addMenu(tr("&File"));
  add(file, QStringLiteral("newTabAction"), tr("New Tab"), {QKeySequence(QStringLiteral("Ctrl+T"))},
      [this] { documents_.newRepositoryManagerAsTab(this); });
  add(file, QStringLiteral("newWindowAction"), tr("New Window"), {QKeySequence::New},
      [this] { documents_.newRepositoryManagerAsWindow(); });
  add(file, QStringLiteral("openAction"), tr("Open…"), {QKeySequence::Open}, [this] { documents_.openDocument(this); });
  add(file, QStringLiteral("cloneAction"), tr("Clone…"), {}, [this] { showCloneSheet({}); });
  file->addSeparator();
  add(file, QStringLiteral("closeTabAction"), tr("Close Tab"), {QKeySequence(QStringLiteral("Ctrl+W"))}, [this] {
    if (auto* tab = currentTab()) closeTab(tab);
  });
  add(file, QStringLiteral("closeWindowAction"), tr("Close Window"), {QKeySequence(QStringLiteral("Ctrl+Shift+W"))},
      [this] { close(); });
  QAction* preferences = add(file, QStringLiteral("preferencesAction"), tr("Preferences…"),
                             {QKeySequence(QStringLiteral("Ctrl+,"))}, [this] { documents_.showPreferences(this); });
  // Hidden until a preferences window is there to show.
  preferences->setVisible(documents_.hasPreferences());
  file->addSeparator();
  add(file, QStringLiteral("quitAction"), tr("Quit"), {QKeySequence(QStringLiteral("Ctrl+Q"))},
      [this] { documents_.quit(); });

  // Filled when it opens, from the tab in front.
  QMenu* repository = menuBar()->addMenu(tr("&Repository"));
  repository->setObjectName(QStringLiteral("repositoryMenu"));
  connect(repository, &QMenu::aboutToShow, this, [this, repository] { fillRepositoryMenu(repository); });

  QMenu* view = menuBar()->addMenu(tr("&View"));
  CommandContext here;
  here.window = this;
  view->addAction(CommandTable::action(QStringLiteral("quickLaunch"), here, view));
  view->addSeparator();
  add(view, QStringLiteral("nextTabAction"), tr("Select Next Tab"),
      {QKeySequence(QStringLiteral("Ctrl+Tab")), QKeySequence(QStringLiteral("Ctrl+PgDown"))},
      [this] { selectNextTab(); });
  add(view, QStringLiteral("previousTabAction"), tr("Select Previous Tab"),
      // Shift+Tab arrives as Backtab from most keyboards.
      {QKeySequence(QStringLiteral("Ctrl+Shift+Tab")), QKeySequence(QStringLiteral("Ctrl+Shift+Backtab")),
       QKeySequence(QStringLiteral("Ctrl+PgUp"))},
      [this] { selectPreviousTab(); });
  // The commit list's display toggles of the tab in front, titled by its state when opened.
  view->addSeparator();
  connect(view, &QMenu::aboutToShow, this, [this, view] {
    delete view->findChild<QMenu*>(QStringLiteral("commitListDisplay"), Qt::FindDirectChildrenOnly);
    const JelvWindowController* front = currentTab();
    JelvDocument* repository = front ? front->document() : nullptr;
    if (!repository) return;
    QMenu* display = repository->displayController()->displayMenu(view);
    display->setObjectName(QStringLiteral("commitListDisplay"));
    view->addActions(display->actions());
  });

  QMenu* help = menuBar()->addMenu(tr("&Help"));
  add(help, QStringLiteral("keyboardShortcutsAction"), tr("Keyboard Shortcuts"), {QKeySequence(QStringLiteral("Ctrl+/"))},
      [this, repository] {
        fillRepositoryMenu(repository);  // filled only when opened otherwise
        auto* window = new KeyboardShortcutsWindow(menuBar(), this);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->show();
      });
  add(help, QStringLiteral("exportProfilingDataAction"), tr("Export Profiling Data"), {}, [this] { exportProfilingData(); });
  help->addSeparator();
  add(help, QStringLiteral("aboutAction"), tr("About Jelv"), {}, [this] {
    auto* window = new AboutWindow(this);
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
  });
}

void JelvMainWindow::fillRepositoryMenu(QMenu* menu) {
  menu->clear();
  const JelvWindowController* front = currentTab();
  if (!front || !front->toolbar()) {
    menu->addAction(tr("No repository in front"))->setEnabled(false);
    return;
  }
  // The tab's own actions, so menu, shortcuts and toolbar cannot disagree.
  for (QAction* action : front->toolbar()->actions()) {
    if (action->property("section").isValid()) break;  // the commands follow below, grouped
    if (action->isSeparator()) {
      menu->addSeparator();
    } else if (action->isVisible()) {
      menu->addAction(action);
    }
  }
  const_cast<JelvWindowController*>(front)->updateCommandActions();
  QString section;
  for (QAction* action : front->commandActions()) {
    if (!action->property("inRepositoryMenu").toBool()) continue;
    const QString next = action->property("section").toString();
    if (next != section) menu->addSeparator();
    section = next;
    menu->addAction(action);
  }
}

QAction* JelvMainWindow::action(const QString& objectName) const { return findChild<QAction*>(objectName); }

int JelvMainWindow::tabCount() const { return tabs_->count(); }

JelvWindowController* JelvMainWindow::tab(int index) const {
  return qobject_cast<JelvWindowController*>(tabs_->widget(index));
}

JelvWindowController* JelvMainWindow::currentTab() const {
  return qobject_cast<JelvWindowController*>(tabs_->currentWidget());
}

void JelvMainWindow::addTab(JelvWindowController* tab, bool select) {
  const int index = tabs_->addTab(tab, tab->tabIcon(), tab->title());
  tabs_->setTabToolTip(index, tab->tabToolTip());
  connect(tab, &JelvWindowController::titleChanged, this, [this, tab] {
    const int at = tabs_->indexOf(tab);
    if (at < 0) return;
    tabs_->setTabText(at, tab->title());
    tabs_->setTabIcon(at, tab->tabIcon());
    tabs_->setTabToolTip(at, tab->tabToolTip());
    updateTitle();
    Q_EMIT tabsChanged();
  });
  connect(tab, &JelvWindowController::openRepositoryRequested, this,
          [this](const QString& path) { documents_.openRepository(path, this); });
  connect(tab, &JelvWindowController::openDocumentRequested, this, [this] { documents_.openDocument(this); });
  connect(tab, &JelvWindowController::cloneRequested, this, [this] { showCloneSheet({}); });
  connect(tab, &JelvWindowController::openSubmoduleRequested, this,
          [this](const QString& path) { documents_.openSubmodule(path, this); });
  if (select) tabs_->setCurrentIndex(index);
  updateTitle();
  Q_EMIT tabsChanged();
}

void JelvMainWindow::selectTab(JelvWindowController* tab) {
  const int index = tabs_->indexOf(tab);
  if (index >= 0) tabs_->setCurrentIndex(index);
}

void JelvMainWindow::closeTabAt(int index) {
  if (auto* controller = tab(index)) closeTab(controller);
}

void JelvMainWindow::closeTab(JelvWindowController* tab, bool closeEmptyWindow) {
  const int index = tabs_->indexOf(tab);
  if (index < 0) return;
  tab->closeTab();
  tabs_->removeTab(index);
  tab->hide();
  tab->deleteLater();
  updateTitle();
  Q_EMIT tabsChanged();
  if (closeEmptyWindow && tabs_->count() == 0) close();
}

JelvWindowController* JelvMainWindow::takeTab(JelvWindowController* tab) {
  const int index = tabs_->indexOf(tab);
  if (index < 0) return nullptr;
  tabs_->removeTab(index);
  disconnect(tab, nullptr, this, nullptr);
  tab->setParent(nullptr);
  updateTitle();
  Q_EMIT tabsChanged();
  return tab;
}

void JelvMainWindow::closeOtherTabs(JelvWindowController* keep) {
  for (int i = tabs_->count() - 1; i >= 0; --i) {
    if (tab(i) != keep) closeTab(tab(i), false);
  }
}

void JelvMainWindow::showTabMenu(const QPoint& position) {
  JelvWindowController* clicked = tab(tabs_->tabBar()->tabAt(position));
  if (!clicked) return;
  QMenu menu(this);
  menu.addAction(tr("Close Tab"), this, [this, clicked] { closeTab(clicked); });
  QAction* others = menu.addAction(tr("Close Other Tabs"), this, [this, clicked] { closeOtherTabs(clicked); });
  QAction* move = menu.addAction(tr("Move Tab to New Window"), this, [this, clicked] { documents_.moveTabToNewWindow(clicked); });
  others->setEnabled(tabs_->count() > 1);
  move->setEnabled(tabs_->count() > 1);
  menu.exec(tabs_->tabBar()->mapToGlobal(position));
}

void JelvMainWindow::dragEnterEvent(QDragEnterEvent* event) {
  for (const QUrl& url : event->mimeData()->urls()) {
    if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isDir()) {
      event->acceptProposedAction();
      return;
    }
  }
}

void JelvMainWindow::dropEvent(QDropEvent* event) {
  for (const QUrl& url : event->mimeData()->urls()) {
    if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isDir()) documents_.openRepository(url.toLocalFile(), this);
  }
  event->acceptProposedAction();
}

void JelvMainWindow::selectNextTab() {
  if (tabs_->count() > 1) tabs_->setCurrentIndex((tabs_->currentIndex() + 1) % tabs_->count());
}

void JelvMainWindow::selectPreviousTab() {
  if (tabs_->count() > 1) tabs_->setCurrentIndex((tabs_->currentIndex() + tabs_->count() - 1) % tabs_->count());
}

WindowSession JelvMainWindow::session() const {
  WindowSession session;
  session.geometry = saveGeometry();
  for (int i = 0; i < tabs_->count(); ++i) session.tabs.push_back(tab(i)->session());
  session.currentTab = std::max(0, tabs_->currentIndex());
  return session;
}

void JelvMainWindow::updateTitle() {
  const JelvWindowController* front = currentTab();
  setWindowTitle(front ? front->title() + QStringLiteral(" — Jelv") : QStringLiteral("Jelv"));
}

void JelvMainWindow::closeEvent(QCloseEvent* event) {
  // Every tab's jobs stop with the window.
  while (tabs_->count() > 0) closeTab(tab(0), false);
  QMainWindow::closeEvent(event);
  Q_EMIT closed();
}

void JelvMainWindow::moveEvent(QMoveEvent* event) {
  QMainWindow::moveEvent(event);
  Q_EMIT geometryChanged();
}

void JelvMainWindow::resizeEvent(QResizeEvent* event) {
  QMainWindow::resizeEvent(event);
  Q_EMIT geometryChanged();
}

void JelvMainWindow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) Q_EMIT activated();
  QMainWindow::changeEvent(event);
}
