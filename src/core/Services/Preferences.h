#pragma once
// The user's defaults store: a persistent map with registered defaults. Thread safe;
// every read goes through one lock-guarded QSettings.
#include <QDateTime>
#include <QHash>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "Git/Process/GitInstanceType.h"
#include "Models/RepositorySession.h"
#include "Services/PreferenceDefaults.h"

class QSettings;

class Preferences {
 public:
  static Preferences& shared();
  // Points the store at an INI file (tests, portable runs). Keeps registered defaults.
  static void useStoreFile(const QString& path);

  QVariant value(const QString& key) const;
  bool contains(const QString& key) const;  // stored, not only registered
  // Both report the key on PreferencesNotifier::valueChanged.
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

  // The registered defaults of the application, in order of registration. The store
  // registers them when it is created; what the user changed wins.
  static QList<QPair<QString, QVariant>> applicationDefaults();

  // One getter and one setter per registered key, e.g. maxCommitCount() and
  // setMaxCommitCount(int).
#define JELV_PREFERENCE_ACCESSORS(type, getter, Setter, key, defaultValue) \
  type getter() const { return value(QStringLiteral(key)).value<type>(); } \
  void set##Setter(type newValue) { setValue(QStringLiteral(key), newValue); }
  JELV_PREFERENCE_DEFAULTS(JELV_PREFERENCE_ACCESSORS)
#undef JELV_PREFERENCE_ACCESSORS

  // Keys without a registered default: they begin unset.
  // The diff font; "Menlo" while no name is stored.
  QString diffFontName() const;
  std::optional<double> diffFontSize() const;
  void setDiffFont(const QString& name, double size);

  QString externalMergeToolCustomPath() const { return string(QStringLiteral("externalMergeToolCustomPath")); }
  void setExternalMergeToolCustomPath(const QString& path) { setValue(QStringLiteral("externalMergeToolCustomPath"), path); }
  QString externalMergeToolCustomArguments() const { return string(QStringLiteral("externalMergeToolCustomArguments")); }
  void setExternalMergeToolCustomArguments(const QString& arguments) {
    setValue(QStringLiteral("externalMergeToolCustomArguments"), arguments);
  }
  QString externalDiffToolCustomPath() const { return string(QStringLiteral("externalDiffToolCustomPath")); }
  void setExternalDiffToolCustomPath(const QString& path) { setValue(QStringLiteral("externalDiffToolCustomPath"), path); }
  QString externalDiffToolCustomArguments() const { return string(QStringLiteral("externalDiffToolCustomArguments")); }
  void setExternalDiffToolCustomArguments(const QString& arguments) {
    setValue(QStringLiteral("externalDiffToolCustomArguments"), arguments);
  }

  std::optional<QString> recentPatchDirectory() const { return optionalString(QStringLiteral("recentPatchDirectory")); }
  void setRecentPatchDirectory(const QString& path) { setValue(QStringLiteral("recentPatchDirectory"), path); }
  QStringList recentCloneDirectories() const { return value(QStringLiteral("recentCloneDirectories")).toStringList(); }
  void setRecentCloneDirectories(const QStringList& paths) { setValue(QStringLiteral("recentCloneDirectories"), paths); }
  std::optional<QString> defaultSourceFolder() const { return optionalString(QStringLiteral("defaultSourceFolder")); }
  void setDefaultSourceFolder(const QString& path) { setValue(QStringLiteral("defaultSourceFolder"), path); }

  std::optional<bool> enableRemoteServiceNotifications() const;
  void setEnableRemoteServiceNotifications(bool enabled) {
    setValue(QStringLiteral("enableRemoteServiceNotifications"), enabled);
  }
  std::optional<QDateTime> gitServiceNotificationUpdatedAt() const;
  void setGitServiceNotificationUpdatedAt(const QDateTime& time) {
    setValue(QStringLiteral("gitServiceNotificationUpdatedAt"), time);
  }

  // The tabs of an older run; entries without a path drop out.
  std::vector<RepositorySession> repositorySessions() const;
  void setRepositorySessions(const std::vector<RepositorySession>& sessions);

  // The custom commands of older versions, read once for their import.
  QVariantList customActions() const { return value(QStringLiteral("customActions")).toList(); }

 private:
  Preferences();
  ~Preferences();
  void openStore(const QString& path);
  std::optional<QString> optionalString(const QString& key) const;

  mutable std::recursive_mutex lock_;
  std::unique_ptr<QSettings> settings_;
  QHash<QString, QVariant> defaults_;
};
