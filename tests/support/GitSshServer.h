#pragma once
// A real OpenSSH server on 127.0.0.1 for tests, in the foreground with its own host key,
// accepting one client key that is protected by a passphrase. The destructor stops it.
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <memory>

class GitSshServer {
 public:
  explicit GitSshServer(QString passphrase = QStringLiteral("correct horse"));
  ~GitSshServer();
  GitSshServer(const GitSshServer&) = delete;
  GitSshServer& operator=(const GitSshServer&) = delete;

  bool start(QString* error = nullptr);
  void stop();

  int port() const { return port_; }
  QString clientKeyPath() const;
  const QString& passphrase() const { return passphrase_; }
  // "ssh://<user>@127.0.0.1:<port><path>"
  QString url(const QString& absolutePath) const;
  // The ssh command git should run: only our key, our known host, no agent, no config.
  QString sshCommand() const;

 private:
  QString passphrase_;
  QTemporaryDir dir_;
  int port_ = 0;
  std::unique_ptr<QProcess> sshd_;
};
