#pragma once
// What a conflicted file shows in Local Changes: its combined diff, as git prints it for
// an unmerged path (a column per side), and the button that opens the merge editor.
#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QPushButton;

class ConflictDiffView : public QWidget {
  Q_OBJECT
 public:
  explicit ConflictDiffView(QWidget* parent = nullptr);

  void showDiff(const QString& path, const QString& combinedDiff);

  QPushButton* resolveButton() const { return resolve_; }
  QString diffText() const;

 Q_SIGNALS:
  void resolveRequested();

 private:
  // Tints the lines for the palette in use; again when the appearance changes.
  void colourLines();

  QLabel* title_;
  QPushButton* resolve_;
  QPlainTextEdit* text_;
};
