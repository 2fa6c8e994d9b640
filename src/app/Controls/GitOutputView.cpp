#include "Controls/GitOutputView.h"

#include <QFontDatabase>
#include <QTextCharFormat>
#include <QTextCursor>

#include "Models/GitOutput.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"

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

  const bool dark = palette().color(QPalette::Base).lightness() < 128;
  for (const auto& span : styled.spans) {
    QTextCharFormat format;
    switch (span.style) {
      case GitOutput::Style::dimmed: format.setForeground(palette().color(QPalette::PlaceholderText)); break;
      case GitOutput::Style::error: format.setForeground(dark ? QColor(0xff, 0x7b, 0x72) : QColor(0xc0, 0x1c, 0x28)); break;
      case GitOutput::Style::hint: format.setForeground(dark ? QColor(0xd2, 0xa8, 0x22) : QColor(0x9a, 0x67, 0x00)); break;
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
