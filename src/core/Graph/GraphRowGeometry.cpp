#include "Graph/GraphRowGeometry.h"

#include <algorithm>

#include "Models/BisectMark.h"

GraphPath GraphRowGeometry::path(const GraphLine& line, const QRectF& row, double leftMargin) {
  // Qt's y grows downwards: the top edge faces the newer row above, the bottom edge the
  // parents below. Curves leave and reach the edges vertically.
  const auto x = [&](int column) { return columnX(column, leftMargin); };
  const double topY = row.top();
  const double bottomY = row.bottom();
  const double midY = middleY(row);
  GraphPath result;

  if (!line.top && line.bottom) {
    // From the commit down to a parent's lane.
    result.start = {x(line.middle), midY};
    result.end = {x(*line.bottom), bottomY};
    result.curved = line.middle != *line.bottom;
    result.control1 = {x(*line.bottom), midY};
    result.control2 = {x(*line.bottom), midY + curveOffset};
  } else if (line.top && line.bottom) {
    // Through the row, shifting columns when a lane to the left has ended.
    result.start = {x(*line.top), topY};
    result.end = {x(*line.bottom), bottomY};
    result.curved = *line.top != *line.bottom;
    result.control1 = {x(*line.top), bottomY - curveOffset};
    result.control2 = {x(*line.bottom), topY + curveOffset};
  } else if (line.top) {
    // From above into the commit, where the lane ends.
    result.start = {x(*line.top), topY};
    result.end = {x(line.middle), midY};
    result.curved = *line.top != line.middle;
    result.control1 = {x(*line.top), midY};
    result.control2 = {x(line.middle) + curveOffset, midY};
  } else {
    // Neither edge: nothing to draw but a point.
    result.start = result.end = {x(line.middle), midY};
  }
  if (!result.curved) result.control1 = result.control2 = QPointF();
  return result;
}

QRectF GraphRowGeometry::dot(const GraphInfo& info, const QRectF& row, double leftMargin, double diameter) {
  if (info.currentCommitColumn < 0) return {};
  const QPointF center(columnX(info.currentCommitColumn, leftMargin), middleY(row));
  return {center.x() - diameter / 2, center.y() - diameter / 2, diameter, diameter};
}

int GraphRowGeometry::columnCount(const GraphInfo& info) {
  int columns = 0;
  for (const GraphLine& line : info.lines) {
    columns = std::max({columns, line.middle + 1, line.top.value_or(0) + 1, line.bottom.value_or(0) + 1});
  }
  return std::max(columns, info.currentCommitColumn + 1);
}

GraphRowLayout GraphRowGeometry::layout(const GraphInfo& info, const QRectF& cell, double leftMargin, double cap,
                                        double dotDiameter) {
  GraphRowLayout result;
  const double natural = leftMargin + columnCount(info) * columnWidth + lanesPadding;
  const double room = std::clamp(cap, 0.0, cell.width());
  result.clipped = natural > room;
  const double lanesWidth = result.clipped ? room : natural;
  result.lanes = QRectF(cell.left(), cell.top(), lanesWidth, cell.height());
  if (result.clipped) {
    result.fade = QRectF(result.lanes.right() - std::min(fadeWidth, lanesWidth), cell.top(), std::min(fadeWidth, lanesWidth),
                         cell.height());
  }
  result.contentX = std::min(cell.right(), result.lanes.right() + contentGap);

  result.dot = dot(info, cell, cell.left() + leftMargin, dotDiameter);
  const double edge = std::max(result.lanes.left() + dotDiameter / 2, result.lanes.right() - columnWidth);
  if (!result.dot.isEmpty() && result.clipped && result.dot.center().x() > edge) {
    // Drawn at the edge, in the fade, so the row still shows that it has a commit.
    result.dotBeyondCap = true;
    result.dot.moveCenter(QPointF(edge, result.dot.center().y()));
  }
  return result;
}

double GraphRowGeometry::cap(double fraction, double cellWidth) {
  return std::clamp(fraction, minimumCapFraction, maximumCapFraction) * std::max(0.0, cellWidth);
}

int GraphRowGeometry::fittingLabels(const std::vector<double>& widths, double x, double right, double gap, double moreWidth) {
  double used = 0;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    used += widths[i];
    const bool last = i + 1 == widths.size();
    // Every label but the last must leave room for the chip that counts the rest.
    if (x + used + (last ? 0.0 : gap + moreWidth) > right) return static_cast<int>(i);
    used += gap;
  }
  return static_cast<int>(widths.size());
}

QString GraphRowGeometry::labelText(const Reference& reference) {
  if (reference.kind() == Reference::Kind::bisectMark) return QStringLiteral("bisect: ") + reference.name;
  // A remote branch names its remote, so it can't be mistaken for the local branch.
  if (reference.kind() == Reference::Kind::remoteBranch) return reference.fullName;
  return reference.name;
}
