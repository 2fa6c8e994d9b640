#pragma once
// Whether a typed branch or tag name is one git accepts, checked as the user types so
// the sheet can say why before git refuses. Follows git's reference-name rules.
#include <QString>
#include <QStringList>
#include <optional>

struct ReferenceNameCheck {
  // The reason the name is refused, or nothing when it is fine.
  static std::optional<QString> problem(const QString& name);
  // "Branch <name> already exists" when `name` equals one of `existing` ignoring letter
  // case: on a case-insensitive file system the two would clash.
  static std::optional<QString> clash(const QString& name, const QStringList& existing, const QString& kind = QStringLiteral("Branch"));
};
