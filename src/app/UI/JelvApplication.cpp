#include "UI/JelvApplication.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QTimer>

#include "Logging/AdvancedLogger.h"

namespace JelvApplication {

int run(QApplication& app) {
  QApplication::setApplicationName(QStringLiteral("Jelv"));
  QApplication::setOrganizationDomain(QStringLiteral("jelv.org"));
  QApplication::setDesktopFileName(QStringLiteral("org.jelv.Jelv"));
  AdvancedLogger::setup(AdvancedLogger::defaultLogDirectory());
  LOG_INFO(QStringLiteral("Jelv starting"));

  QMainWindow window;
  window.setWindowTitle(QStringLiteral("Jelv"));
  auto* label = new QLabel(QStringLiteral("Welcome to Jelv. Open a repository to start"), &window);
  label->setAlignment(Qt::AlignCenter);
  window.setCentralWidget(label);
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
