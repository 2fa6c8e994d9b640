#include "GraphTestSupport.h"

#include <algorithm>

namespace GraphTest {

namespace {

QString describe(const GraphLine& line) {
  const auto part = [](LaneColumn value) { return value ? QString::number(*value) : "-"; };
  return QStringLiteral("%1(%2,%3,%4)").arg(line.id).arg(part(line.top)).arg(line.middle).arg(part(line.bottom));
}

void put(QString& text, int position, QChar c, bool onlyOnSpace = false) {
  if (text.size() <= position) text.append(QString(position + 1 - text.size(), QLatin1Char(' ')));
  if (onlyOnSpace && text[position] != QLatin1Char(' ')) return;
  text[position] = c;
}

// The moves of the lanes from the middle of one row to the middle of the next.
QString connector(const GraphInfo& above, const GraphInfo& below) {
  QString text;
  bool moves = false;
  for (const GraphLine& line : above.lines) {
    if (!line.bottom) continue;
    const auto continued = std::find_if(below.lines.begin(), below.lines.end(),
                                        [&](const GraphLine& l) { return l.top == line.bottom; });
    if (continued == below.lines.end()) {
      put(text, 2 * line.middle, QLatin1Char('!'));  // a lane that goes nowhere
      moves = true;
      continue;
    }
    const int from = line.middle;
    const int to = continued->middle;
    if (from == to) {
      put(text, 2 * from, QLatin1Char('|'));
    } else if (to < from) {
      moves = true;
      put(text, 2 * to + 1, QLatin1Char('/'));
      for (int p = 2 * to + 2; p <= 2 * from - 1; ++p) put(text, p, QLatin1Char('_'), true);
    } else {
      moves = true;
      put(text, 2 * from + 1, QLatin1Char('\\'));
      for (int p = 2 * from + 2; p <= 2 * to - 1; ++p) put(text, p, QLatin1Char('_'), true);
    }
  }
  return moves ? text : QString();
}

QString middle(const GraphInfo& info) {
  QString text;
  for (const GraphLine& line : info.lines) {
    if (line.top && line.bottom && line.middle != info.currentCommitColumn) put(text, 2 * line.middle, QLatin1Char('|'));
  }
  if (info.currentCommitColumn >= 0) put(text, 2 * info.currentCommitColumn, QLatin1Char('*'));
  return text;
}

}  // namespace

QString picture(const History& history, const RevisionGraph& graph, GraphManager& manager) {
  const int count = graph.count();
  if (count > 0) manager.precalculate(count - 1);
  int width = 1;
  for (int row = 0; row < count; ++row) {
    for (const GraphLine& line : manager.graphItem(row).lines) {
      width = std::max({width, 2 * line.middle + 1, 2 * line.top.value_or(0) + 1, 2 * line.bottom.value_or(0) + 1});
    }
  }
  QStringList rows;
  for (int row = 0; row < count; ++row) {
    const GraphInfo& info = manager.graphItem(row);
    if (row > 0) {
      const QString moves = connector(manager.graphItem(row - 1), info);
      if (!moves.isEmpty()) rows.append(moves);
    }
    QStringList lines;
    for (const GraphLine& line : info.lines) lines.append(describe(line));
    rows.append(middle(info).leftJustified(width) + "  " + history.nameOf(graph.revision(row)->sha()) + "  " +
                lines.join(QLatin1Char(' ')));
  }
  for (QString& row : rows) {
    while (row.endsWith(QLatin1Char(' '))) row.chop(1);
  }
  return rows.join(QLatin1Char('\n'));
}

}  // namespace GraphTest
