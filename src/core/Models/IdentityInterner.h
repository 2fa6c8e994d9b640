#pragma once
// Hands out one shared PersonIdentity per distinct name and e-mail, so that a history
// of fifty thousand commits by a few hundred people holds a few hundred pairs of texts.
// One interner serves one read; it is not thread safe.
#include <QByteArray>
#include <QByteArrayView>
#include <QHash>
#include <memory>

#include "Models/PersonIdentity.h"

class IdentityInterner {
 public:
  // Raw bytes as git printed them; decoded only the first time a pair is seen.
  std::shared_ptr<const PersonIdentity> intern(QByteArrayView name, QByteArrayView email);
  std::shared_ptr<const PersonIdentity> intern(const QString& name, const QString& email);
  qsizetype size() const { return byBytes_.size(); }

 private:
  QHash<QByteArray, std::shared_ptr<const PersonIdentity>> byBytes_;
  QByteArray key_;  // reused buffer for lookups
};
