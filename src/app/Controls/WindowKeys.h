#pragma once
// Keys that every tool window of its own (activity, blame, file history, preferences, the
// Help windows) answers the same way.
class QWidget;

namespace WindowKeys {
// Escape and Ctrl+W close the window: the main window's Close Tab does not reach a window
// of its own.
void closeOnEscapeAndCtrlW(QWidget* window);
}  // namespace WindowKeys
