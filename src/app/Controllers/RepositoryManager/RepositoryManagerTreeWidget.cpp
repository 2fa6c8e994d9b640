#include "Controllers/RepositoryManager/RepositoryManagerTreeWidget.h"

#include <QDataStream>
#include <QDrag>
#include <QDragMoveEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QStyledItemDelegate>
#include <QUrl>

#include "Controllers/RepositoryManager/RepositoryColorTags.h"
#include "Models/RepositoryManager/RepositoryManagerDirectoryItem.h"
#include "Models/RepositoryManager/RepositoryManagerRepositoryItem.h"

namespace {
using Position = RepositoryManagerDrop::Position;

// Rows a little taller than the style's minimum: the tree is the whole of the tab's
// left side and is read more than it is scrolled.
class RoomyRowDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    size.setHeight(size.height() + 6);
    return size;
  }
};
}  // namespace

RepositoryManagerTreeWidget::RepositoryManagerTreeWidget(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setColumnCount(1);
  setSelectionMode(QAbstractItemView::SingleSelection);
  setDragEnabled(true);
  setAcceptDrops(true);
  setDropIndicatorShown(true);
  setDragDropMode(QAbstractItemView::DragDrop);
  setEditTriggers(QAbstractItemView::EditKeyPressed);
  setUniformRowHeights(true);
  setIconSize(QSize(12, 12));
  setAnimated(false);
  setAccessibleName(tr("Repositories"));
  setItemDelegate(new RoomyRowDelegate(this));
  setIndentation(16);

  connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
    if (!rebuilding_) expanded_.insert(expansionKey(item), true);
  });
  connect(this, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem* item) {
    if (!rebuilding_) expanded_.insert(expansionKey(item), false);
  });
  connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item, int) {
    if (rebuilding_) return;
    const Node n = node(item);
    if (n.kind == Kind::repository || n.kind == Kind::recentRepository || n.kind == Kind::category) {
      Q_EMIT renameRequested(n, item->text(0).trimmed());
    }
  });
  connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item, int) {
    const Node n = node(item);
    if (n.kind == Kind::repository || n.kind == Kind::recentRepository) Q_EMIT openRequested(item->data(0, PathRole).toString());
  });
}

RepositoryManagerTreeWidget::Node RepositoryManagerTreeWidget::node(const QTreeWidgetItem* item) {
  if (!item) return {Kind::repositoriesSection, 0};
  return {Kind(item->data(0, KindRole).toInt()), item->data(0, IdRole).toLongLong()};
}

QString RepositoryManagerTreeWidget::expansionKey(const QTreeWidgetItem* item) const {
  const Node n = node(item);
  return QStringLiteral("%1:%2").arg(int(n.kind)).arg(n.id);
}

QTreeWidgetItem* RepositoryManagerTreeWidget::findItem(const Node& wanted) const {
  QTreeWidgetItemIterator it(const_cast<RepositoryManagerTreeWidget*>(this));
  for (; *it; ++it) {
    if (node(*it) == wanted) return *it;
  }
  return nullptr;
}

QTreeWidgetItem* RepositoryManagerTreeWidget::addRepository(QTreeWidgetItem* parent, const RepositoryRecordPtr& record, Kind kind) {
  auto* item = new QTreeWidgetItem(parent, {record->name});
  item->setData(0, KindRole, int(kind));
  item->setData(0, IdRole, qint64(record->id));
  item->setData(0, PathRole, record->repositoryPath);
  item->setData(0, ColorTagRole, record->colorTag ? QVariant(*record->colorTag) : QVariant());
  item->setIcon(0, RepositoryColorTags::icon(record->colorTag));
  item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled);
  QString tip = record->repositoryPath;
  if (!QFileInfo::exists(record->repositoryPath)) {
    // Still listed, so that the user can see it and remove it.
    item->setForeground(0, palette().brush(QPalette::Disabled, QPalette::Text));
    tip += QLatin1Char('\n') + tr("The folder no longer exists.");
  }
  item->setToolTip(0, tip);
  return item;
}

void RepositoryManagerTreeWidget::addChildren(QTreeWidgetItem* parent, const RepositoryManagerFolderItem& folder) {
  const QIcon folderIcon = style()->standardIcon(QStyle::SP_DirIcon);
  for (const auto& child : folder.children) {
    if (const auto* directory = dynamic_cast<const RepositoryManagerDirectoryItem*>(child.get())) {
      auto* item = new QTreeWidgetItem(parent, {directory->title});
      item->setData(0, KindRole, int(Kind::category));
      item->setData(0, IdRole, qint64(directory->record.id));
      item->setIcon(0, folderIcon);
      item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled);
      addChildren(item, *directory);
    } else if (const auto* repository = dynamic_cast<const RepositoryManagerRepositoryItem*>(child.get())) {
      addRepository(parent, repository->record, Kind::repository);
    }
  }
}

void RepositoryManagerTreeWidget::setTree(const RepositoryManagerTree& tree) {
  const std::optional<Node> current = currentItem() ? std::optional<Node>(node(currentItem())) : std::nullopt;
  rebuilding_ = true;
  clear();

  QFont sectionFont = font();
  sectionFont.setBold(true);
  auto section = [&](const QString& title, Kind kind, Qt::ItemFlags extra) {
    auto* item = new QTreeWidgetItem(this, {title});
    item->setData(0, KindRole, int(kind));
    item->setFont(0, sectionFont);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | extra);
    return item;
  };
  QTreeWidgetItem* repositories = section(tree.repositories->title, Kind::repositoriesSection, Qt::ItemIsDropEnabled);
  addChildren(repositories, *tree.repositories);
  QTreeWidgetItem* recent = section(tree.recent->title, Kind::recentSection, {});
  for (const auto& child : tree.recent->children) {
    if (const auto* repository = dynamic_cast<const RepositoryManagerRepositoryItem*>(child.get())) {
      addRepository(recent, repository->record, Kind::recentRepository);
    }
  }

  QTreeWidgetItemIterator it(this);
  for (; *it; ++it) {
    if ((*it)->childCount() > 0) (*it)->setExpanded(expanded_.value(expansionKey(*it), true));
  }
  if (current) {
    if (QTreeWidgetItem* item = findItem(*current)) setCurrentItem(item);
  }
  rebuilding_ = false;
}

std::pair<QTreeWidgetItem*, Position> RepositoryManagerTreeWidget::dropTarget(const QPoint& viewportPoint) const {
  QTreeWidgetItem* item = itemAt(viewportPoint);
  if (!item) return {nullptr, Position::onItem};
  // The same zones the view paints its drop indicator with.
  const QRect rect = visualItemRect(item);
  const int margin = qBound(2, qRound(qreal(rect.height()) / 5.5), 12);
  Position position = Position::onItem;
  if (viewportPoint.y() - rect.top() < margin) {
    position = Position::above;
  } else if (rect.bottom() - viewportPoint.y() < margin) {
    position = Position::below;
  }
  if (position == Position::onItem && !(item->flags() & Qt::ItemIsDropEnabled)) {
    position = viewportPoint.y() < rect.center().y() ? Position::above : Position::below;
  }
  return {item, position};
}

QStringList RepositoryManagerTreeWidget::mimeTypes() const { return {QString::fromLatin1(mimeType)}; }

QMimeData* RepositoryManagerTreeWidget::mimeData(const QList<QTreeWidgetItem*>& items) const {
  return items.isEmpty() ? nullptr : dragData(items.first());
}

QMimeData* RepositoryManagerTreeWidget::dragData(QTreeWidgetItem* item) const {
  if (!item || !(item->flags() & Qt::ItemIsDragEnabled)) return nullptr;
  const Node n = node(item);
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream << int(n.kind) << qint64(n.id);
  auto* data = new QMimeData;
  data->setData(QString::fromLatin1(mimeType), bytes);
  return data;
}

std::optional<RepositoryManagerTreeWidget::Node> RepositoryManagerTreeWidget::decode(const QMimeData* data) {
  if (!data || !data->hasFormat(QString::fromLatin1(mimeType))) return std::nullopt;
  QDataStream stream(data->data(QString::fromLatin1(mimeType)));
  int kind = 0;
  qint64 id = 0;
  stream >> kind >> id;
  if (stream.status() != QDataStream::Ok) return std::nullopt;
  return Node{Kind(kind), id};
}

QStringList RepositoryManagerTreeWidget::localFolders(const QMimeData* data) {
  QStringList folders;
  if (!data || !data->hasUrls()) return folders;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile() && QFileInfo(url.toLocalFile()).isDir()) folders << url.toLocalFile();
  }
  return folders;
}

void RepositoryManagerTreeWidget::startDrag(Qt::DropActions) {
  QTreeWidgetItem* item = currentItem();
  if (!item || !(item->flags() & Qt::ItemIsDragEnabled)) return;
  // The drop changes the registry and the tree is rebuilt from it, so the view must not
  // remove the dragged row itself as a move would.
  auto* drag = new QDrag(this);
  drag->setMimeData(dragData(item));
  drag->setPixmap(item->icon(0).pixmap(iconSize()));
  drag->exec(Qt::MoveAction);
}

void RepositoryManagerTreeWidget::dragEnterEvent(QDragEnterEvent* event) {
  if (decode(event->mimeData())) {
    QTreeWidget::dragEnterEvent(event);
    event->acceptProposedAction();
  } else if (!localFolders(event->mimeData()).isEmpty()) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
  } else {
    event->ignore();
  }
}

void RepositoryManagerTreeWidget::dragMoveEvent(QDragMoveEvent* event) {
  const auto dragged = decode(event->mimeData());
  if (!dragged && !localFolders(event->mimeData()).isEmpty()) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    return;
  }
  QTreeWidget::dragMoveEvent(event);  // indicator and auto-scroll
  const auto [item, position] = dropTarget(event->position().toPoint());
  if (dragged && RepositoryManagerDrop::accepts(*dragged, node(item))) {
    event->setDropAction(Qt::MoveAction);
    event->accept();
  } else {
    event->ignore();
  }
}

void RepositoryManagerTreeWidget::dropEvent(QDropEvent* event) {
  const auto dragged = decode(event->mimeData());
  const auto [item, position] = dropTarget(event->position().toPoint());
  setState(QAbstractItemView::NoState);
  viewport()->update();
  if (const QStringList folders = localFolders(event->mimeData()); !dragged && !folders.isEmpty()) {
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT pathsDropped(folders);
    return;
  }
  if (!dragged || !RepositoryManagerDrop::accepts(*dragged, node(item))) {
    event->ignore();
    return;
  }
  event->setDropAction(Qt::MoveAction);
  event->accept();
  Q_EMIT dropRequested(*dragged, node(item), position);
}

void RepositoryManagerTreeWidget::moveCategory(QTreeWidgetItem* item, bool up) {
  // The keyboard's drag: past the neighbouring category, if there is one.
  QTreeWidgetItem* parent = item ? item->parent() : nullptr;
  if (!parent || node(item).kind != Kind::category) return;
  QTreeWidgetItem* neighbour = parent->child(parent->indexOfChild(item) + (up ? -1 : 1));
  if (!neighbour || node(neighbour).kind != Kind::category) return;
  Q_EMIT dropRequested(node(item), node(neighbour), up ? Position::above : Position::below);
}

void RepositoryManagerTreeWidget::keyPressEvent(QKeyEvent* event) {
  QTreeWidgetItem* item = currentItem();
  if (item && state() != QAbstractItemView::EditingState) {
    const Node n = node(item);
    const bool folder = n.kind == Kind::category || n.kind == Kind::repositoriesSection || n.kind == Kind::recentSection;
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && folder) {
      item->setExpanded(!item->isExpanded());
      return;
    }
    if (n.kind == Kind::category && (event->modifiers() & Qt::AltModifier) &&
        (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
      moveCategory(item, event->key() == Qt::Key_Up);
      return;
    }
    if ((event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) &&
        (n.kind == Kind::category || n.kind == Kind::repository || n.kind == Kind::recentRepository)) {
      Q_EMIT deleteRequested(n);
      return;
    }
  }
  QTreeWidget::keyPressEvent(event);
}
