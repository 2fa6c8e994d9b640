#include "Services/RebaseMessageResponder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include "Logging/AdvancedLogger.h"
#include "Models/RebaseMessageArchive.h"
#include "Services/DistributedNotificationCenter.h"

namespace names = DistributedNotificationNames;

namespace {

bool isInside(const QString& path, const QString& directory) {
  const QString file = QFileInfo(QFileInfo(path).absolutePath()).canonicalFilePath();
  const QString root = QFileInfo(directory).canonicalFilePath();
  return !root.isEmpty() && (file == root || file.startsWith(root + QLatin1Char('/')));
}

// The commit the rebase is at: the last line of "done", "<command> <sha> ...".
QString currentSha(const GitModule& module) {
  QFile done(module.gitDirectoryPath(QStringLiteral("rebase-merge/done")));
  if (!done.open(QIODevice::ReadOnly)) return {};
  const QStringList lines = QString::fromUtf8(done.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
  if (lines.isEmpty()) return {};
  const QStringList words = lines.back().split(QLatin1Char(' '), Qt::SkipEmptyParts);
  return words.size() > 1 ? words.at(1) : QString();
}

}  // namespace

bool RebaseMessageResponder::fillMessage(const GitModule& module, const QString& messageFile, bool* belongs) {
  const bool ours = isInside(messageFile, module.gitDirectoryUrl);
  if (belongs) *belongs = ours;
  if (!ours) return false;
  LOG_INFO(QStringLiteral("continueRebase received"));
  const QHash<QString, QString> messages = RebaseMessageArchive::read(module.gitDirectoryPath(QStringLiteral("rebase-merge")));
  const std::optional<QString> message = RebaseMessageArchive::find(messages, currentSha(module));
  // Without a message of ours git's own text stands: the commit's message after a conflict.
  if (!message) return true;
  QFile file(messageFile);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
    LOG_ERROR(QStringLiteral("Cannot write the message file %1: %2").arg(messageFile, file.errorString()));
    return false;
  }
  QByteArray text = message->toUtf8();
  if (!text.endsWith('\n')) text.append('\n');
  return file.write(text) == text.size();
}

RebaseMessageResponder::RebaseMessageResponder(GitModule module) : thread_(std::make_unique<QThread>()) {
  thread_->setObjectName(QStringLiteral("RebaseMessageResponder"));
  observer_ = new DistributedNotificationObserver({names::continueRebase()});
  observer_->moveToThread(thread_.get());
  QObject::connect(observer_, &DistributedNotificationObserver::received, observer_,
                   [module = std::move(module)](const QString&, const QString& path) {
                     bool belongs = false;
                     const bool filled = fillMessage(module, path, &belongs);
                     // Another repository's rebase has its own responder.
                     if (!belongs) return;
                     DistributedNotificationCenter::post(filled ? names::rebaseEditorFinish() : names::rebaseEditorCancel(), path);
                   });
  thread_->start();
}

RebaseMessageResponder::~RebaseMessageResponder() {
  thread_->quit();
  thread_->wait();
  delete observer_;
}
