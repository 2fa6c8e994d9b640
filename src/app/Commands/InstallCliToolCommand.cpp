#include "Commands/InstallCliToolCommand.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QPointer>
#include <QThreadPool>
#include <QWidget>

CliToolInstaller InstallCliToolCommand::installer() {
  return CliToolInstaller(QCoreApplication::applicationDirPath() + QStringLiteral("/jelv"));
}

void InstallCliToolCommand::execute(QWidget* parent, bool install, std::function<void()> finished) {
  const CliToolInstaller tool = installer();
  if (install && tool.state() == CliToolInstaller::State::otherFile) {
    const auto answer = QMessageBox::question(
        parent, QObject::tr("Install Command Line Tool"),
        QObject::tr("Another file is at %1. Installing replaces it with a link to Jelv's tool; the file there now is lost.")
            .arg(tool.linkPath()),
        QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel);
    if (answer != QMessageBox::Ok) return;
  }
  QPointer<QWidget> window(parent);
  QThreadPool::globalInstance()->start([tool, install, window, finished] {
    const CliToolInstaller::Outcome outcome = install ? tool.install() : tool.uninstall();
    QMetaObject::invokeMethod(
        qApp,
        [window, outcome, finished] {
          auto* box = new QMessageBox(outcome.success ? QMessageBox::Information : QMessageBox::Warning,
                                      QObject::tr("Command Line Tool"), outcome.message, QMessageBox::Ok, window.data());
          box->setObjectName(QStringLiteral("cliToolOutcome"));
          box->setAttribute(Qt::WA_DeleteOnClose);
          box->open();
          if (finished) finished();
        },
        Qt::QueuedConnection);
  });
}
