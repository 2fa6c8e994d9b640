#include "Controllers/QuickLaunch/QuickLaunchItemDelegate.h"

#include <QApplication>
#include <QPainter>

#include "Controllers/QuickLaunch/QuickLaunchListModel.h"

namespace {
constexpr int margin = 8;
constexpr int iconSize = 16;
}  // namespace

void QuickLaunchItemDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  painter->save();
  const QPalette& palette = option.palette;
  const QRect rect = option.rect.adjusted(margin, 0, -margin, 0);
  if (index.data(QuickLaunchListModel::isHeaderRole).toBool()) {
    QFont font = option.font;
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 0.85);
    painter->setFont(font);
    painter->setPen(palette.color(QPalette::Disabled, QPalette::Text));
    painter->drawText(rect.adjusted(0, 4, 0, 0), Qt::AlignLeft | Qt::AlignVCenter, index.data().toString().toUpper());
    painter->restore();
    return;
  }
  const bool selected = option.state & QStyle::State_Selected;
  if (selected) painter->fillRect(option.rect, palette.brush(QPalette::Highlight));
  const bool disabled = index.data(QuickLaunchListModel::isDisabledRole).toBool();
  const QColor text = selected ? palette.color(QPalette::HighlightedText)
                               : palette.color(disabled ? QPalette::Disabled : QPalette::Normal, QPalette::Text);
  QColor secondary = text;
  secondary.setAlphaF(selected ? 0.8F : 0.55F);

  const QIcon icon = index.data(Qt::DecorationRole).value<QIcon>();
  const QRect iconRect(rect.left(), rect.center().y() - iconSize / 2, iconSize, iconSize);
  icon.paint(painter, iconRect, Qt::AlignCenter, disabled ? QIcon::Disabled : QIcon::Normal);

  const QString secondaryText = index.data(QuickLaunchListModel::secondaryTextRole).toString();
  painter->setFont(option.font);
  const QFontMetrics metrics(option.font);
  // A little to spare: an advance rounded down would elide the whole text.
  const int secondaryWidth = secondaryText.isEmpty() ? 0 : std::min(metrics.horizontalAdvance(secondaryText) + 4, rect.width() / 2);
  QRect titleRect = rect.adjusted(iconSize + margin, 0, -(secondaryWidth + (secondaryWidth ? margin : 0)), 0);
  painter->setPen(text);
  painter->drawText(titleRect, Qt::AlignLeft | Qt::AlignVCenter, metrics.elidedText(index.data().toString(), Qt::ElideMiddle, titleRect.width()));
  if (secondaryWidth) {
    painter->setPen(secondary);
    const QRect right(rect.right() - secondaryWidth, rect.top(), secondaryWidth, rect.height());
    painter->drawText(right, Qt::AlignRight | Qt::AlignVCenter, metrics.elidedText(secondaryText, Qt::ElideLeft, secondaryWidth));
  }
  painter->restore();
}

QSize QuickLaunchItemDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const int line = QFontMetrics(option.font).height();
  const bool header = index.data(QuickLaunchListModel::isHeaderRole).toBool();
  return {200, header ? line + 8 : std::max(line, iconSize) + 10};
}
