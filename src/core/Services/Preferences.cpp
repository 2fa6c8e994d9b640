#include "Services/Preferences.h"

#include <QFileInfo>
#include <QSettings>

#include "Logging/AdvancedLogger.h"

Preferences& Preferences::shared() {
  static Preferences instance;
  return instance;
}

Preferences::Preferences() { openStore({}); }
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
  std::lock_guard lock(lock_);
  settings_->setValue(key, value);
}

void Preferences::remove(const QString& key) {
  std::lock_guard lock(lock_);
  settings_->remove(key);
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
