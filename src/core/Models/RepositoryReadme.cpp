#include "Models/RepositoryReadme.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

// Defined by the build when it links cmark: a header found without the library would
// not link.
#ifdef JELV_HAVE_CMARK
#include <cmark.h>
#endif

namespace {
const QStringList markdownSuffixes{QStringLiteral("md"), QStringLiteral("markdown"), QStringLiteral("mdown")};
}

std::optional<QString> RepositoryReadme::find(const QString& repositoryPath) {
  const QStringList wanted{QStringLiteral("readme.md"), QStringLiteral("readme.markdown"), QStringLiteral("readme"),
                           QStringLiteral("readme.txt"), QStringLiteral("readme.rst")};
  const QFileInfoList entries = QDir(repositoryPath).entryInfoList(QDir::Files | QDir::Readable | QDir::Hidden);
  for (const QString& name : wanted) {
    for (const QFileInfo& entry : entries) {
      if (entry.fileName().compare(name, Qt::CaseInsensitive) == 0) return entry.filePath();
    }
  }
  return std::nullopt;
}

QString RepositoryReadme::markdownToHtml(const QByteArray& markdown) {
#ifdef JELV_HAVE_CMARK
  // Raw HTML in a read-me is left out (CMARK_OPT_SAFE is the default since 0.29).
  char* html = cmark_markdown_to_html(markdown.constData(), size_t(markdown.size()), CMARK_OPT_DEFAULT);
  QString result = QString::fromUtf8(html);
  free(html);
  return result;
#else
  return QStringLiteral("<pre>%1</pre>").arg(QString::fromUtf8(markdown).toHtmlEscaped());
#endif
}

std::optional<QString> RepositoryReadme::html(const QString& readmePath) {
  QFile file(readmePath);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray bytes = file.read(maximumBytes);
  const QString suffix = QFileInfo(readmePath).suffix().toLower();
  if (markdownSuffixes.contains(suffix)) return markdownToHtml(bytes);
  return QStringLiteral("<pre>%1</pre>").arg(QString::fromUtf8(bytes).toHtmlEscaped());
}
