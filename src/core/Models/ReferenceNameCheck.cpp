#include "Models/ReferenceNameCheck.h"

std::optional<QString> ReferenceNameCheck::problem(const QString& name) {
  if (name.isEmpty()) return QStringLiteral("Enter a name");
  if (name.startsWith(QLatin1Char('-'))) return QStringLiteral("A name cannot start with '-'");
  if (name == QStringLiteral("@") || name == QStringLiteral("HEAD")) return QStringLiteral("'%1' is reserved").arg(name);
  if (name.contains(QStringLiteral("..")) || name.contains(QStringLiteral("@{")) || name.contains(QStringLiteral("//")))
    return QStringLiteral("A name cannot contain '..', '@{' or '//'");
  for (const QChar c : name) {
    if (c.unicode() < 0x20 || c.unicode() == 0x7f || QStringLiteral(" ~^:?*[\\").contains(c))
      return QStringLiteral("A name cannot contain blanks or any of ~ ^ : ? * [ \\");
  }
  if (name.endsWith(QLatin1Char('/')) || name.endsWith(QLatin1Char('.')) || name.startsWith(QLatin1Char('/')))
    return QStringLiteral("A name cannot start with '/' or end with '/' or '.'");
  for (const QString& part : name.split(QLatin1Char('/'))) {
    if (part.startsWith(QLatin1Char('.')) || part.endsWith(QStringLiteral(".lock")))
      return QStringLiteral("No part of a name can start with '.' or end with '.lock'");
  }
  return std::nullopt;
}

std::optional<QString> ReferenceNameCheck::clash(const QString& name, const QStringList& existing, const QString& kind) {
  const QString lower = name.toLower();
  for (const QString& other : existing) {
    if (other.toLower() == lower) return QStringLiteral("%1 %2 already exists").arg(kind, name);
  }
  return std::nullopt;
}
