#include "Models/Sqlite/SqliteConnection.h"

#include <sqlite3.h>

std::variant<std::unique_ptr<SqliteConnection>, SqliteConnection::OpenError> SqliteConnection::open(const QString& path) {
  sqlite3* db = nullptr;
  const int rc = sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
  if (rc != SQLITE_OK) {
    OpenError error{rc, db ? QString::fromUtf8(sqlite3_errmsg(db)) : QString::fromUtf8(sqlite3_errstr(rc))};
    sqlite3_close_v2(db);
    return error;
  }
  sqlite3_extended_result_codes(db, 1);
  // Another process (a second instance) may hold a write lock for a moment.
  sqlite3_busy_timeout(db, 2000);
  return std::unique_ptr<SqliteConnection>(new SqliteConnection(db));
}

SqliteConnection::~SqliteConnection() { sqlite3_close_v2(db_); }

std::variant<SqliteStatement, QString> SqliteConnection::prepare(const QString& sql, const std::vector<SqlValue>& values) {
  sqlite3_stmt* raw = nullptr;
  const QByteArray text = sql.toUtf8();
  if (sqlite3_prepare_v2(db_, text.constData(), int(text.size()), &raw, nullptr) != SQLITE_OK) {
    sqlite3_finalize(raw);
    return QString::fromUtf8(sqlite3_errmsg(db_));
  }
  SqliteStatement statement(db_, raw);
  for (size_t i = 0; i < values.size(); ++i) {
    if (!statement.bind(int(i) + 1, values[i])) return statement.errorMessage();
  }
  return statement;
}

SqliteConnection::Error SqliteConnection::execute(const QString& sql, const std::vector<SqlValue>& values) {
  auto prepared = prepare(sql, values);
  if (auto* error = std::get_if<QString>(&prepared)) return *error;
  auto& statement = std::get<SqliteStatement>(prepared);
  for (;;) {
    switch (statement.step()) {
      case SqliteStatement::Step::row: continue;
      case SqliteStatement::Step::done: return std::nullopt;
      case SqliteStatement::Step::error: return statement.errorMessage();
    }
  }
}

SqliteConnection::Error SqliteConnection::query(const QString& sql, const std::vector<SqlValue>& values,
                                                const std::function<void(const SqliteStatement&)>& onRow) {
  auto prepared = prepare(sql, values);
  if (auto* error = std::get_if<QString>(&prepared)) return *error;
  auto& statement = std::get<SqliteStatement>(prepared);
  for (;;) {
    switch (statement.step()) {
      case SqliteStatement::Step::row: onRow(statement); break;
      case SqliteStatement::Step::done: return std::nullopt;
      case SqliteStatement::Step::error: return statement.errorMessage();
    }
  }
}

int SqliteConnection::lastErrorCode() const { return sqlite3_extended_errcode(db_); }
