#include "Controls/ChangedFilesView.h"

#include <QHeaderView>

ChangedFilesView::ChangedFilesView(QWidget* parent) : QTreeWidget(parent) {
  setColumnCount(2);
  setHeaderHidden(true);
  setRootIsDecorated(false);
  setUniformRowHeights(true);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  header()->setStretchLastSection(true);
  header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
    const int row = item ? indexOfTopLevelItem(item) : -1;
    Q_EMIT currentFileChanged(row >= 0 && row < static_cast<int>(files_.size()) ? files_[static_cast<size_t>(row)] : ChangedFilePtr());
  });
}

QString ChangedFilesView::statusLetter(ChangeType type, bool isNew) {
  if (isNew) return QStringLiteral("?");
  switch (type) {
    case ChangeType::modified: return QStringLiteral("M");
    case ChangeType::added: return QStringLiteral("A");
    case ChangeType::deleted: return QStringLiteral("D");
    case ChangeType::ignored: return QStringLiteral("!");
    case ChangeType::renamed: return QStringLiteral("R");
    case ChangeType::copied: return QStringLiteral("C");
    case ChangeType::unmerged: return QStringLiteral("U");
    case ChangeType::typeChanged: return QStringLiteral("T");
    case ChangeType::unknown: break;
  }
  return QStringLiteral("·");
}

QColor ChangedFilesView::statusColor(ChangeType type, bool isNew, bool dark) {
  if (isNew) return dark ? QColor(0x9a, 0xa0, 0xa6) : QColor(0x5f, 0x63, 0x68);
  switch (type) {
    case ChangeType::added: return dark ? QColor(0x6c, 0xd4, 0x6c) : QColor(0x1a, 0x7f, 0x37);
    case ChangeType::deleted: return dark ? QColor(0xf1, 0x6a, 0x6a) : QColor(0xc0, 0x1c, 0x28);
    case ChangeType::unmerged: return dark ? QColor(0xff, 0xa6, 0x4d) : QColor(0xc2, 0x5e, 0x00);
    case ChangeType::renamed:
    case ChangeType::copied: return dark ? QColor(0xb8, 0x98, 0xe0) : QColor(0x6f, 0x42, 0xc1);
    default: return dark ? QColor(0x5d, 0xad, 0xe2) : QColor(0x1f, 0x5f, 0xa8);
  }
}

void ChangedFilesView::setFiles(const ChangedFileList& files) {
  const QSignalBlocker blocker(this);
  const ChangedFilePtr previous = currentFile();
  files_ = files;
  clear();
  const bool dark = palette().color(QPalette::Base).lightness() < 128;
  QTreeWidgetItem* restore = nullptr;
  for (const auto& file : files_) {
    const QString path = file->oldPath ? QStringLiteral("%1 → %2").arg(*file->oldPath, file->path) : file->path;
    auto* item = new QTreeWidgetItem(this, {statusLetter(file->changeType, file->isNew), path});
    QFont bold = item->font(0);
    bold.setBold(true);
    item->setFont(0, bold);
    item->setForeground(0, statusColor(file->changeType, file->isNew, dark));
    item->setTextAlignment(0, Qt::AlignCenter);
    item->setToolTip(1, ChangedFile::changeTypeName(file->changeType) + QStringLiteral(": ") + path);
    if (previous && previous->path == file->path && previous->staged == file->staged) restore = item;
  }
  if (restore) setCurrentItem(restore);
}

ChangedFilePtr ChangedFilesView::currentFile() const {
  const int row = indexOfTopLevelItem(currentItem());
  return row >= 0 && row < static_cast<int>(files_.size()) ? files_[static_cast<size_t>(row)] : ChangedFilePtr();
}

bool ChangedFilesView::selectPath(const QString& path) {
  for (size_t row = 0; row < files_.size(); ++row) {
    if (files_[row]->path != path) continue;
    setCurrentItem(topLevelItem(static_cast<int>(row)));
    return true;
  }
  return false;
}
