#include "Controllers/Sheets/TodoListDelegate.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPainter>

#include "Controllers/Sheets/TodoListModel.h"

namespace {

constexpr int gutter = 22;
constexpr int badgeWidth = 58;

QColor commandColor(InteractiveRebaseCommand command) {
  switch (command) {
    case InteractiveRebaseCommand::pick: return QColor(0x3b, 0x82, 0xc4);
    case InteractiveRebaseCommand::reword: return QColor(0x2e, 0x9e, 0x6a);
    case InteractiveRebaseCommand::edit: return QColor(0xc0, 0x8a, 0x1e);
    case InteractiveRebaseCommand::squash: return QColor(0x8e, 0x5c, 0xc8);
    case InteractiveRebaseCommand::fixup: return QColor(0xa8, 0x6c, 0xd8);
    case InteractiveRebaseCommand::drop: return QColor(0xc4, 0x4b, 0x4b);
  }
  return Qt::gray;
}

}  // namespace

QSize TodoListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  return {QStyledItemDelegate::sizeHint(option, index).width(), option.fontMetrics.height() + 12};
}

void TodoListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto* item = static_cast<const TodoListItem*>(index.data(TodoListModel::itemRole).value<const void*>());
  if (!item) return;
  QStyleOptionViewItem background = option;
  initStyleOption(&background, index);
  background.text.clear();
  QStyle* style = option.widget ? option.widget->style() : QApplication::style();
  style->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);

  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  const QRect rect = option.rect;
  const bool selected = option.state & QStyle::State_Selected;
  const QColor text = option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text);
  const QColor groupColor = commandColor(InteractiveRebaseCommand::squash);

  // The group's line: from a member down to the target it folds into.
  const int x = rect.left() + gutter / 2;
  const int middle = rect.center().y();
  painter->setPen(QPen(groupColor, 2));
  switch (item->squashType) {
    case SquashType::start: painter->drawLine(x, middle, x, rect.bottom() + 1); break;
    case SquashType::middle:
    case SquashType::through: painter->drawLine(x, rect.top(), x, rect.bottom() + 1); break;
    case SquashType::target: painter->drawLine(x, rect.top(), x, middle); break;
    case SquashType::none: break;
  }
  if (item->squashType != SquashType::none && item->squashType != SquashType::through) {
    painter->setBrush(item->squashType == SquashType::target ? groupColor : option.palette.color(QPalette::Base));
    painter->drawEllipse(QPoint(x, middle), 4, 4);
  }

  // The action as a small badge.
  const QRect badge(rect.left() + gutter, rect.top() + 4, badgeWidth, rect.height() - 8);
  painter->setPen(Qt::NoPen);
  painter->setBrush(commandColor(item->command));
  painter->drawRoundedRect(badge, 4, 4);
  QFont font = option.font;
  QFont small = font;
  small.setPointSizeF(font.pointSizeF() * 0.85);
  small.setBold(true);
  painter->setFont(small);
  painter->setPen(Qt::white);
  painter->drawText(badge, Qt::AlignCenter, commandWord(item->command));

  const QFontMetrics metrics(font);
  int left = badge.right() + 10;
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(font.pointSizeF());
  painter->setFont(fixed);
  QColor dim = text;
  dim.setAlphaF(0.6);
  painter->setPen(dim);
  const QRect shaRect(left, rect.top(), QFontMetrics(fixed).horizontalAdvance(QStringLiteral("0000000")) + 8, rect.height());
  painter->drawText(shaRect, Qt::AlignVCenter | Qt::AlignLeft, item->sha.left(7));
  left = shaRect.right() + 8;

  const int authorWidth = std::min(180, rect.width() / 4);
  const QRect authorRect(rect.right() - authorWidth - 6, rect.top(), authorWidth, rect.height());
  painter->setFont(font);
  painter->drawText(authorRect, Qt::AlignVCenter | Qt::AlignRight, metrics.elidedText(item->author, Qt::ElideRight, authorWidth));

  QFont subjectFont = font;
  subjectFont.setStrikeOut(item->command == InteractiveRebaseCommand::drop);
  subjectFont.setItalic(item->customMessage.has_value());
  painter->setFont(subjectFont);
  painter->setPen(item->command == InteractiveRebaseCommand::drop ? dim : text);
  const QRect subjectRect(left, rect.top(), authorRect.left() - left - 8, rect.height());
  painter->drawText(subjectRect, Qt::AlignVCenter | Qt::AlignLeft,
                    QFontMetrics(subjectFont).elidedText(item->subject(), Qt::ElideRight, subjectRect.width()));
  painter->restore();
}
