#pragma once
// The rows of one changed-file list, as a flat list (a row per file, nothing built) or
// as a folder tree. Wraps the file list it is given and never runs git; a list of
// 100,000 files costs one vector, so opening a large change set paints at once.
#include <QAbstractItemModel>
#include <QHash>
#include <QIcon>
#include <QSet>
#include <memory>

#include "Models/ChangedFile.h"
#include "Models/FileListTree.h"

class FileListModel : public QAbstractItemModel {
  Q_OBJECT
 public:
  explicit FileListModel(QObject* parent = nullptr);
  ~FileListModel() override;

  void setFiles(ChangedFileList files, FileListViewMode mode);
  const ChangedFileList& files() const { return files_; }
  FileListViewMode mode() const { return mode_; }

  // The file of a row; null for a folder row.
  ChangedFilePtr fileAt(const QModelIndex& index) const;
  // A folder row's path; empty for a file row.
  QString directoryAt(const QModelIndex& index) const;
  // The files of the rows, a folder standing for every file under it; each file once,
  // in list order.
  ChangedFileList filesAt(const QModelIndexList& indexes) const;
  QModelIndex indexOfFile(const QString& path) const;
  // The rows of all these paths at once: one walk of the list, however many there are.
  QModelIndexList indexesOfFiles(const QSet<QString>& paths) const;
  QModelIndex indexOfDirectory(const QString& path) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;

  // "old → new" for renames and copies.
  static QString displayPath(const ChangedFile& file);

 private:
  const FileListViewItem* itemAt(const QModelIndex& index) const;
  QIcon statusIcon(const ChangedFile& file) const;

  ChangedFileList files_;
  FileListViewMode mode_ = FileListViewMode::list;
  std::unique_ptr<FileListViewItem> root_;  // tree mode only
  mutable QHash<quint32, QIcon> icons_;
};
