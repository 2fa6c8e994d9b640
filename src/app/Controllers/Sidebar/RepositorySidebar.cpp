#include "Controllers/Sidebar/RepositorySidebar.h"

#include <QHeaderView>

#include "Models/LocalBranch.h"
#include "Models/ReferenceSortOrder.h"
#include "Models/RemoteBranch.h"
#include "Models/Tag.h"
#include "Services/Preferences.h"

namespace {
const QString kBranches = QStringLiteral("Branches");
const QString kRemotes = QStringLiteral("Remotes");
const QString kTags = QStringLiteral("Tags");
const QString kStashes = QStringLiteral("Stashes");
const QString kSubmodules = QStringLiteral("Submodules");

QTreeWidgetItem* referenceItem(QTreeWidgetItem* parent, const Reference& reference, const QString& text, const QString& sha) {
  auto* item = new QTreeWidgetItem(parent, {text});
  item->setData(0, RepositorySidebar::EntryRole, static_cast<int>(RepositorySidebar::Entry::reference));
  item->setData(0, RepositorySidebar::FullReferenceRole, reference.fullReference);
  item->setData(0, RepositorySidebar::ShaRole, sha);
  item->setToolTip(0, reference.fullReference);
  return item;
}
}  // namespace

RepositorySidebar::RepositorySidebar(QWidget* parent) : QTreeWidget(parent) {
  setHeaderHidden(true);
  setRootIsDecorated(true);
  setUniformRowHeights(true);
  setIndentation(14);
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

  std::vector<LocalBranchPtr> locals = content.references.localBranches;
  sortReferences(locals, referenceSortOrderFromPreference(prefs.integer(QStringLiteral("localBranchSortOrder"))));
  QTreeWidgetItem* branches = section(kBranches, static_cast<int>(locals.size()));
  for (const auto& branch : locals) {
    const bool starred = content.references.starred.contains(branch->fullReference);
    auto* item = referenceItem(branches, *branch, (starred ? QStringLiteral("★ ") : QString()) + branch->name, branch->sha);
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
  for (const auto& branch : remotes) {
    QTreeWidgetItem*& group = byRemote[branch->remote];
    if (!group) {
      group = new QTreeWidgetItem(remotesSection, {branch->remote});
      group->setData(0, EntryRole, static_cast<int>(Entry::section));
      group->setData(0, FullReferenceRole, QStringLiteral("remote:") + branch->remote);
    }
    referenceItem(group, *branch, branch->name, branch->sha);
  }

  std::vector<TagPtr> tags = content.references.tags;
  sortReferences(tags, referenceSortOrderFromPreference(prefs.integer(QStringLiteral("tagSortOrder"))));
  QTreeWidgetItem* tagsSection = section(kTags, static_cast<int>(tags.size()));
  for (const auto& tag : tags) referenceItem(tagsSection, *tag, tag->name, tag->commitSha());

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
  for (QTreeWidgetItem* item : {branches, remotesSection, tagsSection, stashes, submodules}) {
    const bool defaultOpen = item == branches || item == remotesSection;
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
