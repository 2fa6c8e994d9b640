#include "UI/JelvDocumentController.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QTabWidget>
#include <QThreadPool>
#include <QTimer>

#include "Git/Commands/Remotes/GetRemotesGitCommand.h"
#include "Jobs/ReleasedQueues.h"
#include "Logging/AdvancedLogger.h"
#include "Models/ApplicationUrl.h"
#include "Models/AppSettings.h"
#include "Services/ApplicationStartup.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "Services/RepositoryOpener.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"

JelvDocumentController::JelvDocumentController(AppSettings& registry, Preferences& preferences, QObject* parent)
    : QObject(parent), registry_(registry), preferences_(preferences),
      // Tabs are placed by the completion handler, which knows the tab it fills.
      opener_(new RepositoryOpener(registry, {}, this)), geometrySave_(new QTimer(this)) {
  geometrySave_->setSingleShot(true);
  geometrySave_->setInterval(1000);
  connect(geometrySave_, &QTimer::timeout, this, &JelvDocumentController::saveSession);
  // A rename in the registry shows in the tab titles.
  auto retitle = [this] {
    for (JelvMainWindow* window : windows()) {
      for (int i = 0; i < window->tabCount(); ++i) window->tab(i)->updateTitle();
    }
  };
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::repositoryInfoChanged, this, retitle);
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::repositoryManagerDataUpdated, this, retitle);
  // A logout ends the process without a quit; keep the geometry of that moment too.
  if (auto* app = qobject_cast<QGuiApplication*>(QCoreApplication::instance())) {
    connect(app, &QGuiApplication::commitDataRequest, this, [this] {
      saveSession();
      preferences_.sync();
    });
  }
}

JelvDocumentController::~JelvDocumentController() {
  quitting_ = true;
  // A window's destroyed signal comes when it is only a QWidget any more; the list of
  // typed pointers must not be looked at then.
  windows_.clear();
  for (const QPointer<JelvMainWindow>& window : owned_) {
    if (!window) continue;
    window->disconnect(this);
    delete window.data();
  }
  // Closed tabs let their queues go; at the end of the run their jobs still get a moment.
  if (!ReleasedQueues::waitForAll(10000)) LOG_WARNING(QStringLiteral("Jobs of closed tabs still running at quit"));
}

QList<JelvMainWindow*> JelvDocumentController::windows() const {
  QList<JelvMainWindow*> list;
  for (const QPointer<JelvMainWindow>& window : windows_) {
    if (window) list << window.data();
  }
  return list;
}

JelvMainWindow* JelvDocumentController::frontWindow() const {
  const QList<JelvMainWindow*> open = windows();
  if (auto* active = qobject_cast<JelvMainWindow*>(QApplication::activeWindow()); active && open.contains(active)) return active;
  if (lastActive_ && open.contains(lastActive_.data())) return lastActive_.data();
  return open.isEmpty() ? nullptr : open.last();
}

JelvMainWindow* JelvDocumentController::newWindow() {
  auto* window = new JelvMainWindow(*this);
  adopt(window);
  return window;
}

void JelvDocumentController::adopt(JelvMainWindow* window) {
  windows_.append(window);
  owned_.removeAll(QPointer<JelvMainWindow>());
  owned_.append(window);
  lastActive_ = window;
  connect(window, &JelvMainWindow::tabsChanged, this, &JelvDocumentController::saveSession);
  connect(window, &JelvMainWindow::activated, this, [this, window] { lastActive_ = window; });
  connect(window, &JelvMainWindow::geometryChanged, geometrySave_, qOverload<>(&QTimer::start));
  // A closed window leaves the list at once; its deletion comes later.
  auto forget = [this](JelvMainWindow* gone) {
    const auto before = windows_.size();
    windows_.removeIf([gone](const QPointer<JelvMainWindow>& w) { return !w || w.data() == gone; });
    if (quitting_ || windows_.size() == before) return;
    saveSession();
    if (windows_.isEmpty()) Q_EMIT lastWindowClosed();
  };
  connect(window, &JelvMainWindow::closed, this, [forget, window] { forget(window); });
  // Queued: while `destroyed` is emitted the window is no longer a JelvMainWindow, and its
  // guard clears only after that.
  connect(window, &QObject::destroyed, this, [forget] { forget(nullptr); }, Qt::QueuedConnection);
}

JelvWindowController* JelvDocumentController::newRepositoryManagerAsTab(JelvMainWindow* window) {
  if (!window) window = frontWindow();
  if (!window) window = newWindow();
  auto* tab = JelvWindowController::newRepositoryManager(registry_);
  window->addTab(tab);
  window->show();
  return tab;
}

JelvMainWindow* JelvDocumentController::newRepositoryManagerAsWindow() {
  JelvMainWindow* window = newWindow();
  window->addTab(JelvWindowController::newRepositoryManager(registry_));
  window->show();
  return window;
}

JelvMainWindow* JelvDocumentController::moveTabToNewWindow(JelvWindowController* tab) {
  JelvMainWindow* from = nullptr;
  for (JelvMainWindow* window : windows()) {
    if (window->tabWidget()->indexOf(tab) >= 0) from = window;
  }
  if (!from || from->tabCount() < 2) return from;
  JelvMainWindow* window = newWindow();
  window->addTab(from->takeTab(tab));
  window->show();
  window->raise();
  window->activateWindow();
  return window;
}

JelvWindowController* JelvDocumentController::findRepositoryTab(const QString& repositoryPath) const {
  const QString wanted = QDir::cleanPath(repositoryPath);
  for (JelvMainWindow* window : windows()) {
    for (int i = 0; i < window->tabCount(); ++i) {
      JelvWindowController* tab = window->tab(i);
      if (tab->kind() != JelvWindowController::Kind::repositoryManager && QDir::cleanPath(tab->repositoryPath()) == wanted) {
        return tab;
      }
    }
  }
  return nullptr;
}

void JelvDocumentController::bringToFront(JelvWindowController* tab) {
  for (JelvMainWindow* window : windows()) {
    if (window->tabWidget()->indexOf(tab) < 0) continue;
    window->selectTab(tab);
    window->show();
    window->raise();
    window->activateWindow();
    return;
  }
}

void JelvDocumentController::openRepository(const QString& url, JelvMainWindow* window, bool select) {
  open(url, window, select, false);
}

void JelvDocumentController::openRepository(const QString& url, OpenedHandler opened) {
  open(url, nullptr, true, false, std::move(opened));
}

void JelvDocumentController::openSubmodule(const QString& path, JelvMainWindow* window) { open(path, window, true, true); }

void JelvDocumentController::open(const QString& url, JelvMainWindow* window, bool select, bool allowSubmodule,
                                  OpenedHandler opened) {
  if (!opened) opened = [](JelvWindowController*) {};
  const QString path = RepositoryOpener::localPath(url);
  if (path.isEmpty()) {
    opened(nullptr);
    return;
  }
  if (JelvWindowController* existing = findRepositoryTab(path)) {
    bringToFront(existing);
    if (existing->kind() == JelvWindowController::Kind::repository) {
      opened(existing);
    } else {
      // Still being checked: once the opens are through, the tab is the repository's or gone.
      connect(this, &JelvDocumentController::opensFinished, this, [this, path, opened] {
        JelvWindowController* tab = findRepositoryTab(path);
        opened(tab && tab->kind() == JelvWindowController::Kind::repository ? tab : nullptr);
      }, Qt::SingleShotConnection);
    }
    return;
  }
  if (!window) window = frontWindow();
  if (!window) window = newWindow();
  auto* tab = JelvWindowController::opening(path);
  window->addTab(tab, select);
  window->show();
  ++pendingOpens_;
  QPointer<JelvWindowController> slot(tab);
  QPointer<JelvMainWindow> host(window);
  opener_->openRepository(path, [this, slot, host, opened](const RepositoryOpener::Result& result) {
    JelvWindowController* shown = nullptr;
    if (slot && host) {
      if (!result.gitModule) {
        removeOpeningTab(host, slot);
        auto* alert = new QMessageBox(QMessageBox::Warning, tr("Cannot open the repository"), result.failureText,
                                      QMessageBox::Ok, host);
        alert->setAttribute(Qt::WA_DeleteOnClose);
        alert->open();
        Q_EMIT openFailed(result.failureText);
      } else if (JelvWindowController* other = findRepositoryTab(result.gitModule->repositoryPath);
                 other && other != slot && other->kind() == JelvWindowController::Kind::repository) {
        // A sub-folder of a repository that is already open.
        removeOpeningTab(host, slot);
        bringToFront(other);
        shown = other;
      } else {
        slot->showRepository(*result.gitModule, registry_);
        Q_EMIT repositoryOpened(slot);
        shown = slot;
      }
    }
    opened(shown);
    finishOpen();
  }, allowSubmodule);
}

void JelvDocumentController::bringRepositoryWithRemoteToFront(const QString& remoteUrl) {
  std::vector<GitModule> modules;
  QList<QPointer<JelvWindowController>> tabs;
  for (JelvMainWindow* window : windows()) {
    for (int i = 0; i < window->tabCount(); ++i) {
      JelvWindowController* tab = window->tab(i);
      if (!tab->gitModule()) continue;
      modules.push_back(*tab->gitModule());
      tabs << tab;
    }
  }
  ++pendingOpens_;
  QPointer<JelvDocumentController> self(this);
  auto done = [self, tabs, remoteUrl](int found) {
    if (!self) return;
    if (found >= 0 && tabs.at(found)) {
      self->bringToFront(tabs.at(found));
    } else {
      LOG_WARNING(QStringLiteral("No open repository has the remote ") + remoteUrl);
    }
    self->finishOpen();
  };
  QThreadPool::globalInstance()->start([self, modules = std::move(modules), remoteUrl, done = std::move(done)] {
    int found = -1;
    for (int i = 0; i < int(modules.size()) && found < 0; ++i) {
      const auto remotes = GetRemotesGitCommand::execute(modules[i]);
      if (!remotes) continue;
      for (const Remote& remote : remotes.value()) {
        if (ApplicationUrl::sameRepository(remote.repositoryUrl.rawUrlString, remoteUrl)) found = i;
      }
    }
    if (self) QMetaObject::invokeMethod(self.data(), [done, found] { done(found); }, Qt::QueuedConnection);
  });
}

void JelvDocumentController::removeOpeningTab(JelvMainWindow* window, JelvWindowController* tab) {
  window->closeTab(tab, false);
  // A window is never left without tabs by a failed open.
  if (window->tabCount() == 0) newRepositoryManagerAsTab(window);
}

void JelvDocumentController::finishOpen() {
  if (--pendingOpens_ > 0) return;
  saveSession();
  Q_EMIT opensFinished();
}

void JelvDocumentController::openFiles(const QStringList& paths) {
  for (const QString& path : paths) {
    LOG_INFO(QStringLiteral("Open file: ") + path);
    openRepository(path);
  }
}

void JelvDocumentController::openDocument(QWidget* parent) {
  auto* panel = new QFileDialog(parent, tr("Open a directory that contains a Git repository"));
  panel->setObjectName(QStringLiteral("openPanel"));
  panel->setAttribute(Qt::WA_DeleteOnClose);
  panel->setFileMode(QFileDialog::Directory);
  panel->setOption(QFileDialog::ShowDirsOnly, true);
  QPointer<JelvMainWindow> window(qobject_cast<JelvMainWindow*>(parent ? parent->window() : nullptr));
  connect(panel, &QFileDialog::fileSelected, this, [this, window](const QString& path) { openRepository(path, window); });
  panel->open();
}

void JelvDocumentController::restoreWindows(const std::vector<WindowSession>& sessions) {
  restoring_ = true;
  for (const WindowSession& session : sessions) {
    JelvMainWindow* window = newWindow();
    if (!session.geometry.isEmpty()) window->restoreGeometry(session.geometry);
    for (const TabSession& tab : session.tabs) {
      if (tab.kind == TabSession::Kind::repositoryManager) {
        window->addTab(JelvWindowController::newRepositoryManager(registry_), false);
      } else {
        // A submodule's tab was opened from its super-project; it comes back as it was.
        open(tab.repositoryPath, window, false, true);
      }
    }
    if (window->tabCount() == 0) window->addTab(JelvWindowController::newRepositoryManager(registry_));
    window->tabWidget()->setCurrentIndex(std::min(session.currentTab, window->tabCount() - 1));
    window->show();
  }
  restoring_ = false;
  saveSession();
}

std::vector<WindowSession> JelvDocumentController::windowSessions() const {
  std::vector<WindowSession> sessions;
  for (JelvMainWindow* window : windows()) {
    WindowSession session = window->session();
    if (!session.tabs.empty()) sessions.push_back(std::move(session));
  }
  return sessions;
}

void JelvDocumentController::saveSession() {
  if (quitting_ || restoring_) return;
  ApplicationStartup::saveWindows(preferences_, windowSessions());
}

void JelvDocumentController::quit() {
  saveSession();
  preferences_.sync();
  quitting_ = true;
  for (JelvMainWindow* window : windows()) window->close();
  QCoreApplication::quit();
}

void JelvDocumentController::showPreferences(QWidget* parent) {
  if (preferencesHandler_) preferencesHandler_(parent);
}
