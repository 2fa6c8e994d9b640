#include "Models/GitOutput.h"

#include <QRegularExpression>

namespace {

// From each occurrence of a marker to the end of its line.
void markToLineEnd(const QString& text, const QString& marker, GitOutput::Style style, std::vector<GitOutput::Span>& spans) {
  qsizetype from = 0;
  while (true) {
    const qsizetype at = text.indexOf(marker, from);
    if (at < 0) return;
    qsizetype end = text.indexOf(QLatin1Char('\n'), at);
    if (end < 0) end = text.size();
    spans.push_back({at, end - at, style, {}});
    from = at + marker.size();
  }
}

}  // namespace

GitOutput GitOutput::style(const QString& output) {
  GitOutput result;
  result.text = output;
  result.text.replace(QStringLiteral("->"), QStringLiteral("→"));
  const QString& text = result.text;

  for (const char* marker : {"Counting objects:", "remote: Resolving deltas:", "Writing objects:", "Compressing objects:", " = [up to date]"}) {
    markToLineEnd(text, QString::fromLatin1(marker), Style::dimmed, result.spans);
  }
  for (const char* marker : {"git:", "error:", "fatal:", "ssh:", "Automatic merge failed;", " ! [rejected]", " * [new branch]",
                             "Everything up-to-date", "CONFLICT (content):"}) {
    markToLineEnd(text, QString::fromLatin1(marker), Style::error, result.spans);
  }
  markToLineEnd(text, QStringLiteral("hint:"), Style::hint, result.spans);

  static const QRegularExpression link(
      QStringLiteral("(?:(?:https?|ftp|file):\\/\\/|www\\.|ftp\\.)(?:\\([-A-Z0-9+&@#\\/%=~_|$?!:,.]*\\)|[-A-Z0-9+&@#\\/%=~_|$?!:,.])*"
                     "(?:\\([-A-Z0-9+&@#\\/%=~_|$?!:,.]*\\)|[A-Z0-9+&@#\\/%=~_|$])"),
      QRegularExpression::CaseInsensitiveOption);
  auto it = link.globalMatch(text);
  while (it.hasNext()) {
    const auto match = it.next();
    result.spans.push_back({match.capturedStart(), match.capturedLength(), Style::link, match.captured()});
  }
  return result;
}
