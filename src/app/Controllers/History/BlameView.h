#pragma once
// A file's text with, beside it, the commit that last changed each run of lines: short
// sha, author, relative date and subject at the run's first line. The runs are tinted
// by age, the newest strongest. A click on a run tells which commit it is.
#include <QPlainTextEdit>

#include "Models/BlameChunk.h"

class BlameView : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit BlameView(QWidget* parent = nullptr);

  void setBlame(const QString& text, BlameChunkList chunks);
  const BlameChunkList& chunks() const { return chunks_; }
  // The chunk that holds a line (1-based), or null.
  const BlameChunk* chunkAtLine(int line) const;
  // The text beside a chunk's first line.
  static QString chunkTitle(const BlameChunk& chunk, const QDateTime& now);
  // 0 for the oldest commit of the file, 1 for the newest.
  double age(const BlameChunk& chunk) const;

  int gutterWidth() const;

 Q_SIGNALS:
  void revisionClicked(const QString& sha);
  void revisionContextMenuRequested(const QString& sha, const QPoint& globalPosition);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  friend class BlameGutter;
  void paintGutter(QPaintEvent* event);
  void gutterPressed(const QPoint& position, bool context, const QPoint& globalPosition);

  QWidget* gutter_;
  BlameChunkList chunks_;
  std::vector<int> chunkOfLine_;  // index into chunks_ per line, -1 where none
  qint64 oldest_ = 0;
  qint64 newest_ = 0;
};
