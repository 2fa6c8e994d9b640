#pragma once
// The message fields of the commit box and what the amend box does to them. Turning
// amend on parks the user's own text and shows the last commit's message; turning it
// off brings the parked text back, so nothing typed is ever lost by toggling.
#include <QString>
#include <functional>

#include "Git/ResultError.h"
#include "Models/CommitMessage.h"

class CommitComposer {
 public:
  using MessageLoader = std::function<GitResult<QString>()>;

  const CommitMessage& message() const { return message_; }
  void setMessage(const CommitMessage& message) { message_ = message; }
  void setSubject(const QString& subject) { message_.subject = subject; }
  void setDescription(const QString& description) { message_.description = description; }

  bool amend() const { return amend_; }
  // On: parks the current text and fills in the loaded message. A failed load leaves the
  // box off and the text as it was. Off: restores the parked text.
  GitVoidResult setAmend(bool on, const MessageLoader& loadLastMessage);

  // The text the user typed while amend shows the last commit's message.
  const CommitMessage& parkedMessage() const { return previousCommit_; }

  // What belongs in the stored draft: the user's own text, never the amended commit's.
  const CommitMessage& draft() const { return amend_ ? previousCommit_ : message_; }

  // After a successful commit: empty fields, nothing parked, amend off.
  void reset();

 private:
  CommitMessage message_;
  CommitMessage previousCommit_;  // previousCommitSubject / previousCommitDescription
  bool amend_ = false;
};
