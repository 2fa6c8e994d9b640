#include "Controllers/CommitList/CommitListDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QPainterPath>

#include "Controllers/CommitList/CommitListModel.h"
#include "Graph/GraphRowGeometry.h"
#include "Models/BisectMark.h"
#include "Models/LocalBranch.h"

namespace {

constexpr double kLeftMargin = 4.0;
constexpr double kDotDiameter = 7.0;
constexpr double kLabelGap = 4.0;

enum class LabelKind { activeBranch, localBranch, remoteBranch, tag, head, bisectGood, bisectBad };

LabelKind labelKind(const Reference& reference) {
  switch (reference.kind()) {
    case Reference::Kind::localBranch:
      return static_cast<const LocalBranch&>(reference).isActive ? LabelKind::activeBranch : LabelKind::localBranch;
    case Reference::Kind::remoteBranch: return LabelKind::remoteBranch;
    case Reference::Kind::tag: return LabelKind::tag;
    case Reference::Kind::head:
    case Reference::Kind::plain: return LabelKind::head;
    case Reference::Kind::bisectMark:
      return static_cast<const BisectMark&>(reference).isGood ? LabelKind::bisectGood : LabelKind::bisectBad;
  }
  return LabelKind::localBranch;
}

QColor labelColor(LabelKind kind, bool dark) {
  switch (kind) {
    case LabelKind::activeBranch:
    case LabelKind::localBranch: return dark ? QColor(0x3a, 0x6e, 0xa5) : QColor(0xd6, 0xe6, 0xf7);
    case LabelKind::remoteBranch: return dark ? QColor(0x2f, 0x4a, 0x66) : QColor(0xea, 0xf1, 0xf8);
    case LabelKind::tag: return dark ? QColor(0x7a, 0x5c, 0x1e) : QColor(0xf8, 0xe8, 0xc4);
    case LabelKind::head: return dark ? QColor(0x8a, 0x3a, 0x3a) : QColor(0xf6, 0xd5, 0xd5);
    case LabelKind::bisectGood: return dark ? QColor(0x2e, 0x6b, 0x3a) : QColor(0xd4, 0xf0, 0xd9);
    case LabelKind::bisectBad: return dark ? QColor(0x8a, 0x3a, 0x3a) : QColor(0xf6, 0xd5, 0xd5);
  }
  return Qt::gray;
}

}  // namespace

CommitListDelegate::CommitListDelegate(const CommitListModel* model, QObject* parent) : QStyledItemDelegate(parent), model_(model) {}

QColor CommitListDelegate::laneColor(int id, bool dark) {
  // Saturated enough for a light background, light enough for a dark one.
  static const QColor light[] = {QColor(0x1f, 0x77, 0xb4), QColor(0xd6, 0x27, 0x28), QColor(0x2c, 0xa0, 0x2c),
                                 QColor(0x94, 0x67, 0xbd), QColor(0xff, 0x7f, 0x0e), QColor(0x17, 0xbe, 0xcf),
                                 QColor(0xe3, 0x77, 0xc2), QColor(0x8c, 0x56, 0x4b), QColor(0xbc, 0xbd, 0x22)};
  static const QColor darkColors[] = {QColor(0x5d, 0xad, 0xe2), QColor(0xf1, 0x6a, 0x6a), QColor(0x6c, 0xd4, 0x6c),
                                      QColor(0xb8, 0x98, 0xe0), QColor(0xff, 0xa6, 0x4d), QColor(0x4d, 0xd8, 0xe6),
                                      QColor(0xf0, 0xa1, 0xd8), QColor(0xc4, 0x95, 0x83), QColor(0xdb, 0xdc, 0x5a)};
  constexpr int count = static_cast<int>(std::size(light));
  const int index = ((id % count) + count) % count;
  return dark ? darkColors[index] : light[index];
}

QColor CommitListDelegate::searchMatchColor(bool dark) { return dark ? QColor(0x6b, 0x5a, 0x1a) : QColor(0xff, 0xec, 0x9e); }

QSize CommitListDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  QSize size = QStyledItemDelegate::sizeHint(option, index);
  size.setHeight(std::max(size.height(), option.fontMetrics.height() + 8));
  return size;
}

void CommitListDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  if (model_->isCutRow(index.row())) {
    if (index.column() == CommitListModel::GraphColumn) paintCutRow(painter, option, index.row());
    return;
  }
  const bool reachable = index.data(CommitListModel::ReachableRole).toBool();
  painter->save();
  // A match of the commit search: a band behind the whole row.
  if (!(option.state & QStyle::State_Selected) && index.data(CommitListModel::SearchMatchRole).toBool()) {
    painter->fillRect(option.rect, searchMatchColor(option.palette.color(QPalette::Base).lightness() < 128));
  }
  if (!reachable) painter->setOpacity(0.55);
  if (index.column() == CommitListModel::GraphColumn) {
    QStyleOptionViewItem background = option;
    initStyleOption(&background, index);
    background.text.clear();
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &background, painter, background.widget);
    paintGraphCell(painter, option, index.row());
  } else {
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    if (index.column() == CommitListModel::ShaColumn) opt.font.setFamily(QStringLiteral("monospace"));
    QApplication::style()->drawControl(QStyle::CE_ItemViewItem, &opt, painter, opt.widget);
  }
  painter->restore();
}

void CommitListDelegate::paintCutRow(QPainter* painter, const QStyleOptionViewItem& option, int row) const {
  if (row == 0) return;
  const GraphInfo& last = model_->graphInfo(row - 1);
  const QRectF rect = option.rect;
  const bool dark = option.palette.color(QPalette::Base).lightness() < 128;
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing, true);
  painter->setClipRect(rowLayout(row - 1, rect).lanes, Qt::IntersectClip);
  for (const GraphLine& line : last.lines) {
    if (!line.bottom) continue;
    const double x = GraphRowGeometry::columnX(*line.bottom, rect.x() + kLeftMargin);
    QLinearGradient gradient(QPointF(x, rect.top()), QPointF(x, rect.top() + rect.height() * 0.8));
    QColor color = laneColor(line.id, dark);
    gradient.setColorAt(0.0, color);
    color.setAlpha(0);
    gradient.setColorAt(1.0, color);
    painter->setPen(QPen(QBrush(gradient), GraphRowGeometry::strokeWidth, Qt::SolidLine, Qt::FlatCap));
    painter->drawLine(QPointF(x, rect.top()), QPointF(x, rect.top() + rect.height() * 0.8));
  }
  painter->restore();
}

double CommitListDelegate::capWidth(double cellWidth) const { return GraphRowGeometry::cap(capFraction_, cellWidth); }

GraphRowLayout CommitListDelegate::rowLayout(int row, const QRectF& cell) const {
  return GraphRowGeometry::layout(model_->graphInfo(row), cell, kLeftMargin, capWidth(cell.width()), kDotDiameter);
}

void CommitListDelegate::paintGraphCell(QPainter* painter, const QStyleOptionViewItem& option, int row) const {
  const GraphInfo& info = model_->graphInfo(row);
  const DecoratedRevision& decoration = model_->decoration(row);
  const QRectF rect = option.rect;
  const bool selected = option.state & QStyle::State_Selected;
  const bool dark = option.palette.color(QPalette::Base).lightness() < 128;
  const GraphRowLayout layout = GraphRowGeometry::layout(info, rect, kLeftMargin, capWidth(rect.width()), kDotDiameter);
  painter->setRenderHint(QPainter::Antialiasing, true);
  // Nothing of this row reaches into the Author column.
  painter->setClipRect(rect, Qt::IntersectClip);

  painter->save();
  painter->setClipRect(layout.lanes, Qt::IntersectClip);
  for (const GraphLine& line : info.lines) {
    const GraphPath geometry = GraphRowGeometry::path(line, rect, rect.x() + kLeftMargin);
    QPainterPath stroke(geometry.start);
    if (geometry.curved) {
      stroke.cubicTo(geometry.control1, geometry.control2, geometry.end);
    } else {
      stroke.lineTo(geometry.end);
    }
    painter->setPen(QPen(laneColor(line.id, dark), GraphRowGeometry::strokeWidth, Qt::SolidLine, Qt::RoundCap));
    painter->setBrush(Qt::NoBrush);
    painter->drawPath(stroke);
  }
  if (layout.clipped) {
    // Lanes past the cap fade into the row's background instead of ending in a cut.
    const QPalette::ColorGroup group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    QColor background = option.palette.color(group, selected ? QPalette::Highlight : QPalette::Base);
    QLinearGradient gradient(layout.fade.topLeft(), layout.fade.topRight());
    background.setAlpha(0);
    gradient.setColorAt(0.0, background);
    background.setAlpha(255);
    gradient.setColorAt(0.85, background);
    const double opacity = painter->opacity();
    painter->setOpacity(1.0);
    painter->fillRect(layout.fade, gradient);
    painter->setOpacity(opacity);
  }
  if (!layout.dot.isEmpty()) {
    const QRectF dot = layout.dot;
    const QColor color = laneColor(info.lineId, dark);
    const bool merge = decoration.revision && decoration.revision->parents().size() > 1;
    const bool stash = decoration.revision && decoration.revision->isStash();
    painter->setPen(QPen(color, 1.5));
    painter->setBrush(merge || stash ? option.palette.color(QPalette::Base) : color);
    if (stash) {
      painter->drawRect(dot.adjusted(0.5, 0.5, -0.5, -0.5));
    } else {
      painter->drawEllipse(dot);
    }
    if (decoration.isHead) {
      painter->setPen(QPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text), 1.2));
      painter->setBrush(Qt::NoBrush);
      painter->drawEllipse(dot.adjusted(-2.5, -2.5, 2.5, 2.5));
    }
    if (layout.dotBeyondCap) {
      // The commit's lane lies further right than the lanes shown: a small arrow says so.
      const double left = dot.right() + 1.5;
      const QPointF tip(std::min(layout.lanes.right() - 0.5, left + 4.0), dot.center().y());
      QPainterPath arrow(QPointF(left, dot.top() + 0.5));
      arrow.lineTo(tip);
      arrow.lineTo(QPointF(left, dot.bottom() - 0.5));
      arrow.closeSubpath();
      painter->setPen(Qt::NoPen);
      painter->setBrush(color);
      painter->drawPath(arrow);
    }
  }
  painter->restore();

  double x = layout.contentX;
  QFont labelFont = option.font;
  labelFont.setPointSizeF(std::max(7.0, option.font.pointSizeF() - 1.0));
  const QFontMetricsF labelMetrics(labelFont);
  const double labelHeight = std::min(rect.height() - 4.0, labelMetrics.height() + 4.0);
  std::vector<const Reference*> references;
  std::vector<double> widths;
  for (const DecoratedReference& ref : decoration.references) {
    if (!ref.reference) continue;
    QFont font = labelFont;
    font.setBold(labelKind(*ref.reference) == LabelKind::activeBranch);
    references.push_back(ref.reference.get());
    widths.push_back(QFontMetricsF(font).horizontalAdvance(GraphRowGeometry::labelText(*ref.reference)) + 10.0);
  }
  // Labels leave the subject room for forty characters; the rest become a count.
  const double subjectRoom = std::min(rect.width() / 2, 40.0 * option.fontMetrics.averageCharWidth());
  const QString moreSample = QStringLiteral("+%1").arg(references.size());
  const double moreWidth = labelMetrics.horizontalAdvance(moreSample) + 10.0;
  const int shown = GraphRowGeometry::fittingLabels(widths, x, rect.right() - subjectRoom, kLabelGap, moreWidth);
  const auto drawLabel = [&](const QString& text, double width, LabelKind kind) {
    QFont font = labelFont;
    font.setBold(kind == LabelKind::activeBranch);
    const QRectF box(x, rect.center().y() - labelHeight / 2.0, width, labelHeight);
    painter->setPen(QPen(labelColor(kind, dark).darker(dark ? 70 : 125), 1.0));
    painter->setBrush(labelColor(kind, dark));
    painter->drawRoundedRect(box, 4.0, 4.0);
    painter->setFont(font);
    painter->setPen(dark ? QColor(0xf0, 0xf0, 0xf0) : QColor(0x20, 0x20, 0x20));
    painter->drawText(box, Qt::AlignCenter, text);
    x += width + kLabelGap;
  };
  for (int i = 0; i < shown; ++i) {
    drawLabel(GraphRowGeometry::labelText(*references[i]), widths[i], labelKind(*references[i]));
  }
  const int hidden = static_cast<int>(references.size()) - shown;
  if (hidden > 0 && x + moreWidth <= rect.right()) {
    drawLabel(QStringLiteral("+%1").arg(hidden), moreWidth, labelKind(*references[shown]));
  }

  // Commits on one side only of the active branch and its upstream: an arrow up for
  // what a push would send, down for what a pull would bring.
  if (decoration.aheadBehind != AheadBehindState::none) {
    const bool ahead = decoration.aheadBehind == AheadBehindState::ahead;
    const QString arrow = ahead ? QStringLiteral("\u2191") : QStringLiteral("\u2193");
    QFont arrowFont = option.font;
    arrowFont.setBold(true);
    painter->setFont(arrowFont);
    const QColor color = ahead ? QColor(dark ? 0x6c : 0x1e, dark ? 0xd0 : 0x8a, dark ? 0x7a : 0x3c)
                               : QColor(dark ? 0x6a : 0x1f, dark ? 0xaa : 0x6f, dark ? 0xf0 : 0xd0);
    painter->setPen(selected ? option.palette.color(QPalette::HighlightedText) : color);
    const double width = QFontMetricsF(arrowFont).horizontalAdvance(arrow) + 4.0;
    painter->drawText(QRectF(x, rect.y(), width, rect.height()), Qt::AlignCenter, arrow);
    x += width + 2.0;
  }

  painter->setFont(option.font);
  painter->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
  const QRectF textRect(x + 2.0, rect.y(), rect.right() - x - 4.0, rect.height());
  const QString subject = decoration.revision ? decoration.revision->message() : QString();
  painter->drawText(textRect, Qt::AlignVCenter | Qt::AlignLeft,
                    option.fontMetrics.elidedText(subject, Qt::ElideRight, static_cast<int>(textRect.width())));
}
