// jelv [-C <dir>] [--git-dir=<dir>] [open | status | commit | log [[--] <file>] | <path>]
// Brings a repository up in the running Jelv. The request goes out as one notification;
// the application answers "handled" at once and "requestHandled" once it has acted.
// When no application answers within the time-out (or there is no session bus), the
// application beside the tool starts with the same command line, which it reads the same
// way; without one the tool says so and exits 1.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>
#include <cstdio>

#include "Models/CliCommand.h"
#include "Services/DistributedNotificationNames.h"

namespace names = DistributedNotificationNames;
namespace cli = JelvCliRequestCommand;

namespace {

const QString handled = QStringLiteral("handled");

int millisecondsFromEnvironment(const char* name, int fallback) {
  bool ok = false;
  const int seconds = qEnvironmentVariableIntValue(name, &ok);
  return ok && seconds > 0 ? seconds * 1000 : fallback;
}

void say(const QString& text) {
  std::fputs(qPrintable(QStringLiteral("jelv: ") + text + QLatin1Char('\n')), stderr);
}

// A later start that finds a Jelv after all hands the command over to it.
int launchApplication(const QStringList& arguments, const QString& workingDirectory) {
  const QString application = QCoreApplication::applicationDirPath() + QStringLiteral("/jelv-app");
  if (!QFileInfo(application).isExecutable()) {
    say(QStringLiteral("Jelv is not running (no answer); start it first"));
    return 1;
  }
  // The application reads bare folders as tabs to open; "open" keeps "jelv" meaning this folder.
  const QStringList command = arguments.isEmpty() ? QStringList{QStringLiteral("open")} : arguments;
  if (!QProcess::startDetached(application, command, workingDirectory)) {
    say(QStringLiteral("Jelv is not running and %1 could not be started").arg(application));
    return 1;
  }
  say(QStringLiteral("Jelv was not running; starting it"));
  return 0;
}

}  // namespace

class ResponseReceiver : public QObject {
  Q_OBJECT
 public:
  ResponseReceiver(bool verbose, int actingTimeout) : verbose_(verbose), actingTimeout_(actingTimeout) {}
  bool answered() const { return answered_; }

 public Q_SLOTS:
  void notification(const QString& name, const QString& object) {
    if (name != names::jelvApiResponse()) return;
    if (verbose_) say(QStringLiteral("answer '%1'").arg(object));
    if (object == cli::requestHandled()) {
      QCoreApplication::exit(0);
    } else if (object == handled && !answered_) {
      answered_ = true;
      // Opening a large repository can take a while; the request is in good hands.
      QTimer::singleShot(actingTimeout_, qApp, [] { QCoreApplication::exit(0); });
    }
  }

 private:
  bool verbose_;
  int actingTimeout_;
  bool answered_ = false;
};

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  const bool verbose = arguments.contains(QStringLiteral("--verbose"));

  const QString workingDirectory = QDir::currentPath();
  if (workingDirectory.isEmpty()) {
    say(QStringLiteral("cannot read the current directory"));
    return 1;
  }
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) return launchApplication(arguments, workingDirectory);
  ResponseReceiver receiver(verbose, millisecondsFromEnvironment("JELV_CLI_ACT_TIMEOUT", 30000));
  // Listening before asking: the bus delivers our messages in order.
  if (!bus.connect(QString(), names::objectPath(), names::interfaceName(), names::signalName(), &receiver,
                   SLOT(notification(QString, QString)))) {
    say(QStringLiteral("cannot listen on the session bus"));
    return 1;
  }

  // Only the header's inline names are used: the tool does not link the core library.
  const QString request =
      workingDirectory + cli::workingDirectorySeparator() + arguments.join(cli::argumentSeparator());
  if (verbose) say(QStringLiteral("request '%1'").arg(request));
  QDBusMessage signal = QDBusMessage::createSignal(names::objectPath(), names::interfaceName(), names::signalName());
  signal << names::jelvApiRequest() << request;
  if (!bus.send(signal)) {
    say(QStringLiteral("cannot send the request"));
    return 1;
  }

  QTimer::singleShot(millisecondsFromEnvironment("JELV_CLI_TIMEOUT", 5000), &app, [&receiver, arguments, workingDirectory] {
    if (receiver.answered()) return;
    QCoreApplication::exit(launchApplication(arguments, workingDirectory));
  });
  return app.exec();
}

#include "main.moc"
