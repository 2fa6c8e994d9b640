#pragma once
// Underlines the misspelt words of a commit message as it is typed. Comment lines
// ("# ...", as in git's templates) and code-like tokens are left alone.
#include <QSyntaxHighlighter>

class CommitSpellHighlighter : public QSyntaxHighlighter {
  Q_OBJECT
 public:
  explicit CommitSpellHighlighter(QTextDocument* document);

  void setEnabled(bool enabled);
  bool isEnabled() const { return enabled_; }

 protected:
  void highlightBlock(const QString& text) override;

 private:
  bool enabled_ = false;
};
