#include "Controllers/Preferences/PreferenceControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalBlocker>
#include <QSpinBox>

#include "Services/Preferences.h"

void PreferenceControls::changed(const QString& key, const QVariant& value, std::optional<Notification> notification) {
  if (loading_) return;
  Preferences::shared().setValue(key, value);
  if (notification) PreferencesNotifier::shared().post(*notification);
}

void PreferenceControls::bind(QCheckBox* box, const QString& key, Notification notification, bool inverted) {
  box->setObjectName(key);
  loaders_.push_back([box, key, inverted] { box->setChecked(Preferences::shared().boolean(key) != inverted); });
  connect(box, &QCheckBox::toggled, this, [this, key, inverted, notification](bool checked) {
    changed(key, checked != inverted, notification);
  });
}

void PreferenceControls::bind(QSpinBox* spin, const QString& key, Notification notification) {
  spin->setObjectName(key);
  // Typing "120" must not write 1 and 12 first.
  spin->setKeyboardTracking(false);
  loaders_.push_back([spin, key] { spin->setValue(Preferences::shared().integer(key)); });
  connect(spin, &QSpinBox::valueChanged, this, [this, key, notification](int value) { changed(key, value, notification); });
}

void PreferenceControls::bind(QComboBox* combo, const QString& key, std::optional<Notification> notification, bool booleanKey) {
  combo->setObjectName(key);
  loaders_.push_back([combo, key, booleanKey] {
    auto& preferences = Preferences::shared();
    combo->setCurrentIndex(booleanKey ? (preferences.boolean(key) ? 0 : 1) : preferences.integer(key));
  });
  connect(combo, &QComboBox::currentIndexChanged, this, [this, key, notification, booleanKey](int index) {
    if (index < 0) return;
    changed(key, booleanKey ? QVariant(index == 0) : QVariant(index), notification);
  });
}

void PreferenceControls::reload() {
  loading_ = true;
  for (const auto& load : loaders_) load();
  loading_ = false;
}
