#pragma once
#include <QDateTime>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "Models/AppSettings.h"
#include "Models/Sqlite/SqliteConnection.h"
#include "support/LogCapture.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

inline void writeBytes(const QString& path, const QByteArray& bytes) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(bytes);
}
inline QByteArray readBytes(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}
inline QStringList names(const std::vector<RepositoryRecordPtr>& records) {
  QStringList result;
  for (const auto& record : records) result << record->name;
  return result;
}

// A registry in a fresh file, with a clock the test moves by hand, and the log captured.
class RegistryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dbPath = dir.path() + QStringLiteral("/db.sqlite3");
    settings = std::make_unique<AppSettings>(dbPath);
    settings->setClock([this] { return clock; });
    settings->initializeDatabase();
    ASSERT_TRUE(settings->isConnected());
  }
  LogCapture log;

  // A second, independent connection for looking at the file as it is.
  std::unique_ptr<SqliteConnection> rawConnection() const {
    auto opened = SqliteConnection::open(dbPath);
    return std::move(std::get<std::unique_ptr<SqliteConnection>>(opened));
  }
  // The rows of a query as text, one "a|b|c" string per row; NULL shows as "NULL".
  QStringList rows(const QString& sql) const {
    QStringList result;
    auto db = rawConnection();
    const auto error = db->query(sql, {}, [&](const SqliteStatement& row) {
      QStringList cells;
      for (int column = 0; column < row.columnCount(); ++column) cells << row.optionalTextAt(column).value_or(QStringLiteral("NULL"));
      result << cells.join(QLatin1Char('|'));
    });
    EXPECT_FALSE(error.has_value()) << error.value_or(QString()).toStdString();
    return result;
  }
  void execute(const QString& sql) const {
    const auto error = rawConnection()->execute(sql);
    ASSERT_FALSE(error.has_value()) << error.value_or(QString()).toStdString();
  }

  void advance(int seconds) { clock = clock.addSecs(seconds); }

  QTemporaryDir dir;
  QString dbPath;
  QDateTime clock = QDateTime(QDate(2024, 3, 1), QTime(12, 0), Qt::UTC);
  std::unique_ptr<AppSettings> settings;
};

// Top-level categories A, B and C, made in that order a second apart, and A1 inside A.
class CategoriesTest : public RegistryTest {
 protected:
  void SetUp() override {
    RegistryTest::SetUp();
    a = makeCategory(QStringLiteral("A"));
    b = makeCategory(QStringLiteral("B"));
    c = makeCategory(QStringLiteral("C"));
    a1 = makeCategory(QStringLiteral("A1"), a);
  }
  int64_t makeCategory(const QString& name, std::optional<int64_t> parent = std::nullopt) {
    const int64_t id = settings->createCategory(name, parent);
    advance(1);
    return id;
  }

  int64_t a = 0, b = 0, c = 0, a1 = 0;
};
