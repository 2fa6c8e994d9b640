#pragma once
// The files of one commit as a tree beside the selected file's content. A folder's
// entries are read when it is first opened, so a commit of a large repository shows at
// once; a submodule is an entry of its own that shows the commit it stands at.
#include <QWidget>
#include <functional>
#include <memory>

#include "Models/FileTreeItem.h"
#include "Models/GitModule.h"
#include "Models/Revision.h"

class QMenu;
class FileContentView;
class Job;
class JobQueue;
class QTreeWidget;
class QTreeWidgetItem;

class RevisionFileTreeTabController : public QWidget {
  Q_OBJECT
 public:
  // What the tree's menu offers for a file at the shown commit.
  struct Actions {
    std::function<void(const RevisionPtr& revision, const QString& path)> history;
    std::function<void(const RevisionPtr& revision, const QString& path)> blame;
    std::function<void(const RevisionPtr& revision, const QString& path)> save;
    // Adds the file's custom commands to its menu.
    std::function<void(QMenu* menu, const RevisionPtr& revision, const QString& path)> customCommands;
  };

  RevisionFileTreeTabController(GitModule module, std::shared_ptr<JobQueue> queue, QWidget* parent = nullptr);
  ~RevisionFileTreeTabController() override;

  void setActions(Actions actions) { actions_ = std::move(actions); }
  // Shows the top folder of the commit; the same commit again keeps what is open.
  void setRevision(const RevisionPtr& revision);
  const RevisionPtr& revision() const { return revision_; }

  // Reads the entries of a folder (the top one when parentFolder is null) under its item.
  void loadTreeItems(const QString& sha, QTreeWidgetItem* parentFolder);

  QTreeWidget* tree() const { return tree_; }
  FileContentView* contentView() const { return content_; }
  // The item of a path among those read so far.
  QTreeWidgetItem* itemForPath(const QString& path) const;
  static FileTreeItem fileTreeItem(const QTreeWidgetItem* item);

 Q_SIGNALS:
  void treeItemsLoaded(const QString& parentPath);
  void contentShown();

 private:
  void showSelected(bool loadLarge = false);
  void showMenu(const QPoint& position);

  GitModule module_;
  std::shared_ptr<JobQueue> queue_;
  Actions actions_;
  RevisionPtr revision_;
  std::weak_ptr<Job> showDiffJob_;
  int generation_ = 0;  // a new commit drops what the old one still reads
  QTreeWidget* tree_;
  FileContentView* content_;
};
