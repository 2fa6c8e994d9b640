#include "UI/JelvApplication.h"

#include <QApplication>
#include <QDBusConnectionInterface>
#include <QDir>
#include <QSocketNotifier>
#include <QTimer>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

#include "Controllers/Preferences/PreferencesWindowController.h"
#include "Logging/AdvancedLogger.h"
#include "Models/AppSettings.h"
#include "Models/CliCommand.h"
#include "Services/DistributedNotificationCenter.h"
#include "Services/ApplicationStartup.h"
#include "Services/Preferences.h"
#include "Services/SingleInstance.h"
#include "UI/AppDelegate.h"
#include "UI/JelvDocumentController.h"

namespace {

int signalPipe[2] = {-1, -1};

void onTerminationSignal(int) {
  const char byte = 1;
  [[maybe_unused]] const auto written = ::write(signalPipe[0], &byte, 1);
}

// SIGTERM (a logout, a service manager) and SIGINT (Ctrl+C in a terminal) end the run
// like Quit: the tabs are saved and their jobs stopped. The handler only writes to a
// socket; the event loop does the rest.
void quitOnTerminationSignals(JelvDocumentController& documents) {
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, signalPipe) != 0) return;
  auto* notifier = new QSocketNotifier(signalPipe[1], QSocketNotifier::Read, &documents);
  QObject::connect(notifier, &QSocketNotifier::activated, &documents, [&documents, notifier] {
    char byte = 0;
    [[maybe_unused]] const auto read = ::read(signalPipe[1], &byte, 1);
    notifier->setEnabled(false);
    LOG_INFO(QStringLiteral("Quitting on a signal"));
    documents.quit();
  });
  struct sigaction action {};
  action.sa_handler = onTerminationSignal;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;
  ::sigaction(SIGTERM, &action, nullptr);
  ::sigaction(SIGINT, &action, nullptr);
}

}  // namespace

namespace JelvApplication {

int run(QApplication& app) {
  QApplication::setApplicationName(QStringLiteral("Jelv"));
  QApplication::setOrganizationDomain(QStringLiteral("jelv.org"));
  QApplication::setDesktopFileName(QStringLiteral("org.jelv.Jelv"));
  const QStringList rawArguments = QApplication::arguments().mid(1);
  // "jelv-app status", "jelv-app -C dir log file": read as the command line tool's request.
  // Plain folders and URLs keep opening a tab each.
  std::optional<QString> cliRequest;
  QStringList arguments;
  if (CliCommand::isCommandLine(rawArguments)) {
    cliRequest = CliCommand::requestText(QDir::currentPath(), rawArguments);
  } else {
    arguments = ApplicationStartup::absoluteArguments(rawArguments, QDir::currentPath());
  }

  // A second launch hands its folders and URLs, or its command, to the first and ends.
  SingleInstance instance;
  if (!qEnvironmentVariableIsSet("JELV_SEPARATE_INSTANCE") && instance.claim() == SingleInstance::Role::secondary) {
    const bool handedOver = cliRequest
                                ? DistributedNotificationCenter::post(DistributedNotificationNames::jelvApiRequest(), *cliRequest)
                                : SingleInstance::forward(QDBusConnection::sessionBus(), arguments);
    if (handedOver) {
      // A round trip to the bus: the signal has left before this process ends.
      QDBusConnection::sessionBus().interface()->isServiceRegistered(SingleInstance::serviceName());
      return 0;
    }
  }

  AdvancedLogger::setup(AdvancedLogger::defaultLogDirectory());
  LOG_INFO(QStringLiteral("Jelv starting"));
  Preferences& preferences = Preferences::shared();
  AppSettings& registry = AppSettings::shared();
  registry.initializeDatabase();

  AppDelegate delegate(registry, preferences);
  delegate.setReachableByLaterLaunches(instance.role() == SingleInstance::Role::primary);
  QObject::connect(&instance, &SingleInstance::argumentsReceived, &delegate, &AppDelegate::handleArguments);
  delegate.applicationWillFinishLaunching();
  // Before the first window: its menu shows Preferences only when this is set.
  delegate.documents().setPreferencesHandler([&registry](QWidget*) { PreferencesWindowController::showWindow(registry); });
  if (cliRequest) {
    delegate.applicationDidFinishLaunchingWithRequest(*cliRequest);
  } else {
    delegate.applicationDidFinishLaunching(arguments);
  }
  quitOnTerminationSignals(delegate.documents());
  // For start-up measurements and smoke tests: quit once the first window is shown.
  if (qEnvironmentVariableIsSet("JELV_QUIT_AFTER_SHOW")) {
    QTimer::singleShot(0, &app, [&delegate] { delegate.documents().quit(); });
  }
  const int code = app.exec();
  LOG_INFO(QStringLiteral("Jelv quitting"));
  preferences.sync();
  AdvancedLogger::flush();
  return code;
}

}  // namespace JelvApplication
