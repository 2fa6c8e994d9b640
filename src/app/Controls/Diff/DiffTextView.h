#pragma once
#include <QPlainTextEdit>

#include "Controls/Diff/UnifiedDiffRows.h"

// A read-only unified diff: old and new line numbers in a gutter, hunk headers, and
// added/removed backgrounds that keep the text readable in light and dark themes.
class DiffTextView : public QPlainTextEdit {
  Q_OBJECT
 public:
  explicit DiffTextView(QWidget* parent = nullptr);
  void setRows(std::vector<UnifiedDiffRow> rows);
  const std::vector<UnifiedDiffRow>& rows() const { return rows_; }
  int gutterWidth() const;
  void paintGutter(QPaintEvent* event);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void colorRows();

  std::vector<UnifiedDiffRow> rows_;
  QWidget* gutter_;
  int digits_ = 1;
};
