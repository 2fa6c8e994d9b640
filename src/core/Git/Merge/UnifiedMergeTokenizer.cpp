#include "Git/Merge/UnifiedMergeTokenizer.h"

#include <QtGlobal>

#include "Logging/AdvancedLogger.h"

namespace {

bool isMark(QChar c) { return c == u' ' || c == u'+' || c == u'-'; }

ContextType contextType(QChar c) {
  if (c == u'-') return ContextType::remove;
  if (c == u'+') return ContextType::add;
  if (c == u' ') return ContextType::none;
  qFatal("Unknown changetype character: '%s'", qPrintable(QString(c)));
}

QString typeName(MergeTokenType type) {
  switch (type) {
    case MergeTokenType::context: return QStringLiteral("context");
    case MergeTokenType::conflictStart: return QStringLiteral("conflictStart");
    case MergeTokenType::baseStart: return QStringLiteral("baseStart");
    case MergeTokenType::conflictEnd: return QStringLiteral("conflictEnd");
    case MergeTokenType::other: return QStringLiteral("other");
    case MergeTokenType::baseEnd: return QStringLiteral("baseEnd");
    case MergeTokenType::conflictSeparator: return QStringLiteral("conflictSeparator");
  }
  return {};
}

}  // namespace

QString MergeToken::describe() const { return typeName(type) + QStringLiteral("(") + string.trimmed() + QStringLiteral(")"); }

bool UnifiedMergeTokenizer::isContextLine(QStringView line) {
  return line.size() >= 2 && isMark(line[0]) && isMark(line[1]);
}

std::optional<QString> UnifiedMergeTokenizer::parseChunkDelimiter(const QString& text, qsizetype start, qsizetype length) {
  if (length < 10) {
    LOG_ERROR(QStringLiteral("Cannot parse chunk delimiter in '") + text.mid(start, length) + QStringLiteral("'"));
    return std::nullopt;
  }
  return text.mid(start + 10, length - 10);
}

std::optional<QString> UnifiedMergeTokenizer::parseBaseSha(const QString& text, qsizetype start, qsizetype length) {
  if (length < 10) {
    LOG_ERROR(QStringLiteral("Cannot parse base sha in '") + text.mid(start, length) + QStringLiteral("'"));
    return std::nullopt;
  }
  return text.mid(start + 10, length - 10).trimmed();
}

std::optional<MergeToken> UnifiedMergeTokenizer::parseContextLine(QStringView line) {
  if (line.size() < 3) {
    LOG_ERROR(QStringLiteral("Cannot parse context line in '") + line.toString() + QStringLiteral("'"));
    return std::nullopt;
  }
  MergeToken token;
  token.type = MergeTokenType::context;
  token.remote = contextType(line[0]);
  token.local = contextType(line[1]);
  token.string = line.mid(2).toString();
  return token;
}

std::optional<std::vector<MergeToken>> UnifiedMergeTokenizer::tokenize(const QString& text) const {
  std::vector<MergeToken> tokens;
  if (text.isEmpty()) return tokens;
  tokens.reserve(1024);
  bool headerPassed = false;
  qsizetype start = 0;
  while (start < text.size()) {
    const qsizetype newline = text.indexOf(u'\n', start);
    const qsizetype end = newline < 0 ? text.size() : newline + 1;
    const qsizetype length = end - start;
    const QStringView line = QStringView(text).mid(start, length);
    MergeToken token;
    if (line.startsWith(u"++<<<<<<<")) {
      auto name = parseChunkDelimiter(text, start, length);
      if (!name) return std::nullopt;
      token.type = MergeTokenType::conflictStart;
      token.string = *name;
    } else if (line.startsWith(u"++=======")) {
      token.type = MergeTokenType::conflictSeparator;
    } else if (line.startsWith(u"++>>>>>>>")) {
      auto name = parseChunkDelimiter(text, start, length);
      if (!name) return std::nullopt;
      token.type = MergeTokenType::conflictEnd;
      token.string = *name;
    } else if (line.startsWith(u"++|||||||")) {
      auto sha = parseBaseSha(text, start, length);
      if (!sha) return std::nullopt;
      token.type = MergeTokenType::baseStart;
      token.string = *sha;
    } else if (headerPassed && isContextLine(line)) {
      // A base's end would read "++=======" as well, which the separator took already;
      // the parser ends the base at the separator.
      auto context = parseContextLine(line);
      if (!context) return std::nullopt;
      token = std::move(*context);
    } else {
      if (line.startsWith(u"@@@")) headerPassed = true;
      // "\ No newline at end of file": the line before it ends the file without one.
      if (headerPassed && line.startsWith(u"\\ ") && !tokens.empty() && tokens.back().type == MergeTokenType::context &&
          tokens.back().string.endsWith(u'\n')) {
        tokens.back().string.chop(1);
      }
      token.type = MergeTokenType::other;
      token.string = line.toString();
    }
    token.start = start;
    token.length = length;
    tokens.push_back(std::move(token));
    start = end;
  }
  return tokens;
}
