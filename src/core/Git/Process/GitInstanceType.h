#pragma once
#include <QString>

// Which git executable runs the commands. The printed name shows in the preferences.
struct GitInstanceType {
  enum class Kind { custom, local, system, brew };
  Kind kind = Kind::system;
  QString path;  // custom only

  static GitInstanceType custom(const QString& path) { return {Kind::custom, path}; }
  static GitInstanceType local() { return {Kind::local, {}}; }
  static GitInstanceType system() { return {Kind::system, {}}; }
  static GitInstanceType brew() { return {Kind::brew, {}}; }

  QString launchPath() const;
  QString printedName() const;
  // The value stored in "gitInstanceType".
  int storedValue() const;

  bool operator==(const GitInstanceType&) const = default;
};
