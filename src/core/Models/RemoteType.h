#pragma once
// The hosting service that a remote or an account belongs to.
#include <QJsonObject>
#include <QString>
#include <optional>

class RemoteType {
 public:
  enum class Kind { custom, bitBucket, gitHub, gitLab, azure, visualStudio, unknown };

  RemoteType() = default;
  static RemoteType custom(const QString& host) { return RemoteType(Kind::custom, host); }
  static RemoteType bitBucket() { return RemoteType(Kind::bitBucket); }
  static RemoteType gitHub() { return RemoteType(Kind::gitHub); }
  static RemoteType gitLab() { return RemoteType(Kind::gitLab); }
  static RemoteType azure() { return RemoteType(Kind::azure); }
  static RemoteType visualStudio() { return RemoteType(Kind::visualStudio); }
  static RemoteType unknown() { return RemoteType(Kind::unknown); }

  // The service of a host name; an empty host is unknown, any host we don't know
  // is a custom (self-managed) server.
  static RemoteType fromHost(const QString& host);

  Kind kind() const { return kind_; }
  // Only a custom type has a host.
  const QString& host() const { return host_; }
  bool isCustom() const { return kind_ == Kind::custom; }

  // The case name: "gitHub", "custom", ...
  QString name() const;

  // Stored as {"type": <name>} and, for a custom host, "host".
  QJsonObject toJson() const;
  // Accepts what toJson writes and also a host name as the type ("github.com"),
  // including the older "bitbucket.com". Nothing when "type" is missing or unknown.
  static std::optional<RemoteType> fromJson(const QJsonObject& object);

  bool operator==(const RemoteType&) const = default;

 private:
  explicit RemoteType(Kind kind, QString host = {}) : kind_(kind), host_(std::move(host)) {}

  Kind kind_ = Kind::unknown;
  QString host_;
};
