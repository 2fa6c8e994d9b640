#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "RegistryFixture.h"

namespace {

void writeFile(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(bytes);
}

QByteArray readFile(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

const QDateTime kStart(QDate(2024, 3, 1), QTime(12, 0, 5, 7), Qt::UTC);

}  // namespace

TEST(DamagedRegistry, TheFileAndItsCompanionsAreMovedTogetherAndTheUserIsToldWhere) {
  QTemporaryDir dir;
  const QString path = dir.path() + QStringLiteral("/db.sqlite3");
  writeFile(path, QByteArray(8192, 'x'));
  writeFile(path + QStringLiteral("-journal"), QByteArray(100, 'j'));
  writeFile(path + QStringLiteral("-wal"), QByteArray(100, 'w'));
  writeFile(path + QStringLiteral("-shm"), QByteArray(100, 's'));

  AppSettings settings(path);
  settings.setClock([] { return kStart; });
  settings.initializeDatabase();
  ASSERT_TRUE(settings.isConnected());

  const QString aside = path + QStringLiteral(".corrupt-20240301-120005-007");
  EXPECT_EQ(readFile(aside), QByteArray(8192, 'x'));
  EXPECT_EQ(readFile(aside + QStringLiteral("-journal")), QByteArray(100, 'j'));
  EXPECT_EQ(readFile(aside + QStringLiteral("-wal")), QByteArray(100, 'w'));
  EXPECT_EQ(readFile(aside + QStringLiteral("-shm")), QByteArray(100, 's'));
  ASSERT_TRUE(settings.startupNotice().has_value());
  EXPECT_TRUE(settings.startupNotice()->contains(aside)) << settings.startupNotice()->toStdString();
  // Nothing else is left beside the new file.
  EXPECT_EQ(QDir(dir.path()).entryList({QStringLiteral("db.sqlite3*.kept")}, QDir::Files), QStringList());

  // The new registry is a file of its own that keeps what is added.
  settings.addRepository(QStringLiteral("/src/alpha"));
  AppSettings reopened(path);
  reopened.initializeDatabase();
  EXPECT_EQ(reopened.getRepositories().size(), 1u);
  EXPECT_FALSE(reopened.startupNotice().has_value());
}

TEST(DamagedRegistry, AFileThatCannotBeMovedIsLeftUntouchedAndTheRunUsesARegistryInMemory) {
  QTemporaryDir dir;
  const QString path = dir.path() + QStringLiteral("/db.sqlite3");
  writeFile(path, QByteArray(8192, 'x'));
  // Something already stands where the file would go.
  writeFile(path + QStringLiteral("-wal"), QByteArray(100, 'w'));
  ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("db.sqlite3.corrupt-20240301-120005-007/inner")));

  AppSettings settings(path);
  settings.setClock([] { return kStart; });
  settings.initializeDatabase();

  ASSERT_TRUE(settings.isConnected());
  settings.addRepository(QStringLiteral("/src/alpha"));
  EXPECT_EQ(settings.getRepositories().size(), 1u);
  EXPECT_EQ(readFile(path), QByteArray(8192, 'x'));
  EXPECT_EQ(readFile(path + QStringLiteral("-wal")), QByteArray(100, 'w'));
  ASSERT_TRUE(settings.startupNotice().has_value());
  EXPECT_TRUE(settings.startupNotice()->contains(path));
  EXPECT_TRUE(settings.startupNotice()->contains(QStringLiteral("untouched")));
}
