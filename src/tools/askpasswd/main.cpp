// jelv_askpasswd PROMPT: asks the Jelv that started the git process (JelvProcessId) for
// the answer to PROMPT and prints it. Exits 1 when refused, when nobody answers within
// the time-out, or without a session bus; git then fails cleanly instead of waiting.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>
#include <cstdio>

#include "Services/DistributedNotificationNames.h"

namespace names = DistributedNotificationNames;

namespace {

// Seconds to wait for a person to answer; background work (NO_PROMPT) asks nobody, so
// its only hope is a stored secret, which comes at once.
int timeoutSeconds(bool noPrompt) {
  bool ok = false;
  const int configured = qEnvironmentVariableIntValue("JELV_ASKPASS_TIMEOUT", &ok);
  if (ok && configured > 0) return configured;
  return noPrompt ? 10 : 180;
}

}  // namespace

class ResponseReceiver : public QObject {
  Q_OBJECT
 public:
  ResponseReceiver(qint64 jelvProcessId, qint64 ownProcessId) : jelvProcessId_(jelvProcessId), ownProcessId_(ownProcessId) {}

 public Q_SLOTS:
  void notification(const QString& name, const QString& object) {
    if (name == names::askPasswdResponseUsername() || name == names::askPasswdResponsePassword()) answer(object, true);
    if (name == names::askPasswdResponseCancel()) answer(object, false);
  }

 private:
  void answer(const QString& json, bool accepted) {
    const QJsonObject response = QJsonDocument::fromJson(json.toUtf8()).object();
    // Several helpers may wait at once: each takes only its own answer.
    if (response.value(QStringLiteral("askPassProcessId")).toInteger(-1) != ownProcessId_) return;
    if (response.value(QStringLiteral("jelvProcessId")).toInteger(-1) != jelvProcessId_) return;
    if (accepted) {
      const QByteArray value = response.value(QStringLiteral("value")).toString().toUtf8();
      std::fwrite(value.constData(), 1, static_cast<size_t>(value.size()), stdout);
      std::fputc('\n', stdout);
      std::fflush(stdout);
    }
    QCoreApplication::exit(accepted ? 0 : 1);
  }

  qint64 jelvProcessId_;
  qint64 ownProcessId_;
};

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  bool ok = false;
  const qint64 jelvProcessId = qEnvironmentVariable("JelvProcessId").toLongLong(&ok);
  if (!ok) {
    std::fputs("jelv_askpasswd: JelvProcessId is not set\n", stderr);
    return 1;
  }
  const bool noPrompt = qEnvironmentVariable("NO_PROMPT") == QStringLiteral("1");
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected()) {
    std::fputs("jelv_askpasswd: no session bus\n", stderr);
    return 1;
  }

  const qint64 ownProcessId = QCoreApplication::applicationPid();
  ResponseReceiver receiver(jelvProcessId, ownProcessId);
  // Listening before asking: the bus handles our messages in order.
  if (!bus.connect(QString(), names::objectPath(), names::interfaceName(), names::signalName(), &receiver,
                   SLOT(notification(QString, QString)))) {
    std::fputs("jelv_askpasswd: cannot listen on the session bus\n", stderr);
    return 1;
  }

  QJsonArray arguments;
  for (int i = 1; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
  QJsonObject request;
  request.insert(QStringLiteral("jelvProcessId"), jelvProcessId);
  request.insert(QStringLiteral("askPassProcessId"), ownProcessId);
  request.insert(QStringLiteral("noPrompt"), noPrompt);
  request.insert(QStringLiteral("arguments"), arguments);
  QDBusMessage signal = QDBusMessage::createSignal(names::objectPath(), names::interfaceName(), names::signalName());
  signal << names::askPasswdRequest() << QString::fromUtf8(QJsonDocument(request).toJson(QJsonDocument::Compact));
  if (!bus.send(signal)) {
    std::fputs("jelv_askpasswd: cannot send the request\n", stderr);
    return 1;
  }

  QTimer::singleShot(timeoutSeconds(noPrompt) * 1000, &app, [] {
    std::fputs("jelv_askpasswd: no answer\n", stderr);
    QCoreApplication::exit(1);
  });
  return app.exec();
}

#include "main.moc"
