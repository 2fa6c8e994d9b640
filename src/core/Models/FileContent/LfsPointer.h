#pragma once
// The three-line text that Git LFS keeps in the repository in place of a large file.
#include <QString>
#include <optional>

struct LfsPointer {
  QString sha;    // sha256 of the real content, 64 lower-case hex digits
  qint64 size = 0;  // bytes of the real content

  static const QString versionLine;  // "version https://git-lfs.github.com/spec/v1"

  // The pointer file as git-lfs writes it.
  QString description() const;

  // "version ...\noid sha256:<sha>\nsize <n>\n": exactly three non-empty lines, else nothing.
  static std::optional<LfsPointer> parse(const QString& output);
  // Cheap test before parsing: a pointer is 121 to 1023 UTF-16 units long and names
  // the format and an oid.
  static bool isPointerText(const QString& text);

  bool operator==(const LfsPointer&) const = default;
};
