#pragma once
#include <QTreeWidget>
#include <optional>

#include "Models/BehindAheadInfoCache.h"
#include "Models/RepositoryReferences.h"
#include "Models/StashRevision.h"

// The left column of a repository tab: "Local Changes" with its count, "All Commits",
// then branches (with ahead/behind), remotes grouped by remote, tags, stashes and
// submodules. Selecting a reference asks the commit list to show its commit.
class RepositorySidebar : public QTreeWidget {
  Q_OBJECT
 public:
  struct Content {
    RepositoryReferences references;
    StashRevisionList stashes;
    BehindAheadInfoCache aheadBehind;
    std::optional<int> localChangesCount;  // absent while the status is loading
    QStringList submodules;
  };

  enum class Entry { localChanges, allCommits, reference, stash, submodule, section };
  enum Role { EntryRole = Qt::UserRole + 1, FullReferenceRole, ShaRole };

  explicit RepositorySidebar(QWidget* parent = nullptr);
  void setContent(const Content& content);

  // "1↑ 2↓"-style text for a branch with its upstream; empty when level or none.
  static QString aheadBehindText(const std::optional<BehindAheadInfo>& info);

  QTreeWidgetItem* localChangesItem() const { return localChanges_; }
  QTreeWidgetItem* allCommitsItem() const { return allCommits_; }

 Q_SIGNALS:
  void localChangesSelected();
  void allCommitsSelected();
  void commitRequested(const QString& sha);

 private:
  QTreeWidgetItem* section(const QString& title, int count);
  void rememberExpansion();

  QTreeWidgetItem* localChanges_ = nullptr;
  QTreeWidgetItem* allCommits_ = nullptr;
  QHash<QString, bool> expanded_;
};
