#pragma once
// One of the two changed-file lists of the local changes page, as a list or a folder
// tree. Refilling it after a refresh keeps what the user had: the current file, the
// selection and the folders they opened or closed. Folders start open, except in very
// long lists, where laying out every row would only delay the first paint.
#include <QHash>
#include <QTreeView>

#include "Models/ChangedFile.h"
#include "Models/FileListTree.h"

class FileListModel;

class FileListViewController : public QTreeView {
  Q_OBJECT
 public:
  explicit FileListViewController(QWidget* parent = nullptr);

  // Above this many files the folders of the tree start closed.
  static constexpr size_t expandAllLimit = 5000;

  void setFiles(const ChangedFileList& files);
  void setMode(FileListViewMode mode);
  FileListViewMode mode() const;

  FileListModel* fileModel() const { return model_; }
  const ChangedFileList& files() const;
  // The files of the selected rows; a selected folder gives every file under it.
  ChangedFileList selectedFiles() const;
  ChangedFilePtr currentFile() const;
  // The path of the one selected row when it is a folder; empty otherwise.
  QString selectedFolder() const;
  // Makes the file the current and only selected row; false when it isn't listed.
  bool selectFile(const QString& path);

 Q_SIGNALS:
  void currentFileChanged(ChangedFilePtr file);
  // A double click on a file row (a folder row only opens or closes).
  void fileActivated(ChangedFilePtr file);

 private:
  void refill(const ChangedFileList& files, FileListViewMode mode);

  FileListModel* model_;
  QHash<QString, bool> expanded_;  // folder paths the user opened (true) or closed (false)
  bool refilling_ = false;
};
