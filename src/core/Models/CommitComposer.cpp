#include "Models/CommitComposer.h"

GitVoidResult CommitComposer::setAmend(bool on, const MessageLoader& loadLastMessage) {
  if (on == amend_) return Unit{};
  if (on) {
    const GitResult<QString> last = loadLastMessage();
    if (last.isFailure()) return last.error();
    previousCommit_ = message_;
    message_ = CommitMessage::fromText(last.value());
    amend_ = true;
    return Unit{};
  }
  message_ = previousCommit_;
  previousCommit_ = {};
  amend_ = false;
  return Unit{};
}

void CommitComposer::reset() {
  message_ = {};
  previousCommit_ = {};
  amend_ = false;
}
