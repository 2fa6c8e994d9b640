#pragma once
// Ties preference controls to their keys: a control shows the stored value (or the
// registered default) and every change writes the key through Preferences and posts
// the notification the key's listeners follow. Each control is named by its key, so
// that it can be found (and tested) by it.
#include <QObject>
#include <functional>
#include <optional>
#include <vector>

#include "Services/PreferencesNotifier.h"

class QCheckBox;
class QComboBox;
class QSpinBox;

class PreferenceControls : public QObject {
 public:
  using Notification = PreferencesNotifier::Notification;
  explicit PreferenceControls(QObject* parent = nullptr) : QObject(parent) {}

  // inverted: the box is checked when the stored boolean is false ("disable…" keys).
  void bind(QCheckBox* box, const QString& key, Notification notification, bool inverted = false);
  void bind(QSpinBox* spin, const QString& key, Notification notification);
  // The stored integer is the index; with booleanKey, index 0 is true and 1 false.
  void bind(QComboBox* combo, const QString& key, std::optional<Notification> notification, bool booleanKey = false);

  // Shows what the store holds now, without writing anything.
  void reload();
  // Runs after the values are shown, for controls that depend on others.
  void onReload(std::function<void()> hook) { loaders_.push_back(std::move(hook)); }
  bool isLoading() const { return loading_; }

 private:
  void changed(const QString& key, const QVariant& value, std::optional<Notification> notification);

  std::vector<std::function<void()>> loaders_;
  bool loading_ = false;
};
