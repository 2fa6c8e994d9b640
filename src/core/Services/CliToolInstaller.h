#pragma once
// Puts the `jelv` tool on the user's PATH as a symbolic link ("/usr/local/bin/jelv" to the
// tool beside the application), or takes it away. The change needs the administrator's
// rights: it runs through an elevation program (pkexec, which asks on the desktop).
// install() and uninstall() block: call them off the main thread.
#include <QString>
#include <QStringList>

class CliToolInstaller {
 public:
  enum class State { notInstalled, installed, otherFile };
  struct Outcome {
    bool success = false;
    QString message;  // what to tell the user
  };

  static QString defaultLinkPath() { return QStringLiteral("/usr/local/bin/jelv"); }

  // An empty elevation program runs the change with this process's own rights.
  explicit CliToolInstaller(QString toolPath, QString linkPath = defaultLinkPath(),
                            QString elevationProgram = QStringLiteral("pkexec"));

  const QString& toolPath() const { return toolPath_; }
  const QString& linkPath() const { return linkPath_; }
  bool toolExists() const;
  // `otherFile`: something else already has the name, and installing replaces it.
  State state() const;

  Outcome install() const;
  Outcome uninstall() const;

 private:
  // The program and its arguments, elevated when asked; the failure's details or nothing.
  std::optional<QString> run(const QString& program, const QStringList& arguments) const;

  QString toolPath_;
  QString linkPath_;
  QString elevationProgram_;
};
