#include "Models/ApplicationUrl.h"

#include <QUrl>

ApplicationUrl ApplicationUrl::parse(const QString& url) {
  const QString open = QString::fromLatin1(openRepositoryPrefix);
  const QString clone = QString::fromLatin1(cloneRepositoryPrefix);
  // Browsers may hand the host over in lower case.
  if (url.startsWith(open, Qt::CaseInsensitive)) {
    const QString rest = url.mid(open.size());
    if (!rest.isEmpty()) return {Kind::openRepository, rest};
  } else if (url.startsWith(clone, Qt::CaseInsensitive)) {
    // The whole remainder is the clone URL, '&' included: it was percent-encoded as one value.
    const QString decoded = QUrl::fromPercentEncoding(url.mid(clone.size()).toUtf8());
    if (!decoded.trimmed().isEmpty()) return {Kind::cloneRepository, decoded};
  }
  return {Kind::unknown, url};
}

bool ApplicationUrl::hasApplicationScheme(const QString& argument) {
  for (const char* scheme : schemes) {
    if (argument.startsWith(QString::fromLatin1(scheme) + QLatin1Char(':'), Qt::CaseInsensitive)) return true;
  }
  return false;
}
