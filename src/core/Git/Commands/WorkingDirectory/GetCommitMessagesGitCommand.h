#pragma once
// The messages the commit box offers: the last commit's (for amend) and the recent ones.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

struct GetCommitMessagesGitCommand {
  // The full message of HEAD, as the amend box loads it.
  static GitResult<QString> lastMessage(const GitModule& module);
  // The messages of the last ten commits reachable from HEAD, newest first.
  static GitResult<QStringList> recentMessages(const GitModule& module);
  // "msg one\n\0msg two\n\0": NUL separates the messages; empty ones are dropped.
  static QStringList parseRecentMessages(const QString& output);
};
