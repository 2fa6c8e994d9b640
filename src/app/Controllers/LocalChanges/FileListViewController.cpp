#include "Controllers/LocalChanges/FileListViewController.h"

#include <QHeaderView>

#include "Controllers/LocalChanges/FileListModel.h"

FileListViewController::FileListViewController(QWidget* parent) : QTreeView(parent), model_(new FileListModel(this)) {
  setModel(model_);
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setRootIsDecorated(false);
  setExpandsOnDoubleClick(true);
  setIconSize(QSize(16, 16));
  header()->setStretchLastSection(true);
  connect(selectionModel(), &QItemSelectionModel::currentChanged, this, [this](const QModelIndex& current) {
    if (!refilling_) Q_EMIT currentFileChanged(model_->fileAt(current));
  });
  connect(this, &QTreeView::doubleClicked, this, [this](const QModelIndex& index) {
    if (ChangedFilePtr file = model_->fileAt(index)) Q_EMIT fileActivated(file);
  });
  connect(this, &QTreeView::collapsed, this, [this](const QModelIndex& index) {
    if (!refilling_) expanded_.insert(model_->directoryAt(index), false);
  });
  connect(this, &QTreeView::expanded, this, [this](const QModelIndex& index) {
    if (!refilling_) expanded_.insert(model_->directoryAt(index), true);
  });
}

const ChangedFileList& FileListViewController::files() const { return model_->files(); }
FileListViewMode FileListViewController::mode() const { return model_->mode(); }

void FileListViewController::setFiles(const ChangedFileList& files) { refill(files, model_->mode()); }

void FileListViewController::setMode(FileListViewMode mode) {
  if (mode == model_->mode()) return;
  refill(model_->files(), mode);
}

void FileListViewController::refill(const ChangedFileList& files, FileListViewMode mode) {
  // Remember by path: the refreshed list holds new objects for the same files.
  const ChangedFilePtr current = currentFile();
  QSet<QString> selected;
  for (const auto& file : model_->filesAt(selectionModel()->selectedRows())) selected.insert(file->path);

  refilling_ = true;
  model_->setFiles(files, mode);
  setRootIsDecorated(mode == FileListViewMode::tree);
  if (mode == FileListViewMode::tree) {
    const bool openByDefault = files.size() <= expandAllLimit;
    if (openByDefault) expandAll();
    for (auto it = expanded_.cbegin(); it != expanded_.cend(); ++it) {
      if (it.value() == openByDefault) continue;
      const QModelIndex folder = model_->indexOfDirectory(it.key());
      if (!folder.isValid()) continue;
      if (it.value()) expand(folder);
      else collapse(folder);
    }
  }
  QItemSelection selection;
  for (const QModelIndex& index : model_->indexesOfFiles(selected)) selection.select(index, index);
  selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  if (current) {
    const QModelIndex index = model_->indexOfFile(current->path);
    if (index.isValid()) selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  }
  refilling_ = false;
}

ChangedFileList FileListViewController::selectedFiles() const { return model_->filesAt(selectionModel()->selectedRows()); }

ChangedFilePtr FileListViewController::currentFile() const { return model_->fileAt(currentIndex()); }

QString FileListViewController::selectedFolder() const {
  const QModelIndexList rows = selectionModel()->selectedRows();
  if (rows.size() != 1) return {};
  return model_->directoryAt(rows.front());
}

bool FileListViewController::selectFile(const QString& path) {
  const QModelIndex index = model_->indexOfFile(path);
  if (!index.isValid()) return false;
  scrollTo(index);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  return true;
}
