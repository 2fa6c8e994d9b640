#include <QDir>
#include <QFileInfo>

#include "RegistryFixture.h"

TEST_F(RegistryTest, NewFileHasBothTablesWithTheStoredColumnNamesAndVersionOne) {
  EXPECT_EQ(rows("PRAGMA user_version"), QStringList{"1"});
  // name|notnull|pk, in the order of creation.
  EXPECT_EQ(rows("SELECT name, \"notnull\", pk FROM pragma_table_info('repositories')"),
            (QStringList{"repositoryId|1|1", "reposityryName|1|0", "repositoryPath|1|0", "FKCategoryId|0|0", "lastOpened|0|0",
                         "colorTag|0|0"}));
  EXPECT_EQ(rows("SELECT name, \"notnull\", pk FROM pragma_table_info('categories')"),
            (QStringList{"categoryId|1|1", "categoryName|1|0", "position|1|0", "FKParentCategoryId|0|0"}));
}

TEST_F(RegistryTest, ReopeningKeepsRowsAndAFileFromAnEarlierRunIsReadAsItStands) {
  settings->addRepository("/src/alpha");
  // Rows as an earlier version wrote them, dates in its text form.
  execute("INSERT INTO categories (categoryName, position, FKParentCategoryId) VALUES ('Work', 3, NULL)");
  execute(
      "INSERT INTO repositories (reposityryName, repositoryPath, FKCategoryId, lastOpened, colorTag) "
      "VALUES ('Beta', '/src/beta', 1, '2023-05-06T07:08:09.123', 4)");

  AppSettings reopened(dbPath);
  reopened.initializeDatabase();
  const auto repositories = reopened.getRepositories();
  ASSERT_EQ(repositories.size(), 2u);
  EXPECT_EQ(repositories[0]->name, "alpha");
  EXPECT_EQ(*repositories[1],
            (RepositoryRecord{2, "/src/beta", "Beta", QDateTime(QDate(2023, 5, 6), QTime(7, 8, 9, 123), Qt::UTC), 1, "Work", 4}));
}

TEST(RegistryFileTest, AFileDamagedInsideAValidHeaderIsAlsoReplaced) {
  QTemporaryDir dir;
  const QString path = dir.path() + "/db.sqlite3";
  {
    AppSettings settings(path);
    settings.initializeDatabase();
    settings.addRepository("/src/alpha");
  }
  // Keep the 16-byte magic header, wreck the rest of the first page.
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadWrite));
  file.seek(16);
  file.write(QByteArray(200, '\xff'));
  file.close();

  AppSettings settings(path);
  settings.initializeDatabase();
  ASSERT_TRUE(settings.isConnected());
  EXPECT_TRUE(settings.getRepositories().empty());
  settings.addRepository("/src/beta");
  ASSERT_EQ(settings.getRepositories().size(), 1u);
  EXPECT_EQ(settings.getRepositories()[0]->name, "beta");
}

TEST(RegistryFileTest, WithoutAConnectionReadsAreEmptyAndAWriteStopsTheProcess) {
  QTemporaryDir dir;
  // A directory where the file should be: SQLite cannot open it.
  ASSERT_TRUE(QDir(dir.path()).mkpath("db.sqlite3/inner"));
  LogCapture log;
  AppSettings settings(dir.path() + "/db.sqlite3");
  settings.initializeDatabase();
  const QStringList captured = log.messages();

  EXPECT_FALSE(settings.isConnected());
  ASSERT_GE(captured.size(), 2);
  EXPECT_TRUE(captured[0].startsWith("Cannot connect to db: "));
  EXPECT_EQ(captured[1], "Db has not beeninitialized properly");

  EXPECT_TRUE(settings.getRepositories().empty());
  EXPECT_TRUE(settings.getCategories().empty());
  EXPECT_FALSE(settings.repositoryItemExists("/src/alpha"));
  EXPECT_EQ(settings.getRepositoryInfo(GitModule{"/src/alpha", {}, {}}).name, "alpha");

  // The dying child runs this program again and cannot clean up: its temporary folders go
  // inside this test's folder, which this process removes.
  const QByteArray tmp = qgetenv("TMPDIR");
  qputenv("TMPDIR", dir.path().toLocal8Bit());
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(settings.addRepository("/src/alpha"), "");
  qputenv("TMPDIR", tmp);
}

TEST(RegistryFileTest, DbPathLiesInTheApplicationDataFolderWhichIsCreated) {
  const QString path = AppSettings::getDbPath();
  EXPECT_TRUE(path.endsWith("/org.jelv.Jelv/db.sqlite3")) << path.toStdString();
  EXPECT_TRUE(QFileInfo(path).dir().exists());
}
