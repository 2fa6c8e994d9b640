#pragma once
#include <QString>

// A name and an e-mail address, shared by every revision of the same person.
struct PersonIdentity {
  QString name;
  QString email;

  bool operator==(const PersonIdentity&) const = default;
};
