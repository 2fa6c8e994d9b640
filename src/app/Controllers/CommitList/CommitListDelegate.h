#pragma once
#include <QStyledItemDelegate>

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

 private:
  void paintGraphCell(QPainter* painter, const QStyleOptionViewItem& option, int row) const;
  const CommitListModel* model_;
};
