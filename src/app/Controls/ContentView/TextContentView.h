#pragma once
// A file's text, read-only, in the code font with its line numbers beside it.
#include <QPlainTextEdit>

class TextContentView : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit TextContentView(QWidget* parent = nullptr);

  int gutterWidth() const;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  friend class LineNumberGutter;
  void paintGutter(QPaintEvent* event);

  QWidget* gutter_;
};
