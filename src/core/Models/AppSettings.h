#pragma once
// The repository registry: which repositories the user knows, the nested categories
// they are sorted into, when each was last opened and its colour tag. One SQLite file,
// "db.sqlite3" in the application's data folder, with one connection for the life of
// the process.
//
// No operation returns an error: a read that fails logs and gives what it has; a write
// that fails (or a write without a connection) logs and stops the process, because the
// registry would otherwise drift from what the user sees.
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Models/CategoryRecord.h"
#include "Models/GitModule.h"
#include "Models/RepositoryInfo.h"
#include "Models/RepositoryRecord.h"

class SqliteConnection;

class AppSettings {
 public:
  // The process's registry at getDbPath(); initializeDatabase() is the caller's job.
  static AppSettings& shared();

  // A registry in the given file (tests, tools).
  explicit AppSettings(QString dbPath);
  ~AppSettings();
  AppSettings(const AppSettings&) = delete;
  AppSettings& operator=(const AppSettings&) = delete;

  // <application data>/db.sqlite3; creates the folder.
  static QString getDbPath();

  // Opens or creates the file and brings the scheme up. A file that is not a database
  // is moved aside (".corrupt-<time>", with its journal files) and a fresh one is made:
  // the registry can be rebuilt by a rescan, a process that cannot start cannot. When it
  // cannot be moved it is left alone and this run keeps its registry in memory.
  void initializeDatabase();
  // What the user must be told about the file after initializeDatabase(): where a
  // damaged registry went. Empty when all went well.
  const std::optional<QString>& startupNotice() const { return startupNotice_; }
  static void initializeLatestScheme(SqliteConnection& db);
  bool isConnected() const { return db_ != nullptr; }
  QString path() const { return path_; }

  RepositoryInfo getRepositoryInfo(const GitModule& gitModule);
  // With no id: every repository, whatever category holds it.
  std::vector<RepositoryRecordPtr> getRepositories(std::optional<int64_t> categoryId = std::nullopt);
  // Most recently opened first; never opened ones last.
  std::vector<RepositoryRecordPtr> getRecentRepositories();
  std::vector<CategoryRecord> getCategories();
  bool repositoryItemExists(const QString& path);

  // Adds the path, or touches "lastOpened" of a known one. With a root folder, the
  // folders between it and the repository become categories. Gives the row's id, or
  // nothing for a blank path.
  std::optional<int64_t> addRepository(const QString& path, const std::optional<QString>& rootFolder = std::nullopt);
  void renameRepository(int64_t repositoryId, const QString& name);
  void setRepositoryColorTag(int64_t repositoryId, std::optional<int> colorTag);
  void deleteRepository(int64_t repositoryId);
  void deleteAllRepositories();
  // Empties "repositories" and adds the paths (as addRepository with the root), all in
  // one transaction: a crash on the way leaves the old rows. A path found is not one
  // opened: only rows the user had opened keep their "lastOpened".
  void replaceAllRepositories(const QStringList& paths, const QString& rootFolder);
  bool moveRepository(int64_t repositoryId, std::optional<int64_t> categoryId);

  int64_t createCategory(const QString& name, std::optional<int64_t> parentId);
  void renameCategory(int64_t categoryId, const QString& name);
  std::optional<int64_t> getCategoryOrCreateNew(const QString& name, int64_t parentId);
  // The deepest category for the folders between root and path; -1 for the root.
  int64_t getCategoryId(const QString& path, const QString& rootFolder);
  // False, with nothing changed, when the new parent is the category or lies inside it.
  bool moveRepositoryCategory(int64_t categoryId, std::optional<int64_t> newParentId, std::optional<int64_t> index);
  // Lifts the content (repositories and sub-categories) one level, then removes the row.
  void deleteRepositoryCategory(int64_t categoryId);
  std::optional<int64_t> getParentCategory(int64_t categoryId);

  // "Now" for "lastOpened" and for the positions of new categories; tests fix it.
  void setClock(std::function<QDateTime()> clock) { clock_ = std::move(clock); }

 private:
  std::vector<RepositoryRecordPtr> readRepositories(const QString& tail, std::optional<int64_t> categoryId);
  SqliteConnection& connection(const char* operation);
  static bool moveAside(const QString& path, const QString& aside);
  QString now() const;
  int64_t nowSeconds() const;

  QString path_;
  std::unique_ptr<SqliteConnection> db_;
  std::function<QDateTime()> clock_;
  std::optional<QString> startupNotice_;
};
