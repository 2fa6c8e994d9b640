#include "Controllers/History/RevisionFileTreeTabController.h"

#include <QApplication>
#include <QClipboard>
#include <QFileIconProvider>
#include <QHeaderView>
#include <QMenu>
#include <QPointer>
#include <QSplitter>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "Controls/ContentView/FileContentView.h"
#include "Extensions/NaturalCompare.h"
#include "Git/Commands/Revision/GetRevisionFileContentGitCommand.h"
#include "Git/Commands/Revision/GetTreeItemsGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"

namespace {

enum Role { NameRole = Qt::UserRole + 1, PathRole, ShaRole, TypeRole, LoadedRole };

// Stands in a folder that has not been read, so that it can be opened.
constexpr auto kPlaceholder = "placeholder";

QTreeWidgetItem* makeItem(const FileTreeItem& entry) {
  static const QFileIconProvider icons;
  auto* item = new QTreeWidgetItem;
  item->setText(0, entry.fileName);
  item->setData(0, NameRole, entry.fileName);
  item->setData(0, PathRole, entry.filePath);
  item->setData(0, ShaRole, entry.treeSha);
  item->setData(0, TypeRole, static_cast<int>(entry.itemType));
  switch (entry.itemType) {
    case FileTreeItemType::directory: {
      item->setIcon(0, icons.icon(QFileIconProvider::Folder));
      auto* placeholder = new QTreeWidgetItem(item);
      placeholder->setData(0, TypeRole, QString::fromLatin1(kPlaceholder));
      break;
    }
    case FileTreeItemType::revision:
      item->setIcon(0, QIcon::fromTheme(QStringLiteral("folder-remote"), icons.icon(QFileIconProvider::Network)));
      item->setToolTip(0, QObject::tr("Submodule at %1").arg(entry.treeSha.left(7)));
      break;
    case FileTreeItemType::file: item->setIcon(0, icons.icon(QFileIconProvider::File)); break;
  }
  return item;
}

}  // namespace

RevisionFileTreeTabController::RevisionFileTreeTabController(GitModule module, std::shared_ptr<JobQueue> queue, QWidget* parent)
    : QWidget(parent), module_(std::move(module)), queue_(std::move(queue)) {
  setObjectName(QStringLiteral("revisionFileTree"));
  tree_ = new QTreeWidget(this);
  tree_->setHeaderHidden(true);
  tree_->setContextMenuPolicy(Qt::CustomContextMenu);
  content_ = new FileContentView(this);
  auto* splitter = new QSplitter(Qt::Horizontal, this);
  splitter->addWidget(tree_);
  splitter->addWidget(content_);
  splitter->setStretchFactor(1, 3);
  splitter->setSizes({260, 640});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(splitter);

  connect(tree_, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) {
    if (item->data(0, LoadedRole).toBool()) return;
    item->setData(0, LoadedRole, true);
    loadTreeItems(item->data(0, ShaRole).toString(), item);
  });
  connect(tree_, &QTreeWidget::currentItemChanged, this, [this] { showSelected(); });
  connect(tree_, &QTreeWidget::customContextMenuRequested, this, &RevisionFileTreeTabController::showMenu);
  connect(content_, &FileContentView::loadLargeRequested, this, [this] { showSelected(true); });
}

RevisionFileTreeTabController::~RevisionFileTreeTabController() {
  if (auto job = showDiffJob_.lock()) job->progress().cancel();
}

FileTreeItem RevisionFileTreeTabController::fileTreeItem(const QTreeWidgetItem* item) {
  if (!item) return {};
  return {item->data(0, NameRole).toString(), item->data(0, PathRole).toString(), item->data(0, ShaRole).toString(),
          static_cast<FileTreeItemType>(item->data(0, TypeRole).toInt())};
}

void RevisionFileTreeTabController::setRevision(const RevisionPtr& revision) {
  if (revision && revision_ && revision->sha() == revision_->sha()) return;
  revision_ = revision;
  ++generation_;
  tree_->clear();
  content_->showMessage(tr("Select a file to see its content."));
  if (revision_) loadTreeItems(revision_->sha().toString(), nullptr);
}

void RevisionFileTreeTabController::loadTreeItems(const QString& sha, QTreeWidgetItem* parentFolder) {
  if (!queue_) return;
  const QString parentPath = parentFolder ? parentFolder->data(0, PathRole).toString() : QString();
  QPointer<RevisionFileTreeTabController> guard(this);
  const GitModule module = module_;
  const int generation = generation_;
  queue_->schedule(Job::make(
      QStringLiteral("Load files"), Job::Show::none(), Job::ProgressType::infinite,
      [guard, module, sha, parentPath, generation](JobProgress& progress) {
        auto result = GetTreeItemsGitCommand::execute(module, sha, parentPath, &progress);
        if (progress.isCanceled()) return;
        postQueuedCall(qApp, [guard, parentPath, generation, result = std::move(result)] {
          if (!guard || guard->generation_ != generation) return;
          QTreeWidgetItem* parent = parentPath.isEmpty() ? guard->tree_->invisibleRootItem() : guard->itemForPath(parentPath);
          if (!parent) return;
          // Drop the placeholder; a failed read leaves the folder empty.
          qDeleteAll(parent->takeChildren());
          if (!result) {
            guard->content_->showMessage(tr("The files could not be read: %1").arg(describe(result.error())));
            Q_EMIT guard->treeItemsLoaded(parentPath);
            return;
          }
          std::vector<FileTreeItem> entries = result.value();
          // Folders first, then by name as people read it.
          std::stable_sort(entries.begin(), entries.end(), [](const FileTreeItem& a, const FileTreeItem& b) {
            const bool folderA = a.itemType == FileTreeItemType::directory;
            const bool folderB = b.itemType == FileTreeItemType::directory;
            if (folderA != folderB) return folderA;
            return NaturalCompare::lessThan(a.fileName, b.fileName);
          });
          QList<QTreeWidgetItem*> items;
          for (const FileTreeItem& entry : entries) items << makeItem(entry);
          parent->addChildren(items);
          Q_EMIT guard->treeItemsLoaded(parentPath);
        });
      }));
}

QTreeWidgetItem* RevisionFileTreeTabController::itemForPath(const QString& path) const {
  QTreeWidgetItem* current = tree_->invisibleRootItem();
  QString prefix;
  for (const QString& part : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
    prefix = prefix.isEmpty() ? part : prefix + QLatin1Char('/') + part;
    QTreeWidgetItem* next = nullptr;
    for (int i = 0; i < current->childCount() && !next; ++i) {
      if (current->child(i)->data(0, PathRole).toString() == prefix) next = current->child(i);
    }
    if (!next) return nullptr;
    current = next;
  }
  return current == tree_->invisibleRootItem() ? nullptr : current;
}

void RevisionFileTreeTabController::showSelected(bool loadLarge) {
  if (auto previous = showDiffJob_.lock()) previous->progress().cancel();
  QTreeWidgetItem* item = tree_->currentItem();
  if (!item || item->data(0, TypeRole).toString() == QLatin1String(kPlaceholder)) return;
  const FileTreeItem entry = fileTreeItem(item);
  if (entry.itemType == FileTreeItemType::directory) {
    content_->showMessage(tr("Folder '%1'").arg(entry.filePath));
    return;
  }
  if (entry.itemType == FileTreeItemType::revision) {
    content_->showSubmodule(entry.filePath, entry.treeSha);
    Q_EMIT contentShown();
    return;
  }
  content_->showMessage(tr("Loading file content..."));
  QPointer<RevisionFileTreeTabController> guard(this);
  const GitModule module = module_;
  auto job = Job::make(QStringLiteral("Load file content"), Job::Show::none(), Job::ProgressType::infinite,
                       [guard, module, entry, loadLarge](JobProgress& progress) {
                         auto result = GetRevisionFileContentGitCommand::executeBlob(module, entry.treeSha, entry.filePath, &progress);
                         if (progress.isCanceled()) return;
                         postQueuedCall(qApp, [guard, entry, loadLarge, result = std::move(result)] {
                           if (!guard || fileTreeItem(guard->tree_->currentItem()) != entry) return;
                           if (result) {
                             guard->content_->showContent(result.value(), loadLarge);
                           } else {
                             guard->content_->showMessage(tr("The file could not be read: %1").arg(describe(result.error())));
                           }
                           Q_EMIT guard->contentShown();
                         });
                       });
  showDiffJob_ = job;
  queue_->schedule(job);
}

void RevisionFileTreeTabController::showMenu(const QPoint& position) {
  QTreeWidgetItem* item = tree_->itemAt(position);
  if (!item || item->data(0, TypeRole).toString() == QLatin1String(kPlaceholder)) return;
  const FileTreeItem entry = fileTreeItem(item);
  const RevisionPtr revision = revision_;
  QMenu menu(this);
  const bool file = entry.itemType == FileTreeItemType::file;
  QAction* history = menu.addAction(tr("File History..."), this, [this, revision, entry] {
    // The slash asks for everything under the folder.
    const bool folder = entry.itemType == FileTreeItemType::directory;
    if (actions_.history) actions_.history(revision, folder ? entry.filePath + QLatin1Char('/') : entry.filePath);
  });
  history->setEnabled(entry.itemType != FileTreeItemType::revision);
  menu.addAction(tr("Blame..."), this, [this, revision, entry] {
        if (actions_.blame) actions_.blame(revision, entry.filePath);
      })->setEnabled(file);
  menu.addAction(tr("Save As..."), this, [this, revision, entry] {
        if (actions_.save) actions_.save(revision, entry.filePath);
      })->setEnabled(file);
  menu.addSeparator();
  menu.addAction(tr("Copy Path"), this, [entry] { QApplication::clipboard()->setText(entry.filePath); });
  menu.addAction(tr("Copy Name"), this, [entry] { QApplication::clipboard()->setText(entry.fileName); });
  if (file && actions_.customCommands) actions_.customCommands(&menu, revision, entry.filePath);
  menu.exec(tree_->viewport()->mapToGlobal(position));
}
