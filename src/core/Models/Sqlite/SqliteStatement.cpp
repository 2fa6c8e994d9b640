#include "Models/Sqlite/SqliteStatement.h"

#include <sqlite3.h>

#include <utility>

SqliteStatement::SqliteStatement(SqliteStatement&& other) noexcept
    : db_(std::exchange(other.db_, nullptr)), statement_(std::exchange(other.statement_, nullptr)) {}

SqliteStatement& SqliteStatement::operator=(SqliteStatement&& other) noexcept {
  if (this != &other) {
    if (statement_) sqlite3_finalize(statement_);
    db_ = std::exchange(other.db_, nullptr);
    statement_ = std::exchange(other.statement_, nullptr);
  }
  return *this;
}

SqliteStatement::~SqliteStatement() {
  if (statement_) sqlite3_finalize(statement_);
}

bool SqliteStatement::bind(int position, const SqlValue& value) {
  int rc = SQLITE_OK;
  if (std::holds_alternative<std::monostate>(value)) {
    rc = sqlite3_bind_null(statement_, position);
  } else if (const auto* number = std::get_if<int64_t>(&value)) {
    rc = sqlite3_bind_int64(statement_, position, *number);
  } else {
    const QByteArray text = std::get<QString>(value).toUtf8();
    rc = sqlite3_bind_text(statement_, position, text.constData(), int(text.size()), SQLITE_TRANSIENT);
  }
  return rc == SQLITE_OK;
}

SqliteStatement::Step SqliteStatement::step() {
  switch (sqlite3_step(statement_)) {
    case SQLITE_ROW: return Step::row;
    case SQLITE_DONE: return Step::done;
    default: return Step::error;
  }
}

int SqliteStatement::columnCount() const { return sqlite3_column_count(statement_); }

bool SqliteStatement::isNull(int column) const { return sqlite3_column_type(statement_, column) == SQLITE_NULL; }

int64_t SqliteStatement::int64At(int column) const { return sqlite3_column_int64(statement_, column); }

std::optional<int64_t> SqliteStatement::optionalInt64At(int column) const {
  if (isNull(column)) return std::nullopt;
  return int64At(column);
}

QString SqliteStatement::textAt(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  const int length = sqlite3_column_bytes(statement_, column);
  return text ? QString::fromUtf8(text, length) : QString();
}

std::optional<QString> SqliteStatement::optionalTextAt(int column) const {
  if (isNull(column)) return std::nullopt;
  return textAt(column);
}

QString SqliteStatement::errorMessage() const {
  return db_ ? QString::fromUtf8(sqlite3_errmsg(db_)) : QStringLiteral("no connection");
}
