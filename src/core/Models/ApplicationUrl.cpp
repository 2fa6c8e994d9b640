#include "Models/ApplicationUrl.h"

#include <QUrl>

#include "Models/RepositoryUrl.h"

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

namespace {
// The URL without scheme, user, a trailing ".git" or "/"; for URLs of no known shape.
QString looseForm(const QString& text) {
  QString url = RepositoryUrl::rewriteScpForm(text.trimmed()).toLower();
  const qsizetype scheme = url.indexOf(QStringLiteral("://"));
  if (scheme >= 0) url = url.mid(scheme + 3);
  const qsizetype slash = url.indexOf(QLatin1Char('/'));
  const qsizetype at = url.indexOf(QLatin1Char('@'));
  if (at >= 0 && (slash < 0 || at < slash)) url = url.mid(at + 1);
  while (url.endsWith(QLatin1Char('/'))) url.chop(1);
  if (url.endsWith(QStringLiteral(".git"))) url.chop(4);
  return url;
}
}  // namespace

bool ApplicationUrl::sameRepository(const QString& first, const QString& second) {
  const QString loose = looseForm(first);
  if (!loose.isEmpty() && loose == looseForm(second)) return true;
  // The services have several URL shapes for one repository (Azure DevOps most of all);
  // their parsed parts tell. A host we don't know may nest groups, so its parts do not.
  const RepositoryUrl a(first);
  const RepositoryUrl b(second);
  auto known = [](const RepositoryUrl& url) {
    const auto kind = url.remoteType.kind();
    return kind != RemoteType::Kind::custom && kind != RemoteType::Kind::unknown;
  };
  auto same = [](const std::optional<QString>& x, const std::optional<QString>& y) {
    return (!x && !y) || (x && y && x->compare(*y, Qt::CaseInsensitive) == 0);
  };
  return known(a) && known(b) && a.repositoryName && same(a.host, b.host) && same(a.user, b.user) &&
         same(a.projectName, b.projectName) && same(a.repositoryName, b.repositoryName);
}

bool ApplicationUrl::hasApplicationScheme(const QString& argument) {
  for (const char* scheme : schemes) {
    if (argument.startsWith(QString::fromLatin1(scheme) + QLatin1Char(':'), Qt::CaseInsensitive)) return true;
  }
  return false;
}
