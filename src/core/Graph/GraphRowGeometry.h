#pragma once
// Where the lanes of one row go on screen. The view only strokes what this gives; the
// colours are the theme's (palette entry = lane id modulo the palette size).
#include <QPointF>
#include <QRectF>
#include <QString>
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

// How one row's lanes fit a capped width. Lanes past the cap are clipped under a fade,
// a dot that lies beyond it is drawn at the edge with a marker, and labels and subject
// start right after the lanes that are shown: a row with 90 lanes keeps its subject.
struct GraphRowLayout {
  QRectF lanes;               // the only place lanes and dot are painted
  bool clipped = false;       // some lane reaches past the cap
  QRectF fade;                // the band at the cap's edge that fades out; empty unless clipped
  QRectF dot;                 // empty when the row has no dot
  bool dotBeyondCap = false;  // the dot's own column lies past the cap
  double contentX = 0;        // where labels and subject start

  bool operator==(const GraphRowLayout&) const = default;
};

class GraphRowGeometry {
 public:
  static constexpr double columnWidth = 11.0;
  static constexpr double firstColumnOffset = 3.0;
  static constexpr double strokeWidth = 1.5;
  static constexpr double curveOffset = 5.0;
  static constexpr double lanesPadding = 2.0;

  static double columnX(int column, double leftMargin) { return leftMargin + firstColumnOffset + column * columnWidth; }
  static double middleY(const QRectF& row) { return row.y() + row.height() * 0.5; }

  // The stroke of one lane segment within the row's rectangle.
  static GraphPath path(const GraphLine& line, const QRectF& row, double leftMargin);
  // The commit's dot, a circle of the given diameter; an empty rectangle when the row
  // has no dot.
  static QRectF dot(const GraphInfo& info, const QRectF& row, double leftMargin, double diameter);

  static constexpr double fadeWidth = 2 * columnWidth;
  static constexpr double contentGap = 6.0;
  // The part of the Description column the lanes may take unless the user dragged it.
  static constexpr double defaultCapFraction = 1.0 / 3.0;
  static constexpr double minimumCapFraction = 0.08;
  static constexpr double maximumCapFraction = 0.75;

  // Columns a row's segments touch: one past the rightmost top, middle or bottom.
  static int columnCount(const GraphInfo& info);
  // Lanes of the row within `cell`, taking at most `cap` pixels from the cell's left.
  static GraphRowLayout layout(const GraphInfo& info, const QRectF& cell, double leftMargin, double cap, double dotDiameter);
  // The cap for a fraction of the cell's width, the fraction kept within its bounds.
  static double cap(double fraction, double cellWidth);
  // How many labels of these widths fit between `x` and `right` with `gap` after each,
  // keeping room for a "+N" chip of `moreWidth` when not all fit.
  static int fittingLabels(const std::vector<double>& widths, double x, double right, double gap, double moreWidth);

  // What a reference's label says.
  static QString labelText(const Reference& reference);
};
