#pragma once
// What the tokenizer makes of one line of a diff. The line types carry the text behind
// the first column (behind "\ " for a pragma), with the line's own newline.
#include <QString>
#include <optional>
#include <variant>

#include "Models/FileMode.h"

namespace TokenType {

enum class FileModeType { oldMode, newMode };

struct PatchHeaderIndex {
  QString oldTreeIsh;
  QString newTreeIsh;
  std::optional<FileMode> mode;
  bool operator==(const PatchHeaderIndex&) const = default;
};
struct PatchHeaderSimilarity {
  std::optional<qint64> percentage;
  bool operator==(const PatchHeaderSimilarity&) const = default;
};
struct PatchHeaderFileMode {
  FileModeType type = FileModeType::oldMode;
  FileMode mode;
  bool operator==(const PatchHeaderFileMode&) const = default;
};
struct ChunkHeader {
  qint64 fromStart = 0;
  qint64 fromLength = 0;
  qint64 toStart = 0;
  qint64 toLength = 0;
  QString contextString;
  bool operator==(const ChunkHeader&) const = default;
};
struct Context { QString line; bool operator==(const Context&) const = default; };
struct Insert { QString line; bool operator==(const Insert&) const = default; };
struct Delete { QString line; bool operator==(const Delete&) const = default; };
struct Pragma { QString line; bool operator==(const Pragma&) const = default; };
struct PatchHeader { bool operator==(const PatchHeader&) const = default; };
struct Other { bool operator==(const Other&) const = default; };

using Value = std::variant<PatchHeaderIndex, PatchHeaderSimilarity, PatchHeaderFileMode, ChunkHeader, Context, Insert,
                           Delete, Pragma, PatchHeader, Other>;

}  // namespace TokenType

struct Token {
  TokenType::Value type;
  // The line in the source text, from its first character to just behind its newline.
  qsizetype location = 0;
  qsizetype length = 0;

  template <typename T>
  bool is() const { return std::holds_alternative<T>(type); }
  template <typename T>
  const T* as() const { return std::get_if<T>(&type); }

  bool operator==(const Token&) const = default;
};
