#include "Models/PatchParser.h"

#include <QRegularExpression>

#include "Extensions/GitQuotedPath.h"
#include "Extensions/GraphemeCount.h"
#include "Logging/AdvancedLogger.h"
#include "Models/PatchTokenizer.h"

namespace {

const QRegularExpression& pathLineExpression() {
  thread_local const QRegularExpression expression(QStringLiteral("^(--|\\+\\+) \\w+\\/(.+)$"),
                                                   QRegularExpression::UseUnicodePropertiesOption);
  return expression;
}

constexpr qsizetype minifiedLineLength = 2047;

XChangedLinePtr makeLine(const QString& text, bool noNewLineAtEndOfFile = false) {
  return std::make_shared<const XChangedLine>(XChangedLine{text, noNewLineAtEndOfFile});
}

}  // namespace

XPatchPtr PatchParser::parse(const QString& text, XFilePatch::Location location) const {
  const QRegularExpression hunkHeader = PatchTokenizer::hunkHeaderExpression();
  const auto tokens = PatchTokenizer::tokenize(text, hunkHeader);
  if (!tokens) return nullptr;
  auto patch = std::make_shared<XPatch>();
  const auto count = qsizetype(tokens->size());
  for (qsizetype cursor = 0; cursor < count; ++cursor) {
    if (!(*tokens)[cursor].is<TokenType::PatchHeader>()) continue;
    if (auto file = parseFilePatch(*tokens, location, cursor)) patch->files.push_back(std::move(*file));
  }
  return patch;
}

std::optional<QString> PatchParser::pathOfHeaderLine(const QString& line) {
  // A path with bytes above 0x7f (or a quote, a backslash) comes quoted, prefix inside:
  // ++ "b/\303\251t\303\251.txt"
  QStringView rest = QStringView(line).mid(3);
  while (rest.endsWith(u'\n') || rest.endsWith(u'\t')) rest.chop(1);
  if (line.size() > 3 && line.at(2) == u' ' && rest.size() >= 2 && rest.startsWith(u'"') && rest.endsWith(u'"')) {
    const QString unquoted = GitQuotedPath::unquote(rest);
    const qsizetype slash = unquoted.indexOf(u'/');
    if (slash <= 0) return std::nullopt;
    return unquoted.mid(slash + 1);
  }
  // The search covers as many UTF-16 units as the line has user-perceived characters,
  // so characters outside the 16-bit range shorten it from the end.
  const QStringView searched = QStringView(line).left(GraphemeCount::count(line));
  const QRegularExpressionMatch match = pathLineExpression().match(searched);
  if (!match.hasMatch()) return std::nullopt;
  // git puts a tab behind a path that holds a blank.
  QStringView path = match.capturedView(2);
  while (path.endsWith(u'\t')) path.chop(1);
  return path.toString();
}

std::optional<XFilePatch> PatchParser::parseFilePatch(const std::vector<Token>& tokens, XFilePatch::Location location,
                                                      qsizetype& cursor) {
  std::optional<QString> oldFilepath, newFilepath, oldTreeIsh, treeIsh;
  std::optional<FileMode> oldFileMode, newFileMode;
  std::optional<qint64> similarity;
  std::vector<XChunkPtr> chunks;
  bool headerSeen = false;
  const auto count = qsizetype(tokens.size());
  for (; cursor < count; ++cursor) {
    const TokenType::Value& type = tokens[cursor].type;
    if (const auto* index = std::get_if<TokenType::PatchHeaderIndex>(&type)) {
      oldTreeIsh = index->oldTreeIsh;
      treeIsh = index->newTreeIsh;
      if (index->mode) oldFileMode = newFileMode = index->mode;
    } else if (const auto* similar = std::get_if<TokenType::PatchHeaderSimilarity>(&type)) {
      similarity = similar->percentage;
    } else if (const auto* mode = std::get_if<TokenType::PatchHeaderFileMode>(&type)) {
      (mode->type == TokenType::FileModeType::oldMode ? oldFileMode : newFileMode) = mode->mode;
    } else if (const auto* removed = std::get_if<TokenType::Delete>(&type)) {
      oldFilepath = pathOfHeaderLine(removed->line);
    } else if (const auto* added = std::get_if<TokenType::Insert>(&type)) {
      newFilepath = pathOfHeaderLine(added->line);
    } else if (std::holds_alternative<TokenType::ChunkHeader>(type)) {
      chunks.push_back(parseChunk(tokens, cursor));
    } else if (std::holds_alternative<TokenType::PatchHeader>(type)) {
      if (headerSeen) break;  // the next file's
      headerSeen = true;
    } else if (std::holds_alternative<TokenType::Context>(type) || std::holds_alternative<TokenType::Pragma>(type)) {
      break;
    }
  }
  --cursor;

  if (!oldTreeIsh || !treeIsh) {
    LOG_ERROR(QStringLiteral("File patch parsing failed! File index not found."));
    return std::nullopt;
  }
  if (!oldFileMode && !newFileMode) {
    LOG_ERROR(QStringLiteral("File patch parsing failed! File mode not found."));
    return std::nullopt;
  }
  XFilePatch file;
  file.oldFilepath = std::move(oldFilepath);
  file.newFilepath = std::move(newFilepath);
  file.oldFileMode = oldFileMode;
  file.newFileMode = newFileMode;
  file.oldTreeIsh = std::move(*oldTreeIsh);
  file.treeIsh = std::move(*treeIsh);
  file.isMinified = isMinified(chunks);
  file.chunks = std::move(chunks);
  file.similarity = similarity;
  file.location = location;
  return file;
}

XChunkPtr PatchParser::parseChunk(const std::vector<Token>& tokens, qsizetype& cursor) {
  const auto* header = tokens[cursor].as<TokenType::ChunkHeader>();
  if (!header) qFatal("Fatal error: a chunk must start at a chunk header");
  auto chunk = std::make_shared<XChunk>();
  chunk->fromStart = header->fromStart;
  chunk->fromLength = header->fromLength;
  chunk->toStart = header->toStart;
  chunk->toLength = header->toLength;
  chunk->contextString = header->contextString;
  const auto count = qsizetype(tokens.size());
  for (++cursor; cursor < count; ++cursor) {
    const Token& token = tokens[cursor];
    if (!token.is<TokenType::Insert>() && !token.is<TokenType::Delete>() && !token.is<TokenType::Context>()) break;
    chunk->subChunks.push_back(parseSubChunk(tokens, cursor));
  }
  --cursor;
  return chunk;
}

XSubChunkPtr PatchParser::parseSubChunk(const std::vector<Token>& tokens, qsizetype& cursor) {
  auto sub = std::make_shared<XSubChunk>();
  const auto count = qsizetype(tokens.size());
  for (; cursor < count; ++cursor) {
    const TokenType::Value& type = tokens[cursor].type;
    if (const auto* context = std::get_if<TokenType::Context>(&type)) {
      const bool changed = !sub->addedLines.empty() || !sub->removedLines.empty();
      (changed ? sub->postContextLines : sub->preContextLines).push_back(makeLine(context->line));
    } else if (const auto* added = std::get_if<TokenType::Insert>(&type)) {
      if (!sub->postContextLines.empty()) break;
      sub->addedLines.push_back(makeLine(added->line));
    } else if (const auto* removed = std::get_if<TokenType::Delete>(&type)) {
      if (!sub->postContextLines.empty()) break;
      sub->removedLines.push_back(makeLine(removed->line));
    } else if (const auto* pragma = std::get_if<TokenType::Pragma>(&type)) {
      if (!pragma->line.startsWith(u"No newline at end of file")) continue;
      // The marker belongs to the line just before it; pre-context alone never takes it.
      XChangedLineList* owner = !sub->postContextLines.empty() ? &sub->postContextLines
                                : !sub->addedLines.empty()     ? &sub->addedLines
                                : !sub->removedLines.empty()   ? &sub->removedLines
                                                               : nullptr;
      if (!owner) continue;
      owner->back() = makeLine(owner->back()->line, true);
      sub->noNewLineAtEndOfFileLine = makeLine(pragma->line);
    } else {
      break;
    }
  }
  --cursor;
  return sub;
}

bool PatchParser::isMinified(const std::vector<XChunkPtr>& chunks) {
  const auto anyLong = [](const XChangedLineList& lines) {
    for (const XChangedLinePtr& line : lines) {
      // A line can't have more clusters than UTF-16 units; only long ones are counted.
      if (line->line.size() > minifiedLineLength && GraphemeCount::count(line->line, minifiedLineLength) > minifiedLineLength) {
        return true;
      }
    }
    return false;
  };
  for (const XChunkPtr& chunk : chunks) {
    for (const XSubChunkPtr& sub : chunk->subChunks) {
      if (anyLong(sub->preContextLines) || anyLong(sub->removedLines) || anyLong(sub->addedLines) || anyLong(sub->postContextLines)) {
        return true;
      }
    }
  }
  return false;
}
