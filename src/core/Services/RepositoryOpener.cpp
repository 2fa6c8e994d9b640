#include "Services/RepositoryOpener.h"

#include <QPointer>
#include <QThreadPool>
#include <QUrl>

#include "Logging/AdvancedLogger.h"
#include "Models/AppSettings.h"
#include "Services/PreferencesNotifier.h"

RepositoryOpener::RepositoryOpener(AppSettings& settings, DocumentOpener openDocument, QObject* parent)
    : QObject(parent), settings_(settings), openDocument_(std::move(openDocument)) {}

QString RepositoryOpener::localPath(const QString& url) {
  const QString trimmed = url.trimmed();
  if (trimmed.startsWith(QStringLiteral("file:"))) return QUrl(trimmed).toLocalFile();
  return trimmed;
}

void RepositoryOpener::openRepository(const QString& url, CompletionHandler completionHandler, bool allowSubmodule) {
  const QString path = localPath(url);
  QPointer<RepositoryOpener> self(this);
  QThreadPool::globalInstance()->start([self, path, allowSubmodule, completionHandler = std::move(completionHandler)] {
    auto validation = RepositoryValidation::validate(path, allowSubmodule);
    if (!self) return;
    QMetaObject::invokeMethod(
        self.data(),
        [self, path, validation = std::move(validation), completionHandler] {
          if (self) self->finish(path, validation, completionHandler);
        },
        Qt::QueuedConnection);
  });
}

void RepositoryOpener::finish(const QString& path, const std::variant<GitModule, RepositoryRefusal>& validation,
                              const CompletionHandler& completionHandler) {
  Result result;
  if (const auto* refusal = std::get_if<RepositoryRefusal>(&validation)) {
    result.failureText = RepositoryValidation::openFailureText(*refusal, path);
    LOG_WARNING(result.failureText);
  } else {
    const GitModule& module = std::get<GitModule>(validation);
    if (openDocument_) openDocument_(module);
    if (!module.superProjectPath) {
      settings_.addRepository(module.repositoryPath);
      // The recent list of any open repository manager follows.
      PreferencesNotifier::shared().post(PreferencesNotifier::Notification::repositoryManagerDataUpdated);
    }
    result.gitModule = module;
  }
  if (completionHandler) completionHandler(result);
}
