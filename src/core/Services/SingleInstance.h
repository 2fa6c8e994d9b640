#pragma once
// One process per user session. The first launch owns the name "org.jelv.Jelv" on the
// session bus and answers handleArguments at "/org/jelv/Jelv/Application"; a later
// launch hands its folders and URLs over and ends. Without a session bus every launch
// runs alone.
#include <QDBusConnection>
#include <QObject>
#include <QStringList>

class SingleInstance : public QObject {
  Q_OBJECT
  Q_CLASSINFO("D-Bus Interface", "org.jelv.Jelv.Application")

 public:
  enum class Role { primary, secondary, alone };

  static QString serviceName() { return QStringLiteral("org.jelv.Jelv"); }
  static QString objectPath() { return QStringLiteral("/org/jelv/Jelv/Application"); }
  static QString interfaceName() { return QStringLiteral("org.jelv.Jelv.Application"); }

  explicit SingleInstance(const QDBusConnection& connection = QDBusConnection::sessionBus(), QObject* parent = nullptr);
  ~SingleInstance() override;

  // Takes the name if it is free. `alone` when there is no bus to ask.
  Role claim();
  Role role() const { return role_; }

  // Hands arguments to the process that owns the name; false when none answered.
  static bool forward(const QDBusConnection& connection, const QStringList& arguments, int timeoutMsecs = 5000);

 public Q_SLOTS:
  Q_SCRIPTABLE void handleArguments(const QStringList& arguments);

 Q_SIGNALS:
  void argumentsReceived(const QStringList& arguments);

 private:
  QDBusConnection connection_;
  Role role_ = Role::alone;
};
