#include "Controls/SpellChecking/CommitSpellHighlighter.h"

#include "Controls/SpellChecking/SpellChecker.h"
#include "Extensions/CheckableWords.h"

CommitSpellHighlighter::CommitSpellHighlighter(QTextDocument* document) : QSyntaxHighlighter(document) {}

void CommitSpellHighlighter::setEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  rehighlight();
}

void CommitSpellHighlighter::highlightBlock(const QString& text) {
  if (!enabled_ || text.trimmed().isEmpty() || text.startsWith(QLatin1Char('#'))) return;
  SpellChecker& checker = SpellChecker::shared();
  QTextCharFormat misspelt;
  misspelt.setUnderlineStyle(QTextCharFormat::SpellCheckUnderline);
  misspelt.setUnderlineColor(QColor(0xd0, 0x30, 0x30));
  for (const WordSpan& word : checkableWords(text)) {
    if (!checker.isCorrect(text.mid(word.start, word.length))) {
      setFormat(static_cast<int>(word.start), static_cast<int>(word.length), misspelt);
    }
  }
}
