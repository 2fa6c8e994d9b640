#pragma once
// A real smart-HTTP Git server on 127.0.0.1 for tests and benchmarks: nginx with basic
// authentication hands the requests through fcgiwrap to `git http-backend`. Its
// configuration lives in a temporary folder; the destructor stops both processes.
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <memory>

class GitHttpServer {
 public:
  // An empty password serves without authentication.
  explicit GitHttpServer(QString user = QStringLiteral("alice"), QString password = QStringLiteral("secret"));
  ~GitHttpServer();
  GitHttpServer(const GitHttpServer&) = delete;
  GitHttpServer& operator=(const GitHttpServer&) = delete;

  // Starts and waits until the port answers; false with the reason otherwise.
  bool start(QString* error = nullptr);
  void stop();

  // The folder whose bare repositories are served, "<root>/<name>" at "<url>/<name>".
  QString root() const;
  int port() const { return port_; }
  // "http://127.0.0.1:<port>/<name>", optionally with the user and password in it.
  QString url(const QString& name, bool withCredentials = false) const;
  // A new bare repository under the root that accepts pushes.
  QString createBareRepository(const QString& name) const;
  const QString& user() const { return user_; }
  const QString& password() const { return password_; }

  // A port on 127.0.0.1 that nothing listens on right now.
  static int freePort();

 private:
  QString user_;
  QString password_;
  QTemporaryDir dir_;
  int port_ = 0;
  std::unique_ptr<QProcess> fcgiwrap_;
  std::unique_ptr<QProcess> nginx_;
};
