#include "Controls/WindowKeys.h"

#include <QKeySequence>
#include <QShortcut>
#include <QWidget>

void WindowKeys::closeOnEscapeAndCtrlW(QWidget* window) {
  // QKeySequence(QKeySequence::Close) would be the first of the platform's keys alone
  // (Ctrl+F4 here): all of them, and Ctrl+W whatever the platform says.
  QList<QKeySequence> keys = QKeySequence::keyBindings(QKeySequence::Close);
  for (const QKeySequence& more : {QKeySequence(Qt::Key_Escape), QKeySequence(Qt::CTRL | Qt::Key_W)}) {
    if (!keys.contains(more)) keys << more;
  }
  auto* shortcut = new QShortcut(window);
  shortcut->setKeys(keys);
  shortcut->setContext(Qt::WindowShortcut);
  QObject::connect(shortcut, &QShortcut::activated, window, &QWidget::close);
}
