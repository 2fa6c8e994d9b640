#include "Models/IdentityInterner.h"

#include "Git/Process/TextEncoding.h"

std::shared_ptr<const PersonIdentity> IdentityInterner::intern(QByteArrayView name, QByteArrayView email) {
  // A line feed can't occur in either field, so it separates them unambiguously.
  key_.resize(0);
  key_.append(name.data(), name.size());
  key_.append('\n');
  key_.append(email.data(), email.size());
  auto found = byBytes_.constFind(key_);
  if (found != byBytes_.constEnd()) return found.value();
  auto identity = std::make_shared<const PersonIdentity>(
      PersonIdentity{decodeString(name.data(), name.size()).value_or(QString()),
                     decodeString(email.data(), email.size()).value_or(QString())});
  byBytes_.insert(key_, identity);
  return identity;
}

std::shared_ptr<const PersonIdentity> IdentityInterner::intern(const QString& name, const QString& email) {
  const QByteArray nameBytes = name.toUtf8();
  const QByteArray emailBytes = email.toUtf8();
  return intern(QByteArrayView(nameBytes), QByteArrayView(emailBytes));
}
