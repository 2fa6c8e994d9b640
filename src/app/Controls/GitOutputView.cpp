#include "Controls/GitOutputView.h"

#include <QFontDatabase>
#include <QTextCharFormat>
#include <QTextCursor>
#include <utility>

#include "Models/GitOutput.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "UI/Appearance.h"

QFont GitOutputView::codeFont() {
  auto& prefs = Preferences::shared();
  const QString name = prefs.string(QStringLiteral("diffFontName"));
  const int size = prefs.integer(QStringLiteral("diffFontSize"));
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  if (!name.isEmpty()) {
    font.setFamily(name);
  } else if (QFontDatabase::families().contains(QStringLiteral("Menlo"))) {
    font.setFamily(QStringLiteral("Menlo"));
  }
  if (size > 0) font.setPointSize(size);
  font.setStyleHint(QFont::Monospace);
  return font;
}

void GitOutputView::followCodeFont(QWidget* view, std::function<void()> refit) {
  QObject::connect(&PreferencesNotifier::shared(), &PreferencesNotifier::diffTextViewFontChanged, view, [view, refit = std::move(refit)] {
    view->setFont(codeFont());
    if (refit) refit();
  });
}

GitOutputView::GitOutputView(QWidget* parent) : QTextBrowser(parent) {
  setReadOnly(true);
  setOpenExternalLinks(true);
  setLineWrapMode(QTextEdit::NoWrap);
  setFont(codeFont());
  // The text's colours were chosen for the palette it was written with.
  Appearance::follow(this, [this] {
    const QString output = std::exchange(raw_, QString());
    if (!output.isEmpty()) setGitOutput(output);
  });
}

void GitOutputView::setGitOutput(const QString& output) {
  if (output == raw_ && !document()->isEmpty()) return;
  raw_ = output;
  const GitOutput styled = GitOutput::style(output);
  document()->clear();
  QTextCursor cursor(document());
  QTextCharFormat base;
  base.setFont(codeFont());
  base.setForeground(palette().color(QPalette::Text));
  cursor.insertText(styled.text, base);

  for (const auto& span : styled.spans) {
    QTextCharFormat format;
    switch (span.style) {
      case GitOutput::Style::dimmed: format.setForeground(palette().color(QPalette::PlaceholderText)); break;
      case GitOutput::Style::error: format.setForeground(Appearance::errorText(palette())); break;
      case GitOutput::Style::hint: format.setForeground(Appearance::warningText(palette())); break;
      case GitOutput::Style::link:
        format.setAnchor(true);
        format.setAnchorHref(span.url.contains(QStringLiteral("://")) ? span.url : QStringLiteral("http://") + span.url);
        format.setFontUnderline(true);
        format.setForeground(palette().color(QPalette::Link));
        break;
    }
    QTextCursor range(document());
    range.setPosition(static_cast<int>(span.start));
    range.setPosition(static_cast<int>(span.start + span.length), QTextCursor::KeepAnchor);
    range.mergeCharFormat(format);
  }
}
