#include "Controllers/LocalChanges/FileListModel.h"

#include <QApplication>
#include <QPainter>
#include <QPalette>
#include <QStyle>
#include <functional>
#include <unordered_set>

#include "Controls/ChangedFilesView.h"

FileListModel::FileListModel(QObject* parent) : QAbstractItemModel(parent) {}
FileListModel::~FileListModel() = default;

void FileListModel::setFiles(ChangedFileList files, FileListViewMode mode) {
  beginResetModel();
  files_ = std::move(files);
  mode_ = mode;
  root_ = mode_ == FileListViewMode::tree ? FileListTree::build(files_) : nullptr;
  endResetModel();
}

const FileListViewItem* FileListModel::itemAt(const QModelIndex& index) const {
  if (!index.isValid() || mode_ != FileListViewMode::tree) return nullptr;
  return static_cast<const FileListViewItem*>(index.internalPointer());
}

ChangedFilePtr FileListModel::fileAt(const QModelIndex& index) const {
  if (!index.isValid()) return nullptr;
  if (mode_ == FileListViewMode::list) {
    return index.row() < static_cast<int>(files_.size()) ? files_[static_cast<size_t>(index.row())] : nullptr;
  }
  return itemAt(index)->file;
}

QString FileListModel::directoryAt(const QModelIndex& index) const {
  const FileListViewItem* item = itemAt(index);
  return item && item->isDirectory() ? item->directoryPath : QString();
}

ChangedFileList FileListModel::filesAt(const QModelIndexList& indexes) const {
  std::unordered_set<const ChangedFile*> chosen;
  for (const QModelIndex& index : indexes) {
    if (index.column() != 0) continue;
    if (const FileListViewItem* item = itemAt(index)) {
      ChangedFileList under;
      item->collectFiles(under);
      for (const auto& file : under) chosen.insert(file.get());
    } else if (ChangedFilePtr file = fileAt(index)) {
      chosen.insert(file.get());
    }
  }
  ChangedFileList ordered;
  if (chosen.empty()) return ordered;
  for (const auto& file : files_) {
    if (chosen.count(file.get())) ordered.push_back(file);
  }
  return ordered;
}

QModelIndex FileListModel::indexOfFile(const QString& path) const {
  if (mode_ == FileListViewMode::list) {
    for (size_t i = 0; i < files_.size(); ++i) {
      if (files_[i]->path == path) return createIndex(static_cast<int>(i), 0, nullptr);
    }
    return {};
  }
  // Down the folders whose path is a prefix; merged folder rows hold several levels.
  const FileListViewItem* item = root_.get();
  while (item) {
    const FileListViewItem* next = nullptr;
    for (const auto& child : item->children) {
      if (child->file) {
        if (child->file->path == path) return createIndex(child->row, 0, child.get());
      } else if (path.startsWith(child->directoryPath + QLatin1Char('/'))) {
        next = child.get();
      }
    }
    item = next;
  }
  return {};
}

QModelIndexList FileListModel::indexesOfFiles(const QSet<QString>& paths) const {
  QModelIndexList found;
  if (paths.isEmpty()) return found;
  if (mode_ == FileListViewMode::list) {
    for (size_t i = 0; i < files_.size(); ++i) {
      if (paths.contains(files_[i]->path)) found << createIndex(static_cast<int>(i), 0, nullptr);
    }
    return found;
  }
  const std::function<void(const FileListViewItem&)> walk = [&](const FileListViewItem& item) {
    for (const auto& child : item.children) {
      if (child->file && paths.contains(child->file->path)) found << createIndex(child->row, 0, child.get());
      else if (!child->file) walk(*child);
    }
  };
  walk(*root_);
  return found;
}

QModelIndex FileListModel::indexOfDirectory(const QString& path) const {
  if (mode_ != FileListViewMode::tree) return {};
  const FileListViewItem* item = root_->findDirectory(path);
  return item ? createIndex(item->row, 0, const_cast<FileListViewItem*>(item)) : QModelIndex();
}

QModelIndex FileListModel::index(int row, int column, const QModelIndex& parent) const {
  if (row < 0 || column != 0) return {};
  if (mode_ == FileListViewMode::list) {
    if (parent.isValid() || row >= static_cast<int>(files_.size())) return {};
    return createIndex(row, 0, nullptr);
  }
  const FileListViewItem* owner = parent.isValid() ? itemAt(parent) : root_.get();
  if (!owner || row >= static_cast<int>(owner->children.size())) return {};
  return createIndex(row, 0, owner->children[static_cast<size_t>(row)].get());
}

QModelIndex FileListModel::parent(const QModelIndex& child) const {
  const FileListViewItem* item = itemAt(child);
  if (!item || !item->parent || item->parent == root_.get()) return {};
  return createIndex(item->parent->row, 0, item->parent);
}

int FileListModel::rowCount(const QModelIndex& parent) const {
  if (parent.column() > 0) return 0;
  if (mode_ == FileListViewMode::list) return parent.isValid() ? 0 : static_cast<int>(files_.size());
  const FileListViewItem* owner = parent.isValid() ? itemAt(parent) : root_.get();
  return owner ? static_cast<int>(owner->children.size()) : 0;
}

int FileListModel::columnCount(const QModelIndex&) const { return 1; }

QString FileListModel::displayPath(const ChangedFile& file) {
  return file.oldPath ? QStringLiteral("%1 → %2").arg(*file.oldPath, file.path) : file.path;
}

QIcon FileListModel::statusIcon(const ChangedFile& file) const {
  const bool dark = QApplication::palette().color(QPalette::Base).lightness() < 128;
  const quint32 key = (static_cast<quint32>(file.changeType) << 2) | (file.isNew ? 2u : 0u) | (dark ? 1u : 0u);
  auto found = icons_.constFind(key);
  if (found != icons_.constEnd()) return found.value();
  // A bold status letter in the colour of its change, drawn once per kind; on a selected
  // row in the selection's text colour, which the change colour may not stand out from.
  const auto draw = [&file](const QColor& color) {
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    QFont font = QApplication::font();
    font.setBold(true);
    font.setPixelSize(24);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(pixmap.rect(), Qt::AlignCenter, ChangedFilesView::statusLetter(file.changeType, file.isNew));
    return pixmap;
  };
  QIcon icon(draw(ChangedFilesView::statusColor(file.changeType, file.isNew, dark)));
  icon.addPixmap(draw(QApplication::palette().color(QPalette::HighlightedText)), QIcon::Selected);
  return icons_.insert(key, icon).value();
}

QVariant FileListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const FileListViewItem* item = itemAt(index);
  const ChangedFilePtr file = fileAt(index);
  switch (role) {
    case Qt::DisplayRole:
      if (item && item->file && item->file->oldPath) {
        return QStringLiteral("%1 → %2").arg(item->file->oldPath->section(QLatin1Char('/'), -1), item->text());
      }
      if (item) return item->text();
      return file ? displayPath(*file) : QVariant();
    case Qt::DecorationRole:
      if (file) return statusIcon(*file);
      return QApplication::style()->standardIcon(QStyle::SP_DirIcon);
    case Qt::ToolTipRole:
      if (file) return ChangedFile::changeTypeName(file->changeType) + QStringLiteral(": ") + displayPath(*file);
      return item ? item->directoryPath : QVariant();
    default: return {};
  }
}
