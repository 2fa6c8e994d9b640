#include "support/GitSshServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpSocket>
#include <QThread>
#include <pwd.h>
#include <unistd.h>

#include "support/GitHttpServer.h"

namespace {

bool run(const QString& program, const QStringList& arguments, QString* output = nullptr) {
  QProcess process;
  process.start(program, arguments);
  if (!process.waitForFinished(20000)) return false;
  if (output) *output = QString::fromUtf8(process.readAllStandardOutput());
  return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

QString userName() {
  const passwd* entry = ::getpwuid(::getuid());
  return entry ? QString::fromLocal8Bit(entry->pw_name) : QStringLiteral("root");
}

QByteArray readFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

GitSshServer::GitSshServer(QString passphrase) : passphrase_(std::move(passphrase)) {}

GitSshServer::~GitSshServer() { stop(); }

QString GitSshServer::clientKeyPath() const { return dir_.path() + QStringLiteral("/client_key"); }

QString GitSshServer::url(const QString& absolutePath) const {
  return QStringLiteral("ssh://%1@127.0.0.1:%2%3").arg(userName()).arg(port_).arg(absolutePath);
}

QString GitSshServer::sshCommand() const {
  return QStringLiteral("ssh -F /dev/null -o IdentityAgent=none -o IdentitiesOnly=yes -o BatchMode=no -o StrictHostKeyChecking=yes "
                        "-o UserKnownHostsFile=%1/known_hosts -i %2")
      .arg(dir_.path(), clientKeyPath());
}

bool GitSshServer::start(QString* error) {
  auto fail = [&](const QString& why) {
    if (error) *error = why;
    stop();
    return false;
  };
  const QString d = dir_.path();
  if (!run(QStringLiteral("ssh-keygen"), {QStringLiteral("-q"), QStringLiteral("-t"), QStringLiteral("ed25519"), QStringLiteral("-N"),
                                          QString(), QStringLiteral("-f"), d + QStringLiteral("/host_key")})) {
    return fail(QStringLiteral("ssh-keygen failed for the host key"));
  }
  if (!run(QStringLiteral("ssh-keygen"), {QStringLiteral("-q"), QStringLiteral("-t"), QStringLiteral("ed25519"), QStringLiteral("-N"),
                                          passphrase_, QStringLiteral("-f"), clientKeyPath()})) {
    return fail(QStringLiteral("ssh-keygen failed for the client key"));
  }
  QFile::copy(clientKeyPath() + QStringLiteral(".pub"), d + QStringLiteral("/authorized_keys"));
  port_ = GitHttpServer::freePort();
  QFile knownHosts(d + QStringLiteral("/known_hosts"));
  if (!knownHosts.open(QIODevice::WriteOnly)) return fail(QStringLiteral("cannot write known_hosts"));
  knownHosts.write(QStringLiteral("[127.0.0.1]:%1 ").arg(port_).toUtf8() + readFile(d + QStringLiteral("/host_key.pub")));
  knownHosts.close();
  QFile config(d + QStringLiteral("/sshd_config"));
  if (!config.open(QIODevice::WriteOnly)) return fail(QStringLiteral("cannot write sshd_config"));
  config.write(QStringLiteral("Port %1\nListenAddress 127.0.0.1\nHostKey %2/host_key\nPidFile %2/sshd.pid\n"
                              "AuthorizedKeysFile %2/authorized_keys\nStrictModes no\nUsePAM no\nPasswordAuthentication no\n"
                              "KbdInteractiveAuthentication no\nPubkeyAuthentication yes\nPermitRootLogin prohibit-password\n"
                              "AcceptEnv GIT_PROTOCOL\n")
                   .arg(port_)
                   .arg(d)
                   .toUtf8());
  config.close();
  // The privilege separation folder that sshd expects when started as root.
  if (::getuid() == 0) QDir().mkpath(QStringLiteral("/run/sshd"));

  sshd_ = std::make_unique<QProcess>();
  sshd_->setProcessChannelMode(QProcess::MergedChannels);
  sshd_->setStandardOutputFile(d + QStringLiteral("/sshd.log"));
  sshd_->start(QStringLiteral("/usr/sbin/sshd"), {QStringLiteral("-D"), QStringLiteral("-e"), QStringLiteral("-f"), d + QStringLiteral("/sshd_config")});
  if (!sshd_->waitForStarted(5000)) return fail(QStringLiteral("sshd does not start: ") + sshd_->errorString());
  QElapsedTimer timer;
  timer.start();
  while (timer.elapsed() < 10000) {
    if (sshd_->state() == QProcess::NotRunning) break;
    QTcpSocket probe;
    probe.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port_));
    if (probe.waitForConnected(200)) return true;
    QThread::msleep(50);
  }
  return fail(QStringLiteral("sshd does not answer: ") + QString::fromUtf8(readFile(d + QStringLiteral("/sshd.log"))));
}

void GitSshServer::stop() {
  if (!sshd_) return;
  if (sshd_->state() != QProcess::NotRunning) {
    sshd_->terminate();
    if (!sshd_->waitForFinished(5000)) {
      sshd_->kill();
      sshd_->waitForFinished(2000);
    }
  }
  sshd_.reset();
}
