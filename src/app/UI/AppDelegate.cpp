#include "UI/AppDelegate.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include "Commands/CliRequestCommand.h"
#include "Commands/ShowAskPassSheetCommand.h"
#include "Services/DistributedNotificationCenter.h"
#include "Logging/AdvancedLogger.h"
#include "UI/JelvDocument.h"
#include "Services/AskPass/AskPassBridge.h"
#include "Services/AutomaticBackgroundFetchManager.h"
#include "Models/AppSettings.h"
#include "Models/ApplicationUrl.h"
#include "Services/Preferences.h"
#include "UI/Appearance.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "UI/JelvWindowController.h"
#include "UI/WelcomeWindowController.h"

namespace {
// "https://host/x", "ssh://...", "git@host:owner/repo"; not a path or a "file:" URL.
bool isRemoteUrl(const QString& target) {
  if (target.startsWith(QLatin1Char('/')) || target.startsWith(QStringLiteral("file:"))) return false;
  if (target.contains(QStringLiteral("://"))) return true;
  const qsizetype colon = target.indexOf(QLatin1Char(':'));
  const qsizetype slash = target.indexOf(QLatin1Char('/'));
  return colon > 0 && (slash < 0 || colon < slash);
}
}  // namespace

AppDelegate::AppDelegate(AppSettings& registry, Preferences& preferences, QObject* parent)
    : QObject(parent), registry_(registry), preferences_(preferences) {}

AppDelegate::~AppDelegate() {
  delete welcomeWindowController_.data();
  delete documents_;
}

WelcomeWindowController* AppDelegate::welcomeWindowController() const { return welcomeWindowController_.data(); }

void AppDelegate::applicationWillFinishLaunching() {
  // The defaults are registered by the preferences store itself when it is created.
  // Windows are restored by the document controller from its own saved session.
  documents_ = new JelvDocumentController(registry_, preferences_);
  connect(documents_, &JelvDocumentController::lastWindowClosed, this, &AppDelegate::lastWindowClosed);
  QApplication::setQuitOnLastWindowClosed(false);
}

void AppDelegate::applicationDidFinishLaunching(const QStringList& arguments) { finishLaunching(arguments, {}); }

void AppDelegate::applicationDidFinishLaunchingWithRequest(const QString& cliRequest) { finishLaunching({}, cliRequest); }

void AppDelegate::finishLaunching(const QStringList& arguments, const std::optional<QString>& cliRequest) {
  AdvancedLogger::setup(AdvancedLogger::defaultLogDirectory());
  if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance())) Appearance::apply(*app, preferences_.appearance());
  LOG_INFO(QStringLiteral("Application Update Channel: %1").arg(preferences_.applicationUpdateChannel()));
  LOG_INFO(QStringLiteral("Git instance: %1").arg(preferences_.gitInstance().printedName()));
  if (!arguments.isEmpty()) LOG_INFO(QStringLiteral("Command line arguments: '%1'").arg(arguments.join(QStringLiteral("' '"))));

  startAskPassListener();
  startCliListener();
  startAutomaticFetch();

  const LaunchPlan plan = ApplicationStartup::plan(preferences_, arguments);
  documents_->restoreWindows(plan.restoredWindows);
  documents_->openFiles(plan.folders);
  for (const QString& url : plan.urls) handleURLEvent(url);
  // A command brings its own repository up; only one that cannot leaves the usual start.
  const bool commandOpensRepository =
      cliRequest && !std::holds_alternative<CliError>(CliCommand::fromRequest(*cliRequest).type);
  if (plan.openUntitled && !commandOpensRepository) applicationShouldOpenUntitledFile();
  if (cliRequest) handleCliRequest(*cliRequest);
  if (const auto notice = registry_.startupNotice()) {
    // Once the first window is up, so that the alert has something to sit on.
    QTimer::singleShot(0, this, [this, text = *notice] {
      auto* alert = new QMessageBox(QMessageBox::Warning, tr("Repository list"), text, QMessageBox::Ok, documents_->frontWindow());
      alert->setObjectName(QStringLiteral("registryNotice"));
      alert->setAttribute(Qt::WA_DeleteOnClose);
      alert->open();
    });
  }
}

void AppDelegate::startCliListener() {
  cliListener_ = new DistributedNotificationObserver({DistributedNotificationNames::jelvApiRequest()}, this);
  if (!cliListener_->isListening()) {
    LOG_ERROR(QStringLiteral("Cannot listen for the command line tool: no session bus"));
    return;
  }
  connect(cliListener_, &DistributedNotificationObserver::received, this, [this](const QString&, const QString& text) {
    // At once, so that the tool knows an instance has it even if opening takes a while.
    DistributedNotificationCenter::post(DistributedNotificationNames::jelvApiResponse(), QStringLiteral("handled"));
    handleCliRequest(text, [] {
      DistributedNotificationCenter::post(DistributedNotificationNames::jelvApiResponse(),
                                          JelvCliRequestCommand::requestHandled());
    });
  });
}

void AppDelegate::handleCliRequest(const QString& text, std::function<void()> done) {
  const CliCommand command = CliCommand::fromRequest(text);
  LOG_INFO(QStringLiteral("Command line request: '%1'").arg(text));
  CliRequestCommand::execute(*documents_, command, std::move(done));
}

void AppDelegate::startAskPassListener() {
  askPassBridge_ = std::make_unique<AskPassBridge>();
  if (!askPassBridge_->listen()) {
    LOG_ERROR(QStringLiteral("Cannot listen for password requests: no session bus"));
    return;
  }
  showAskPassSheetCommand_ = std::make_unique<ShowAskPassSheetCommand>(*askPassBridge_);
  showAskPassSheetCommand_->install();
}

void AppDelegate::showCloneSheet(const QString& url) {
  JelvMainWindow* window = documents_->frontWindow();
  if (!window) {
    documents_->newRepositoryManagerAsTab();
    window = documents_->frontWindow();
  }
  if (window) window->showCloneSheet(url);
}

void AppDelegate::startAutomaticFetch() {
  JelvDocumentController* documents = documents_;
  automaticFetch_ = new AutomaticBackgroundFetchManager(
      [documents] {
        std::vector<AutomaticBackgroundFetchManager::Target> targets;
        for (JelvMainWindow* window : documents->windows()) {
          for (int i = 0; i < window->tabCount(); ++i) {
            JelvWindowController* tab = window->tab(i);
            if (!tab || !tab->document()) continue;
            QPointer<JelvWindowController> guard(tab);
            targets.push_back({tab->document()->controller(), tab->jobQueue(), [documents, guard] {
                                 JelvMainWindow* front = documents->frontWindow();
                                 return guard && front && front->currentTab() == guard.data();
                               }});
          }
        }
        return targets;
      },
      this);
  automaticFetch_->start();
}

UntitledFileDecision AppDelegate::applicationShouldOpenUntitledFile() {
  const UntitledFileDecision decision = ApplicationStartup::applicationShouldOpenUntitledFile(preferences_);
  switch (decision.kind) {
    case UntitledFileDecision::Kind::nothing: break;
    case UntitledFileDecision::Kind::welcome: showWelcome(); break;
    case UntitledFileDecision::Kind::repositoryManager: documents_->newRepositoryManagerAsTab(); break;
    case UntitledFileDecision::Kind::importedTabs: {
      JelvMainWindow* window = documents_->newWindow();
      for (int i = 0; i < decision.repositoryPaths.size(); ++i) {
        documents_->openRepository(decision.repositoryPaths.at(i), window, i == std::max(0, decision.selectedIndex));
      }
      break;
    }
  }
  return decision;
}

void AppDelegate::showWelcome() {
  if (!welcomeWindowController_) {
    welcomeWindowController_ = new WelcomeWindowController(registry_, preferences_);
    connect(welcomeWindowController_, &WelcomeWindowController::welcomeCompleted, this, &AppDelegate::welcomeCompleted);
    // Leaving the welcome window without a folder leaves nothing to show: end.
    connect(welcomeWindowController_, &QObject::destroyed, this, [this] {
      if (documents_->windows().isEmpty()) documents_->quit();
    });
  }
  welcomeWindowController_->show();
  welcomeWindowController_->raise();
  welcomeWindowController_->activateWindow();
}

void AppDelegate::welcomeCompleted() { documents_->newRepositoryManagerAsTab(); }

void AppDelegate::handleArguments(const QStringList& arguments) {
  QStringList wanted;
  for (const QString& argument : arguments) {
    if (!argument.trimmed().isEmpty()) wanted << argument;
  }
  if (wanted.isEmpty()) {
    // A plain second launch: show what is there, or open as at a fresh start.
    if (welcomeWindowController_) {
      showWelcome();
    } else if (JelvMainWindow* front = documents_->frontWindow()) {
      front->show();
      front->raise();
      front->activateWindow();
    } else {
      applicationShouldOpenUntitledFile();
    }
    return;
  }
  LOG_INFO(QStringLiteral("Arguments from another launch: '%1'").arg(wanted.join(QStringLiteral("' '"))));
  const LaunchPlan plan = ApplicationStartup::plan(preferences_, wanted);
  documents_->openFiles(plan.folders);
  for (const QString& url : plan.urls) handleURLEvent(url);
}

void AppDelegate::handleURLEvent(const QString& url) {
  const ApplicationUrl parsed = ApplicationUrl::parse(url);
  switch (parsed.kind) {
    case ApplicationUrl::Kind::openRepository:
      LOG_INFO(QStringLiteral("Open repository by URL: ") + parsed.target);
      // A remote's URL fronts the open repository that has it; a path opens as a folder.
      if (isRemoteUrl(parsed.target)) {
        documents_->bringRepositoryWithRemoteToFront(parsed.target);
      } else {
        documents_->openRepository(parsed.target);
      }
      break;
    case ApplicationUrl::Kind::cloneRepository:
      LOG_INFO(QStringLiteral("Clone repository by URL: ") + parsed.target);
      // Folders of the same launch may still be opening: the sheet goes on the window they open in.
      if (documents_->pendingOpens() > 0) {
        connect(documents_, &JelvDocumentController::opensFinished, this, [this, url = parsed.target] { showCloneSheet(url); },
                Qt::SingleShotConnection);
      } else {
        showCloneSheet(parsed.target);
      }
      break;
    case ApplicationUrl::Kind::unknown:
      LOG_WARNING(QStringLiteral("Ignoring URL: ") + url);
      break;
  }
}

void AppDelegate::lastWindowClosed() {
  if (welcomeWindowController_ && welcomeWindowController_->isVisible()) return;
  if (!documents_->windows().isEmpty()) return;
  // Closing the last window does not end the process while a later launch can bring it
  // back; without that link the process would be left with no way to reach it.
  if (!reachable_) documents_->quit();
}
