#pragma once
// An open SQLite connection, closed when it goes out of scope. The library is built
// serialized, so one connection may be used from several threads.
#include <QString>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "Models/Sqlite/SqliteStatement.h"

struct sqlite3;

class SqliteConnection {
 public:
  struct OpenError {
    int code = 0;
    QString message;
  };
  // Read-write, creating the file if it is missing.
  static std::variant<std::unique_ptr<SqliteConnection>, OpenError> open(const QString& path);

  ~SqliteConnection();
  SqliteConnection(const SqliteConnection&) = delete;
  SqliteConnection& operator=(const SqliteConnection&) = delete;

  // A failure is the library's message; nothing on success.
  using Error = std::optional<QString>;

  std::variant<SqliteStatement, QString> prepare(const QString& sql, const std::vector<SqlValue>& values = {});
  // Runs a statement that returns no rows (or whose rows are of no interest).
  Error execute(const QString& sql, const std::vector<SqlValue>& values = {});
  // Calls onRow for every row until the end or an error; rows read before an error stay read.
  Error query(const QString& sql, const std::vector<SqlValue>& values, const std::function<void(const SqliteStatement&)>& onRow);

  // The extended result code of the last failed call on this connection.
  int lastErrorCode() const;

 private:
  explicit SqliteConnection(sqlite3* db) : db_(db) {}
  sqlite3* db_ = nullptr;
};
