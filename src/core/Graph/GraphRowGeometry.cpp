#include "Graph/GraphRowGeometry.h"

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

QString GraphRowGeometry::labelText(const Reference& reference) {
  if (reference.kind() == Reference::Kind::bisectMark) return QStringLiteral("bisect: ") + reference.name;
  // A remote branch names its remote, so it can't be mistaken for the local branch.
  if (reference.kind() == Reference::Kind::remoteBranch) return reference.fullName;
  return reference.name;
}

double GraphRowGeometry::rowWidth(const GraphInfo& info, double leftMargin, const std::vector<ReferenceLabel>& labels,
                                  const std::function<double(const QString&)>& textWidth) {
  double width = static_cast<double>(info.lines.size()) * columnWidth + lanesPadding + leftMargin;
  for (const ReferenceLabel& label : labels) {
    width += textWidth(label.text);
    if (label.hasMark) width += markWidth;
  }
  return width;
}
