#include "Controllers/CommitList/CommitListModel.h"

#include <QLocale>
#include <QTimer>

CommitListModel::CommitListModel(QObject* parent) : QAbstractTableModel(parent), now_(QDateTime::currentDateTimeUtc()) {
  search_.setRevisionGraph(&graph_);
  // The dates age as a whole, once a minute: rows read against one clock never disagree.
  auto* clock = new QTimer(this);
  clock->setInterval(60 * 1000);
  connect(clock, &QTimer::timeout, this, [this] {
    now_ = QDateTime::currentDateTimeUtc();
    if (rowCount() > 0) Q_EMIT dataChanged(index(0, DateColumn), index(rowCount() - 1, DateColumn), {Qt::DisplayRole});
  });
  clock->start();
}

void CommitListModel::setSource(std::shared_ptr<const RevisionGraphSource> source) {
  beginResetModel();
  now_ = QDateTime::currentDateTimeUtc();
  graph_.update(std::move(source));
  graphManager_.reset(&graph_);
  decoration_.reset(&graph_);
  search_.relocate();
  endResetModel();
}

void CommitListModel::rebuild() {
  beginResetModel();
  graph_.update(graph_.source());
  graphManager_.reset(&graph_);
  decoration_.reset(&graph_);
  search_.relocate();
  endResetModel();
}

void CommitListModel::toggleCollapsed(int row) {
  if (row < 0 || row >= graph_.count()) return;
  const Sha sha = graph_.revision(row)->sha();
  if (graph_.isCollapsed(sha)) {
    graph_.expand(sha);
  } else {
    graph_.collapse(sha);
  }
  rebuild();
}

void CommitListModel::searchMarksChanged(int row) {
  if (row < 0 || row >= graph_.count()) return;
  Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1), {SearchMatchRole});
}

void CommitListModel::searchMarksChanged() {
  if (graph_.count() > 0) Q_EMIT dataChanged(index(0, 0), index(graph_.count() - 1, ColumnCount - 1), {SearchMatchRole});
}

int CommitListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : graph_.count() + (historyCut() ? 1 : 0);
}

const RevisionPtr& CommitListModel::revision(int row) const {
  static const RevisionPtr none;
  return row >= 0 && row < graph_.count() ? graph_.revision(row) : none;
}

QString CommitListModel::cutRowText(int count) {
  return tr("Showing the newest %1 commits").arg(QLocale().toString(count));
}

int CommitListModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

const GraphInfo& CommitListModel::graphInfo(int row) const {
  graphManager_.precalculate(row);
  return graphManager_.graphItem(row);
}

const DecoratedRevision& CommitListModel::decoration(int row) const {
  decoration_.precalculate(row);
  return decoration_.decoratedRevision(row);
}

QString CommitListModel::relativeDate(const QDateTime& date, const QDateTime& now) {
  const qint64 secs = date.secsTo(now);
  if (secs < 0) return QLocale().toString(date.toLocalTime(), QLocale::ShortFormat);
  if (secs < 60) return tr("just now");
  if (secs < 3600) return tr("%n min ago", nullptr, static_cast<int>(secs / 60));
  if (secs < 86400) return tr("%n h ago", nullptr, static_cast<int>(secs / 3600));
  if (secs < 86400 * 30) return tr("%n d ago", nullptr, static_cast<int>(secs / 86400));
  return QLocale().toString(date.toLocalTime().date(), QLocale::ShortFormat);
}

QVariant CommitListModel::data(const QModelIndex& index, int role) const {
  if (index.isValid() && isCutRow(index.row()) && index.column() == GraphColumn && role == Qt::DisplayRole) {
    return cutRowText(graph_.source()->revisions ? static_cast<int>(graph_.source()->revisions->size()) : 0);
  }
  if (!index.isValid() || index.row() >= graph_.count()) return {};
  const RevisionPtr& revision = graph_.revision(index.row());
  switch (role) {
    case Qt::DisplayRole:
      switch (index.column()) {
        case GraphColumn: return revision->message();
        case AuthorColumn: return revision->author();
        case DateColumn: return relativeDate(revision->authorDate(), now_);
        case ShaColumn: return revision->sha().abbreviated(7);
      }
      break;
    case Qt::ToolTipRole:
      switch (index.column()) {
        case AuthorColumn: return QStringLiteral("%1 <%2>").arg(revision->author(), revision->authorEmail());
        case DateColumn: return QLocale().toString(revision->authorDate().toLocalTime(), QLocale::LongFormat);
        case ShaColumn: return revision->sha().toString();
        case GraphColumn: {
          const QString note = aheadBehindNote(decoration(index.row()).aheadBehind);
          return note.isEmpty() ? revision->message() : revision->message() + QStringLiteral("\n\n") + note;
        }
      }
      break;
    case AheadBehindRole: return static_cast<int>(decoration(index.row()).aheadBehind);
    case ReachableRole: return decoration(index.row()).isReachable;
    case SearchMatchRole: return search_.isMatch(revision->sha());
    default: break;
  }
  return {};
}

Qt::ItemFlags CommitListModel::flags(const QModelIndex& index) const {
  // The cut row is a note with a button, not a commit to select.
  if (index.isValid() && isCutRow(index.row())) return Qt::ItemIsEnabled;
  return QAbstractTableModel::flags(index);
}

QString CommitListModel::aheadBehindNote(AheadBehindState state) {
  switch (state) {
    case AheadBehindState::ahead: return tr("Not yet pushed to the upstream branch");
    case AheadBehindState::behind: return tr("Not yet pulled from the upstream branch");
    case AheadBehindState::none: break;
  }
  return {};
}

QVariant CommitListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  switch (section) {
    case GraphColumn: return tr("Description");
    case AuthorColumn: return tr("Author");
    case DateColumn: return tr("Date");
    case ShaColumn: return tr("Commit");
  }
  return {};
}
