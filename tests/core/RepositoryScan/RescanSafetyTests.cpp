#include <atomic>
#include <mutex>

#include "Models/RepositoryManager/RepositoryManagerTree.h"
#include "Models/Sqlite/SqliteConnection.h"
#include "ScanFixture.h"
#include "Services/RepositoryScan.h"

// While the walk and the checks run (a quit may come at any moment) the file still
// holds the old rows; the new ones replace them at once at the end.
TEST_F(ScanTest, ARescanKeepsTheOldRowsUntilItReplacesThemAllAtOnce) {
  makeRepository("work/api");
  makeRepository("solo");
  settings->addRepository("/elsewhere/kept-until-the-end");
  const QString dbPath = dbDir.path() + "/db.sqlite3";

  std::mutex lock;
  QList<int> seen;  // rows in the file at each progress report
  const auto countRows = [&] {
    auto opened = SqliteConnection::open(dbPath);
    auto& db = std::get<std::unique_ptr<SqliteConnection>>(opened);
    int rows = -1;
    db->query("SELECT count(*) FROM repositories", {}, [&](const SqliteStatement& row) { rows = int(row.int64At(0)); });
    return rows;
  };
  const int added = RepositoryScan::rescanRepositories(*settings, root, [&](int, int) {
    const int rows = countRows();
    const std::lock_guard<std::mutex> guard(lock);
    seen << rows;
  });

  EXPECT_EQ(added, 2);
  ASSERT_FALSE(seen.isEmpty());
  for (const int rows : seen) EXPECT_EQ(rows, 1);
  EXPECT_EQ(countRows(), 2);
  EXPECT_FALSE(settings->repositoryItemExists("/elsewhere/kept-until-the-end"));
}

// Found by a scan is not opened: the recent section lists only what the user opened,
// and a rescan keeps when that was.
TEST_F(ScanTest, RepositoriesFoundByAScanAreNotRecent) {
  const QString api = makeRepository("work/api");
  makeRepository("solo");
  ASSERT_EQ(RepositoryScan::rescanRepositories(*settings, root), 2);
  EXPECT_TRUE(RepositoryManagerTree::load(*settings).recent->children.empty());

  settings->addRepository(api);  // opened
  ASSERT_EQ(RepositoryScan::rescanRepositories(*settings, root), 2);
  const auto recent = RepositoryManagerTree::load(*settings).recent->children;
  ASSERT_EQ(recent.size(), 1u);
  EXPECT_EQ(recent[0]->title, "api");
}
