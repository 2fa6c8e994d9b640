#include "UI/Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace {

QPalette darkPalette() {
  QPalette p;
  const QColor window(0x2b, 0x2d, 0x30), base(0x1f, 0x21, 0x24), text(0xe6, 0xe6, 0xe6), disabled(0x80, 0x80, 0x80);
  p.setColor(QPalette::Window, window);
  p.setColor(QPalette::WindowText, text);
  p.setColor(QPalette::Base, base);
  p.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2b));
  p.setColor(QPalette::ToolTipBase, window);
  p.setColor(QPalette::ToolTipText, text);
  p.setColor(QPalette::PlaceholderText, QColor(0x9a, 0x9a, 0x9a));
  p.setColor(QPalette::Text, text);
  p.setColor(QPalette::Button, window);
  p.setColor(QPalette::ButtonText, text);
  p.setColor(QPalette::BrightText, Qt::white);
  p.setColor(QPalette::Link, QColor(0x6c, 0xb6, 0xff));
  p.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb5));
  p.setColor(QPalette::HighlightedText, Qt::white);
  p.setColor(QPalette::Mid, QColor(0x3c, 0x3f, 0x43));
  p.setColor(QPalette::Dark, QColor(0x18, 0x19, 0x1b));
  p.setColor(QPalette::Disabled, QPalette::Text, disabled);
  p.setColor(QPalette::Disabled, QPalette::WindowText, disabled);
  p.setColor(QPalette::Disabled, QPalette::ButtonText, disabled);
  return p;
}

QPalette lightPalette() {
  QPalette p = QStyleFactory::create(QStringLiteral("Fusion"))->standardPalette();
  p.setColor(QPalette::Highlight, QColor(0x2f, 0x7b, 0xd1));
  p.setColor(QPalette::AlternateBase, QColor(0xf5, 0xf6, 0xf7));
  return p;
}

}  // namespace

namespace Appearance {

void apply(QApplication& app, int value) {
  static const QPalette systemPalette = app.palette();
  static const QString systemStyle = app.style()->name();
  switch (value) {
    case 1:
      app.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
      app.setPalette(lightPalette());
      break;
    case 2:
      app.setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
      app.setPalette(darkPalette());
      break;
    default:
      app.setStyle(QStyleFactory::create(systemStyle));
      app.setPalette(systemPalette);
      break;
  }
}

bool isDark(const QApplication& app) { return app.palette().color(QPalette::Base).lightness() < 128; }

}  // namespace Appearance
