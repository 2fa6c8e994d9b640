#pragma once
#include <QString>
#include <optional>

#include "Models/Reference.h"

// A reference as a row of the commit list shows it. Core holds no images: the icon is
// a name that the view maps to a picture.
class DecoratedReference {
 public:
  ReferencePtr reference;
  std::optional<QString> icon;
};
