#include "Extensions/NaturalCompare.h"

#include <algorithm>

namespace {

inline bool isDigit(char16_t c) { return c >= u'0' && c <= u'9'; }

// ASCII is nearly every path; only other letters pay for the Unicode folding.
inline char32_t folded(char16_t c) {
  if (c < 0x80) return (c >= u'A' && c <= u'Z') ? char32_t(c + 32) : char32_t(c);
  return QChar::toCaseFolded(char32_t(c));
}

}  // namespace

int NaturalCompare::compare(QStringView a, QStringView b) {
  const char16_t* pa = reinterpret_cast<const char16_t*>(a.data());
  const char16_t* pb = reinterpret_cast<const char16_t*>(b.data());
  const qsizetype na = a.size();
  const qsizetype nb = b.size();
  qsizetype i = 0;
  qsizetype j = 0;
  while (i < na && j < nb) {
    const char16_t ca = pa[i];
    const char16_t cb = pb[j];
    if (isDigit(ca) && isDigit(cb)) {
      // Compare the runs as numbers: skip leading zeros, then the longer run is larger,
      // and runs of equal length compare digit by digit.
      while (i < na && pa[i] == u'0') ++i;
      while (j < nb && pb[j] == u'0') ++j;
      qsizetype endA = i;
      qsizetype endB = j;
      while (endA < na && isDigit(pa[endA])) ++endA;
      while (endB < nb && isDigit(pb[endB])) ++endB;
      const qsizetype lengthA = endA - i;
      const qsizetype lengthB = endB - j;
      if (lengthA != lengthB) return lengthA < lengthB ? -1 : 1;
      for (; i < endA; ++i, ++j) {
        if (pa[i] != pb[j]) return pa[i] < pb[j] ? -1 : 1;
      }
      continue;
    }
    if (ca != cb) {
      const char32_t fa = folded(ca);
      const char32_t fb = folded(cb);
      if (fa != fb) return fa < fb ? -1 : 1;
    }
    ++i;
    ++j;
  }
  if (i < na) return 1;
  if (j < nb) return -1;
  return 0;
}

void NaturalCompare::appendSortKey(QStringView text, QString& out) {
  // A key is never longer than its text plus one unit per digit run, so the room is
  // made once and written through a pointer.
  const qsizetype start = out.size();
  out.resize(start + text.size() + text.size() / 2 + 2);
  char16_t* o = reinterpret_cast<char16_t*>(out.data()) + start;
  char16_t* const begin = o;
  const char16_t* p = text.utf16();
  const qsizetype n = text.size();
  qsizetype i = 0;
  while (i < n) {
    const char16_t c = p[i];
    if (!isDigit(c)) {
      // Folding keeps the basic plane; a surrogate half folds to itself.
      *o++ = char16_t(folded(c));
      ++i;
      continue;
    }
    // Any digit stands for the run: against a non-digit every digit compares the same.
    while (i < n && p[i] == u'0') ++i;
    qsizetype end = i;
    while (end < n && isDigit(p[end])) ++end;
    *o++ = u'0';
    *o++ = char16_t(std::min<qsizetype>(end - i, 0xFFFF));
    for (; i < end; ++i) *o++ = p[i];
  }
  out.resize(start + (o - begin));
}
