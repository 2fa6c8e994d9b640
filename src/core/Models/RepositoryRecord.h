#pragma once
#include <QDateTime>
#include <QString>
#include <cstdint>
#include <memory>
#include <optional>

// One row of "repositories", with the name of the category that holds it.
struct RepositoryRecord {
  int64_t id = 0;
  QString repositoryPath;
  QString name;
  std::optional<QDateTime> lastOpened;
  // NULL and -1 (and any id of no existing category) all mean the root.
  std::optional<int64_t> categoryId;
  std::optional<QString> categoryName;
  std::optional<int> colorTag;

  bool operator==(const RepositoryRecord&) const = default;
};

using RepositoryRecordPtr = std::shared_ptr<const RepositoryRecord>;
