#pragma once
#include <QTreeWidget>

#include "Models/ChangedFile.h"

// A flat list of changed files: a coloured status letter and the path ("old → new" for
// renames and copies). Used for a commit's files and for the working tree's changes.
class ChangedFilesView : public QTreeWidget {
  Q_OBJECT
 public:
  explicit ChangedFilesView(QWidget* parent = nullptr);
  void setFiles(const ChangedFileList& files);
  const ChangedFileList& files() const { return files_; }
  ChangedFilePtr currentFile() const;
  // Makes the file of that path current; false when the list has none.
  bool selectPath(const QString& path);

  static QString statusLetter(ChangeType type, bool isNew);
  static QColor statusColor(ChangeType type, bool isNew, bool dark);

 Q_SIGNALS:
  void currentFileChanged(ChangedFilePtr file);

 private:
  ChangedFileList files_;
};
