#pragma once
// The pure tests that decide what a change is, from its path, its diff text or its bytes.
#include <QByteArray>
#include <QString>
#include <optional>
#include <utility>

#include "Models/FileContent/LfsPointer.h"

namespace FileChangeClassifier {

// Longer diffs are never looked at for LFS pointers or the binary line.
inline constexpr qsizetype smallDiffLimit = 3072;

// By suffix alone, case-insensitive: ".bmp", ".gif", ".png", ".jpg", ".jpeg", ".ico".
bool isImageFile(const QString& path);
// "Binary files a/x and b/x differ" on a line of its own in a short diff.
bool isBinaryDiff(const QString& diff);
// The old and the current pointer of an LFS file whose pointer changed; nothing when
// the diff doesn't show exactly one removed and one added pointer.
std::optional<std::pair<LfsPointer, LfsPointer>> findLfsChange(const QString& diff);

struct SubmoduleShas {
  QString oldSha;
  QString newSha;
  bool dirty = false;
  bool operator==(const SubmoduleShas&) const = default;
};
// "-Subproject commit <sha>" then "+Subproject commit <sha>[-dirty]", exactly once each.
// The revision form doesn't look for "-dirty".
std::optional<SubmoduleShas> parseSubmoduleDiff(const QString& diff, bool detectDirty);

// Few NUL bytes in the first 2000 and valid UTF-8 throughout.
bool readsAsText(const QByteArray& bytes);
// Strict UTF-8: nothing when the bytes aren't valid.
std::optional<QString> decodeUtf8(const QByteArray& bytes);

}  // namespace FileChangeClassifier
