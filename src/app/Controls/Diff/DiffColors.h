#pragma once
// Row colours shared by the diff views: backgrounds that keep the text readable in light
// and dark themes, and a slightly stronger tone for the gutter.
#include <QColor>

enum class DiffRowStyle { plain, added, removed, header };

struct DiffRowColors {
  QColor background;  // invalid: the view's own background
  QColor gutter;
};

inline DiffRowColors diffRowColors(DiffRowStyle style, bool dark) {
  switch (style) {
    case DiffRowStyle::added:
      return {dark ? QColor(0x1f, 0x3d, 0x2a) : QColor(0xe6, 0xff, 0xec), dark ? QColor(0x2a, 0x55, 0x3a) : QColor(0xcc, 0xff, 0xd8)};
    case DiffRowStyle::removed:
      return {dark ? QColor(0x4a, 0x22, 0x26) : QColor(0xff, 0xeb, 0xe9), dark ? QColor(0x63, 0x2c, 0x31) : QColor(0xff, 0xd7, 0xd5)};
    case DiffRowStyle::header:
      return {dark ? QColor(0x22, 0x2e, 0x3e) : QColor(0xdd, 0xf4, 0xff), dark ? QColor(0x22, 0x2e, 0x3e) : QColor(0xdd, 0xf4, 0xff)};
    case DiffRowStyle::plain:
      break;
  }
  return {};
}

// The changed part inside a partly changed row.
inline QColor diffWordColor(DiffRowStyle style, bool dark) {
  if (style == DiffRowStyle::added) return dark ? QColor(0x2f, 0x6f, 0x44) : QColor(0xab, 0xf2, 0xbc);
  if (style == DiffRowStyle::removed) return dark ? QColor(0x7a, 0x33, 0x3a) : QColor(0xff, 0xc0, 0xc0);
  return {};
}
