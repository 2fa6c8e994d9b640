#pragma once
// The ask-pass protocol's values: the helper's request, the application's response, and
// what a prompt of git or ssh asks for.
#include <QString>
#include <QStringList>
#include <QUrl>
#include <optional>

// The request the helper sends: who asks (the helper's pid) and whom (the application's).
struct AskPassRequestArgs {
  qint64 jelvProcessId = 0;
  qint64 askPassProcessId = 0;
  bool noPrompt = false;
  QStringList arguments;  // element 0 is the prompt

  // All four keys must be there with their types; otherwise nothing.
  static std::optional<AskPassRequestArgs> decode(const QString& json);
  QString encode() const;
};

struct AskPassResponse {
  enum class Kind { username, password, cancel };
  static QString notificationName(Kind kind);
  static QString encode(qint64 jelvProcessId, qint64 askPassProcessId, const QString& value);
};

// What a prompt asks for.
struct AskPassRequest {
  enum class Kind { repositoryUsername, internetPassword, sshPassphrase, genericPassword };
  Kind kind = Kind::genericPassword;
  QUrl url;          // repositoryUsername, internetPassword: without credentials
  QString username;  // internetPassword
  QString keyPath;   // sshPassphrase

  bool operator==(const AskPassRequest&) const = default;
};

struct AskPassUrl {
  QUrl url;  // without the credentials
  std::optional<QString> username;
  std::optional<QString> password;
};

namespace AskPassParser {
// Reads the prompt (the first argument) of git or ssh.
AskPassRequest parse(const QStringList& arguments);
// Takes the credentials out of a URL of a prompt, which a plain URL parser does not
// always accept. Nothing without a scheme and a host.
std::optional<AskPassUrl> parseUrl(const QString& text);
}  // namespace AskPassParser
