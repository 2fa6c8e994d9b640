// app.start: a cold start of the application until its window is shown (and it quits).
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <cstdio>

#include "Git/Process/Task.h"
#include "support/BenchSupport.h"

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  QCoreApplication app(argc, argv);
  const QString exe = QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).absolutePath() + QStringLiteral("/jelv-app");
  QTemporaryDir home;
  auto startOnce = [&] {
    Task task;
    task.launchPath = exe;
    task.environment = Task::Environment::current();
    task.environment.set(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    task.environment.set(QStringLiteral("JELV_QUIT_AFTER_SHOW"), QStringLiteral("1"));
    // A Jelv already running on the session bus would otherwise take the launch over.
    task.environment.set(QStringLiteral("JELV_SEPARATE_INSTANCE"), QStringLiteral("1"));
    task.environment.set(QStringLiteral("HOME"), home.path());
    task.environment.set(QStringLiteral("XDG_CONFIG_HOME"), home.path() + QStringLiteral("/config"));
    task.environment.set(QStringLiteral("XDG_DATA_HOME"), home.path() + QStringLiteral("/data"));
    task.environment.set(QStringLiteral("JELV_LOG_LEVEL"), QStringLiteral("off"));
    if (!task.launch()) return;
    QByteArray out, err;
    Task::readBoth(task.takeStdout(), task.takeStderr(), out, err);
    task.waitForExit();
  };
  const double seconds = Bench::medianSeconds(startOnce, 5);
  Bench::report(argv[1], seconds * 1000, "ms");
  return 0;
}
