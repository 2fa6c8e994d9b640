#include <QDir>

#include "RegistryFixture.h"

namespace {
const QDateTime kStart(QDate(2024, 3, 1), QTime(12, 0, 5, 7), Qt::UTC);
const QStringList kCompanions{"-journal", "-wal", "-shm"};
}  // namespace

TEST(DamagedRegistry, TheFileAndItsCompanionsAreMovedTogetherAndTheUserIsToldWhere) {
  QTemporaryDir dir;
  const QString path = dir.path() + "/db.sqlite3";
  writeBytes(path, QByteArray(8192, 'x'));
  for (const QString& suffix : kCompanions) writeBytes(path + suffix, QByteArray(100, suffix.at(1).toLatin1()));

  AppSettings settings(path);
  settings.setClock([] { return kStart; });
  settings.initializeDatabase();
  ASSERT_TRUE(settings.isConnected());

  const QString aside = path + ".corrupt-20240301-120005-007";
  EXPECT_EQ(readBytes(aside), QByteArray(8192, 'x'));
  for (const QString& suffix : kCompanions) EXPECT_EQ(readBytes(aside + suffix), QByteArray(100, suffix.at(1).toLatin1()));
  ASSERT_TRUE(settings.startupNotice().has_value());
  EXPECT_TRUE(settings.startupNotice()->contains(aside)) << settings.startupNotice()->toStdString();
  // Nothing else is left beside the new file.
  EXPECT_EQ(QDir(dir.path()).entryList({"db.sqlite3*.kept"}, QDir::Files), QStringList());

  // The new registry is a file of its own that keeps what is added.
  settings.addRepository("/src/alpha");
  AppSettings reopened(path);
  reopened.initializeDatabase();
  EXPECT_EQ(reopened.getRepositories().size(), 1u);
  EXPECT_FALSE(reopened.startupNotice().has_value());
}

TEST(DamagedRegistry, AFileThatCannotBeMovedIsLeftUntouchedAndTheRunUsesARegistryInMemory) {
  QTemporaryDir dir;
  const QString path = dir.path() + "/db.sqlite3";
  writeBytes(path, QByteArray(8192, 'x'));
  // Something already stands where the file would go.
  writeBytes(path + "-wal", QByteArray(100, 'w'));
  ASSERT_TRUE(QDir(dir.path()).mkpath("db.sqlite3.corrupt-20240301-120005-007/inner"));

  AppSettings settings(path);
  settings.setClock([] { return kStart; });
  settings.initializeDatabase();

  ASSERT_TRUE(settings.isConnected());
  settings.addRepository("/src/alpha");
  EXPECT_EQ(settings.getRepositories().size(), 1u);
  EXPECT_EQ(readBytes(path), QByteArray(8192, 'x'));
  EXPECT_EQ(readBytes(path + "-wal"), QByteArray(100, 'w'));
  ASSERT_TRUE(settings.startupNotice().has_value());
  EXPECT_TRUE(settings.startupNotice()->contains(path));
  EXPECT_TRUE(settings.startupNotice()->contains("untouched"));
}
