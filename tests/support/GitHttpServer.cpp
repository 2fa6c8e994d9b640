#include "support/GitHttpServer.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QUrl>
#include <functional>
#include <csignal>
#include <unistd.h>

namespace {

bool writeFile(const QString& path, const QByteArray& content) {
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
  return file.write(content) == content.size();
}

bool waitForSocket(const std::function<bool()>& ready, int timeoutMs) {
  QElapsedTimer timer;
  timer.start();
  while (timer.elapsed() < timeoutMs) {
    if (ready()) return true;
    QThread::msleep(20);
  }
  return false;
}

QString gitHttpBackend() {
  QProcess git;
  git.start(QStringLiteral("git"), {QStringLiteral("--exec-path")});
  git.waitForFinished(5000);
  return QString::fromLocal8Bit(git.readAllStandardOutput()).trimmed() + QStringLiteral("/git-http-backend");
}

void endProcess(std::unique_ptr<QProcess>& process) {
  if (!process) return;
  if (process->state() != QProcess::NotRunning) {
    process->terminate();
    if (!process->waitForFinished(5000)) {
      process->kill();
      process->waitForFinished(2000);
    }
  }
  process.reset();
}

}  // namespace

GitHttpServer::GitHttpServer(QString user, QString password) : user_(std::move(user)), password_(std::move(password)) {}

GitHttpServer::~GitHttpServer() { stop(); }

int GitHttpServer::freePort() {
  QTcpServer probe;
  if (!probe.listen(QHostAddress::LocalHost, 0)) return 0;
  return probe.serverPort();
}

QString GitHttpServer::root() const { return dir_.path() + QStringLiteral("/repositories"); }

QString GitHttpServer::url(const QString& name, bool withCredentials) const {
  const QString credentials = withCredentials && !password_.isEmpty()
                                  ? QStringLiteral("%1:%2@").arg(QString::fromUtf8(QUrl::toPercentEncoding(user_)),
                                                                  QString::fromUtf8(QUrl::toPercentEncoding(password_)))
                                  : QString();
  return QStringLiteral("http://") + credentials + QStringLiteral("127.0.0.1:") + QString::number(port_) + QLatin1Char('/') + name;
}

QString GitHttpServer::createBareRepository(const QString& name) const {
  const QString path = root() + QLatin1Char('/') + name;
  QDir().mkpath(path);
  QProcess git;
  git.setWorkingDirectory(path);
  git.start(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("--bare"), QStringLiteral("-q"), QStringLiteral("-b"),
                                    QStringLiteral("main")});
  git.waitForFinished(10000);
  git.start(QStringLiteral("git"), {QStringLiteral("config"), QStringLiteral("http.receivepack"), QStringLiteral("true")});
  git.waitForFinished(10000);
  return path;
}

bool GitHttpServer::start(QString* error) {
  auto fail = [&](const QString& why) {
    if (error) *error = why;
    stop();
    return false;
  };
  if (!dir_.isValid()) return fail(QStringLiteral("no temporary folder"));
  const QString d = dir_.path();
  QDir().mkpath(root());
  QDir().mkpath(d + QStringLiteral("/temp"));
  port_ = freePort();
  if (port_ == 0) return fail(QStringLiteral("no free port"));

  const QString socket = d + QStringLiteral("/fcgiwrap.sock");
  fcgiwrap_ = std::make_unique<QProcess>();
  fcgiwrap_->setProcessChannelMode(QProcess::MergedChannels);
  fcgiwrap_->setStandardOutputFile(d + QStringLiteral("/fcgiwrap.log"));
  // fcgiwrap forks its workers; a group of their own lets stop() end them too (ending the
  // parent alone left them running for the rest of the machine's life).
  fcgiwrap_->setChildProcessModifier([] { ::setpgid(0, 0); });
  fcgiwrap_->start(QStringLiteral("/usr/sbin/fcgiwrap"), {QStringLiteral("-c"), QStringLiteral("4"), QStringLiteral("-s"),
                                                          QStringLiteral("unix:") + socket});
  if (!fcgiwrap_->waitForStarted(5000)) return fail(QStringLiteral("fcgiwrap does not start: ") + fcgiwrap_->errorString());
  if (!waitForSocket([&] { return QFile::exists(socket); }, 5000)) return fail(QStringLiteral("fcgiwrap made no socket"));

  const bool authenticated = !password_.isEmpty();
  if (authenticated && !writeFile(d + QStringLiteral("/htpasswd"), (user_ + QStringLiteral(":{PLAIN}") + password_ + QLatin1Char('\n')).toUtf8())) {
    return fail(QStringLiteral("cannot write htpasswd"));
  }
  const QString temp = d + QStringLiteral("/temp");
  QString conf;
  // As root the workers would become "nobody", who may not read the temporary folder.
  if (::getuid() == 0) conf += QStringLiteral("user root root;\n");
  conf += QStringLiteral(
              "worker_processes 1;\ndaemon off;\npid %1/nginx.pid;\nerror_log %1/error.log;\n"
              "events { worker_connections 64; }\n"
              "http {\n  access_log off;\n  client_max_body_size 0;\n"
              "  client_body_temp_path %2/body;\n  fastcgi_temp_path %2/fastcgi;\n  proxy_temp_path %2/proxy;\n"
              "  uwsgi_temp_path %2/uwsgi;\n  scgi_temp_path %2/scgi;\n"
              "  server {\n    listen 127.0.0.1:%3;\n    location / {\n")
              .arg(d, temp)
              .arg(port_);
  if (authenticated) conf += QStringLiteral("      auth_basic \"git\";\n      auth_basic_user_file %1/htpasswd;\n").arg(d);
  conf += QStringLiteral(
              "      fastcgi_buffering off;\n      fastcgi_read_timeout 600s;\n"
              "      fastcgi_pass unix:%1;\n"
              "      fastcgi_param SCRIPT_FILENAME %2;\n"
              "      fastcgi_param GIT_PROJECT_ROOT %3;\n"
              "      fastcgi_param GIT_HTTP_EXPORT_ALL \"\";\n"
              "      fastcgi_param GIT_PROTOCOL $http_git_protocol;\n"
              "      fastcgi_param PATH_INFO $uri;\n"
              "      fastcgi_param REMOTE_USER $remote_user;\n"
              "      fastcgi_param REMOTE_ADDR $remote_addr;\n"
              "      fastcgi_param QUERY_STRING $query_string;\n"
              "      fastcgi_param REQUEST_METHOD $request_method;\n"
              "      fastcgi_param CONTENT_TYPE $content_type;\n"
              "      fastcgi_param CONTENT_LENGTH $content_length;\n"
              "      fastcgi_param HTTP_CONTENT_ENCODING $http_content_encoding;\n"
              "    }\n  }\n}\n")
              .arg(socket, gitHttpBackend(), root());
  const QString confPath = d + QStringLiteral("/nginx.conf");
  if (!writeFile(confPath, conf.toUtf8())) return fail(QStringLiteral("cannot write nginx.conf"));

  nginx_ = std::make_unique<QProcess>();
  nginx_->setProcessChannelMode(QProcess::MergedChannels);
  nginx_->setStandardOutputFile(d + QStringLiteral("/nginx.out"));
  nginx_->start(QStringLiteral("/usr/sbin/nginx"), {QStringLiteral("-e"), d + QStringLiteral("/error.log"), QStringLiteral("-p"), d,
                                                    QStringLiteral("-c"), confPath});
  if (!nginx_->waitForStarted(5000)) return fail(QStringLiteral("nginx does not start: ") + nginx_->errorString());
  const bool up = waitForSocket(
      [&] {
        if (nginx_->state() == QProcess::NotRunning) return false;
        QTcpSocket probe;
        probe.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port_));
        return probe.waitForConnected(200);
      },
      10000);
  if (!up) {
    QFile log(d + QStringLiteral("/error.log"));
    log.open(QIODevice::ReadOnly);
    return fail(QStringLiteral("nginx does not answer: ") + QString::fromUtf8(log.readAll()));
  }
  return true;
}

void GitHttpServer::stop() {
  endProcess(nginx_);
  if (fcgiwrap_ && fcgiwrap_->processId() > 0) ::kill(-static_cast<pid_t>(fcgiwrap_->processId()), SIGTERM);
  endProcess(fcgiwrap_);
}
