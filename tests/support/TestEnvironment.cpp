#include "support/TestEnvironment.h"

#include <QDir>
#include <QTemporaryDir>
#include <cstdlib>
#include <memory>

#include "Services/Preferences.h"

namespace {
std::unique_ptr<QTemporaryDir> rootDir;

void setEnv(const char* name, const QString& value) { ::setenv(name, value.toLocal8Bit().constData(), 1); }
}  // namespace

namespace TestEnvironment {

void setUp() {
  rootDir = std::make_unique<QTemporaryDir>(QDir::tempPath() + QStringLiteral("/jelv-test-XXXXXX"));
  const QString r = rootDir->path();
  for (const char* sub : {"home", "config", "data", "cache", "state", "runtime"}) QDir(r).mkpath(QString::fromLatin1(sub));
  setEnv("HOME", r + QStringLiteral("/home"));
  setEnv("XDG_CONFIG_HOME", r + QStringLiteral("/config"));
  setEnv("XDG_DATA_HOME", r + QStringLiteral("/data"));
  setEnv("XDG_CACHE_HOME", r + QStringLiteral("/cache"));
  setEnv("XDG_STATE_HOME", r + QStringLiteral("/state"));
  QFile::setPermissions(r + QStringLiteral("/runtime"), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  if (!std::getenv("XDG_RUNTIME_DIR")) setEnv("XDG_RUNTIME_DIR", r + QStringLiteral("/runtime"));
  // A stable identity and no system or user config influence.
  setEnv("GIT_CONFIG_NOSYSTEM", QStringLiteral("1"));
  setEnv("GIT_AUTHOR_NAME", QStringLiteral("Jelv Test"));
  setEnv("GIT_AUTHOR_EMAIL", QStringLiteral("test@jelv.invalid"));
  setEnv("GIT_COMMITTER_NAME", QStringLiteral("Jelv Test"));
  setEnv("GIT_COMMITTER_EMAIL", QStringLiteral("test@jelv.invalid"));
  ::unsetenv("GIT_DIR");
  ::unsetenv("GIT_WORK_TREE");
  ::unsetenv("GIT_EXEC_PATH");
  QFile config(r + QStringLiteral("/home/.gitconfig"));
  if (config.open(QIODevice::WriteOnly)) {
    config.write("[init]\n\tdefaultBranch = main\n[user]\n\tname = Jelv Test\n\temail = test@jelv.invalid\n"
                 "[protocol \"file\"]\n\tallow = always\n[core]\n\tautocrlf = false\n");
  }
  usePreferencesFile();
}

QString root() { return rootDir ? rootDir->path() : QString(); }

void usePreferencesFile() { Preferences::useStoreFile(root() + QStringLiteral("/config/jelv-test.ini")); }

void tearDown() {
  Preferences::shared().sync();
  rootDir.reset();
}

}  // namespace TestEnvironment
