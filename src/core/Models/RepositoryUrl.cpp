#include "Models/RepositoryUrl.h"

#include <QRegularExpression>

#include "Logging/AdvancedLogger.h"
#include "ServiceHosts.h"

using namespace ServiceHosts;

namespace {

const QLatin1StringView kGitSuffix{".git"};

std::optional<QString> withoutGitSuffix(const QString& name) {
  QString result = name;
  if (result.endsWith(kGitSuffix)) result.chop(kGitSuffix.size());
  if (result.isEmpty()) return std::nullopt;
  return result;
}

// One path piece for a URL we build; pieces were decoded on the way in, so a "/" or
// "?" inside a name cannot change the shape of the result.
QString encoded(const QString& piece) { return QString::fromLatin1(QUrl::toPercentEncoding(piece)); }

// Branch names keep their slashes; everything that would end the query value is escaped.
QString encodedBranch(const QString& branch) { return QString::fromLatin1(QUrl::toPercentEncoding(branch, "/")); }

QString schemeOf(const std::optional<QUrl>& url) { return url ? url->scheme().toLower() : QString(); }

}  // namespace

QString RepositoryUrl::rewriteScpForm(const QString& text) {
  if (text.contains(QLatin1String("://"))) return text;
  // [user@]host:path, where no "/" comes before the ":"; a host may be an IPv6 literal.
  static const QRegularExpression scp(QStringLiteral("^([^/@:\\s]+@)?(\\[[^\\]/]*\\]|[^/@:\\s\\[\\]]+):(.*)$"),
                                      QRegularExpression::DotMatchesEverythingOption);
  const auto match = scp.match(text);
  if (!match.hasMatch()) {
    // "git@host" alone still names an ssh server
    if (text.startsWith(QLatin1String("git@"))) return QStringLiteral("ssh://") + text;
    return text;
  }
  QString path = match.captured(3);
  if (!path.startsWith(QLatin1Char('/'))) path.prepend(QLatin1Char('/'));
  return QStringLiteral("ssh://") + match.captured(1) + match.captured(2) + path;
}

RepositoryUrl::RepositoryUrl(const QString& text) : rawUrlString(text) {
  const QString trimmed = text.trimmed();
  QUrl parsed;
  if (trimmed.startsWith(QLatin1Char('/'))) {
    parsed = QUrl::fromLocalFile(trimmed);  // a remote on this machine
  } else {
    parsed = QUrl(rewriteScpForm(trimmed), QUrl::TolerantMode);
  }
  // Only a file URL may come without a host.
  const bool hostMissing = parsed.host().isEmpty() && !parsed.isLocalFile();
  if (trimmed.isEmpty() || !parsed.isValid() || parsed.scheme().isEmpty() || hostMissing) {
    LOG_WARNING(QStringLiteral("Unknown repository url format: ") + text);
    return;
  }
  parsed = parsed.adjusted(QUrl::NormalizePathSegments);

  url = parsed;
  urlString = parsed.toString(QUrl::FullyEncoded);
  if (!parsed.host().isEmpty()) host = parsed.host();
  remoteType = RemoteType::fromHost(parsed.host());
  networkProtocol = networkProtocolFromText(parsed.scheme().toLower());

  const QStringList pieces = pathPieces();
  const auto n = pieces.size();
  switch (remoteType.kind()) {
    case RemoteType::Kind::gitHub:
    case RemoteType::Kind::bitBucket:
    case RemoteType::Kind::gitLab:
    case RemoteType::Kind::custom:
      if (n >= 2) user = pieces.first();
      if (n >= 1) repositoryName = withoutGitSuffix(pieces.last());
      break;
    case RemoteType::Kind::azure:
    case RemoteType::Kind::visualStudio: {
      // ssh: v3/<organisation>/<project>/<repository>
      if (n == 4 && pieces[0] == QLatin1String("v3")) {
        user = pieces[1];
        projectName = pieces[2];
        repositoryName = withoutGitSuffix(pieces[3]);
        break;
      }
      // https: [<organisation>/]<project>/_git/<repository>; on visualstudio.com the
      // organisation is the host's first label, and an old collection may come first.
      const auto gitIndex = pieces.indexOf(QLatin1String("_git"));
      const bool isAzure = remoteType.kind() == RemoteType::Kind::azure;
      if (gitIndex < (isAzure ? 2 : 1) || gitIndex + 2 != n) break;
      user = isAzure ? pieces[0] : parsed.host().section(QLatin1Char('.'), 0, 0);
      projectName = pieces[gitIndex - 1];
      repositoryName = withoutGitSuffix(pieces[gitIndex + 1]);
      break;
    }
    case RemoteType::Kind::unknown:
      break;
  }
}

QStringList RepositoryUrl::pathPieces() const {
  if (!url) return {};
  // Split before decoding, so that an escaped "/" stays inside its piece.
  QStringList pieces = url->path(QUrl::FullyEncoded).split(QLatin1Char('/'), Qt::SkipEmptyParts);
  for (QString& piece : pieces) piece = QUrl::fromPercentEncoding(piece.toUtf8());
  return pieces;
}

std::optional<QString> RepositoryUrl::cloneUrl(NetworkProtocol protocol) const {
  return protocol == NetworkProtocol::https ? httpsCloneUrl() : sshCloneUrl();
}

std::optional<QString> RepositoryUrl::httpsCloneUrl() const {
  switch (remoteType.kind()) {
    case RemoteType::Kind::azure:
      if (!user || !projectName || !repositoryName) return std::nullopt;
      return QStringLiteral("https://") + AzureDevOpsHost + QLatin1Char('/') + encoded(*user) + QLatin1Char('/') +
             encoded(*projectName) + QStringLiteral("/_git/") + encoded(*repositoryName);
    case RemoteType::Kind::visualStudio:
      if (!user || !projectName || !repositoryName) return std::nullopt;
      return QStringLiteral("https://") + encoded(*user) + QLatin1Char('.') + VisualStudioHostSuffix + QLatin1Char('/') +
             encoded(*projectName) + QStringLiteral("/_git/") + encoded(*repositoryName);
    case RemoteType::Kind::unknown:
      return std::nullopt;
    default: {
      if (!url || !host) return std::nullopt;
      QUrl result = *url;
      const QString scheme = schemeOf(url);
      // An ssh port says nothing about where the web server listens.
      if (scheme != QLatin1String("https") && scheme != QLatin1String("http")) result.setPort(-1);
      result.setScheme(QStringLiteral("https"));
      result.setUserInfo(QString());
      return result.toString(QUrl::FullyEncoded);
    }
  }
}

std::optional<QString> RepositoryUrl::sshCloneUrl() const {
  switch (remoteType.kind()) {
    case RemoteType::Kind::azure:
      if (!user || !projectName || !repositoryName) return std::nullopt;
      return QStringLiteral("git@ssh.") + AzureDevOpsHost + QStringLiteral(":v3/") + encoded(*user) + QLatin1Char('/') +
             encoded(*projectName) + QLatin1Char('/') + encoded(*repositoryName);
    case RemoteType::Kind::visualStudio:
      if (!user || !projectName || !repositoryName) return std::nullopt;
      return encoded(*user) + QStringLiteral("@vs-ssh.") + VisualStudioHostSuffix + QStringLiteral(":v3/") +
             encoded(*user) + QLatin1Char('/') + encoded(*projectName) + QLatin1Char('/') + encoded(*repositoryName);
    case RemoteType::Kind::unknown:
      return std::nullopt;
    default: {
      if (!host || !user || !repositoryName) return std::nullopt;
      // Everything before the name is the owner; on GitLab that includes subgroups.
      QStringList owner = pathPieces();
      owner.removeLast();
      for (QString& piece : owner) piece = encoded(piece);
      const QString path = owner.join(QLatin1Char('/')) + QLatin1Char('/') + encoded(*repositoryName) + kGitSuffix;
      // The scp form cannot carry a port, so a server on another port keeps the URL form.
      if (schemeOf(url) == QLatin1String("ssh") && url->port() > 0 && url->port() != 22)
        return QStringLiteral("ssh://git@") + *host + QLatin1Char(':') + QString::number(url->port()) +
               QLatin1Char('/') + path;
      return QStringLiteral("git@") + *host + QLatin1Char(':') + path;
    }
  }
}

std::optional<QString> RepositoryUrl::webPageUrl() const {
  switch (remoteType.kind()) {
    case RemoteType::Kind::bitBucket:
    case RemoteType::Kind::gitHub: {
      if (!user || !repositoryName) return std::nullopt;
      const auto webHost = remoteType.kind() == RemoteType::Kind::gitHub ? GitHubWebHost : BitbucketWebHost;
      return QStringLiteral("https://") + webHost + QLatin1Char('/') + encoded(*user) + QLatin1Char('/') +
             encoded(*repositoryName);
    }
    case RemoteType::Kind::gitLab: {
      if (!repositoryName) return std::nullopt;
      QStringList pieces = pathPieces();
      for (QString& piece : pieces) piece = encoded(piece);
      QString path = pieces.join(QLatin1Char('/'));
      if (path.endsWith(kGitSuffix)) path.chop(kGitSuffix.size());
      return QStringLiteral("https://") + GitLabWebHost + QLatin1Char('/') + path;
    }
    case RemoteType::Kind::azure:
    case RemoteType::Kind::visualStudio:
      return httpsCloneUrl();
    case RemoteType::Kind::custom:
    case RemoteType::Kind::unknown:
      return std::nullopt;
  }
  return std::nullopt;
}

std::optional<QString> RepositoryUrl::pullRequestUrl(const QString& sourceBranch, const QString& targetBranch) const {
  const auto page = webPageUrl();
  if (!page) return std::nullopt;
  const QString source = encodedBranch(sourceBranch);
  switch (remoteType.kind()) {
    case RemoteType::Kind::bitBucket:
      return *page + QStringLiteral("/pull-requests/new?source=") + source;
    case RemoteType::Kind::gitHub:
      return *page + QStringLiteral("/compare/") + encodedBranch(targetBranch) + QStringLiteral("...") + source +
             QStringLiteral("?expand=1");
    case RemoteType::Kind::gitLab:
      return *page + QStringLiteral("/merge_requests/new?&merge_request%5Bsource_branch%5D=") + source;
    case RemoteType::Kind::azure:
    case RemoteType::Kind::visualStudio:
      return *page + QStringLiteral("/pullrequestcreate?sourceRef=") + source;
    default:
      return std::nullopt;
  }
}
