#include "Controllers/Search/RevisionSearchResultsView.h"

#include <QHeaderView>
#include <QLocale>

#include "Controllers/CommitList/CommitListModel.h"
#include "Controls/ChangedFilesView.h"

namespace {

enum Column { SubjectColumn, AuthorColumn, DateColumn };
enum Role { ShaRole = Qt::UserRole + 1, PathRole, ListedRole };

}  // namespace

RevisionSearchResultsView::RevisionSearchResultsView(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("revisionSearchResults"));
  setHeaderLabels({tr("Subject"), tr("Author"), tr("Date")});
  setUniformRowHeights(true);
  setSelectionMode(QAbstractItemView::SingleSelection);
  header()->setStretchLastSection(false);
  header()->setSectionResizeMode(SubjectColumn, QHeaderView::Stretch);
  setColumnWidth(AuthorColumn, 110);
  setColumnWidth(DateColumn, 90);
  connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
    if (!item) return;
    const QString path = pathOf(item);
    if (path.isEmpty()) {
      Q_EMIT revisionChosen(shaOf(item));
    } else {
      Q_EMIT fileChosen(shaOf(item), path);
    }
  });
}

QSize RevisionSearchResultsView::sizeHint() const { return {460, QTreeWidget::sizeHint().height()}; }

void RevisionSearchResultsView::start(RevisionSearchType type) {
  const QSignalBlocker blocker(this);
  clear();
  items_.clear();
  type_ = type;
  now_ = QDateTime::currentDateTime();
  // Only these searches give the files that matched.
  setRootIsDecorated(type == RevisionSearchType::diffContent || type == RevisionSearchType::diffPath);
}

void RevisionSearchResultsView::addMatch(const RevisionWithFiles& match, bool listed) {
  if (!match.revision || items_.contains(match.revision->sha())) return;
  const Revision& revision = *match.revision;
  auto* item = new QTreeWidgetItem;
  item->setText(SubjectColumn, revision.message());
  item->setText(AuthorColumn, revision.author());
  item->setText(DateColumn, CommitListModel::relativeDate(revision.authorDate(), now_));
  item->setToolTip(DateColumn, QLocale().toString(revision.authorDate().toLocalTime(), QLocale::LongFormat));
  item->setData(SubjectColumn, ShaRole, revision.sha().toString());
  const bool dark = palette().color(QPalette::Base).lightness() < 128;
  for (const ChangedFilePtr& file : match.changedFiles) {
    const QString path = file->oldPath ? QStringLiteral("%1 → %2").arg(*file->oldPath, file->path) : file->path;
    auto* child = new QTreeWidgetItem(item);
    child->setText(SubjectColumn, ChangedFilesView::statusLetter(file->changeType, false) + QStringLiteral("  ") + path);
    child->setForeground(SubjectColumn, ChangedFilesView::statusColor(file->changeType, false, dark));
    child->setData(SubjectColumn, ShaRole, revision.sha().toString());
    child->setData(SubjectColumn, PathRole, file->path);
  }
  addTopLevelItem(item);
  for (int i = 0; i < item->childCount(); ++i) item->child(i)->setFirstColumnSpanned(true);  // only in the tree
  items_.emplace(revision.sha(), item);
  setListed(item, listed);
}

void RevisionSearchResultsView::setListed(QTreeWidgetItem* item, bool listed) {
  item->setData(SubjectColumn, ListedRole, listed);
  const QColor text = palette().color(listed ? QPalette::Active : QPalette::Disabled, QPalette::Text);
  for (int column = SubjectColumn; column <= DateColumn; ++column) item->setForeground(column, text);
  const QString sha = item->data(SubjectColumn, ShaRole).toString().left(7);
  item->setToolTip(SubjectColumn, listed ? sha : tr("%1 is not shown in the commit list").arg(sha));
}

void RevisionSearchResultsView::updateListed(const std::function<bool(const Sha&)>& listed) {
  for (int i = 0; i < topLevelItemCount(); ++i) setListed(topLevelItem(i), listed(shaOf(topLevelItem(i))));
}

QTreeWidgetItem* RevisionSearchResultsView::matchItem(const Sha& sha) const {
  const auto it = items_.find(sha);
  return it == items_.end() ? nullptr : it->second;
}

bool RevisionSearchResultsView::showSha(const Sha& sha) {
  QTreeWidgetItem* item = matchItem(sha);
  if (!item) return false;
  // Already there, or on one of its files.
  if (currentItem() && shaOf(currentItem()) == sha) return true;
  const QSignalBlocker blocker(this);
  setCurrentItem(item);
  scrollToItem(item);
  return true;
}

Sha RevisionSearchResultsView::shaOf(const QTreeWidgetItem* item) {
  return item ? Sha::fromHex(item->data(SubjectColumn, ShaRole).toString()).value_or(Sha()) : Sha();
}

QString RevisionSearchResultsView::pathOf(const QTreeWidgetItem* item) {
  return item ? item->data(SubjectColumn, PathRole).toString() : QString();
}
