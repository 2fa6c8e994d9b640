#pragma once
// Writes one XFilePatch back as a unified diff for "git apply". The header is rebuilt
// from the parsed fields, not copied: a created file always says "new file mode 100000"
// and a deleted one "deleted file mode 100644" (git apply normalises both), hunk
// headers carry no context string, and a "--" trailer ends the text.
#include <QByteArray>
#include <optional>

#include "Models/PresentationContext.h"
#include "Models/XFilePatch.h"

class UnifiedDiffExporter {
 public:
  explicit UnifiedDiffExporter(const XFilePatch& patch) : patch_(patch) {}

  // UTF-8, or nothing if some text can't be encoded (a lone surrogate).
  std::optional<QByteArray> data() const;
  QString text() const;

  void extractHeader(PresentationContext& ctx) const;
  void writeChunks(PresentationContext& ctx) const;
  static void writeTrailer(PresentationContext& ctx);

 private:
  const XFilePatch& patch_;
};
