#include "Models/PatchTokenizer.h"

#include "Extensions/DecimalInteger.h"
#include "Logging/AdvancedLogger.h"

namespace {

// Compiled once per thread: a QRegularExpression is not meant to be shared for matching.
const QRegularExpression& modeLineExpression() {
  thread_local const QRegularExpression expression(QStringLiteral("^(new file|deleted file|old|new) mode (\\d+)$"));
  return expression;
}

// The dots stay unescaped: any two characters separate the object names.
const QRegularExpression& indexLineExpression() {
  thread_local const QRegularExpression expression(QStringLiteral("^index ([0-9a-fA-F]+)..([0-9a-fA-F]+)( (\\d+))?$"));
  return expression;
}

const QRegularExpression& similarityLineExpression() {
  thread_local const QRegularExpression expression(QStringLiteral("^similarity index (\\d+)%$"));
  return expression;
}

QString lineText(const QString& text, qsizetype from, qsizetype end) {
  return QString(text.constData() + from, end - from);
}

}  // namespace

QRegularExpression PatchTokenizer::hunkHeaderExpression() {
  QRegularExpression expression(QStringLiteral("^@@ -(\\d+)(,(\\d+))? \\+(\\d+)(,(\\d+))? @@(.*)"));
  if (!expression.isValid()) qFatal("Fatal error: hunk header pattern doesn't compile");
  return expression;
}

std::optional<ChunkHeader> PatchTokenizer::parseChunkHeader(QStringView line, const QRegularExpression& hunkHeader) {
  const QRegularExpressionMatch match = hunkHeader.match(line);
  if (!match.hasMatch()) return std::nullopt;
  // A count that git left out ("@@ -1 +1 @@") reads as 0.
  const auto number = [&match](int group) -> std::optional<qint64> {
    const QStringView digits = match.capturedView(group);
    if (digits.isEmpty()) return 0;
    return DecimalInteger::parse(digits);
  };
  const auto fromStart = number(1), fromLength = number(3), toStart = number(4), toLength = number(6);
  if (!fromStart || !fromLength || !toStart || !toLength) return std::nullopt;
  return ChunkHeader{{*fromStart, *fromLength}, {*toStart, *toLength}, match.captured(7)};
}

std::optional<TokenType::PatchHeaderFileMode> PatchTokenizer::parseFileMode(QStringView line) {
  const QRegularExpressionMatch match = modeLineExpression().match(line);
  if (!match.hasMatch()) return std::nullopt;
  const auto mode = DecimalInteger::parse(match.capturedView(2));
  if (!mode) return std::nullopt;
  // A deleted file carries its mode as the old one, a new file as the new one.
  const QStringView kind = match.capturedView(1);
  const auto type = (kind == u"new file" || kind == u"new") ? TokenType::FileModeType::newMode : TokenType::FileModeType::oldMode;
  return TokenType::PatchHeaderFileMode{type, FileMode{*mode}};
}

std::optional<TokenType::PatchHeaderIndex> PatchTokenizer::parseIndexLine(QStringView line) {
  const QRegularExpressionMatch match = indexLineExpression().match(line);
  if (!match.hasMatch()) return std::nullopt;
  TokenType::PatchHeaderIndex index{match.captured(1), match.captured(2), std::nullopt};
  if (const QStringView digits = match.capturedView(4); !digits.isEmpty()) {
    if (const auto mode = DecimalInteger::parse(digits)) index.mode = FileMode{*mode};
  }
  return index;
}

std::optional<TokenType::PatchHeaderSimilarity> PatchTokenizer::parseSimilarityLine(QStringView line) {
  const QRegularExpressionMatch match = similarityLineExpression().match(line);
  if (!match.hasMatch()) return std::nullopt;
  const auto percentage = DecimalInteger::parse(match.capturedView(1));
  if (!percentage) return std::nullopt;
  return TokenType::PatchHeaderSimilarity{*percentage};
}

std::optional<std::vector<Token>> PatchTokenizer::tokenize(const QString& text, const QRegularExpression& hunkHeader) {
  std::vector<Token> tokens;
  tokens.reserve(1024);
  const qsizetype size = text.size();
  const QChar* data = text.constData();
  qsizetype start = 0;
  while (start < size) {
    const qsizetype newline = text.indexOf(u'\n', start);
    const qsizetype end = newline < 0 ? size : newline + 1;
    const QStringView line(data + start, end - start);
    const qsizetype length = end - start;
    switch (line.front().unicode()) {
      case u'+': tokens.push_back({TokenType::Insert{lineText(text, start + 1, end)}, start, length}); break;
      case u'-': tokens.push_back({TokenType::Delete{lineText(text, start + 1, end)}, start, length}); break;
      case u' ': tokens.push_back({TokenType::Context{lineText(text, start + 1, end)}, start, length}); break;
      case u'@': {
        const auto header = parseChunkHeader(line, hunkHeader);
        if (!header) return std::nullopt;
        tokens.push_back({TokenType::ChunkHeader{header->fromFileRange.location, header->fromFileRange.length,
                                                 header->toFileRange.location, header->toFileRange.length, header->contextString},
                          start, length});
        break;
      }
      case u'\\':
        // "\ No newline at end of file": the text starts behind the backslash and blank.
        if (length < 2) return std::nullopt;
        tokens.push_back({TokenType::Pragma{lineText(text, start + 2, end)}, start, length});
        break;
      default:
        if (line.startsWith(u"diff --git")) {
          tokens.push_back({TokenType::PatchHeader{}, start, length});
        } else if (line.startsWith(u"new file mode") || line.startsWith(u"deleted file mode") || line.startsWith(u"old mode") ||
                   line.startsWith(u"new mode")) {
          const auto mode = parseFileMode(line);
          if (!mode) {
            LOG_ERROR(QStringLiteral("Cannot parse filemode patch header in '%1'").arg(line.chopped(newline < 0 ? 0 : 1)));
            return std::nullopt;
          }
          tokens.push_back({*mode, start, length});
        } else if (line.startsWith(u"index")) {
          const auto index = parseIndexLine(line);
          if (!index) return std::nullopt;
          tokens.push_back({*index, start, length});
        } else if (line.startsWith(u"similarity")) {
          // git prints no other line starting so in a file header; anything else is
          // hostile input and rejected like a broken index line.
          const auto similarity = parseSimilarityLine(line);
          if (!similarity) return std::nullopt;
          tokens.push_back({*similarity, start, length});
        } else {
          tokens.push_back({TokenType::Other{}, start, length});
        }
        break;
    }
    start = end;
  }
  return tokens;
}
