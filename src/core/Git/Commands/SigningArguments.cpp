#include "Git/Commands/SigningArguments.h"

#include "Consts.h"

QStringList SigningArguments::prefix(const QString& signingKey) {
  if (signingKey.isEmpty()) return {};
  return {QStringLiteral("-c"), QStringLiteral("gpg.program=") + Consts::Git::gpgWrapperPath()};
}

QStringList SigningArguments::suffix(const QString& signingKey) {
  if (signingKey.isEmpty()) return {};
  return {QStringLiteral("--gpg-sign=") + signingKey};
}
