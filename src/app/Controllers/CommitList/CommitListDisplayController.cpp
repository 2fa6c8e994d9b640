#include "Controllers/CommitList/CommitListDisplayController.h"

#include <QMenu>
#include <QSet>

#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Graph/RevisionListDisplay.h"
#include "Services/Preferences.h"

namespace {
const QString kShowFirstParent = QStringLiteral("showFirstParent");

QSet<QString> setOf(const QStringList& list) { return QSet<QString>(list.begin(), list.end()); }
}  // namespace

CommitListDisplayController::CommitListDisplayController(GitModule module, RepositorySidebar* sidebar, CommitListView* list,
                                                         QObject* parent)
    : QObject(parent), module_(std::move(module)), sidebar_(sidebar), list_(list) {
  showFirstParent_ = Preferences::shared().boolean(kShowFirstParent);
  connect(sidebar_, &RepositorySidebar::starRequested, this, &CommitListDisplayController::setStarred);
  connect(sidebar_, &RepositorySidebar::filterRequested, this, &CommitListDisplayController::setFilter);
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(list_, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
    QMenu* menu = displayMenu(list_);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    auto* operations = new QMenu(menu);  // holds the operations' actions for the menu's life
    Q_EMIT contextMenuOpening(operations);
    if (!operations->isEmpty()) {
      QAction* first = menu->actions().value(0);
      menu->insertActions(first, operations->actions());
      menu->insertSeparator(first);
    }
    menu->popup(list_->viewport()->mapToGlobal(position));
  });
}

std::shared_ptr<const RevisionGraphSource> CommitListDisplayController::shaped(const RevisionGraphSource& source) const {
  return RevisionListDisplay::reshaped(source, GitModuleSettings::load(module_), showFirstParent_);
}

RepositoryReferences CommitListDisplayController::marked(RepositoryReferences references) const {
  const GitModuleSettings settings = GitModuleSettings::load(module_);
  references.starred = setOf(settings.starredReferences);
  references.filtered = setOf(settings.filterReferences);
  return references;
}

void CommitListDisplayController::setShowFirstParent(bool on) {
  if (on == showFirstParent_) return;
  showFirstParent_ = on;
  // New tabs start the way the user last left this one.
  Preferences::shared().setValue(kShowFirstParent, on);
  reshape();
  Q_EMIT showFirstParentChanged(on);
}

void CommitListDisplayController::setStarred(const QString& fullReference, bool starred) {
  RevisionListDisplay::update(module_, [&](GitModuleSettings& settings) {
    settings.starredReferences = RevisionListDisplay::withReference(settings.starredReferences, fullReference, starred);
  });
  reshape();
  Q_EMIT referenceSettingsChanged();
}

void CommitListDisplayController::setFilter(const QStringList& fullReferences) {
  RevisionListDisplay::update(module_, [&](GitModuleSettings& settings) { settings.filterReferences = fullReferences; });
  reshape();
  Q_EMIT referenceSettingsChanged();
}

void CommitListDisplayController::setHidden(Hidden kind, bool hidden) {
  RevisionListDisplay::update(module_, [&](GitModuleSettings& settings) {
    switch (kind) {
      case Hidden::remoteBranches: settings.hideRemoteBranches = hidden; break;
      case Hidden::tags: settings.hideTags = hidden; break;
      case Hidden::stashes: settings.hideStashes = hidden; break;
    }
  });
  reshape();
}

void CommitListDisplayController::reshape() {
  const GitModuleSettings settings = GitModuleSettings::load(module_);
  if (const auto& source = list_->commitModel()->source()) {
    list_->setSource(RevisionListDisplay::reshaped(*source, settings, showFirstParent_));
  }
  sidebar_->setReferenceMarks(setOf(settings.starredReferences), setOf(settings.filterReferences));
}

QMenu* CommitListDisplayController::displayMenu(QWidget* parent) {
  const GitModuleSettings settings = GitModuleSettings::load(module_);
  auto* menu = new QMenu(parent);
  const auto toggle = [this, menu](Hidden kind, bool hidden, const QString& show, const QString& hide) {
    menu->addAction(hidden ? show : hide, this, [this, kind, hidden] { setHidden(kind, !hidden); });
  };
  toggle(Hidden::remoteBranches, settings.hideRemoteBranches, tr("Show Remote Branches in Commit List"),
         tr("Hide Remote Branches in Commit List"));
  toggle(Hidden::tags, settings.hideTags, tr("Show Tags"), tr("Hide Tags"));
  toggle(Hidden::stashes, settings.hideStashes, tr("Show Stashes"), tr("Hide Stashes"));
  menu->addSeparator();
  QAction* firstParent = menu->addAction(tr("Show First Parent Only"));
  firstParent->setCheckable(true);
  firstParent->setChecked(showFirstParent_);
  connect(firstParent, &QAction::toggled, this, &CommitListDisplayController::setShowFirstParent);
  if (!settings.filterReferences.isEmpty()) {
    menu->addSeparator();
    menu->addAction(tr("Show All Branches in Commit List"), this, [this] { setFilter({}); });
  }
  return menu;
}
