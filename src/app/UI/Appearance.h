#pragma once
#include <QColor>
#include <functional>

class QApplication;
class QPalette;
class QWidget;

// The "appearance" preference: 0 follows the system, 1 is light, 2 is dark. Light and
// dark use the Fusion style with a palette of their own, so they look the same on
// every desktop.
//
// Quiet text (labels, counts, hints) uses the PlaceholderText role, never a disabled
// state or a fixed grey: both palettes keep that role readable on Base and Window.
namespace Appearance {
void apply(QApplication& app, int value);
bool isDark(const QApplication& app);
bool isDark(const QPalette& palette);

// The palette of the light or the dark appearance.
QPalette palette(bool dark);

// Text that reports a failure or warns, readable on the palette's Base and Window.
QColor errorText(const QPalette& palette);
QColor warningText(const QPalette& palette);

// The face of a checked tool button: the button's colour tinted with the accent.
QColor checkedButtonFill(const QPalette& palette);

// Calls onChange whenever the widget's palette changes (the appearance was switched).
// For views that bake colours into items, documents or formats when they fill them.
void follow(QWidget* widget, std::function<void()> onChange);
}  // namespace Appearance
