#include "UI/Appearance.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>
#include <memory>

namespace {

QPalette fusionPalette() {
  const std::unique_ptr<QStyle> fusion(QStyleFactory::create(QStringLiteral("Fusion")));
  return fusion->standardPalette();
}

QPalette darkPalette() {
  // Built from the Fusion palette rather than the application's current one, so no role
  // is left over from whatever was shown before (Light and Shadow draw frames).
  QPalette p = fusionPalette();
  const QColor window(0x2b, 0x2d, 0x30), base(0x1f, 0x21, 0x24), text(0xe6, 0xe6, 0xe6), disabled(0x80, 0x80, 0x80);
  const QColor quiet(0x9a, 0x9a, 0x9a), link(0x6c, 0xb6, 0xff);
  p.setColor(QPalette::Window, window);
  p.setColor(QPalette::WindowText, text);
  p.setColor(QPalette::Base, base);
  p.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2b));
  p.setColor(QPalette::ToolTipBase, window);
  p.setColor(QPalette::ToolTipText, text);
  p.setColor(QPalette::PlaceholderText, quiet);
  p.setColor(QPalette::Text, text);
  p.setColor(QPalette::Button, window);
  p.setColor(QPalette::ButtonText, text);
  p.setColor(QPalette::BrightText, Qt::white);
  p.setColor(QPalette::Link, link);
  p.setColor(QPalette::LinkVisited, link);
  p.setColor(QPalette::Highlight, QColor(0x2f, 0x6f, 0xb5));
  p.setColor(QPalette::HighlightedText, Qt::white);
  p.setColor(QPalette::Light, QColor(0x4a, 0x4d, 0x52));
  p.setColor(QPalette::Midlight, QColor(0x3a, 0x3c, 0x40));
  p.setColor(QPalette::Mid, QColor(0x3c, 0x3f, 0x43));
  p.setColor(QPalette::Dark, QColor(0x18, 0x19, 0x1b));
  p.setColor(QPalette::Shadow, QColor(0x0e, 0x0f, 0x10));
  p.setColor(QPalette::Disabled, QPalette::Text, disabled);
  p.setColor(QPalette::Disabled, QPalette::WindowText, disabled);
  p.setColor(QPalette::Disabled, QPalette::ButtonText, disabled);
  p.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x3c, 0x3f, 0x43));
  return p;
}

QPalette lightPalette() {
  QPalette p = fusionPalette();
  p.setColor(QPalette::Highlight, QColor(0x2b, 0x72, 0xc2));
  p.setColor(QPalette::AlternateBase, QColor(0xf5, 0xf6, 0xf7));
  // Fusion's greys of disabled text nearly vanish on white.
  const QColor disabled(0x88, 0x88, 0x88);
  p.setColor(QPalette::Disabled, QPalette::Text, disabled);
  p.setColor(QPalette::Disabled, QPalette::WindowText, disabled);
  p.setColor(QPalette::Disabled, QPalette::ButtonText, disabled);
  // Fusion's own is half-transparent black, too faint on the grey window.
  p.setColor(QPalette::PlaceholderText, QColor(0x69, 0x69, 0x69));
  return p;
}

// The style's own drawing, with two changes that hold for every window:
// - A checked tool button (Side by Side, the page a toolbar shows) is tinted with the
//   accent: the styles' own sunken look hardly differs from a raised one, least of all on
//   a dark palette.
// - The frame of a check box or radio button stands apart from the window and from a
//   list's base. Fusion draws it in the window colour darkened, which vanishes on a dark
//   list (an unchecked box could not be seen) and is faint on a light one.
class JelvStyle : public QProxyStyle {
 public:
  using QProxyStyle::QProxyStyle;

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override {
    if ((element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton) &&
        baseStyle()->name().compare(QStringLiteral("fusion"), Qt::CaseInsensitive) == 0) {
      drawIndicator(element, option, painter, widget);
    } else if (element == PE_PanelButtonTool && (option->state & State_On)) {
      drawCheckedToolButton(option, painter);
    } else {
      QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
  }

 private:
  void drawIndicator(PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const {
    // Fusion's frame is the window colour darker(140), then lighter(110): a window colour
    // of frame.lighter(128) gives back the frame wanted, 60% of the way from base to text.
    const auto withFrame = [](QStyleOption& copy) {
      const QColor base = copy.palette.color(QPalette::Base), text = copy.palette.color(QPalette::Text);
      const auto mix = [](float from, float to) { return from + (to - from) * 0.6f; };
      const QColor frame = QColor::fromRgbF(mix(base.redF(), text.redF()), mix(base.greenF(), text.greenF()), mix(base.blueF(), text.blueF()));
      copy.palette.setColor(QPalette::Window, frame.lighter(128));
    };
    if (const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
      QStyleOptionButton copy(*button);
      withFrame(copy);
      QProxyStyle::drawPrimitive(element, &copy, painter, widget);
    } else {
      QStyleOption copy(*option);
      withFrame(copy);
      QProxyStyle::drawPrimitive(element, &copy, painter, widget);
    }
  }

  static void drawCheckedToolButton(const QStyleOption* option, QPainter* painter) {
    const QColor accent = option->palette.color(QPalette::Highlight);
    const QColor fill = Appearance::checkedButtonFill(option->palette);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(accent);
    painter->setBrush(fill);
    painter->drawRoundedRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
    painter->restore();
  }
};

QStyle* styleNamed(const QString& name) { return new JelvStyle(QStyleFactory::create(name)); }

class PaletteFollower : public QObject {
 public:
  PaletteFollower(QWidget* widget, std::function<void()> onChange) : QObject(widget), onChange_(std::move(onChange)) {
    widget->installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange && watched == parent()) onChange_();
    return false;
  }

 private:
  std::function<void()> onChange_;
};

}  // namespace

namespace Appearance {

QPalette palette(bool dark) { return dark ? darkPalette() : lightPalette(); }

void apply(QApplication& app, int value) {
  static const QPalette systemPalette = app.palette();
  static const QString systemStyle = app.style()->name();
  switch (value) {
    case 1:
      app.setStyle(styleNamed(QStringLiteral("Fusion")));
      app.setPalette(lightPalette());
      break;
    case 2:
      app.setStyle(styleNamed(QStringLiteral("Fusion")));
      app.setPalette(darkPalette());
      break;
    default:
      app.setStyle(styleNamed(systemStyle));
      app.setPalette(systemPalette);
      break;
  }
}

bool isDark(const QPalette& palette) { return palette.color(QPalette::Base).lightness() < 128; }
bool isDark(const QApplication& app) { return isDark(app.palette()); }

QColor errorText(const QPalette& palette) { return isDark(palette) ? QColor(0xff, 0x7b, 0x72) : QColor(0xc0, 0x1c, 0x28); }
QColor warningText(const QPalette& palette) { return isDark(palette) ? QColor(0xd2, 0xa8, 0x22) : QColor(0x8a, 0x5c, 0x00); }

QColor checkedButtonFill(const QPalette& palette) {
  const QColor button = palette.color(QPalette::Button), accent = palette.color(QPalette::Highlight);
  const auto mix = [](qreal from, qreal to) { return from * 0.55 + to * 0.45; };
  return QColor::fromRgbF(float(mix(button.redF(), accent.redF())), float(mix(button.greenF(), accent.greenF())),
                          float(mix(button.blueF(), accent.blueF())));
}

void follow(QWidget* widget, std::function<void()> onChange) { new PaletteFollower(widget, std::move(onChange)); }

}  // namespace Appearance
