#pragma once
// Paints a quick launch row: icon, title and, to the right in a lighter shade, the
// secondary text (a path, keys, a folder); a header as a small caption.
#include <QStyledItemDelegate>

class QuickLaunchItemDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
