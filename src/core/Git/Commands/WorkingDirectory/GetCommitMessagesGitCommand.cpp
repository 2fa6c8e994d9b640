#include "Git/Commands/WorkingDirectory/GetCommitMessagesGitCommand.h"

#include "Git/Process/GitRequest.h"

GitResult<QString> GetCommitMessagesGitCommand::lastMessage(const GitModule& module) {
  const GitRequest request(module, {QStringLiteral("log"), QStringLiteral("--no-show-signature"), QStringLiteral("-1"),
                                    QStringLiteral("--pretty=%B"), QStringLiteral("--")});
  const GitResponse response = request.execute();
  if (!response.isSuccess()) return failureResult<QString>(response);
  return response.output;
}

GitResult<QStringList> GetCommitMessagesGitCommand::recentMessages(const GitModule& module) {
  const GitRequest request(module, {QStringLiteral("log"), QStringLiteral("--no-show-signature"), QStringLiteral("-n"),
                                    QStringLiteral("10"), QStringLiteral("-z"), QStringLiteral("--pretty=%B"), QStringLiteral("HEAD")});
  const GitResponse response = request.execute();
  if (!response.isSuccess()) return failureResult<QStringList>(response);
  return parseRecentMessages(response.output);
}

QStringList GetCommitMessagesGitCommand::parseRecentMessages(const QString& output) {
  QStringList messages;
  for (const QString& piece : output.split(QChar(u'\0'))) {
    const QString message = piece.trimmed();
    if (!message.isEmpty()) messages << message;
  }
  return messages;
}
