#include "Controllers/Sidebar/RepositorySidebar.h"

#include <QDragMoveEvent>
#include <QDropEvent>
#include <QMimeData>

#include <QHeaderView>
#include <QMenu>

#include "Models/LocalBranch.h"
#include "Models/ReferenceSortOrder.h"
#include "Models/RemoteBranch.h"
#include "Models/Tag.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "UI/Appearance.h"

namespace {
const QString kBranches = QStringLiteral("Branches");
const QString kRemotes = QStringLiteral("Remotes");
const QString kTags = QStringLiteral("Tags");
const QString kStashes = QStringLiteral("Stashes");
const QString kSubmodules = QStringLiteral("Submodules");
const QString kStarred = QStringLiteral("Starred");
const QString kStar = QStringLiteral("★ ");

QTreeWidgetItem* referenceItem(QTreeWidgetItem* parent, const Reference& reference, const QString& text, const QString& sha,
                               const RepositoryReferences& references, bool markStar = true) {
  const bool starred = markStar && references.starred.contains(reference.fullReference);
  auto* item = new QTreeWidgetItem(parent, {(starred ? kStar : QString()) + text});
  // References that the commit list is narrowed to stand out in the accent colour.
  if (references.filtered.contains(reference.fullReference)) item->setForeground(0, parent->treeWidget()->palette().brush(QPalette::Link));
  item->setData(0, RepositorySidebar::EntryRole, static_cast<int>(RepositorySidebar::Entry::reference));
  item->setData(0, RepositorySidebar::FullReferenceRole, reference.fullReference);
  item->setData(0, RepositorySidebar::ShaRole, sha);
  item->setToolTip(0, reference.fullReference);
  return item;
}

QString referenceSha(const ReferencePtr& reference) {
  if (reference->kind() == Reference::Kind::tag) return std::static_pointer_cast<const Tag>(reference)->commitSha();
  return reference->sha;
}
}  // namespace

RepositorySidebar::RepositorySidebar(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setRootIsDecorated(true);
  setUniformRowHeights(true);
  setIndentation(14);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  setContextMenuPolicy(Qt::CustomContextMenu);
  // Counts and marks carry colours of the palette they were built with.
  Appearance::follow(this, [this] { rebuild(); });
  connect(this, &QWidget::customContextMenuRequested, this, [this](const QPoint& position) {
    QTreeWidgetItem* item = itemAt(position);
    if (!item) return;
    if (!item->isSelected()) setCurrentItem(item);
    if (QMenu* menu = contextMenuFor(item)) {
      menu->setAttribute(Qt::WA_DeleteOnClose);
      menu->popup(viewport()->mapToGlobal(position));
    }
  });
  // Branches can be dragged onto the checked-out branch to merge or rebase.
  setDragEnabled(true);
  setAcceptDrops(true);
  setDropIndicatorShown(true);
  setDragDropMode(QAbstractItemView::DragDrop);
  connect(this, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) {
    const auto entry = static_cast<Entry>(item->data(0, EntryRole).toInt());
    if (entry == Entry::reference || entry == Entry::stash) Q_EMIT entryActivated(item);
  });
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::referenceSortOrderChanged, this, &RepositorySidebar::rebuild);
  setColumnCount(2);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(0, QHeaderView::Stretch);
  header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
    if (!item) return;
    switch (static_cast<Entry>(item->data(0, EntryRole).toInt())) {
      case Entry::localChanges: Q_EMIT localChangesSelected(); break;
      case Entry::allCommits: Q_EMIT allCommitsSelected(); break;
      case Entry::reference:
      case Entry::stash: Q_EMIT commitRequested(item->data(0, ShaRole).toString()); break;
      default: break;
    }
  });
  // A click on "All Commits" asks for all of them: a branch filter ends.
  connect(this, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) {
    if (item == allCommits_ && !content_.references.filtered.isEmpty()) Q_EMIT filterRequested({});
  });
  connect(this, &QTreeWidget::itemExpanded, this, [this](QTreeWidgetItem* item) { expanded_[item->text(0)] = true; });
  connect(this, &QTreeWidget::itemCollapsed, this, [this](QTreeWidgetItem* item) { expanded_[item->text(0)] = false; });
}

QString RepositorySidebar::aheadBehindText(const std::optional<BehindAheadInfo>& info) {
  if (!info || (info->ahead == 0 && info->behind == 0)) return {};
  QStringList parts;
  if (info->ahead > 0) parts << QStringLiteral("%1↑").arg(info->ahead);
  if (info->behind > 0) parts << QStringLiteral("%1↓").arg(info->behind);
  return parts.join(QLatin1Char(' '));
}

QTreeWidgetItem* RepositorySidebar::section(const QString& title, int count) {
  auto* item = new QTreeWidgetItem(this, {title, count > 0 ? QString::number(count) : QString()});
  item->setData(0, EntryRole, static_cast<int>(Entry::section));
  item->setData(0, FullReferenceRole, title);
  QFont font = item->font(0);
  font.setBold(true);
  item->setFont(0, font);
  item->setFlags(item->flags() & ~Qt::ItemIsSelectable);
  item->setForeground(1, palette().brush(QPalette::PlaceholderText));
  return item;
}

void RepositorySidebar::setContent(const Content& content) {
  content_ = content;
  rebuild();
}

void RepositorySidebar::setReferenceMarks(const QSet<QString>& starred, const QSet<QString>& filtered) {
  content_.references.starred = starred;
  content_.references.filtered = filtered;
  rebuild();
}

void RepositorySidebar::rebuild() {
  const Content& content = content_;
  // Rebuilding must not look like a user's selection.
  const QSignalBlocker blocker(this);
  QString currentKey;
  if (QTreeWidgetItem* current = currentItem()) currentKey = current->data(0, FullReferenceRole).toString() + current->text(0);
  clear();
  auto& prefs = Preferences::shared();

  localChanges_ = new QTreeWidgetItem(this, {tr("Local Changes"), content.localChangesCount ? QString::number(*content.localChangesCount) : QString()});
  localChanges_->setData(0, EntryRole, static_cast<int>(Entry::localChanges));
  allCommits_ = new QTreeWidgetItem(this, {tr("All Commits")});
  allCommits_->setData(0, EntryRole, static_cast<int>(Entry::allCommits));
  if (!content.references.filtered.isEmpty()) {
    allCommits_->setText(1, tr("Filtered"));
    allCommits_->setForeground(1, palette().brush(QPalette::Link));
  }

  // Starred references of every kind, by name, ahead of the full lists.
  std::vector<ReferencePtr> starredReferences;
  for (const QString& fullReference : content.references.starred) {
    if (ReferencePtr reference = content.references.reference(fullReference)) starredReferences.push_back(reference);
  }
  QTreeWidgetItem* starredSection = nullptr;
  if (!starredReferences.empty()) {
    sortReferenceList(starredReferences, ReferenceSortOrder::name);
    starredSection = section(kStarred, static_cast<int>(starredReferences.size()));
    for (const auto& reference : starredReferences) {
      // The section says they are starred; the full name tells a remote's branch apart.
      auto* item = referenceItem(starredSection, *reference, reference->fullName, referenceSha(reference), content.references, false);
      item->setText(1, aheadBehindText(content.aheadBehind.info(reference->fullReference)));
    }
  }

  std::vector<LocalBranchPtr> locals = content.references.localBranches;
  sortReferences(locals, referenceSortOrderFromPreference(prefs.integer(QStringLiteral("localBranchSortOrder"))));
  QTreeWidgetItem* branches = section(kBranches, static_cast<int>(locals.size()));
  for (const auto& branch : locals) {
    auto* item = referenceItem(branches, *branch, branch->name, branch->sha, content.references);
    item->setText(1, aheadBehindText(content.aheadBehind.info(branch->fullReference)));
    if (branch->isActive) {
      QFont font = item->font(0);
      font.setBold(true);
      item->setFont(0, font);
      item->setText(0, QStringLiteral("● ") + item->text(0));
    }
  }

  std::vector<RemoteBranchPtr> remotes = content.references.remoteBranches;
  sortReferences(remotes, referenceSortOrderFromPreference(prefs.integer(QStringLiteral("remoteBranchSortOrder"))));
  QTreeWidgetItem* remotesSection = section(kRemotes, 0);
  QHash<QString, QTreeWidgetItem*> byRemote;
  const auto remoteGroup = [&byRemote, remotesSection](const QString& remote) {
    QTreeWidgetItem*& group = byRemote[remote];
    if (!group) {
      group = new QTreeWidgetItem(remotesSection, {remote});
      group->setData(0, EntryRole, static_cast<int>(Entry::section));
      group->setData(0, FullReferenceRole, QStringLiteral("remote:") + remote);
    }
    return group;
  };
  // A remote just added has no branches yet and must still be there to edit or remove.
  for (const QString& remote : content.remotes) remoteGroup(remote);
  for (const auto& branch : remotes) referenceItem(remoteGroup(branch->remote), *branch, branch->name, branch->sha, content.references);

  std::vector<TagPtr> tags = content.references.tags;
  sortReferences(tags, referenceSortOrderFromPreference(prefs.integer(QStringLiteral("tagSortOrder"))));
  QTreeWidgetItem* tagsSection = section(kTags, static_cast<int>(tags.size()));
  for (const auto& tag : tags) referenceItem(tagsSection, *tag, tag->name, tag->commitSha(), content.references);

  QTreeWidgetItem* stashes = section(kStashes, static_cast<int>(content.stashes.size()));
  for (const auto& stash : content.stashes) {
    auto* item = new QTreeWidgetItem(stashes, {stash->message()});
    item->setData(0, EntryRole, static_cast<int>(Entry::stash));
    item->setData(0, ShaRole, stash->sha().toString());
    item->setData(0, FullReferenceRole, stash->reflogName());
    item->setToolTip(0, stash->reflogName());
  }

  QTreeWidgetItem* submodules = section(kSubmodules, static_cast<int>(content.submodules.size()));
  for (const QString& path : content.submodules) {
    auto* item = new QTreeWidgetItem(submodules, {path});
    item->setData(0, EntryRole, static_cast<int>(Entry::submodule));
    item->setData(0, FullReferenceRole, QStringLiteral("submodule:") + path);
  }

  // Branches open by default, the long lists closed; the user's choice wins afterwards.
  for (QTreeWidgetItem* item : {starredSection, branches, remotesSection, tagsSection, stashes, submodules}) {
    if (!item) continue;
    const bool defaultOpen = item == starredSection || item == branches || item == remotesSection;
    item->setExpanded(expanded_.value(item->text(0), defaultOpen));
  }
  for (auto* group : byRemote) group->setExpanded(expanded_.value(group->text(0), true));

  QTreeWidgetItemIterator it(this);
  while (*it) {
    if (!currentKey.isEmpty() && (*it)->data(0, FullReferenceRole).toString() + (*it)->text(0) == currentKey) {
      setCurrentItem(*it);
      break;
    }
    ++it;
  }
}

QStringList RepositorySidebar::selectedReferences() const {
  QStringList references;
  for (QTreeWidgetItem* item : selectedItems()) {
    if (static_cast<Entry>(item->data(0, EntryRole).toInt()) != Entry::reference) continue;
    const QString fullReference = item->data(0, FullReferenceRole).toString();
    if (!references.contains(fullReference)) references << fullReference;
  }
  return references;
}

QMenu* RepositorySidebar::contextMenuFor(QTreeWidgetItem* item) {
  if (!item) return nullptr;
  const Entry entry = static_cast<Entry>(item->data(0, EntryRole).toInt());
  const QSet<QString>& filtered = content_.references.filtered;
  auto* menu = new QMenu(this);
  Q_EMIT contextMenuOpening(menu, item);
  if (!menu->isEmpty()) menu->addSeparator();
  if (entry == Entry::reference) {
    const QString fullReference = item->data(0, FullReferenceRole).toString();
    const bool starred = content_.references.starred.contains(fullReference);
    menu->addAction(starred ? tr("Unstar") : tr("Star"), this, [this, fullReference, starred] { Q_EMIT starRequested(fullReference, !starred); });
    menu->addSeparator();
    // The clicked entry joins the selection it was part of, or stands alone.
    QStringList chosen = item->isSelected() ? selectedReferences() : QStringList{fullReference};
    if (chosen.isEmpty()) chosen << fullReference;
    const bool tag = fullReference.startsWith(QStringLiteral("refs/tags/"));
    const QString only = chosen.size() > 1 ? tr("Show Only Selected Branches in Commit List")
                         : tag             ? tr("Show Only This Tag in Commit List")
                                           : tr("Show Only This Branch in Commit List");
    menu->addAction(only, this, [this, chosen] { Q_EMIT filterRequested(chosen); });
    if (!filtered.isEmpty()) {
      QStringList current(filtered.begin(), filtered.end());
      current.sort();
      if (filtered.contains(fullReference)) {
        current.removeAll(fullReference);
        // Taking the last one out would show everything; that is the action below.
        if (!current.isEmpty()) menu->addAction(tr("Remove from Commit List Filter"), this, [this, current] { Q_EMIT filterRequested(current); });
      } else {
        current << fullReference;
        menu->addAction(tr("Add to Commit List Filter"), this, [this, current] { Q_EMIT filterRequested(current); });
      }
    }
  }
  if ((entry == Entry::reference || entry == Entry::allCommits) && !filtered.isEmpty()) {
    menu->addAction(tr("Show All Branches in Commit List"), this, [this] { Q_EMIT filterRequested({}); });
  }
  if (menu->isEmpty()) {
    delete menu;
    return nullptr;
  }
  return menu;
}

namespace {
const QString kReferenceMime = QStringLiteral("application/x-jelv-reference");
}

QStringList RepositorySidebar::mimeTypes() const { return {kReferenceMime}; }

QMimeData* RepositorySidebar::mimeData(const QList<QTreeWidgetItem*>& items) const {
  if (items.size() != 1 || static_cast<Entry>(items.first()->data(0, EntryRole).toInt()) != Entry::reference) return nullptr;
  const QString full = items.first()->data(0, FullReferenceRole).toString();
  if (!full.startsWith(QStringLiteral("refs/heads/")) && !full.startsWith(QStringLiteral("refs/remotes/"))) return nullptr;
  auto* data = new QMimeData;
  data->setData(kReferenceMime, full.toUtf8());
  return data;
}

QTreeWidgetItem* RepositorySidebar::dropTarget(const QPoint& position, const QMimeData* data) const {
  if (!data || !data->hasFormat(kReferenceMime)) return nullptr;
  QTreeWidgetItem* item = itemAt(position);
  if (!item || static_cast<Entry>(item->data(0, EntryRole).toInt()) != Entry::reference) return nullptr;
  const QString target = item->data(0, FullReferenceRole).toString();
  if (!target.startsWith(QStringLiteral("refs/heads/")) || target == QString::fromUtf8(data->data(kReferenceMime))) return nullptr;
  return item;
}

void RepositorySidebar::dragMoveEvent(QDragMoveEvent* event) {
  if (dropTarget(event->position().toPoint(), event->mimeData())) {
    event->setDropAction(Qt::LinkAction);
    event->accept();
  } else {
    event->ignore();
  }
}

void RepositorySidebar::dropEvent(QDropEvent* event) {
  QTreeWidgetItem* target = dropTarget(event->position().toPoint(), event->mimeData());
  // The tree itself never moves entries: the drop only asks for an operation.
  event->setDropAction(Qt::IgnoreAction);
  event->accept();
  if (target) {
    Q_EMIT referenceDropped(QString::fromUtf8(event->mimeData()->data(kReferenceMime)), target->data(0, FullReferenceRole).toString());
  }
}
