#include "Extensions/GraphemeCount.h"

#include <QTextBoundaryFinder>

namespace GraphemeCount {

qsizetype count(QStringView text, qsizetype limit) {
  // Below U+0300 every code unit is a cluster of its own, except "\r\n".
  bool simple = true;
  qsizetype crlf = 0;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char16_t c = text[i].unicode();
    if (c >= 0x300) {
      simple = false;
      break;
    }
    if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++crlf;
  }
  if (simple) return std::min(text.size() - crlf, limit + 1);

  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.data(), text.size());
  qsizetype clusters = 0;
  while (finder.toNextBoundary() != -1) {
    if (++clusters > limit) return limit + 1;
  }
  return clusters;
}

}  // namespace GraphemeCount
