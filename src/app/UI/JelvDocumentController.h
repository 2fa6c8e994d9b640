#pragma once
// The application's documents: every window, every tab, and which repository each tab
// shows. Opening a repository brings its tab to the front if one exists; otherwise a
// tab opens at once (so tabs keep their order) and turns into the repository once the
// folder has been checked off the main thread. The open tabs and window geometries are
// saved to the preferences at every change, and at quit.
#include <QList>
#include <QObject>
#include <QPointer>
#include <functional>
#include <vector>

#include "Models/WindowSession.h"

class AppSettings;
class JelvMainWindow;
class JelvWindowController;
class Preferences;
class QTimer;
class QWidget;
class RepositoryOpener;

class JelvDocumentController : public QObject {
  Q_OBJECT

 public:
  JelvDocumentController(AppSettings& registry, Preferences& preferences, QObject* parent = nullptr);
  ~JelvDocumentController() override;

  QList<JelvMainWindow*> windows() const;
  AppSettings& registry() const { return registry_; }
  // The active window, else the one used last; nullptr when none is open.
  JelvMainWindow* frontWindow() const;
  JelvMainWindow* newWindow();

  JelvWindowController* newRepositoryManagerAsTab(JelvMainWindow* window = nullptr);
  JelvMainWindow* newRepositoryManagerAsWindow();
  // The tab keeps running (view, jobs) in a window of its own.
  JelvMainWindow* moveTabToNewWindow(JelvWindowController* tab);

  // A path or "file://" URL. The tab goes into the given window, else the front one,
  // else a new one. A refused folder is reported and its tab removed.
  void openRepository(const QString& url, JelvMainWindow* window = nullptr, bool select = true);
  // The same, then `opened` gets the tab once it shows the repository (an open one at
  // once), or nullptr when the folder was refused.
  using OpenedHandler = std::function<void(JelvWindowController*)>;
  void openRepository(const QString& url, OpenedHandler opened);
  // A submodule's folder as a tab of its own, beside its super-project's. The only
  // difference from openRepository: a submodule is not refused, and it stays out of the
  // registry's list.
  void openSubmodule(const QString& path, JelvMainWindow* window = nullptr);
  void openFiles(const QStringList& paths);
  // The folder panel: "Open a directory that contains a Git repository".
  void openDocument(QWidget* parent = nullptr);
  JelvWindowController* findRepositoryTab(const QString& repositoryPath) const;
  // Fronts the open repository that has a remote with this URL; the remotes are read off
  // the main thread. Nothing opens when none has it: that would take a clone.
  void bringRepositoryWithRemoteToFront(const QString& remoteUrl);
  void bringToFront(JelvWindowController* tab);

  // Opens the saved windows; their repository tabs open in order.
  void restoreWindows(const std::vector<WindowSession>& windows);
  std::vector<WindowSession> windowSessions() const;
  void saveSession();
  // Saves the session, closes every window (canceling every tab's jobs), and ends the
  // event loop.
  void quit();

  void setPreferencesHandler(std::function<void(QWidget*)> handler) { preferencesHandler_ = std::move(handler); }
  bool hasPreferences() const { return bool(preferencesHandler_); }
  void showPreferences(QWidget* parent);

  // Opens still waiting for their folder check.
  int pendingOpens() const { return pendingOpens_; }

 Q_SIGNALS:
  void repositoryOpened(JelvWindowController* tab);
  void openFailed(const QString& text);
  // Every open finished; the windows now hold what they will hold.
  void opensFinished();
  void lastWindowClosed();

 private:
  void adopt(JelvMainWindow* window);
  void open(const QString& url, JelvMainWindow* window, bool select, bool allowSubmodule, OpenedHandler opened = {});
  void removeOpeningTab(JelvMainWindow* window, JelvWindowController* tab);
  void finishOpen();

  AppSettings& registry_;
  Preferences& preferences_;
  RepositoryOpener* opener_;
  QList<QPointer<JelvMainWindow>> windows_;  // open ones, oldest first
  // Every window not yet deleted, closed ones included: their deletion is deferred, and
  // after the event loop has ended only this controller deletes them (and so waits for
  // their tabs' jobs).
  QList<QPointer<JelvMainWindow>> owned_;
  QTimer* geometrySave_;  // a drag or resize saves once it rests
  QPointer<JelvMainWindow> lastActive_;
  std::function<void(QWidget*)> preferencesHandler_;
  int pendingOpens_ = 0;
  bool quitting_ = false;
  bool restoring_ = false;
};
