#pragma once
// The description field of the commit box: plain text with a faint vertical guide at
// the column where a message line should wrap, and misspelt words underlined (with
// suggestions in the context menu) while spell checking is on.
#include <QPlainTextEdit>

class CommitSpellHighlighter;

class CommitMessageEdit : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit CommitMessageEdit(QWidget* parent = nullptr);

  // 0 hides the guide.
  void setPageGuideColumn(int column);
  int pageGuideColumn() const { return column_; }
  // The guide's x position in the viewport; negative when there is none.
  qreal pageGuideX() const;

  void setSpellChecking(bool on);
  bool spellChecking() const;

  // The stored column ("pageGuideLinePosition"); 72 while the user hasn't chosen one.
  static int storedPageGuideColumn();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  int column_ = 0;
  CommitSpellHighlighter* highlighter_;
};
