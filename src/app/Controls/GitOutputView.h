#pragma once
#include <QTextBrowser>

// Read-only view of git's text, styled like the error sheet: dimmed progress, errors in
// red, hints apart, links clickable (opened in the desktop's browser).
class GitOutputView : public QTextBrowser {
  Q_OBJECT
 public:
  explicit GitOutputView(QWidget* parent = nullptr);
  void setGitOutput(const QString& output);
  const QString& rawOutput() const { return raw_; }

  // The fixed-width font of diffs and git output: "diffFontName"/"diffFontSize" when
  // set, else Menlo when installed, else the system's fixed font.
  static QFont codeFont();

 private:
  QString raw_;
};
