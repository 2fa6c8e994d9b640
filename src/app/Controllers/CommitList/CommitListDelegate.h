#pragma once
#include <QStyledItemDelegate>

#include "Graph/GraphRowGeometry.h"

class CommitListModel;

// Paints the lanes, the commit dot, the reference labels and the subject of a row, and
// dims rows that HEAD can't reach. Geometry comes from core; colours from the theme.
class CommitListDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  explicit CommitListDelegate(const CommitListModel* model, QObject* parent = nullptr);
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  // A palette of lane colours that reads on light and dark backgrounds.
  static QColor laneColor(int id, bool dark);
  // Behind the rows that match the commit search.
  static QColor searchMatchColor(bool dark);

  // The part of the Description column the lanes may take; more is clipped under a fade.
  double capFraction() const { return capFraction_; }
  void setCapFraction(double fraction) { capFraction_ = fraction; }
  double capWidth(double cellWidth) const;
  // Where a row's lanes, dot and subject go within its Description cell.
  GraphRowLayout rowLayout(int row, const QRectF& cell) const;

 private:
  // Lanes that go on past the last loaded commit fade out in the cut row.
  void paintCutRow(QPainter* painter, const QStyleOptionViewItem& option, int row) const;
  void paintGraphCell(QPainter* painter, const QStyleOptionViewItem& option, int row) const;
  const CommitListModel* model_;
  double capFraction_ = GraphRowGeometry::defaultCapFraction;
};
