#pragma once
// The arguments that sign what an operation commits: the wrapper that finds gpg leads
// the list, the key trails it. Both are empty when the repository does not sign.
#include <QStringList>

struct SigningArguments {
  static QStringList prefix(const QString& signingKey);
  static QStringList suffix(const QString& signingKey);
};
