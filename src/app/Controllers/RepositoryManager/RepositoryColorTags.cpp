#include "Controllers/RepositoryManager/RepositoryColorTags.h"

#include <QPainter>
#include <QPen>
#include <QPixmap>
#include <array>

namespace {
struct Tag {
  const char* name;
  QRgb rgb;
};
// Mid-tone colours that read on light and dark backgrounds alike.
constexpr std::array<Tag, 7> tags{{
    {"Red", 0xe5484d},
    {"Orange", 0xf76b15},
    {"Yellow", 0xe2a336},
    {"Green", 0x30a46c},
    {"Blue", 0x0090ff},
    {"Purple", 0x8e4ec6},
    {"Grey", 0x8b8d98},
}};
}  // namespace

namespace RepositoryColorTags {

int count() { return int(tags.size()); }

bool isValid(std::optional<int> index) { return index && *index >= 0 && *index < count(); }

QString name(int index) { return isValid(index) ? QString::fromLatin1(tags[size_t(index)].name) : QString(); }

QColor color(int index) { return isValid(index) ? QColor(tags[size_t(index)].rgb) : QColor(); }

namespace {
QPixmap swatch(std::optional<int> index, int size, bool ringed) {
  QPixmap pixmap(size * 2, size * 2);  // drawn at twice the size for high-density screens
  pixmap.setDevicePixelRatio(2.0);
  pixmap.fill(Qt::transparent);
  if (isValid(index)) {
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    // On a selected row the highlight may be the tag's own colour: a white ring keeps
    // the dot apart from it.
    painter.setPen(ringed ? QPen(Qt::white, 1.5) : Qt::NoPen);
    painter.setBrush(color(*index));
    const qreal inset = size * 0.15;
    painter.drawEllipse(QRectF(inset, inset, size - 2 * inset, size - 2 * inset));
  }
  return pixmap;
}
}  // namespace

QIcon icon(std::optional<int> index, int size) {
  QIcon icon(swatch(index, size, false));
  icon.addPixmap(swatch(index, size, true), QIcon::Selected);
  return icon;
}

}  // namespace RepositoryColorTags
