#include "Services/Preferences.h"

#include <QFileInfo>
#include <QSettings>

#include "Logging/AdvancedLogger.h"
#include "Services/PreferencesNotifier.h"

Preferences& Preferences::shared() {
  static Preferences instance;
  return instance;
}

Preferences::Preferences() {
  openStore({});
  for (const auto& [key, value] : applicationDefaults()) defaults_.insert(key, value);
}

QList<QPair<QString, QVariant>> Preferences::applicationDefaults() {
  QList<QPair<QString, QVariant>> defaults;
#define JELV_PREFERENCE_DEFAULT(type, getter, Setter, key, defaultValue) \
  defaults.append({QStringLiteral(key), QVariant::fromValue<type>(defaultValue)});
  JELV_PREFERENCE_DEFAULTS(JELV_PREFERENCE_DEFAULT)
#undef JELV_PREFERENCE_DEFAULT
  return defaults;
}
Preferences::~Preferences() = default;

void Preferences::openStore(const QString& path) {
  std::lock_guard lock(lock_);
  if (settings_) settings_->sync();
  if (path.isEmpty()) {
    settings_ = std::make_unique<QSettings>(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("org.jelv"),
                                            QStringLiteral("Jelv"));
  } else {
    settings_ = std::make_unique<QSettings>(path, QSettings::IniFormat);
  }
}

void Preferences::useStoreFile(const QString& path) { shared().openStore(path); }

QVariant Preferences::value(const QString& key) const {
  std::lock_guard lock(lock_);
  QVariant stored = settings_->value(key);
  if (stored.isValid()) return stored;
  return defaults_.value(key);
}

bool Preferences::contains(const QString& key) const {
  std::lock_guard lock(lock_);
  return settings_->contains(key);
}

void Preferences::setValue(const QString& key, const QVariant& value) {
  {
    std::lock_guard lock(lock_);
    settings_->setValue(key, value);
  }
  PreferencesNotifier::shared().keyWritten(key);
}

void Preferences::remove(const QString& key) {
  {
    std::lock_guard lock(lock_);
    settings_->remove(key);
  }
  PreferencesNotifier::shared().keyWritten(key);
}

std::optional<QString> Preferences::optionalString(const QString& key) const {
  const QVariant stored = value(key);
  if (!stored.isValid() || stored.toString().isEmpty()) return std::nullopt;
  return stored.toString();
}

QString Preferences::diffFontName() const { return optionalString(QStringLiteral("diffFontName")).value_or(QStringLiteral("Menlo")); }

std::optional<double> Preferences::diffFontSize() const {
  bool ok = false;
  const double size = value(QStringLiteral("diffFontSize")).toDouble(&ok);
  if (!ok || size <= 0) return std::nullopt;
  return size;
}

void Preferences::setDiffFont(const QString& name, double size) {
  setValue(QStringLiteral("diffFontName"), name);
  setValue(QStringLiteral("diffFontSize"), size);
}

std::optional<bool> Preferences::enableRemoteServiceNotifications() const {
  const QVariant stored = value(QStringLiteral("enableRemoteServiceNotifications"));
  if (!stored.isValid()) return std::nullopt;
  return stored.toBool();
}

std::optional<QDateTime> Preferences::gitServiceNotificationUpdatedAt() const {
  const QDateTime time = value(QStringLiteral("gitServiceNotificationUpdatedAt")).toDateTime();
  if (!time.isValid()) return std::nullopt;
  return time;
}

std::vector<RepositorySession> Preferences::repositorySessions() const {
  std::vector<RepositorySession> sessions;
  for (const QVariant& entry : value(QStringLiteral("repositorySessions")).toList()) {
    const QVariantMap map = entry.toMap();
    const QString path = map.value(QStringLiteral("repositoryPath")).toString();
    if (path.isEmpty()) {
      LOG_WARNING(QStringLiteral("Skip a repository session without a path"));
      continue;
    }
    sessions.push_back({path, map.value(QStringLiteral("selected")).toBool()});
  }
  return sessions;
}

void Preferences::setRepositorySessions(const std::vector<RepositorySession>& sessions) {
  QVariantList list;
  for (const auto& session : sessions) {
    list.append(QVariantMap{{QStringLiteral("repositoryPath"), session.repositoryPath},
                            {QStringLiteral("selected"), session.selected}});
  }
  setValue(QStringLiteral("repositorySessions"), list);
}

void Preferences::registerDefaults(const QHash<QString, QVariant>& defaults) {
  std::lock_guard lock(lock_);
  for (auto it = defaults.begin(); it != defaults.end(); ++it) defaults_.insert(it.key(), it.value());
}

void Preferences::sync() {
  std::lock_guard lock(lock_);
  settings_->sync();
}

GitInstanceType Preferences::gitInstance() {
  std::lock_guard lock(lock_);
  const int type = value(QStringLiteral("gitInstanceType")).toInt();
  switch (type) {
    case 1: return GitInstanceType::local();
    case 3: return GitInstanceType::brew();
    case 2: {
      const QString path = value(QStringLiteral("customGitInstancePath")).toString();
      if (path.isEmpty()) return GitInstanceType::local();
      if (!QFileInfo::exists(path)) {
        LOG_WARNING(QStringLiteral("Can't find '%1'. Fall back to internal git instance.").arg(path));
        setValue(QStringLiteral("gitInstanceType"), 1);
        LOG_INFO(QStringLiteral("Git instance changed to 'local' at '%1'").arg(GitInstanceType::local().launchPath()));
        return GitInstanceType::local();
      }
      return GitInstanceType::custom(path);
    }
    default: return GitInstanceType::system();
  }
}

void Preferences::setGitInstance(const GitInstanceType& instance) {
  std::lock_guard lock(lock_);
  setValue(QStringLiteral("gitInstanceType"), instance.storedValue());
  setValue(QStringLiteral("customGitInstancePath"), instance.kind == GitInstanceType::Kind::custom ? instance.path : QString());
  LOG_INFO(QStringLiteral("Git instance changed to '%1' at '%2'").arg(instance.printedName(), instance.launchPath()));
}
