#pragma once
// Stars, the branch filter and the display toggles of one repository tab. It writes the
// repository's settings file, then re-shapes the commit list and re-marks the sidebar
// from the history already loaded: none of these changes reads the log again.
#include <QObject>
#include <QStringList>
#include <memory>

#include "Graph/RevisionGraphSource.h"
#include "Models/GitModule.h"

class CommitListView;
class RepositorySidebar;
class QMenu;
class QWidget;

class CommitListDisplayController : public QObject {
  Q_OBJECT
 public:
  enum class Hidden { remoteBranches, tags, stashes };

  CommitListDisplayController(GitModule module, RepositorySidebar* sidebar, CommitListView* list, QObject* parent = nullptr);

  // A freshly loaded source shaped by the current settings and first-parent mode.
  std::shared_ptr<const RevisionGraphSource> shaped(const RevisionGraphSource& source) const;
  // References with the starred and filtered sets of the current settings.
  RepositoryReferences marked(RepositoryReferences references) const;

  bool showFirstParent() const { return showFirstParent_; }
  void setShowFirstParent(bool on);
  void setStarred(const QString& fullReference, bool starred);
  // Narrows the commit list to these references' history; empty shows everything.
  void setFilter(const QStringList& fullReferences);
  void setHidden(Hidden kind, bool hidden);

  // The commit list's display menu; the caller owns it.
  QMenu* displayMenu(QWidget* parent);

 Q_SIGNALS:
  // The commit list's context menu is opening: the owner puts the commits' operations first.
  void contextMenuOpening(QMenu* menu);
  // The starred or filtered references were saved; a refresh of them may follow.
  void referenceSettingsChanged();
  void showFirstParentChanged(bool on);

 private:
  void reshape();

  GitModule module_;
  RepositorySidebar* sidebar_;
  CommitListView* list_;
  bool showFirstParent_ = false;
};
