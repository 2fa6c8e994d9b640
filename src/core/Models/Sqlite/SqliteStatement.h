#pragma once
// One prepared statement, finalized when it goes out of scope. Values are bound by
// position; columns are read by position, as the statement selected them.
#include <QDateTime>
#include <QString>
#include <cstdint>
#include <optional>
#include <variant>

struct sqlite3;
struct sqlite3_stmt;

// NULL, an integer or a text: all the registry stores.
using SqlValue = std::variant<std::monostate, int64_t, QString>;

inline SqlValue sqlValue(const std::optional<int64_t>& value) { return value ? SqlValue(*value) : SqlValue(); }
inline SqlValue sqlValue(const std::optional<QString>& value) { return value ? SqlValue(*value) : SqlValue(); }

class SqliteStatement {
 public:
  SqliteStatement(sqlite3* db, sqlite3_stmt* statement) : db_(db), statement_(statement) {}
  SqliteStatement(SqliteStatement&& other) noexcept;
  SqliteStatement& operator=(SqliteStatement&& other) noexcept;
  SqliteStatement(const SqliteStatement&) = delete;
  SqliteStatement& operator=(const SqliteStatement&) = delete;
  ~SqliteStatement();

  // Positions start at 1, as in SQL.
  bool bind(int position, const SqlValue& value);

  enum class Step { row, done, error };
  Step step();

  // Columns start at 0.
  int columnCount() const;
  bool isNull(int column) const;
  int64_t int64At(int column) const;
  std::optional<int64_t> optionalInt64At(int column) const;
  QString textAt(int column) const;
  std::optional<QString> optionalTextAt(int column) const;

  QString errorMessage() const;

 private:
  sqlite3* db_ = nullptr;
  sqlite3_stmt* statement_ = nullptr;
};
