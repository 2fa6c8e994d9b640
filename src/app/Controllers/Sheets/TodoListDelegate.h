#pragma once
// Paints a todo row: the squash group's line in the gutter, the action, the short id,
// the subject (struck through when dropped), author and date.
#include <QStyledItemDelegate>

class TodoListDelegate : public QStyledItemDelegate {
  Q_OBJECT
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
