#pragma once
// One file as it is at a commit: its text, its picture, its LFS pointer, the size of a
// binary, or the commit a submodule stands at. A text too large to render waits for
// "Load Diff".
#include <QWidget>

#include "Models/FileContent/Content.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QStackedWidget;

class FileContentView : public QWidget {
  Q_OBJECT
 public:
  enum class Page { message, text, fallback, image, lfs, binary };

  explicit FileContentView(QWidget* parent = nullptr);

  void showContent(const ContentPtr& content, bool loadLargeDiff = false);
  void showSubmodule(const QString& path, const QString& sha);
  void showMessage(const QString& message);

  Page page() const;
  QPlainTextEdit* textView() const { return text_; }
  QString shownText() const;
  QLabel* notLfsLabel() const { return notLfs_; }
  QLabel* binaryTip() const { return binaryTip_; }
  const ContentPtr& content() const { return content_; }

 Q_SIGNALS:
  void loadLargeRequested();

 private:
  ContentPtr content_;
  QStackedWidget* stack_;
  QLabel* message_;
  QPlainTextEdit* text_;
  QWidget* fallbackPage_;
  QLabel* image_;
  QLabel* lfs_;
  QWidget* binaryPage_;
  QLabel* binarySize_;
  QLabel* notLfs_;
  QLabel* binaryTip_;
};
