#pragma once
// Folds the token list of PatchTokenizer into files, chunks and sub-chunks.
//
// Every routine walks the shared token list with a cursor that it leaves on the last
// token it consumed, so the caller's loop increment moves on; a routine that meets a
// token it doesn't own steps back one and returns. A file starts at "diff --git" and
// ends at the next one, or at a context or pragma line outside any hunk. A sub-chunk
// ends when a change follows its trailing context, so context between two changes is
// the post-context of the first.
#include <QString>
#include <optional>
#include <vector>

#include "Models/PatchToken.h"
#include "Models/XPatch.h"

class PatchParser {
 public:
  // Null only if the text doesn't tokenize; a text without files gives an empty patch.
  XPatchPtr parse(const QString& text, XFilePatch::Location location) const;

  // Absent (and logged) when the file has no index line or no mode at all.
  static std::optional<XFilePatch> parseFilePatch(const std::vector<Token>& tokens, XFilePatch::Location location,
                                                  qsizetype& cursor);
  static XChunkPtr parseChunk(const std::vector<Token>& tokens, qsizetype& cursor);
  static XSubChunkPtr parseSubChunk(const std::vector<Token>& tokens, qsizetype& cursor);

  // The path of a "--- a/x" or "+++ b/x" line as the tokenizer keeps it ("-- a/x\n").
  static std::optional<QString> pathOfHeaderLine(const QString& line);
  // Some line is longer than 2047 user-perceived characters, its newline included.
  static bool isMinified(const std::vector<XChunkPtr>& chunks);
};
