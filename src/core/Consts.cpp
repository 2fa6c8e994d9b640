#include "Consts.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <mutex>

namespace {
std::mutex pathLock;
QString resourcesOverride;
QString resolvedResources;

QString findResources() {
  if (const char* env = std::getenv("JELV_RESOURCES"); env && *env) return QString::fromLocal8Bit(env);
  const QString exeDir = QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/self/exe"))).absolutePath();
  for (const QString& candidate : {exeDir + QStringLiteral("/resources"), exeDir + QStringLiteral("/../share/jelv")}) {
    if (QFileInfo(candidate + QStringLiteral("/git-instance")).isDir()) return QDir::cleanPath(candidate);
  }
  return exeDir + QStringLiteral("/resources");
}
}  // namespace

namespace Consts {

QString resourcesDirectory() {
  std::lock_guard lock(pathLock);
  if (!resourcesOverride.isEmpty()) return resourcesOverride;
  if (resolvedResources.isEmpty()) resolvedResources = findResources();
  return resolvedResources;
}

void setResourcesDirectory(const QString& path) {
  std::lock_guard lock(pathLock);
  resourcesOverride = path;
}

namespace Git {
QString localGitPath() { return resourcesDirectory() + QStringLiteral("/git-instance/bin/git"); }
QString askPassPath() { return resourcesDirectory() + QStringLiteral("/jelv_askpasswd"); }
QString gitLfsDirectory() { return resourcesDirectory() + QStringLiteral("/git-instance/git-lfs"); }
QString gitFlowDirectory() { return resourcesDirectory() + QStringLiteral("/gitflow-avh"); }
QString gpgWrapperPath() { return resourcesDirectory() + QStringLiteral("/gpg.sh"); }
QString rebaseEditorPath() { return resourcesDirectory() + QStringLiteral("/jelv_ri"); }
}  // namespace Git

QString applicationDataDirectory() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/org.jelv.Jelv");
}

}  // namespace Consts
