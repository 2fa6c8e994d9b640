#pragma once
// One of the two changed-file lists of the local changes page, as a list or a folder
// tree. Refilling it after a refresh keeps what the user had: the current file, the
// selection and the folders they collapsed.
#include <QSet>
#include <QTreeView>

#include "Models/ChangedFile.h"
#include "Models/FileListTree.h"

class FileListModel;

class FileListView : public QTreeView {
  Q_OBJECT
 public:
  explicit FileListView(QWidget* parent = nullptr);

  void setFiles(const ChangedFileList& files);
  void setMode(FileListViewMode mode);
  FileListViewMode mode() const;

  FileListModel* fileModel() const { return model_; }
  const ChangedFileList& files() const;
  // The files of the selected rows; a selected folder gives every file under it.
  ChangedFileList selectedFiles() const;
  ChangedFilePtr currentFile() const;
  // Makes the file the current and only selected row; false when it isn't listed.
  bool selectFile(const QString& path);

 Q_SIGNALS:
  void currentFileChanged(ChangedFilePtr file);
  // A double click on a file row (a folder row only opens or closes).
  void fileActivated(ChangedFilePtr file);

 private:
  void refill(const ChangedFileList& files, FileListViewMode mode);

  FileListModel* model_;
  QSet<QString> collapsed_;  // folder paths the user closed
  bool refilling_ = false;
};
