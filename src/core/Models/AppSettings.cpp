#include "Models/AppSettings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdlib>
#include <filesystem>
#include <limits>
#include <set>
#include <sqlite3.h>
#include <system_error>

#include "Consts.h"
#include "Logging/AdvancedLogger.h"
#include "Models/DbScheme.h"
#include "Models/Sqlite/SqliteConnection.h"

// A failed write leaves the registry out of step with what the user was shown; stopping
// is the lesser harm. A macro so that the log entry names the operation.
#define STOP_ON_WRITE_FAILURE(what, error)                                       \
  do {                                                                           \
    LOG_SEVERE(QStringLiteral("%1 failed: %2").arg(QStringLiteral(what), error)); \
    AdvancedLogger::flush();                                                     \
    std::abort();                                                                \
  } while (0)

#define WRITE(sql, ...)                                                           \
  do {                                                                            \
    if (auto writeError = connection(__func__).execute(sql, __VA_ARGS__)) {       \
      STOP_ON_WRITE_FAILURE(#sql, *writeError);                                   \
    }                                                                             \
  } while (0)

namespace {

const QString kRepositoryColumns = QStringLiteral(
    "SELECT r.\"repositoryId\", r.\"reposityryName\", r.\"repositoryPath\", r.\"FKCategoryId\", r.\"lastOpened\", "
    "r.\"colorTag\", c.\"categoryName\" "
    "FROM \"repositories\" r LEFT OUTER JOIN \"categories\" c ON c.\"categoryId\" = r.\"FKCategoryId\" ");

std::optional<QDateTime> parseDate(const std::optional<QString>& text) {
  if (!text) return std::nullopt;
  QDateTime date = QDateTime::fromString(*text, DbScheme::dateFormat);
  if (!date.isValid()) return std::nullopt;
  date.setTimeSpec(Qt::UTC);
  return date;
}

RepositoryRecordPtr readRepositoryRow(const SqliteStatement& row) {
  auto record = std::make_shared<RepositoryRecord>();
  record->id = row.int64At(0);
  record->name = row.textAt(1);
  record->repositoryPath = row.textAt(2);
  record->categoryId = row.optionalInt64At(3);
  record->lastOpened = parseDate(row.optionalTextAt(4));
  if (auto tag = row.optionalInt64At(5)) record->colorTag = int(*tag);
  record->categoryName = row.optionalTextAt(6);
  return record;
}

QString lastPathComponent(const QString& path) { return QFileInfo(QDir::cleanPath(path)).fileName(); }

bool isNotADatabase(int code) {
  const int primary = code & 0xff;
  return primary == SQLITE_NOTADB || primary == SQLITE_CORRUPT;
}

}  // namespace

AppSettings& AppSettings::shared() {
  static AppSettings instance(getDbPath());
  return instance;
}

AppSettings::AppSettings(QString dbPath) : path_(std::move(dbPath)), clock_([] { return QDateTime::currentDateTimeUtc(); }) {}

AppSettings::~AppSettings() = default;

QString AppSettings::getDbPath() {
  const QString directory = Consts::applicationDataDirectory();
  if (directory.isEmpty()) {
    LOG_SEVERE(QStringLiteral("No application data directory"));
    AdvancedLogger::flush();
    std::abort();
  }
  std::error_code error;
  std::filesystem::create_directories(directory.toStdString(), error);
  if (error) LOG_ERROR(QStringLiteral("CreateDirectory failed: ") + QString::fromStdString(error.message()));
  return directory + QStringLiteral("/db.sqlite3");
}

namespace {

const QLatin1String kCompanions[] = {QLatin1String("-journal"), QLatin1String("-wal"), QLatin1String("-shm")};

// Opening a damaged file may replay or remove its journal files: copies of them as they
// were go aside with the file if it turns out damaged.
QStringList keepCompanions(const QString& path) {
  QStringList kept;
  for (const QLatin1String suffix : kCompanions) {
    const QString companion = path + suffix;
    QFile::remove(companion + QStringLiteral(".kept"));  // a copy of an earlier run
    if (QFileInfo::exists(companion) && QFile::copy(companion, companion + QStringLiteral(".kept"))) kept << suffix;
  }
  return kept;
}

// A healthy file drops the copies; one moved aside takes them along where its own are
// gone; one left in place gets back what the opening removed.
enum class Outcome { healthy, movedAside, leftInPlace };

void settleCompanions(const QString& path, const QStringList& kept, Outcome outcome, const QString& aside) {
  for (const QString& suffix : kept) {
    const QString copy = path + suffix + QStringLiteral(".kept");
    const QString target = outcome == Outcome::movedAside ? aside + suffix : path + suffix;
    if (outcome != Outcome::healthy && !QFileInfo::exists(target) && QFile::rename(copy, target)) continue;
    QFile::remove(copy);  // our own copy; the original is where it belongs
  }
}

}  // namespace

void AppSettings::initializeDatabase() {
  const QStringList kept = keepCompanions(path_);
  Outcome outcome = Outcome::healthy;
  QString movedTo;
  struct Settle {
    const QString& path;
    const QStringList& kept;
    const Outcome& outcome;
    const QString& aside;
    ~Settle() { settleCompanions(path, kept, outcome, aside); }
  } settle{path_, kept, outcome, movedTo};
  for (int attempt = 0; attempt < 2; ++attempt) {
    auto opened = SqliteConnection::open(path_);
    if (auto* failure = std::get_if<SqliteConnection::OpenError>(&opened)) {
      LOG_ERROR(QStringLiteral("Cannot connect to db: ") + failure->message);
      LOG_ERROR(QStringLiteral("Db has not beeninitialized properly"));
      return;
    }
    db_ = std::move(std::get<std::unique_ptr<SqliteConnection>>(opened));

    std::optional<int64_t> version;
    const auto error = db_->query(QStringLiteral("PRAGMA user_version"), {},
                                  [&](const SqliteStatement& row) { version = row.int64At(0); });
    if (error && attempt == 0 && isNotADatabase(db_->lastErrorCode())) {
      db_.reset();
      const QString aside = path_ + QStringLiteral(".corrupt-") + clock_().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
      if (moveAside(path_, aside)) {
        outcome = Outcome::movedAside;
        movedTo = aside;
        LOG_ERROR(QStringLiteral("'%1' is not a readable database (%2); moved it to '%3' and starting a new one")
                      .arg(path_, *error, aside));
        startupNotice_ = QStringLiteral(
                             "The list of your repositories could not be read. The damaged file was moved to \"%1\" "
                             "and a new, empty list was started; a rescan of your source folder fills it again.")
                             .arg(aside);
        continue;
      }
      // The file stays as it is: a registry in memory lets this run go on, and nothing
      // of the user's is overwritten.
      outcome = Outcome::leftInPlace;
      LOG_ERROR(QStringLiteral("'%1' is not a readable database (%2) and cannot be moved aside; using a registry in memory")
                    .arg(path_, *error));
      startupNotice_ = QStringLiteral(
                           "The list of your repositories in \"%1\" could not be read, and the file could not be moved "
                           "aside. It was left untouched; repositories added until Jelv quits are not remembered.")
                           .arg(path_);
      auto memory = SqliteConnection::open(QStringLiteral(":memory:"));
      if (auto* connection = std::get_if<std::unique_ptr<SqliteConnection>>(&memory)) {
        db_ = std::move(*connection);
        initializeLatestScheme(*db_);
      }
      return;
    }
    if (error || !version || *version > std::numeric_limits<int32_t>::max() || *version < std::numeric_limits<int32_t>::min()) {
      LOG_SEVERE(QStringLiteral("Cannot read the database version: ") + error.value_or(QStringLiteral("no value")));
      AdvancedLogger::flush();
      std::abort();
    }
    // Version 1 is the only scheme so far; a later one adds its migration step here.
    if (int32_t(*version) == 0) initializeLatestScheme(*db_);
    return;
  }
}

bool AppSettings::moveAside(const QString& path, const QString& aside) {
  if (QFileInfo::exists(aside) || !QFile::rename(path, aside)) return false;
  // A journal or write-ahead log left beside a new file would be replayed into it; they
  // belong to the damaged file and go with it.
  for (const QLatin1String suffix : kCompanions) {
    if (QFileInfo::exists(path + suffix) && !QFile::rename(path + suffix, aside + suffix)) {
      LOG_ERROR(QStringLiteral("Cannot move '%1' to '%2'").arg(path + suffix, aside + suffix));
    }
  }
  return true;
}

void AppSettings::initializeLatestScheme(SqliteConnection& db) {
  if (auto error = db.execute(DbScheme::createRepositoriesTable)) LOG_ERROR(QStringLiteral("create table Failed ") + *error);
  if (auto error = db.execute(DbScheme::createCategoriesTable)) LOG_ERROR(QStringLiteral("create table Failed ") + *error);
  if (auto error = db.execute(QStringLiteral("PRAGMA user_version = ") + QString::number(DbScheme::latestVersion))) {
    LOG_SEVERE(QStringLiteral("Cannot write the database version: ") + *error);
    AdvancedLogger::flush();
    std::abort();
  }
}

SqliteConnection& AppSettings::connection(const char* operation) {
  if (!db_) {
    LOG_SEVERE(QStringLiteral("No database connection for %1").arg(QLatin1String(operation)));
    AdvancedLogger::flush();
    std::abort();
  }
  return *db_;
}

QString AppSettings::now() const { return clock_().toUTC().toString(DbScheme::dateFormat); }

int64_t AppSettings::nowSeconds() const { return clock_().toSecsSinceEpoch(); }

RepositoryInfo AppSettings::getRepositoryInfo(const GitModule& gitModule) {
  RepositoryInfo info{gitModule, lastPathComponent(gitModule.repositoryPath), std::nullopt};
  if (!db_) return info;
  bool found = false;
  const auto error = db_->query(
      QStringLiteral("SELECT \"reposityryName\", \"colorTag\" FROM \"repositories\" WHERE \"repositoryPath\" = ?"),
      {gitModule.repositoryPath}, [&](const SqliteStatement& row) {
        if (found) return;
        found = true;
        info.name = row.textAt(0);
        if (auto tag = row.optionalInt64At(1)) info.colorTag = int(*tag);
      });
  if (error) LOG_ERROR(QStringLiteral("Can't read repositories: ") + *error);
  return info;
}

std::vector<RepositoryRecordPtr> AppSettings::readRepositories(const QString& tail, std::optional<int64_t> categoryId) {
  std::vector<RepositoryRecordPtr> records;
  if (!db_) {
    LOG_ERROR(QStringLiteral("Can't read repositories: no connection"));
    return records;
  }
  std::vector<SqlValue> values;
  if (categoryId) values.emplace_back(*categoryId);
  const auto error =
      db_->query(kRepositoryColumns + tail, values, [&](const SqliteStatement& row) { records.push_back(readRepositoryRow(row)); });
  if (error) LOG_ERROR(QStringLiteral("Can't read repositories: ") + *error);
  return records;
}

std::vector<RepositoryRecordPtr> AppSettings::getRepositories(std::optional<int64_t> categoryId) {
  const QString order = QStringLiteral("ORDER BY r.\"reposityryName\" COLLATE NOCASE ASC");
  if (categoryId) return readRepositories(QStringLiteral("WHERE r.\"FKCategoryId\" = ? ") + order, categoryId);
  return readRepositories(order, std::nullopt);
}

std::vector<RepositoryRecordPtr> AppSettings::getRecentRepositories() {
  return readRepositories(QStringLiteral("ORDER BY r.\"lastOpened\" DESC"), std::nullopt);
}

std::vector<CategoryRecord> AppSettings::getCategories() {
  std::vector<CategoryRecord> categories;
  if (!db_) {
    LOG_ERROR(QStringLiteral("Can't read categories: no connection"));
    return categories;
  }
  const auto error = db_->query(
      QStringLiteral("SELECT \"categoryId\", \"categoryName\", \"position\", \"FKParentCategoryId\" FROM \"categories\" "
                     "ORDER BY \"position\" ASC, \"categoryId\" ASC"),
      {}, [&](const SqliteStatement& row) {
        categories.push_back(CategoryRecord{row.int64At(0), row.textAt(1), row.int64At(2), row.optionalInt64At(3)});
      });
  if (error) LOG_ERROR(QStringLiteral("Can't read categories: ") + *error);
  return categories;
}

bool AppSettings::repositoryItemExists(const QString& path) {
  if (!db_) return false;
  bool exists = false;
  const auto error = db_->query(QStringLiteral("SELECT 1 FROM \"repositories\" WHERE \"repositoryPath\" = ? LIMIT 1"), {path},
                                [&](const SqliteStatement&) { exists = true; });
  if (error) LOG_ERROR(QStringLiteral("Can't read repositories: ") + *error);
  return exists;
}

std::optional<int64_t> AppSettings::addRepository(const QString& rawPath, const std::optional<QString>& rootFolder) {
  const QString path = rawPath.trimmed();
  if (path.isEmpty()) return std::nullopt;

  if (repositoryItemExists(path)) {
    WRITE(QStringLiteral("UPDATE \"repositories\" SET \"lastOpened\" = ? WHERE \"repositoryPath\" = ?"), {now(), path});
    std::optional<int64_t> id;
    db_->query(QStringLiteral("SELECT \"repositoryId\" FROM \"repositories\" WHERE \"repositoryPath\" = ? LIMIT 1"), {path},
               [&](const SqliteStatement& row) { id = row.int64At(0); });
    return id;
  }

  const std::optional<int64_t> category =
      rootFolder ? std::optional<int64_t>(getCategoryId(path, *rootFolder)) : std::nullopt;
  std::optional<int64_t> id;
  const auto error = connection(__func__).query(
      QStringLiteral("INSERT INTO \"repositories\" (\"reposityryName\", \"repositoryPath\", \"FKCategoryId\", \"lastOpened\") "
                     "VALUES (?, ?, ?, ?) RETURNING \"repositoryId\""),
      {lastPathComponent(path), path, sqlValue(category), now()}, [&](const SqliteStatement& row) { id = row.int64At(0); });
  if (error) STOP_ON_WRITE_FAILURE("insert repository", *error);
  return id;
}

void AppSettings::renameRepository(int64_t repositoryId, const QString& name) {
  WRITE(QStringLiteral("UPDATE \"repositories\" SET \"reposityryName\" = ? WHERE \"repositoryId\" = ?"), {name, repositoryId});
}

void AppSettings::setRepositoryColorTag(int64_t repositoryId, std::optional<int> colorTag) {
  const std::optional<int64_t> value = colorTag ? std::optional<int64_t>(*colorTag) : std::nullopt;
  WRITE(QStringLiteral("UPDATE \"repositories\" SET \"colorTag\" = ? WHERE \"repositoryId\" = ?"), {sqlValue(value), repositoryId});
}

void AppSettings::deleteRepository(int64_t repositoryId) {
  WRITE(QStringLiteral("DELETE FROM \"repositories\" WHERE \"repositoryId\" = ?"), {repositoryId});
}

void AppSettings::deleteAllRepositories() { WRITE(QStringLiteral("DELETE FROM \"repositories\""), {}); }

void AppSettings::replaceAllRepositories(const QStringList& paths, const QString& rootFolder) {
  WRITE(QStringLiteral("BEGIN IMMEDIATE"), {});
  // Found is not opened: only what the user opened before keeps a place among the recent.
  std::vector<std::pair<QString, QString>> opened;
  const auto error = connection(__func__).query(
      QStringLiteral("SELECT \"repositoryPath\", \"lastOpened\" FROM \"repositories\" WHERE \"lastOpened\" IS NOT NULL"), {},
      [&](const SqliteStatement& row) { opened.emplace_back(row.textAt(0), row.textAt(1)); });
  if (error) LOG_ERROR(QStringLiteral("Can't read repositories: ") + *error);
  deleteAllRepositories();
  for (const QString& path : paths) addRepository(path, rootFolder);
  WRITE(QStringLiteral("UPDATE \"repositories\" SET \"lastOpened\" = NULL"), {});
  for (const auto& [path, when] : opened) {
    WRITE(QStringLiteral("UPDATE \"repositories\" SET \"lastOpened\" = ? WHERE \"repositoryPath\" = ?"), {when, path});
  }
  WRITE(QStringLiteral("COMMIT"), {});
}

bool AppSettings::moveRepository(int64_t repositoryId, std::optional<int64_t> categoryId) {
  WRITE(QStringLiteral("UPDATE \"repositories\" SET \"FKCategoryId\" = ? WHERE \"repositoryId\" = ?"),
        {sqlValue(categoryId), repositoryId});
  return true;
}

int64_t AppSettings::createCategory(const QString& name, std::optional<int64_t> parentId) {
  // A wall-clock position sorts a new category behind all placed by index and behind
  // older new ones, without asking for the maximum.
  std::optional<int64_t> id;
  const auto error = connection(__func__).query(
      QStringLiteral("INSERT INTO \"categories\" (\"categoryName\", \"position\", \"FKParentCategoryId\") VALUES (?, ?, ?) "
                     "RETURNING \"categoryId\""),
      {name, nowSeconds(), sqlValue(parentId)}, [&](const SqliteStatement& row) { id = row.int64At(0); });
  if (error || !id) STOP_ON_WRITE_FAILURE("insert category", error.value_or(QStringLiteral("no id")));
  return *id;
}

void AppSettings::renameCategory(int64_t categoryId, const QString& name) {
  WRITE(QStringLiteral("UPDATE \"categories\" SET \"categoryName\" = ? WHERE \"categoryId\" = ?"), {name, categoryId});
}

std::optional<int64_t> AppSettings::getCategoryOrCreateNew(const QString& name, int64_t parentId) {
  std::optional<int64_t> id;
  const auto error = connection(__func__).query(
      QStringLiteral("SELECT \"categoryId\" FROM \"categories\" WHERE \"categoryName\" = ? AND \"FKParentCategoryId\" = ? LIMIT 1"),
      {name, parentId}, [&](const SqliteStatement& row) { id = row.int64At(0); });
  if (error) {
    LOG_ERROR(QStringLiteral("Can't read categories: ") + *error);
    return std::nullopt;
  }
  if (id) return id;
  return createCategory(name, parentId);
}

int64_t AppSettings::getCategoryId(const QString& path, const QString& rootFolder) {
  // "/src" must not claim "/srcfoo/x": the root ends at a separator.
  QString root = rootFolder;
  while (root.size() > 1 && root.endsWith(QLatin1Char('/'))) root.chop(1);
  if (!path.startsWith(root) || path.size() <= root.size() || (root != QStringLiteral("/") && path.at(root.size()) != QLatin1Char('/')))
    return -1;
  const int cut = root == QStringLiteral("/") ? 1 : int(root.size()) + 1;
  const QStringList components = path.mid(cut).split(QLatin1Char('/'), Qt::SkipEmptyParts);
  if (components.size() < 2) return -1;

  int64_t current = -1;
  for (qsizetype i = 0; i + 1 < components.size(); ++i) {
    const auto next = getCategoryOrCreateNew(components.at(i), current);
    if (!next) break;
    current = *next;
  }
  return current;
}

std::optional<int64_t> AppSettings::getParentCategory(int64_t categoryId) {
  if (!db_) return std::nullopt;
  std::optional<int64_t> parent;
  const auto error = db_->query(QStringLiteral("SELECT \"FKParentCategoryId\" FROM \"categories\" WHERE \"categoryId\" = ?"),
                                {categoryId}, [&](const SqliteStatement& row) { parent = row.optionalInt64At(0); });
  if (error) LOG_ERROR(QStringLiteral("Can't read categories: ") + *error);
  return parent;
}

bool AppSettings::moveRepositoryCategory(int64_t categoryId, std::optional<int64_t> newParentId, std::optional<int64_t> index) {
  // No category may end up inside itself. The visited set guards against a cycle that
  // is already in the file.
  std::set<int64_t> visited;
  for (auto ancestor = newParentId; ancestor && visited.insert(*ancestor).second; ancestor = getParentCategory(*ancestor)) {
    if (*ancestor == categoryId) return false;
  }

  std::vector<int64_t> siblings;
  const auto error = connection(__func__).query(
      QStringLiteral("SELECT \"categoryId\" FROM \"categories\" WHERE \"FKParentCategoryId\" IS ? ORDER BY \"position\""),
      {sqlValue(newParentId)}, [&](const SqliteStatement& row) { siblings.push_back(row.int64At(0)); });
  if (error) LOG_ERROR(QStringLiteral("Can't read category orders: ") + *error);

  // Siblings before the index keep their order; the rest move one up and leave a gap.
  for (size_t i = 0; i < siblings.size(); ++i) {
    const int64_t position = (index && int64_t(i) < *index) ? int64_t(i) : int64_t(i) + 1;
    WRITE(QStringLiteral("UPDATE \"categories\" SET \"position\" = ? WHERE \"categoryId\" = ?"), {position, siblings[i]});
  }
  // Without an index the category goes one past the last sibling, so that it never ties
  // with it (the siblings now stand at 1...n).
  const int64_t position = index ? *index : int64_t(siblings.size()) + 1;
  WRITE(QStringLiteral("UPDATE \"categories\" SET \"FKParentCategoryId\" = ?, \"position\" = ? WHERE \"categoryId\" = ?"),
        {sqlValue(newParentId), position, categoryId});
  return true;
}

void AppSettings::deleteRepositoryCategory(int64_t categoryId) {
  LOG_INFO(QStringLiteral("Remove category %1.").arg(categoryId));
  const std::optional<int64_t> parent = getParentCategory(categoryId);
  WRITE(QStringLiteral("UPDATE \"repositories\" SET \"FKCategoryId\" = ? WHERE \"FKCategoryId\" = ?"),
        {sqlValue(parent), categoryId});
  // Lifted categories sort after the parent's own children.
  WRITE(QStringLiteral("UPDATE \"categories\" SET \"FKParentCategoryId\" = ?, \"position\" = ? WHERE \"FKParentCategoryId\" = ?"),
        {sqlValue(parent), nowSeconds(), categoryId});
  WRITE(QStringLiteral("DELETE FROM \"categories\" WHERE \"categoryId\" = ?"), {categoryId});
}
