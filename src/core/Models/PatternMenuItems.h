#pragma once
// The "Ignore" and LFS "Track" sub-lists of a file's menu: ready-made patterns for the
// file, its extension and each folder above it, then the free-form entries.
#include <QString>
#include <vector>

struct PatternMenuItem {
  enum class Kind { pattern, customPattern, unlock };
  QString title;
  QString pattern;  // empty unless kind is `pattern`
  Kind kind = Kind::pattern;

  bool operator==(const PatternMenuItem&) const = default;
};

// Patterns for ".gitignore", anchored at the repository's root.
std::vector<PatternMenuItem> ignoreMenuItems(const QString& path);
// Patterns for "git lfs track"; ends with "Unlock".
std::vector<PatternMenuItem> lfsTrackMenuItems(const QString& path);

// A literal path as a .gitignore pattern: glob characters, a leading "#" or "!" and
// trailing blanks are escaped so that the pattern catches exactly that name.
QString escapeGitIgnorePattern(const QString& literal);
