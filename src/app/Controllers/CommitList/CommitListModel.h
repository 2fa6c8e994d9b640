#pragma once
// The rows of the commit list over one immutable snapshot. Lanes and decoration are
// computed on demand, a block at a time, only as far as the view has asked: a history
// of 50,000 commits opens as fast as its first block.
#include <QAbstractTableModel>
#include <QDateTime>
#include <memory>

#include "Graph/GraphManager.h"
#include "Graph/RevisionCollectionView.h"
#include "Graph/RevisionGraph.h"
#include "Graph/RevisionSearch.h"

class CommitListModel : public QAbstractTableModel {
  Q_OBJECT
 public:
  enum Column { GraphColumn, AuthorColumn, DateColumn, ShaColumn, ColumnCount };
  enum Role { RevisionRole = Qt::UserRole + 1, ReachableRole, AheadBehindRole, SearchMatchRole };

  explicit CommitListModel(QObject* parent = nullptr);

  // Replaces the rows; the graph and the decoration start over.
  void setSource(std::shared_ptr<const RevisionGraphSource> source);
  const std::shared_ptr<const RevisionGraphSource>& source() const { return graph_.source(); }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

  // Null for the row that says the history was cut.
  const RevisionPtr& revision(int row) const;
  // The last row of a cut history, which says so instead of showing a commit.
  bool isCutRow(int row) const { return row == graph_.count() && historyCut(); }
  bool historyCut() const { return graph_.source() && graph_.source()->historyCut; }
  int revisionCount() const { return graph_.count(); }
  // "Showing the newest 50,000 commits"
  static QString cutRowText(int count);
  const GraphInfo& graphInfo(int row) const;
  const DecoratedRevision& decoration(int row) const;
  std::optional<int> row(const Sha& sha) const { return graph_.row(std::optional<Sha>(sha)); }
  std::optional<int> row(const QString& abbreviatedSha) const { return graph_.row(abbreviatedSha); }
  const RevisionGraph& graph() const { return graph_; }

  void toggleCollapsed(int row);

  // The matches of the commit search, marked in the rows; they follow the rows across
  // refreshes.
  RevisionSearch& search() { return search_; }
  const RevisionSearch& search() const { return search_; }
  // Repaints a row that became a match (or stopped being one).
  void searchMarksChanged(int row);
  void searchMarksChanged();

  // How many rows have lanes computed; the view must not cause more than it shows.
  int computedGraphRows() const { return graphManager_.lastPrecalculatedRow() + 1; }

  // "2 hours ago" style for the list; the exact date goes in the tooltip.
  static QString relativeDate(const QDateTime& date, const QDateTime& now);
  // Tooltip line of a commit only on one side of the active branch and its upstream.
  static QString aheadBehindNote(AheadBehindState state);

 private:
  void rebuild();

  RevisionGraph graph_;
  QDateTime now_;  // what "ago" counts from, the same for every row
  mutable GraphManager graphManager_;
  mutable RevisionCollectionView decoration_;
  RevisionSearch search_;
};
