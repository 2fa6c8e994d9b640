#pragma once
// The user's defaults store: a persistent map with registered defaults. Thread safe;
// every read goes through one lock-guarded QSettings.
#include <QHash>
#include <QString>
#include <QVariant>
#include <memory>
#include <mutex>

#include "Git/Process/GitInstanceType.h"

class QSettings;

class Preferences {
 public:
  static Preferences& shared();
  // Points the store at an INI file (tests, portable runs). Keeps registered defaults.
  static void useStoreFile(const QString& path);

  QVariant value(const QString& key) const;
  bool contains(const QString& key) const;  // stored, not only registered
  void setValue(const QString& key, const QVariant& value);
  void remove(const QString& key);
  void registerDefaults(const QHash<QString, QVariant>& defaults);
  void sync();

  int integer(const QString& key) const { return value(key).toInt(); }
  bool boolean(const QString& key) const { return value(key).toBool(); }
  QString string(const QString& key) const { return value(key).toString(); }
  double real(const QString& key) const { return value(key).toDouble(); }

  // Reads "gitInstanceType" and "customGitInstancePath"; mends a custom path that vanished.
  GitInstanceType gitInstance();
  void setGitInstance(const GitInstanceType& instance);

 private:
  Preferences();
  ~Preferences();
  void openStore(const QString& path);

  mutable std::recursive_mutex lock_;
  std::unique_ptr<QSettings> settings_;
  QHash<QString, QVariant> defaults_;
};
