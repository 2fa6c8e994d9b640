#pragma once
// The application's side of the ask-pass helper: it hears the helper's requests on the
// session bus, answers from the credential store when it can, and otherwise hands the
// request to whoever asks the user (the password sheet). Each answer names the helper's
// process, so several helpers may wait at once. Lives on the main thread.
#include <QDBusConnection>
#include <QObject>
#include <functional>

#include "Services/AskPass/AskPassRequest.h"
#include "Services/KeychainManager.h"

class AskPassBridge : public QObject {
  Q_OBJECT
 public:
  // Asks the user for `request`; the handler answers later with respond().
  using PromptHandler = std::function<void(const AskPassRequestArgs& args, const AskPassRequest& request)>;

  explicit AskPassBridge(const QDBusConnection& bus = QDBusConnection::sessionBus(), QObject* parent = nullptr);

  // Starts hearing requests; false without a bus.
  bool listen();
  void setPromptHandler(PromptHandler handler) { promptHandler_ = std::move(handler); }

  // One request as the helper sent it: ignored when invalid or meant for another
  // instance, answered from the store, or passed to the prompt handler.
  void handle(const QString& json);
  // True when a stored credential answered.
  bool loadKeychainCredentials(const AskPassRequest& request, qint64 askPassProcessId);
  void respond(AskPassResponse::Kind kind, qint64 askPassProcessId, const QString& value) const;
  // The answer of the prompt: the response first, then what the user asked to remember.
  void answer(const AskPassRequest& request, qint64 askPassProcessId, const std::optional<QString>& value, bool remember) const;

  const KeychainManager& keychain() const { return keychain_; }

 private Q_SLOTS:
  // Every notification of the bus arrives here; only the helper's requests count.
  void onNotification(const QString& name, const QString& object);

 private:
  QDBusConnection bus_;
  KeychainManager keychain_;
  PromptHandler promptHandler_;
};
