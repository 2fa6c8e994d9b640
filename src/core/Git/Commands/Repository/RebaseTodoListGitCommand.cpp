#include "Git/Commands/Repository/RebaseTodoListGitCommand.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QSaveFile>

#include "Git/Commands/Revision/GetRevisionInfosGitCommand.h"
#include "Logging/AdvancedLogger.h"
#include "Models/RebaseMessageArchive.h"
#include "Models/RebaseTodoList.h"

bool RebaseTodoListGitCommand::belongsTo(const GitModule& module, const QString& todoPath) {
  const QString directory = QFileInfo(QFileInfo(todoPath).absolutePath()).canonicalFilePath();
  const QString root = QFileInfo(module.gitDirectoryUrl).canonicalFilePath();
  return !root.isEmpty() && directory.startsWith(root + QLatin1Char('/'));
}

GitResult<std::vector<TodoListItem>> RebaseTodoListGitCommand::read(const GitModule& module, const QString& todoPath) {
  LOG_INFO(QStringLiteral("prepareTodoListForRebase received"));
  QFile file(todoPath);
  if (!file.open(QIODevice::ReadOnly)) {
    return Error::UnknownException{QStringLiteral("Cannot read the rebase todo list %1: %2").arg(todoPath, file.errorString())};
  }
  const QStringList shas = RebaseTodoList::parseShas(QString::fromUtf8(file.readAll()));
  auto infos = GetRevisionInfosGitCommand::execute(module, shas);
  if (!infos) return infos.error();
  QHash<QString, const RevisionInfo*> bySha;
  for (const RevisionInfo& info : infos.value()) bySha.insert(info.sha, &info);
  std::vector<TodoListItem> items;
  for (auto sha = shas.crbegin(); sha != shas.crend(); ++sha) {
    TodoListItem item;
    item.sha = *sha;
    if (const RevisionInfo* info = bySha.value(*sha)) {
      item.originalMessage = info->message;
      item.author = info->author;
      item.authorDate = info->authorDate;
    }
    items.push_back(std::move(item));
  }
  RebaseTodoList::normalize(items);
  return items;
}

GitVoidResult RebaseTodoListGitCommand::write(const QString& todoPath, const std::vector<TodoListItem>& items) {
  QSaveFile file(todoPath);
  const QByteArray text = RebaseTodoList::todoText(items).toUtf8();
  if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
    return Error::UnknownException{QStringLiteral("Cannot write the rebase todo list %1: %2").arg(todoPath, file.errorString())};
  }
  return RebaseMessageArchive::write(QFileInfo(todoPath).absolutePath(), RebaseTodoList::messages(items));
}

QString RebaseTodoListGitCommand::backupBranchName(const QString& branch, const QDateTime& now) {
  // The date too: a backup made on another day at the same time keeps its own name.
  QString time = QLocale::c().toString(now, QStringLiteral("yyyy-MM-dd HH:mm:ss"));
  time.replace(QLatin1Char(':'), QLatin1Char('-')).replace(QLatin1Char(' '), QLatin1Char('-'));
  return QStringLiteral("backup/%1-%2").arg(branch, time);
}
