#include "Controllers/RevisionDetails/RevisionHeaderView.h"

#include <QLocale>
#include <QUrl>

#include "UI/Appearance.h"

namespace {
const QString kCommitScheme = QStringLiteral("jelv-commit");

QString person(const QString& name, const QString& email, const QDateTime& date) {
  return QStringLiteral("%1 &lt;%2&gt; &nbsp;<span class='quiet'>%3</span>")
      .arg(name.toHtmlEscaped(), email.toHtmlEscaped(), QLocale().toString(date.toLocalTime(), QLocale::LongFormat).toHtmlEscaped());
}
}  // namespace

RevisionHeaderView::RevisionHeaderView(QWidget* parent) : QTextBrowser(parent) {
  setOpenLinks(false);
  setFrameShape(QFrame::NoFrame);
  restyle();
  // The colours are fixed when the HTML is read, so a new palette reads it again.
  Appearance::follow(this, [this] {
    restyle();
    setHtml(html_);
  });
  connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& url) {
    if (url.scheme() == kCommitScheme) Q_EMIT parentRequested(url.path());
  });
}

QString RevisionHeaderView::html(const RevisionDetails& details) {
  QStringList parents;
  for (const QString& parent : details.parents) {
    parents << QStringLiteral("<a href='%1:%2'>%3</a>").arg(kCommitScheme, parent, parent.left(10));
  }
  QString body = details.message.trimmed().toHtmlEscaped();
  body.replace(QLatin1Char('\n'), QStringLiteral("<br>"));
  const bool sameCommitter = details.committer == details.author && details.committerEmail == details.authorEmail &&
                             details.committerDate == details.authorDate;
  QString rows = QStringLiteral("<tr><td class='quiet'>Commit</td><td><code>%1</code></td></tr>").arg(details.sha);
  if (!parents.isEmpty()) rows += QStringLiteral("<tr><td class='quiet'>Parents</td><td>%1</td></tr>").arg(parents.join(QStringLiteral(", ")));
  rows += QStringLiteral("<tr><td class='quiet'>Author</td><td>%1</td></tr>").arg(person(details.author, details.authorEmail, details.authorDate));
  if (!sameCommitter) {
    rows += QStringLiteral("<tr><td class='quiet'>Committer</td><td>%1</td></tr>")
                .arg(person(details.committer, details.committerEmail, details.committerDate));
  }
  return QStringLiteral("<table cellspacing='2'>%1</table><p style='margin-top:8px'>%2</p>").arg(rows, body);
}

void RevisionHeaderView::restyle() {
  const QPalette& p = palette();
  document()->setDefaultStyleSheet(QStringLiteral(".quiet { color: %1; } .error { color: %2; } a { color: %3; }")
                                       .arg(p.color(QPalette::PlaceholderText).name(), Appearance::errorText(p).name(),
                                            p.color(QPalette::Link).name()));
}

void RevisionHeaderView::showHtml(const QString& html) {
  html_ = html;
  setHtml(html_);
}

void RevisionHeaderView::setDetails(const RevisionDetails& details) { showHtml(html(details)); }

void RevisionHeaderView::showLoading(const QString& sha) {
  showHtml(QStringLiteral("<p class='quiet'>Loading %1…</p>").arg(sha.left(10)));
}

void RevisionHeaderView::showError(const QString& message) {
  showHtml(QStringLiteral("<p class='error'>%1</p>").arg(message.toHtmlEscaped()));
}

void RevisionHeaderView::showComparison(const Revision& older, const Revision& newer) {
  const auto line = [](const QString& label, const Revision& revision) {
    return QStringLiteral("<tr><td class='quiet' style='padding-right:8px'>%1</td><td><code>%2</code>&nbsp; %3</td></tr>")
        .arg(label, revision.sha().abbreviated(10).toHtmlEscaped(), revision.message().toHtmlEscaped());
  };
  showHtml(QStringLiteral("<p><b>%1</b></p><table>%2%3</table>")
              .arg(tr("Changes between two commits"), line(tr("From"), older), line(tr("To"), newer)));
}
