#include "Models/RemoteType.h"

#include "ServiceHosts.h"

using namespace ServiceHosts;

RemoteType RemoteType::fromHost(const QString& rawHost) {
  const QString host = rawHost.toLower();
  if (host.isEmpty()) return unknown();
  if (host == GitHubWebHost) return gitHub();
  if (host == GitLabWebHost) return gitLab();
  if (host == BitbucketWebHost) return bitBucket();
  if (host == AzureDevOpsHost || host == QLatin1String("ssh.") + AzureDevOpsHost) return azure();
  // Only a whole label counts: "evilvisualstudio.com" is somebody else's server.
  if (host.endsWith(QLatin1Char('.') + VisualStudioHostSuffix)) return visualStudio();
  return custom(host);
}

QString RemoteType::name() const {
  switch (kind_) {
    case Kind::custom: return QStringLiteral("custom");
    case Kind::bitBucket: return QStringLiteral("bitBucket");
    case Kind::gitHub: return QStringLiteral("gitHub");
    case Kind::gitLab: return QStringLiteral("gitLab");
    case Kind::azure: return QStringLiteral("azure");
    case Kind::visualStudio: return QStringLiteral("visualStudio");
    case Kind::unknown: return QStringLiteral("unknown");
  }
  return QStringLiteral("unknown");
}

QJsonObject RemoteType::toJson() const {
  QJsonObject object{{QStringLiteral("type"), name()}};
  if (kind_ == Kind::custom) object.insert(QStringLiteral("host"), host_);
  return object;
}

std::optional<RemoteType> RemoteType::fromJson(const QJsonObject& object) {
  const QJsonValue typeValue = object.value(QLatin1String("type"));
  if (!typeValue.isString()) return std::nullopt;
  const QString type = typeValue.toString();

  if (type == QLatin1String("custom")) {
    const QJsonValue hostValue = object.value(QLatin1String("host"));
    if (!hostValue.isString() || hostValue.toString().isEmpty()) return std::nullopt;
    const QString host = hostValue.toString();
    if (host.compare(BitbucketLegacyWebHost, Qt::CaseInsensitive) == 0) return bitBucket();
    return fromHost(host);
  }
  for (const RemoteType& candidate : {bitBucket(), gitHub(), gitLab(), azure(), visualStudio(), unknown()}) {
    if (type == candidate.name()) return candidate;
  }
  // Older files named the service by its host.
  if (type.compare(BitbucketLegacyWebHost, Qt::CaseInsensitive) == 0) return bitBucket();
  if (type.contains(QLatin1Char('.'))) return fromHost(type);
  return std::nullopt;
}
