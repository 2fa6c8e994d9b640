#pragma once
// Hosts and endpoints of the outside services, in one place so that a test or a
// self-hosted build can see at a glance what the application talks to.
#include <QLatin1StringView>

namespace ServiceHosts {

inline constexpr QLatin1StringView GitHubWebHost{"github.com"};
inline constexpr QLatin1StringView GitHubApiHost{"api.github.com"};
inline constexpr QLatin1StringView GitLabWebHost{"gitlab.com"};
inline constexpr QLatin1StringView BitbucketWebHost{"bitbucket.org"};
// Older accounts were stored with this spelling of the Bitbucket host.
inline constexpr QLatin1StringView BitbucketLegacyWebHost{"bitbucket.com"};
inline constexpr QLatin1StringView BitbucketApiHost{"api.bitbucket.org"};
inline constexpr QLatin1StringView AzureDevOpsHost{"dev.azure.com"};
// Without a leading dot: organisations live in "<org>.visualstudio.com", and ssh goes
// through "vs-ssh.visualstudio.com".
inline constexpr QLatin1StringView VisualStudioHostSuffix{"visualstudio.com"};
inline constexpr QLatin1StringView GitHubAvatarHost{"avatars.githubusercontent.com"};
inline constexpr QLatin1StringView GravatarHost{"www.gravatar.com"};
inline constexpr QLatin1StringView GitHubNoReplyDomain{"users.noreply.github.com"};

inline constexpr QLatin1StringView UpdateFeedEndpoint{"https://updates.jelv.org/appcast.xml"};
inline constexpr QLatin1StringView FeedbackEndpoint{"https://feedback.jelv.org/api/reports"};
// The OAuth redirect goes to this address with a path of the provider's own.
inline constexpr QLatin1StringView OAuthCallbackEndpoint{"https://auth.jelv.org"};

}  // namespace ServiceHosts
