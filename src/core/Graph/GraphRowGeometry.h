#pragma once
// Where the lanes of one row go on screen. The view only strokes what this gives; the
// colours are the theme's (palette entry = lane id modulo the palette size).
#include <QPointF>
#include <QRectF>
#include <QString>
#include <functional>
#include <vector>

#include "Graph/GraphInfo.h"
#include "Models/Reference.h"

struct GraphPath {
  QPointF start;
  QPointF end;
  bool curved = false;  // a cubic curve through control1 and control2, else a straight line
  QPointF control1;
  QPointF control2;

  bool operator==(const GraphPath&) const = default;
};

struct ReferenceLabel {
  QString text;
  bool hasMark = false;  // an extra mark beside the text (for instance the upstream's)
};

class GraphRowGeometry {
 public:
  static constexpr double columnWidth = 11.0;
  static constexpr double firstColumnOffset = 3.0;
  static constexpr double strokeWidth = 1.5;
  static constexpr double curveOffset = 5.0;
  static constexpr double lanesPadding = 2.0;
  static constexpr double markWidth = 12.0;

  static double columnX(int column, double leftMargin) { return leftMargin + firstColumnOffset + column * columnWidth; }
  static double middleY(const QRectF& row) { return row.y() + row.height() * 0.5; }

  // The stroke of one lane segment within the row's rectangle.
  static GraphPath path(const GraphLine& line, const QRectF& row, double leftMargin);
  // The commit's dot, a circle of the given diameter; an empty rectangle when the row
  // has no dot.
  static QRectF dot(const GraphInfo& info, const QRectF& row, double leftMargin, double diameter);

  // What a reference's label says.
  static QString labelText(const Reference& reference);
  // The row's reserved width: the lanes, then each label as measured by the view.
  static double rowWidth(const GraphInfo& info, double leftMargin, const std::vector<ReferenceLabel>& labels,
                         const std::function<double(const QString&)>& textWidth);
};
