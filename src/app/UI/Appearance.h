#pragma once
class QApplication;

// The "appearance" preference: 0 follows the system, 1 is light, 2 is dark. Light and
// dark use the Fusion style with a palette of their own, so they look the same on
// every desktop.
namespace Appearance {
void apply(QApplication& app, int value);
bool isDark(const QApplication& app);
}  // namespace Appearance
