#pragma once
// A remote's URL broken up: which service it belongs to, who owns the repository, and
// how to reach its web page, its clone URLs and a new pull request.
#include <QString>
#include <QUrl>
#include <optional>

#include "Models/NetworkProtocol.h"
#include "Models/RemoteType.h"

struct RepositoryUrl {
  QString rawUrlString;
  std::optional<QString> host;
  RemoteType remoteType;
  std::optional<QString> repositoryName;  // without ".git"
  std::optional<QString> user;            // the owner, or the organisation on Azure
  std::optional<NetworkProtocol> networkProtocol;
  std::optional<QString> urlString;  // the normalised form, scp syntax rewritten
  std::optional<QUrl> url;
  std::optional<QString> projectName;  // Azure DevOps only

  RepositoryUrl() = default;
  // Never fails: text that is no URL keeps only rawUrlString (and is logged).
  explicit RepositoryUrl(const QString& urlString);

  // Nothing when the parts that the service's form needs are missing.
  std::optional<QString> cloneUrl(NetworkProtocol protocol) const;
  std::optional<QString> webPageUrl() const;
  std::optional<QString> pullRequestUrl(const QString& sourceBranch, const QString& targetBranch) const;

  bool operator==(const RepositoryUrl&) const = default;

  // "git@host:owner/repo.git" as "ssh://git@host/owner/repo.git"; other text unchanged.
  static QString rewriteScpForm(const QString& text);

 private:
  std::optional<QString> httpsCloneUrl() const;
  std::optional<QString> sshCloneUrl() const;
  // The path's pieces after the host, empty pieces dropped, decoded.
  QStringList pathPieces() const;
};
