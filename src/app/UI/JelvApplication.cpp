#include "UI/JelvApplication.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QMainWindow>
#include <QTimer>

#include "Controllers/Repository/RepositoryView.h"
#include "Jobs/JobQueue.h"
#include "Logging/AdvancedLogger.h"
#include "Services/Preferences.h"
#include "UI/Appearance.h"
#include "Services/RepositorySnapshotLoader.h"

namespace JelvApplication {

int run(QApplication& app) {
  QApplication::setApplicationName(QStringLiteral("Jelv"));
  QApplication::setOrganizationDomain(QStringLiteral("jelv.org"));
  QApplication::setDesktopFileName(QStringLiteral("org.jelv.Jelv"));
  AdvancedLogger::setup(AdvancedLogger::defaultLogDirectory());
  LOG_INFO(QStringLiteral("Jelv starting"));
  Appearance::apply(app, Preferences::shared().integer(QStringLiteral("appearance")));

  QMainWindow window;
  window.setWindowTitle(QStringLiteral("Jelv"));
  const QStringList args = QApplication::arguments();
  std::optional<GitModule> module;
  if (args.size() > 1) {
    auto found = RepositorySnapshotLoader::moduleForPath(args.at(1));
    if (found) module = found.value();
  }
  if (module) {
    window.setCentralWidget(new RepositoryView(*module, std::make_shared<JobQueue>(), &window));
    window.setWindowTitle(QDir(module->repositoryPath).dirName() + QStringLiteral(" — Jelv"));
  } else {
    auto* label = new QLabel(QStringLiteral("Welcome to Jelv. Open a repository to start"), &window);
    label->setAlignment(Qt::AlignCenter);
    window.setCentralWidget(label);
  }
  window.resize(1100, 700);
  window.show();

  // For start-up measurements and smoke tests: quit once the window is shown.
  if (qEnvironmentVariableIsSet("JELV_QUIT_AFTER_SHOW")) QTimer::singleShot(0, &app, &QApplication::quit);
  const int code = app.exec();
  LOG_INFO(QStringLiteral("Jelv quitting"));
  AdvancedLogger::flush();
  return code;
}

}  // namespace JelvApplication
