#include "Git/Merge/MergeConflictParser.h"

#include "Extensions/GraphemeCount.h"
#include "Logging/AdvancedLogger.h"

namespace {

using Line = MergeConflict::Line;
using SelectableLine = MergeConflict::SelectableLine;
using SelectableLinePtr = MergeConflict::SelectableLinePtr;

constexpr qsizetype minifiedLineLength = 2047;

bool isPlainContext(const MergeToken& token) {
  return token.type == MergeTokenType::context && token.remote == ContextType::none && token.local == ContextType::none;
}

SelectableLinePtr sideLine(ContextType type, const QString& text, MergeConflictPart side) {
  return std::make_shared<SelectableLine>(type, text, side);
}

bool isMinified(const std::vector<MergeConflict::ChunkPtr>& chunks) {
  const auto isLong = [](const QString& text) {
    return text.size() > minifiedLineLength && GraphemeCount::count(text, minifiedLineLength) > minifiedLineLength;
  };
  for (const auto& chunk : chunks) {
    if (chunk->kind() == MergeConflict::Chunk::Kind::context) {
      for (const auto& line : static_cast<const MergeConflict::ContextChunk&>(*chunk).lines) {
        if (isLong(line->originalString)) return true;
      }
    } else {
      const auto& change = static_cast<const MergeConflict::ChangeChunk&>(*chunk);
      for (const auto& line : change.remoteLines) {
        if (isLong(line->originalString)) return true;
      }
      for (const auto& line : change.localLines) {
        if (isLong(line->originalString)) return true;
      }
    }
  }
  return false;
}

}  // namespace

std::shared_ptr<MergeConflict::ContextChunk> MergeConflictParser::parseContextChunk(const std::vector<MergeToken>& tokens,
                                                                                   size_t& cursor) {
  std::vector<MergeConflict::LinePtr> lines;
  for (; cursor < tokens.size(); ++cursor) {
    if (!isPlainContext(tokens[cursor])) {
      --cursor;
      break;
    }
    lines.push_back(std::make_shared<Line>(ContextType::none, tokens[cursor].string));
  }
  if (lines.empty()) {
    LOG_ERROR(QStringLiteral("Unexpected call of parseContextChunk"));
    return nullptr;
  }
  auto chunk = std::make_shared<MergeConflict::ContextChunk>(std::move(lines));
  chunk->adoptLines();
  return chunk;
}

std::shared_ptr<MergeConflict::ChangeChunk> MergeConflictParser::parseChangeChunk(const std::vector<MergeToken>& tokens,
                                                                                 size_t& cursor) {
  std::vector<SelectableLinePtr> remoteLines;
  std::vector<SelectableLinePtr> localLines;
  for (; cursor < tokens.size(); ++cursor) {
    const MergeToken& token = tokens[cursor];
    if (token.type != MergeTokenType::context || (token.remote == ContextType::none && token.local == ContextType::none)) {
      --cursor;
      break;
    }
    // The second column compares with the remote side: a "+" there is a line only the
    // local side has, a "-" a remote line the merge dropped. The first column is the
    // same against the local side. Local lines go to the left pane, remote to the right.
    const ContextType r = token.remote;
    const ContextType l = token.local;
    if (l == ContextType::add) {
      localLines.push_back(sideLine(l, token.string, MergeConflictPart::local));
    } else if (l == ContextType::remove && (r == ContextType::none || r == ContextType::add)) {
      remoteLines.push_back(sideLine(l, token.string, MergeConflictPart::remote));
    } else if (r == ContextType::add && l == ContextType::none) {
      remoteLines.push_back(sideLine(r, token.string, MergeConflictPart::remote));
    } else {
      localLines.push_back(sideLine(r, token.string, MergeConflictPart::local));
    }
  }
  if (remoteLines.empty() && localLines.empty()) {
    LOG_ERROR(QStringLiteral("Unexpected call of parseChangeChunk"));
    return nullptr;
  }
  auto chunk = std::make_shared<MergeConflict::ChangeChunk>(std::move(remoteLines), std::move(localLines));
  chunk->adoptLines();
  // Lines git wrote into the working file start in the result, so that a file saved
  // untouched keeps what the merge took from one side.
  for (const auto* list : {&chunk->localLines, &chunk->remoteLines}) {
    for (const auto& line : *list) {
      if (line->changeType == ContextType::add) line->select();
    }
  }
  return chunk;
}

std::shared_ptr<MergeConflict::ConflictChunk> MergeConflictParser::parseChunk(const std::vector<MergeToken>& tokens,
                                                                             size_t& cursor) {
  QString localName;
  std::vector<SelectableLinePtr> remoteLines;
  std::vector<SelectableLinePtr> localLines;
  bool inBase = false;
  bool separatorSeen = false;
  bool started = false;
  for (; cursor < tokens.size(); ++cursor) {
    const MergeToken& token = tokens[cursor];
    switch (token.type) {
      case MergeTokenType::conflictStart:
        if (started) {
          LOG_ERROR(QStringLiteral("Conflict parsing error. Unexpected conflict start"));
          return nullptr;
        }
        started = true;
        localName = token.string;
        break;
      case MergeTokenType::baseStart:
        if (separatorSeen || inBase) {
          LOG_ERROR(QStringLiteral("Conflict parsing error. Unexpected base start"));
          return nullptr;
        }
        inBase = true;
        break;
      case MergeTokenType::conflictSeparator:
        if (separatorSeen) {
          LOG_ERROR(QStringLiteral("Conflict parsing error. Unexpected conflict separator"));
          return nullptr;
        }
        separatorSeen = true;
        inBase = false;
        break;
      case MergeTokenType::baseEnd: inBase = false; break;
      case MergeTokenType::conflictEnd: {
        if (!separatorSeen) {
          LOG_ERROR(QStringLiteral("Conflict parsing error. Unexpected conflict end"));
          return nullptr;
        }
        // A side without lines still needs a row to be chosen by.
        if (localLines.empty()) localLines.push_back(std::make_shared<MergeConflict::EmptyLine>(MergeConflictPart::local));
        if (remoteLines.empty()) remoteLines.push_back(std::make_shared<MergeConflict::EmptyLine>(MergeConflictPart::remote));
        auto chunk = std::make_shared<MergeConflict::ConflictChunk>(std::move(remoteLines), std::move(localLines),
                                                                    token.string, localName);
        chunk->adoptLines();
        return chunk;
      }
      case MergeTokenType::context:
        if (inBase) break;
        if (separatorSeen) remoteLines.push_back(sideLine(token.remote, token.string, MergeConflictPart::remote));
        else localLines.push_back(sideLine(token.local, token.string, MergeConflictPart::local));
        break;
      case MergeTokenType::other: break;
    }
  }
  LOG_ERROR(QStringLiteral("Conflict parsing error. Unexpected conflict end"));
  return nullptr;
}

std::shared_ptr<MergeConflict> MergeConflictParser::parse(const QString& filepath, const QString& text) const {
  const auto tokens = tokenizer.tokenize(text);
  if (!tokens) {
    LOG_ERROR(QStringLiteral("Cannot create tokens for '") + filepath + QStringLiteral("'"));
    return nullptr;
  }
  auto conflict = std::make_shared<MergeConflict>();
  conflict->filepath = filepath;
  for (size_t cursor = 0; cursor < tokens->size(); ++cursor) {
    const MergeToken& token = (*tokens)[cursor];
    MergeConflict::ChunkPtr chunk;
    switch (token.type) {
      case MergeTokenType::other: continue;
      case MergeTokenType::conflictStart: chunk = parseChunk(*tokens, cursor); break;
      case MergeTokenType::context:
        chunk = isPlainContext(token) ? MergeConflict::ChunkPtr(parseContextChunk(*tokens, cursor))
                                      : MergeConflict::ChunkPtr(parseChangeChunk(*tokens, cursor));
        break;
      default:
        LOG_ERROR(QStringLiteral("Unexpected token '") + token.describe() + QStringLiteral("'"));
        return nullptr;
    }
    if (!chunk) return nullptr;
    conflict->chunks.push_back(std::move(chunk));
  }
  conflict->isMinified = isMinified(conflict->chunks);
  return conflict;
}
