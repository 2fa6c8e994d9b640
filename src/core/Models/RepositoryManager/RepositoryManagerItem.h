#pragma once
#include <QString>

// A node of the repository manager's sidebar tree.
class RepositoryManagerItem {
 public:
  explicit RepositoryManagerItem(QString title) : title(std::move(title)) {}
  virtual ~RepositoryManagerItem() = default;

  QString title;
};
