#include "Extensions/FileModificationTime.h"

#include <QFile>
#include <sys/stat.h>

std::optional<QDateTime> fileModificationTime(const QString& path) {
  struct stat info {};
  if (::stat(QFile::encodeName(path).constData(), &info) != 0) return std::nullopt;
  const qint64 msecs = static_cast<qint64>(info.st_mtim.tv_sec) * 1000 + info.st_mtim.tv_nsec / 1'000'000;
  return QDateTime::fromMSecsSinceEpoch(msecs, Qt::UTC);
}
