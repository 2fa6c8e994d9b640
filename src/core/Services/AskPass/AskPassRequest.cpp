#include "Services/AskPass/AskPassRequest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include "Logging/AdvancedLogger.h"
#include "Services/DistributedNotificationNames.h"

namespace {

bool isInteger(const QJsonValue& value) {
  return value.isDouble() && value.toDouble() == static_cast<double>(value.toInteger());
}

// A URL for the log: a password never goes there.
QString shown(const QString& text) {
  static const QRegularExpression credentials(QStringLiteral("(://[^/@:]*):[^/@]*@"));
  QString out = text;
  out.replace(credentials, QStringLiteral("\\1:***@"));
  return out;
}

}  // namespace

std::optional<AskPassRequestArgs> AskPassRequestArgs::decode(const QString& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json.toUtf8());
  if (!document.isObject()) return std::nullopt;
  const QJsonObject object = document.object();
  const QJsonValue jelv = object.value(QStringLiteral("jelvProcessId"));
  const QJsonValue askPass = object.value(QStringLiteral("askPassProcessId"));
  const QJsonValue noPrompt = object.value(QStringLiteral("noPrompt"));
  const QJsonValue arguments = object.value(QStringLiteral("arguments"));
  if (!isInteger(jelv) || !isInteger(askPass) || !noPrompt.isBool() || !arguments.isArray()) return std::nullopt;
  AskPassRequestArgs args;
  args.jelvProcessId = jelv.toInteger();
  args.askPassProcessId = askPass.toInteger();
  args.noPrompt = noPrompt.toBool();
  for (const QJsonValue& argument : arguments.toArray()) {
    if (!argument.isString()) return std::nullopt;
    args.arguments << argument.toString();
  }
  return args;
}

QString AskPassRequestArgs::encode() const {
  QJsonObject object;
  object.insert(QStringLiteral("jelvProcessId"), jelvProcessId);
  object.insert(QStringLiteral("askPassProcessId"), askPassProcessId);
  object.insert(QStringLiteral("noPrompt"), noPrompt);
  object.insert(QStringLiteral("arguments"), QJsonArray::fromStringList(arguments));
  return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

QString AskPassResponse::notificationName(Kind kind) {
  switch (kind) {
    case Kind::username: return DistributedNotificationNames::askPasswdResponseUsername();
    case Kind::password: return DistributedNotificationNames::askPasswdResponsePassword();
    case Kind::cancel: return DistributedNotificationNames::askPasswdResponseCancel();
  }
  return {};
}

QString AskPassResponse::encode(qint64 jelvProcessId, qint64 askPassProcessId, const QString& value) {
  QJsonObject object;
  object.insert(QStringLiteral("jelvProcessId"), jelvProcessId);
  object.insert(QStringLiteral("askPassProcessId"), askPassProcessId);
  object.insert(QStringLiteral("value"), value);
  return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

namespace AskPassParser {

std::optional<AskPassUrl> parseUrl(const QString& text) {
  LOG_DEBUG(QStringLiteral("Parsing url '%1'").arg(shown(text)));
  const QUrl plain(text, QUrl::StrictMode);
  if (plain.isValid() && !plain.host().isEmpty()) {
    LOG_DEBUG(QStringLiteral("URL is parsed by default parser as: '%1'").arg(plain.toString(QUrl::RemovePassword)));
  } else {
    LOG_DEBUG(QStringLiteral("URL failed to be parsed by default parser"));
  }
  AskPassUrl result;
  QString rest = text;
  const qsizetype schemeEnd = text.indexOf(QLatin1Char(':'));
  const qsizetype at = schemeEnd < 0 ? -1 : text.lastIndexOf(QLatin1Char('@'));
  if (at <= schemeEnd) {
    LOG_DEBUG(QStringLiteral("Url doesn't contain credentials"));
  } else {
    LOG_DEBUG(QStringLiteral("Url contains credentials"));
    const qsizetype authorityStart = text.indexOf(QStringLiteral("://")) >= 0 ? text.indexOf(QStringLiteral("://")) + 3 : schemeEnd + 1;
    const QString credentials = text.mid(authorityStart, at - authorityStart);
    const qsizetype colon = credentials.indexOf(QLatin1Char(':'));
    if (colon >= 0) {
      LOG_DEBUG(QStringLiteral("Url contains username and password"));
      result.username = QUrl::fromPercentEncoding(credentials.left(colon).toUtf8());
      result.password = QUrl::fromPercentEncoding(credentials.mid(colon + 1).toUtf8());
    } else {
      LOG_DEBUG(QStringLiteral("Url contains username only"));
      result.username = QUrl::fromPercentEncoding(credentials.toUtf8());
    }
    rest = text.left(authorityStart) + text.mid(at + 1);
  }
  const QUrl url(rest);
  if (!url.isValid() || url.scheme().isEmpty() || url.host().isEmpty()) {
    LOG_ERROR(QStringLiteral("Cannot parse '%1'").arg(shown(text)));
    return std::nullopt;
  }
  result.url = url;
  LOG_DEBUG(QStringLiteral("Successfully parsed url: '%1'").arg(url.toString()));
  return result;
}

AskPassRequest parse(const QStringList& arguments) {
  if (arguments.isEmpty()) return {};
  LOG_INFO(QStringLiteral("AskPass arguments: '%1'").arg(shown(arguments.join(QLatin1Char(' ')))));
  const QString prompt = arguments.first();
  static const QRegularExpression basic(QStringLiteral("(\\S+)\\s+for\\s+['\"]([^'\"]+)['\"](:\\s*)?"));
  static const QRegularExpression passphrase(QStringLiteral("Enter\\s+passphrase\\s*for\\s*key\\s*['\"]([^'\"]+)['\"]\\:\\s*"));
  static const QRegularExpression sshPassword(QStringLiteral("(\\S+)'s\\s+password:\\s*"));
  static const QRegularExpression legacy(QStringLiteral("^([\\w?!-.]+)@(.+?)'s password: $"));

  AskPassRequest request;
  if (const QRegularExpressionMatch match = basic.match(prompt); match.hasMatch()) {
    LOG_DEBUG(QStringLiteral("Querying for basic credentials"));
    if (match.capturedStart(1) < 0 || match.capturedStart(2) < 0) {
      LOG_ERROR(QStringLiteral("Unable to parse: '%1'").arg(shown(prompt)));
      return request;
    }
    const QString kind = match.captured(1);
    const auto url = parseUrl(match.captured(2));
    if (!url) {
      LOG_ERROR(QStringLiteral("Unable to parse url: '%1'").arg(shown(match.captured(2))));
      return request;
    }
    if (kind.compare(QStringLiteral("username"), Qt::CaseInsensitive) == 0) {
      request.kind = AskPassRequest::Kind::repositoryUsername;
      request.url = url->url;
    } else if (kind.compare(QStringLiteral("password"), Qt::CaseInsensitive) == 0 && url->username) {
      request.kind = AskPassRequest::Kind::internetPassword;
      request.url = url->url;
      request.username = *url->username;
    }
    return request;
  }
  if (const QRegularExpressionMatch match = passphrase.match(prompt); match.hasMatch()) {
    request.kind = AskPassRequest::Kind::sshPassphrase;
    request.keyPath = match.captured(1);
    return request;
  }
  auto sshRequest = [&request](const QString& userAtHost) {
    const auto url = parseUrl(QStringLiteral("ssh://") + userAtHost);
    if (url && url->username) {
      request.kind = AskPassRequest::Kind::internetPassword;
      request.url = url->url;
      request.username = *url->username;
    }
    return request;
  };
  if (const QRegularExpressionMatch match = sshPassword.match(prompt); match.hasMatch()) return sshRequest(match.captured(1));
  if (const QRegularExpressionMatch match = legacy.match(prompt); match.hasMatch()) {
    LOG_WARNING(QStringLiteral("Legacy! Should never be executed because of askPasswordRegex"));
    return sshRequest(match.captured(1) + QLatin1Char('@') + match.captured(2));
  }
  return request;
}

}  // namespace AskPassParser
