#pragma once
// Folds the tokens of an unmerged path's combined diff into a MergeConflict: stretches
// both sides agree on, stretches git merged from one side, and conflicts between markers.
#include <QString>
#include <memory>

#include "Git/Merge/MergeConflict.h"
#include "Git/Merge/UnifiedMergeTokenizer.h"

class MergeConflictParser {
 public:
  // Nothing when the text cannot be read; the reason is logged.
  std::shared_ptr<MergeConflict> parse(const QString& filepath, const QString& text) const;

  static std::shared_ptr<MergeConflict::ContextChunk> parseContextChunk(const std::vector<MergeToken>& tokens, size_t& cursor);
  static std::shared_ptr<MergeConflict::ChangeChunk> parseChangeChunk(const std::vector<MergeToken>& tokens, size_t& cursor);
  static std::shared_ptr<MergeConflict::ConflictChunk> parseChunk(const std::vector<MergeToken>& tokens, size_t& cursor);

  UnifiedMergeTokenizer tokenizer;
};
