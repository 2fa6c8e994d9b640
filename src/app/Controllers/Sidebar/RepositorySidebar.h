#pragma once
#include <QSet>
#include <QTreeWidget>
#include <optional>

#include "Models/BehindAheadInfoCache.h"
#include "Models/RepositoryReferences.h"
#include "Models/StashRevision.h"

// The left column of a repository tab: "Local Changes" with its count, "All Commits",
// the starred references, then branches (with ahead/behind), remotes grouped by remote,
// tags, stashes and submodules. Selecting a reference asks the commit list to show its
// commit. Its context menu asks for stars and the commit list's branch filter; the
// owner writes them and hands the new sets back with setReferenceMarks().
class QMenu;

class RepositorySidebar : public QTreeWidget {
  Q_OBJECT
 public:
  struct Content {
    RepositoryReferences references;
    StashRevisionList stashes;
    BehindAheadInfoCache aheadBehind;
    std::optional<int> localChangesCount;  // absent while the status is loading
    QStringList submodules;
    QStringList remotes;  // every configured remote, also one without fetched branches yet
  };

  enum class Entry { localChanges, allCommits, reference, stash, submodule, section };
  enum Role { EntryRole = Qt::UserRole + 1, FullReferenceRole, ShaRole };

  explicit RepositorySidebar(QWidget* parent = nullptr);
  void setContent(const Content& content);
  const Content& content() const { return content_; }
  // New starred and filtered sets, shown at once without waiting for a refresh.
  void setReferenceMarks(const QSet<QString>& starred, const QSet<QString>& filtered);

  // The context menu of an entry, or null when it has none; the caller owns it.
  QMenu* contextMenuFor(QTreeWidgetItem* item);
  // Full references of the selected reference entries.
  QStringList selectedReferences() const;

  // "1↑ 2↓"-style text for a branch with its upstream; empty when level or none.
  static QString aheadBehindText(const std::optional<BehindAheadInfo>& info);

  QTreeWidgetItem* localChangesItem() const { return localChanges_; }
  QTreeWidgetItem* allCommitsItem() const { return allCommits_; }

 Q_SIGNALS:
  void localChangesSelected();
  void allCommitsSelected();
  void commitRequested(const QString& sha);
  void starRequested(const QString& fullReference, bool starred);
  // The commit list should show only these references' history; empty shows all.
  void filterRequested(const QStringList& fullReferences);
  // A context menu is being built for `item`: the owner puts the item's operations first.
  void contextMenuOpening(QMenu* menu, QTreeWidgetItem* item);
  // A double-click on a branch, tag or stash.
  void entryActivated(QTreeWidgetItem* item);
  // A branch was dragged onto a local branch: merge or rebase one onto the other.
  void referenceDropped(const QString& sourceFullReference, const QString& targetFullReference);

 protected:
  QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
  QStringList mimeTypes() const override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  // The local branch under the point that a dragged reference may be dropped on.
  QTreeWidgetItem* dropTarget(const QPoint& position, const QMimeData* data) const;
  QTreeWidgetItem* section(const QString& title, int count);
  void rebuild();

  QTreeWidgetItem* localChanges_ = nullptr;
  QTreeWidgetItem* allCommits_ = nullptr;
  QHash<QString, bool> expanded_;
  Content content_;
};
