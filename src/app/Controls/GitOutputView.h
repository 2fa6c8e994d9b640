#pragma once
#include <QTextBrowser>
#include <functional>

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
  // Keeps a view in the code font when the user picks another one; refit runs after,
  // for views whose margins depend on the font.
  static void followCodeFont(QWidget* view, std::function<void()> refit = {});

 private:
  QString raw_;
};
