#pragma once
// A one-line field that underlines its misspelt words, as the message editor does, and
// offers the dictionary's suggestions in its context menu. Used for the commit subject.
#include <QLineEdit>
#include <vector>

#include "Extensions/CheckableWords.h"

class SpellCheckedLineEdit : public QLineEdit {
  Q_OBJECT
 public:
  explicit SpellCheckedLineEdit(QWidget* parent = nullptr);

  void setSpellChecking(bool on);
  bool spellChecking() const { return enabled_; }
  // The words of the text the dictionary doesn't know; empty while checking is off.
  const std::vector<WordSpan>& misspeltWords() const { return misspelt_; }
  // Puts `replacement` in place of the word.
  void replaceWord(const WordSpan& word, const QString& replacement);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void check();
  // The x of the gap before UTF-16 offset `position` of the text, in widget coordinates.
  qreal xOf(qsizetype position) const;

  bool enabled_ = false;
  std::vector<WordSpan> misspelt_;
};
