#pragma once
// The application's start and the events the desktop sends it: folders and URLs on the
// command line or from a second launch, and the choice of what opens when nothing else
// does (the welcome window, a repository manager, or the tabs of an older version).
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

#include "Services/ApplicationStartup.h"

class AppSettings;
class AskPassBridge;
class AutomaticBackgroundFetchManager;
class DistributedNotificationObserver;
class ShowAskPassSheetCommand;
class JelvDocumentController;
class Preferences;
class WelcomeWindowController;

class AppDelegate : public QObject {
  Q_OBJECT

 public:
  AppDelegate(AppSettings& registry, Preferences& preferences, QObject* parent = nullptr);
  ~AppDelegate() override;

  // Before any window: the document controller and the handler of URL events.
  void applicationWillFinishLaunching();
  // The rest of the start-up; arguments are the command line without the program.
  void applicationDidFinishLaunching(const QStringList& arguments);
  // The same for a command line that is a command ("status", "-C dir log file", ...), in
  // the text the `jelv` tool sends: it takes the place of the folders and of the untitled
  // decision.
  void applicationDidFinishLaunchingWithRequest(const QString& cliRequest);

  // A request of the `jelv` tool; `done` runs once it has been acted on.
  void handleCliRequest(const QString& text, std::function<void()> done = {});

  // What the desktop hands over later (a second launch): folders and URLs. With none,
  // a window comes to the front, or opens if none is left.
  void handleArguments(const QStringList& arguments);
  void handleURLEvent(const QString& url);
  // Runs the untitled decision and opens what it says.
  UntitledFileDecision applicationShouldOpenUntitledFile();

  // Whether closing the last window may end the process: only when no other launch can
  // reach this one again.
  void setReachableByLaterLaunches(bool reachable) { reachable_ = reachable; }

  JelvDocumentController& documents() const { return *documents_; }
  WelcomeWindowController* welcomeWindowController() const;
  // Answers the password prompts of git and ssh; absent without a session bus.
  AskPassBridge* askPassBridge() const { return askPassBridge_.get(); }
  AutomaticBackgroundFetchManager* automaticFetch() const { return automaticFetch_; }

 private:
  void finishLaunching(const QStringList& arguments, const std::optional<QString>& cliRequest);
  void showWelcome();
  void startAskPassListener();
  void startCliListener();
  void startAutomaticFetch();
  void showCloneSheet(const QString& url);
  void welcomeCompleted();
  void lastWindowClosed();

  AppSettings& registry_;
  Preferences& preferences_;
  JelvDocumentController* documents_ = nullptr;
  QPointer<WelcomeWindowController> welcomeWindowController_;
  bool reachable_ = false;
  std::unique_ptr<AskPassBridge> askPassBridge_;
  std::unique_ptr<ShowAskPassSheetCommand> showAskPassSheetCommand_;
  AutomaticBackgroundFetchManager* automaticFetch_ = nullptr;
  DistributedNotificationObserver* cliListener_ = nullptr;
};
