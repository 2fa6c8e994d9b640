#pragma once
// What the user searches the history for, and where.
#include <QString>

enum class RevisionSearchType { message, author, diffContent, diffPath };

enum class RevisionSearchScope { repository, currentBranch };

struct RevisionSearchQuery {
  RevisionSearchType type = RevisionSearchType::message;
  RevisionSearchScope scope = RevisionSearchScope::repository;
  QString searchString;

  bool operator==(const RevisionSearchQuery&) const = default;
};
