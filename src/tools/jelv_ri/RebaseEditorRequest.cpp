#include "RebaseEditorRequest.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <csignal>
#include <unistd.h>

#include "Services/DistributedNotificationNames.h"

namespace names = DistributedNotificationNames;

namespace {

// The parent of `pid` from /proc; 0 when unknown.
pid_t parentOf(pid_t pid) {
  QFile stat(QStringLiteral("/proc/%1/stat").arg(pid));
  if (!stat.open(QIODevice::ReadOnly)) return 0;
  // "pid (comm) state ppid ...": the command may hold blanks and parentheses.
  const QByteArray text = stat.readAll();
  const int close = text.lastIndexOf(')');
  if (close < 0) return 0;
  const QList<QByteArray> fields = text.mid(close + 2).split(' ');
  return fields.size() > 1 ? static_cast<pid_t>(fields.at(1).toLong()) : 0;
}

bool isAlive(pid_t pid) { return ::kill(pid, 0) == 0 || errno == EPERM; }

}  // namespace

RebaseEditorRequest::RebaseEditorRequest(QString filePath, int timeoutSeconds, QObject* parent)
    : QObject(parent), filePath_(std::move(filePath)), timeoutSeconds_(timeoutSeconds) {
  // Git hands the todo list under this name; every other file is a commit message.
  requestName_ = QFileInfo(filePath_).fileName() == QStringLiteral("git-rebase-todo") ? names::editTodoListForRebase()
                                                                                     : names::continueRebase();
  // Git may start us through a shell: watch the parent and the one above it.
  pid_t pid = ::getppid();
  for (int level = 0; level < 2 && pid > 1; ++level) {
    watched_.push_back(pid);
    pid = parentOf(pid);
  }
  if (const QByteArray app = qgetenv("JelvProcessId"); !app.isEmpty()) {
    if (const long appPid = app.toLong(); appPid > 1) watched_.push_back(static_cast<pid_t>(appPid));
  }
}

void RebaseEditorRequest::start() {
  QDBusConnection bus = QDBusConnection::sessionBus();
  if (!bus.isConnected() ||
      !bus.connect(QString(), names::objectPath(), names::interfaceName(), names::signalName(), this,
                   SLOT(notification(QString, QString)))) {
    end(Outcome::noBus);
    return;
  }
  QDBusMessage signal = QDBusMessage::createSignal(names::objectPath(), names::interfaceName(), names::signalName());
  signal << requestName_ << filePath_;
  if (!bus.send(signal)) {
    end(Outcome::noBus);
    return;
  }
  deadline_.setSingleShot(true);
  connect(&deadline_, &QTimer::timeout, this, [this] { end(Outcome::timedOut); });
  deadline_.start(timeoutSeconds_ * 1000);
  connect(&watch_, &QTimer::timeout, this, &RebaseEditorRequest::checkProcesses);
  watch_.start(500);
}

void RebaseEditorRequest::notification(const QString& name, const QString& object) {
  // Other rebases in other repositories share the bus: only our file counts.
  if (object != filePath_) return;
  if (name == names::rebaseEditorFinish()) end(Outcome::finished);
  if (name == names::rebaseEditorCancel()) end(Outcome::canceled);
}

void RebaseEditorRequest::checkProcesses() {
  for (pid_t pid : watched_) {
    if (!isAlive(pid)) {
      end(Outcome::abandoned);
      return;
    }
  }
}

void RebaseEditorRequest::end(Outcome outcome) {
  if (outcome_ != Outcome::pending) return;
  outcome_ = outcome;
  deadline_.stop();
  watch_.stop();
  Q_EMIT ended();
}
