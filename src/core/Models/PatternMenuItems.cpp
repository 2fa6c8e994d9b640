#include "Models/PatternMenuItems.h"

#include <QStringList>

namespace {
struct PathParts {
  QString fileName;
  QString extension;      // without the dot; empty when there is none
  QStringList folders;    // "a/b", "a" for "a/b/c.txt": the nearest first
};

PathParts partsOf(const QString& path) {
  PathParts parts;
  QString clean = path;
  while (clean.endsWith(QLatin1Char('/'))) clean.chop(1);
  const qsizetype slash = clean.lastIndexOf(QLatin1Char('/'));
  parts.fileName = clean.mid(slash + 1);
  // ".bashrc" has no extension, "archive.tar.gz" has "gz".
  const qsizetype dot = parts.fileName.lastIndexOf(QLatin1Char('.'));
  if (dot > 0 && dot < parts.fileName.size() - 1) parts.extension = parts.fileName.mid(dot + 1);
  QString folder = slash < 0 ? QString() : clean.left(slash);
  while (!folder.isEmpty()) {
    parts.folders << folder;
    const qsizetype up = folder.lastIndexOf(QLatin1Char('/'));
    folder = up < 0 ? QString() : folder.left(up);
  }
  return parts;
}

QString escapeGlob(const QString& literal) {
  QString escaped;
  for (const QChar c : literal) {
    if (c == QLatin1Char('\\') || c == QLatin1Char('*') || c == QLatin1Char('?') || c == QLatin1Char('[')) escaped += QLatin1Char('\\');
    escaped += c;
  }
  return escaped;
}
}  // namespace

QString escapeGitIgnorePattern(const QString& literal) {
  QString escaped = escapeGlob(literal);
  if (escaped.startsWith(QLatin1Char('#')) || escaped.startsWith(QLatin1Char('!'))) escaped.prepend(QLatin1Char('\\'));
  qsizetype trailing = 0;
  while (trailing < escaped.size() && escaped.at(escaped.size() - 1 - trailing) == QLatin1Char(' ')) ++trailing;
  if (trailing > 0) {
    escaped.chop(trailing);
    for (qsizetype i = 0; i < trailing; ++i) escaped += QStringLiteral("\\ ");
  }
  return escaped;
}

std::vector<PatternMenuItem> ignoreMenuItems(const QString& path) {
  const PathParts parts = partsOf(path);
  std::vector<PatternMenuItem> items;
  QString clean = path;
  while (clean.endsWith(QLatin1Char('/'))) clean.chop(1);
  items.push_back({QStringLiteral("Ignore ") + parts.fileName, QLatin1Char('/') + escapeGitIgnorePattern(clean)});
  if (!parts.extension.isEmpty()) {
    items.push_back({QStringLiteral("Ignore All .") + parts.extension, QStringLiteral("*.") + escapeGitIgnorePattern(parts.extension)});
  }
  for (const QString& folder : parts.folders) {
    items.push_back({QStringLiteral("Ignore All Files in '%1'").arg(folder), QLatin1Char('/') + escapeGitIgnorePattern(folder) + QLatin1Char('/')});
  }
  items.push_back({QStringLiteral("Custom Pattern…"), {}, PatternMenuItem::Kind::customPattern});
  return items;
}

std::vector<PatternMenuItem> lfsTrackMenuItems(const QString& path) {
  const PathParts parts = partsOf(path);
  std::vector<PatternMenuItem> items;
  QString clean = path;
  while (clean.endsWith(QLatin1Char('/'))) clean.chop(1);
  items.push_back({QStringLiteral("Track ") + parts.fileName, clean});
  if (!parts.extension.isEmpty()) {
    items.push_back({QStringLiteral("Track All .") + parts.extension, QStringLiteral("*.") + parts.extension});
  }
  for (const QString& folder : parts.folders) {
    items.push_back({QStringLiteral("Track All Files in '%1'").arg(folder), folder + QStringLiteral("/**")});
  }
  items.push_back({QStringLiteral("Custom Pattern…"), {}, PatternMenuItem::Kind::customPattern});
  items.push_back({QStringLiteral("Unlock"), {}, PatternMenuItem::Kind::unlock});
  return items;
}
