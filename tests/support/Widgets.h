#pragma once
// Finding what a user would click (a menu's entry, a tree's row, the sheet that opened), and
// pictures of what the tests drew.
#include <QAction>
#include <QDir>
#include <QMenu>
#include <QTest>
#include <QTreeWidget>

inline QAction* findAction(QMenu* menu, const QString& text) {
  for (QAction* action : menu->actions()) {
    if (action->text() == text) return action;
  }
  return nullptr;
}

inline QTreeWidgetItem* findItem(QTreeWidget& tree, const QString& text) {
  for (QTreeWidgetItemIterator it(&tree); *it; ++it) {
    if ((*it)->text(0) == text) return *it;
  }
  return nullptr;
}

// The visible sheet of that type on the window, once it is there; an ended sheet may
// linger hidden until it is deleted.
template <typename Sheet>
Sheet* openSheet(QWidget* window) {
  Sheet* sheet = nullptr;
  const bool shown = QTest::qWaitFor([&] {
    for (Sheet* candidate : window->findChildren<Sheet*>()) {
      if (candidate->isVisible()) sheet = candidate;
    }
    return sheet != nullptr;
  }, 10000);
  return shown ? sheet : nullptr;
}

// With JELV_SCREENSHOT_DIR set, the widget as drawn is saved there as "<name>.png", for the
// README and for looking at a change.
inline void screenshot(QWidget* widget, const QString& name) {
  const QString directory = qEnvironmentVariable("JELV_SCREENSHOT_DIR");
  if (directory.isEmpty() || !widget) return;
  QDir().mkpath(directory);
  widget->grab().save(directory + QLatin1Char('/') + name + QStringLiteral(".png"));
}
