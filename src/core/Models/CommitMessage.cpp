#include "Models/CommitMessage.h"

namespace {
QString withoutTrailingWhitespace(const QString& text) {
  qsizetype end = text.size();
  while (end > 0 && text.at(end - 1).isSpace()) --end;
  return text.left(end);
}
}  // namespace

CommitMessage CommitMessage::fromText(const QString& text) {
  QString normalized = text;
  normalized.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  const qsizetype lineEnd = normalized.indexOf(QLatin1Char('\n'));
  if (lineEnd < 0) return {withoutTrailingWhitespace(normalized), {}};
  qsizetype bodyStart = lineEnd + 1;
  while (bodyStart < normalized.size() && normalized.at(bodyStart) == QLatin1Char('\n')) ++bodyStart;
  return {withoutTrailingWhitespace(normalized.left(lineEnd)), withoutTrailingWhitespace(normalized.mid(bodyStart))};
}

QString CommitMessage::text() const {
  if (description.isEmpty()) return subject;
  return subject + QStringLiteral("\n\n") + description;
}
