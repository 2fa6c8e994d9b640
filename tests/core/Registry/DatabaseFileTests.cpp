#include <QDir>
#include <QFile>

#include "RegistryFixture.h"

TEST_F(RegistryTest, NewFileHasBothTablesWithTheStoredColumnNamesAndVersionOne) {
  EXPECT_EQ(rows(QStringLiteral("PRAGMA user_version")), QStringList{QStringLiteral("1")});
  // cid|name|type|notnull|default|pk, in the order of creation.
  EXPECT_EQ(rows(QStringLiteral("SELECT name, \"notnull\", pk FROM pragma_table_info('repositories')")),
            (QStringList{QStringLiteral("repositoryId|1|1"), QStringLiteral("reposityryName|1|0"),
                         QStringLiteral("repositoryPath|1|0"), QStringLiteral("FKCategoryId|0|0"),
                         QStringLiteral("lastOpened|0|0"), QStringLiteral("colorTag|0|0")}));
  EXPECT_EQ(rows(QStringLiteral("SELECT name, \"notnull\", pk FROM pragma_table_info('categories')")),
            (QStringList{QStringLiteral("categoryId|1|1"), QStringLiteral("categoryName|1|0"), QStringLiteral("position|1|0"),
                         QStringLiteral("FKParentCategoryId|0|0")}));
}

TEST_F(RegistryTest, ReopeningKeepsRowsAndAFileFromAnEarlierRunIsReadAsItStands) {
  settings->addRepository(QStringLiteral("/src/alpha"));
  // Rows as an earlier version wrote them, dates in its text form.
  execute(QStringLiteral("INSERT INTO categories (categoryName, position, FKParentCategoryId) VALUES ('Work', 3, NULL)"));
  execute(QStringLiteral("INSERT INTO repositories (reposityryName, repositoryPath, FKCategoryId, lastOpened, colorTag) "
                         "VALUES ('Beta', '/src/beta', 1, '2023-05-06T07:08:09.123', 4)"));

  AppSettings reopened(dbPath);
  reopened.initializeDatabase();
  const auto repositories = reopened.getRepositories();
  ASSERT_EQ(repositories.size(), 2u);
  EXPECT_EQ(repositories[0]->name, QStringLiteral("alpha"));
  const auto& beta = *repositories[1];
  EXPECT_EQ(beta.repositoryPath, QStringLiteral("/src/beta"));
  EXPECT_EQ(beta.categoryId, 1);
  EXPECT_EQ(beta.categoryName, QStringLiteral("Work"));
  EXPECT_EQ(beta.colorTag, 4);
  ASSERT_TRUE(beta.lastOpened.has_value());
  EXPECT_EQ(*beta.lastOpened, QDateTime(QDate(2023, 5, 6), QTime(7, 8, 9, 123), Qt::UTC));
}

TEST_F(RegistryTest, LastOpenedIsStoredAsUtcTextWithMilliseconds) {
  clock = QDateTime(QDate(2024, 1, 2), QTime(3, 4, 5, 678), Qt::UTC);
  settings->addRepository(QStringLiteral("/src/alpha"));
  EXPECT_EQ(rows(QStringLiteral("SELECT lastOpened FROM repositories")), QStringList{QStringLiteral("2024-01-02T03:04:05.678")});
}

TEST(RegistryFileTest, AFileThatIsNotADatabaseIsMovedAsideAndAFreshRegistryWorks) {
  QTemporaryDir dir;
  const QString path = dir.path() + QStringLiteral("/db.sqlite3");
  QFile garbage(path);
  ASSERT_TRUE(garbage.open(QIODevice::WriteOnly));
  garbage.write(QByteArray(8192, 'x'));
  garbage.close();

  AppSettings settings(path);
  settings.initializeDatabase();
  ASSERT_TRUE(settings.isConnected());
  settings.addRepository(QStringLiteral("/src/alpha"));
  ASSERT_EQ(settings.getRepositories().size(), 1u);

  // The broken file is kept beside the new one, byte for byte.
  const QStringList aside = QDir(dir.path()).entryList({QStringLiteral("db.sqlite3.corrupt-*")}, QDir::Files);
  ASSERT_EQ(aside.size(), 1);
  QFile kept(dir.path() + QLatin1Char('/') + aside.first());
  ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
  EXPECT_EQ(kept.readAll(), QByteArray(8192, 'x'));
}

TEST(RegistryFileTest, AFileDamagedInsideAValidHeaderIsAlsoReplaced) {
  QTemporaryDir dir;
  const QString path = dir.path() + QStringLiteral("/db.sqlite3");
  {
    AppSettings settings(path);
    settings.initializeDatabase();
    settings.addRepository(QStringLiteral("/src/alpha"));
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
  settings.addRepository(QStringLiteral("/src/beta"));
  ASSERT_EQ(settings.getRepositories().size(), 1u);
  EXPECT_EQ(settings.getRepositories()[0]->name, QStringLiteral("beta"));
}

TEST(RegistryFileTest, WithoutAConnectionReadsAreEmptyAndAWriteStopsTheProcess) {
  QTemporaryDir dir;
  // A directory where the file should be: SQLite cannot open it.
  ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("db.sqlite3/inner")));
  LogCapture log;
  AppSettings settings(dir.path() + QStringLiteral("/db.sqlite3"));
  settings.initializeDatabase();
  const QStringList captured = log.messages();

  EXPECT_FALSE(settings.isConnected());
  ASSERT_GE(captured.size(), 2);
  EXPECT_TRUE(captured[0].startsWith(QStringLiteral("Cannot connect to db: ")));
  EXPECT_EQ(captured[1], QStringLiteral("Db has not beeninitialized properly"));

  EXPECT_TRUE(settings.getRepositories().empty());
  EXPECT_TRUE(settings.getCategories().empty());
  EXPECT_FALSE(settings.repositoryItemExists(QStringLiteral("/src/alpha")));
  EXPECT_EQ(settings.getRepositoryInfo(GitModule{QStringLiteral("/src/alpha"), {}, {}}).name, QStringLiteral("alpha"));

  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(settings.addRepository(QStringLiteral("/src/alpha")), "");
}

TEST(RegistryFileTest, DbPathLiesInTheApplicationDataFolderWhichIsCreated) {
  const QString path = AppSettings::getDbPath();
  EXPECT_TRUE(path.endsWith(QStringLiteral("/org.jelv.Jelv/db.sqlite3"))) << path.toStdString();
  EXPECT_TRUE(QFileInfo(path).dir().exists());
}
