#pragma once
// The tree of the repository manager: the "Repositories" section with the user's
// categories and repositories, and "Recent Repositories". It only shows the registry
// and turns gestures (drag and drop, in-place rename, Delete) into requests; the
// controller changes the registry and hands the tree a new copy.
#include <QHash>
#include <QTreeWidget>
#include <optional>
#include <utility>

#include "Models/RepositoryManager/RepositoryManagerDrop.h"
#include "Models/RepositoryManager/RepositoryManagerTree.h"

class RepositoryManagerTreeWidget : public QTreeWidget {
  Q_OBJECT

 public:
  using Node = RepositoryManagerDrop::Node;
  using Kind = RepositoryManagerDrop::Kind;
  enum Role { KindRole = Qt::UserRole + 1, IdRole, PathRole, ColorTagRole };
  static constexpr const char* mimeType = "application/x-jelv-repository-manager-node";

  explicit RepositoryManagerTreeWidget(QWidget* parent = nullptr);

  // Rebuilds the items; expanded folders and the current entry stay as they were.
  void setTree(const RepositoryManagerTree& tree);

  static Node node(const QTreeWidgetItem* item);
  QTreeWidgetItem* findItem(const Node& node) const;
  QTreeWidgetItem* repositoriesSection() const { return topLevelItem(0); }
  QTreeWidgetItem* recentSection() const { return topLevelItem(1); }

  // Where a drop at the viewport point lands: the item (null for empty space, which
  // means the top level) and above/below/on it.
  std::pair<QTreeWidgetItem*, RepositoryManagerDrop::Position> dropTarget(const QPoint& viewportPoint) const;
  // What a drag of the item carries; null for an item that cannot be dragged.
  QMimeData* dragData(QTreeWidgetItem* item) const;
  // Moves a category one place among its sibling categories (Alt+Up, Alt+Down).
  void moveCategory(QTreeWidgetItem* item, bool up);

 Q_SIGNALS:
  void dropRequested(const RepositoryManagerDrop::Node& dragged, const RepositoryManagerDrop::Node& target,
                     RepositoryManagerDrop::Position position);
  void renameRequested(const RepositoryManagerDrop::Node& node, const QString& name);
  void deleteRequested(const RepositoryManagerDrop::Node& node);
  void openRequested(const QString& path);
  // Folders dropped from outside, to be added.
  void pathsDropped(const QStringList& paths);

 protected:
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
  void startDrag(Qt::DropActions supportedActions) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QTreeWidgetItem* addRepository(QTreeWidgetItem* parent, const RepositoryRecordPtr& record, Kind kind);
  void addChildren(QTreeWidgetItem* parent, const RepositoryManagerFolderItem& folder);
  static std::optional<Node> decode(const QMimeData* data);
  static QStringList localFolders(const QMimeData* data);
  QString expansionKey(const QTreeWidgetItem* item) const;

  bool rebuilding_ = false;
  QHash<QString, bool> expanded_;
};
