#pragma once
// The tables of "db.sqlite3". Names are part of the file format, misspellings included:
// files written by earlier versions must keep opening.
#include <QString>

namespace DbScheme {

inline constexpr int latestVersion = 1;

inline const QString createRepositoriesTable = QStringLiteral(
    "CREATE TABLE IF NOT EXISTS \"repositories\" ("
    "\"repositoryId\" INTEGER PRIMARY KEY NOT NULL, "
    "\"reposityryName\" TEXT NOT NULL, "
    "\"repositoryPath\" TEXT NOT NULL, "
    "\"FKCategoryId\" INTEGER, "
    "\"lastOpened\" TEXT, "
    "\"colorTag\" INTEGER)");

inline const QString createCategoriesTable = QStringLiteral(
    "CREATE TABLE IF NOT EXISTS \"categories\" ("
    "\"categoryId\" INTEGER PRIMARY KEY NOT NULL, "
    "\"categoryName\" TEXT NOT NULL, "
    "\"position\" INTEGER NOT NULL, "
    "\"FKParentCategoryId\" INTEGER)");

// Text form of "lastOpened": UTC, sorts as text in time order.
inline const QString dateFormat = QStringLiteral("yyyy-MM-dd'T'HH:mm:ss.zzz");

}  // namespace DbScheme
