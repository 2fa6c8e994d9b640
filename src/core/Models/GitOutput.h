#pragma once
// How git's text is shown in the error sheet and the activity manager: progress lines
// dimmed, errors and notable outcomes marked, hints set apart, addresses clickable.
// Pure: it gives styled ranges over the text; a view turns them into formats.
#include <QString>
#include <vector>

struct GitOutput {
  enum class Style { dimmed, error, hint, link };
  struct Span {
    qsizetype start = 0;   // UTF-16 offsets into `text`
    qsizetype length = 0;
    Style style = Style::dimmed;
    QString url;           // link only
    bool operator==(const Span&) const = default;
  };

  QString text;  // the input with every "->" replaced by "→"
  std::vector<Span> spans;

  static GitOutput style(const QString& output);
};
