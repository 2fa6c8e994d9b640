#pragma once
// One file as it is at a commit: its text, its picture, its LFS pointer, the size of a
// binary, or the commit a submodule stands at. A text too large to render waits for
// "Load Diff".
#include <QWidget>

#include "Models/FileContent/Content.h"

class BinaryContentView;
class FallbackView;
class QLabel;
class QPlainTextEdit;
class QStackedWidget;
class TextContentView;

class FileContentView : public QWidget {
  Q_OBJECT
 public:
  enum class Page { message, text, fallback, image, lfs, binary };

  explicit FileContentView(QWidget* parent = nullptr);

  void showContent(const ContentPtr& content, bool loadLargeDiff = false);
  void showSubmodule(const QString& path, const QString& sha);
  void showMessage(const QString& message);

  Page page() const;
  QPlainTextEdit* textView() const;
  QString shownText() const;
  QLabel* notLfsLabel() const;
  QLabel* binaryTip() const;
  const ContentPtr& content() const { return content_; }

 Q_SIGNALS:
  void loadLargeRequested();

 private:
  ContentPtr content_;
  QStackedWidget* stack_;
  QLabel* message_;
  TextContentView* text_;
  FallbackView* fallback_;
  QLabel* image_;
  QLabel* lfs_;
  BinaryContentView* binary_;
};
