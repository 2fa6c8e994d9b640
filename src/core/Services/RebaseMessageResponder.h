#pragma once
// Answers git's requests for commit messages while a rebase of one repository runs:
// the rebase editor posts the message file, the answer comes from the message archive
// (a rewording or a squash group's message) or leaves git's text as it is, and the
// editor is told to finish. Lives for the duration of one git call, on a thread of its
// own, because the caller's thread is blocked in git meanwhile.
#include <QString>
#include <memory>

#include "Models/GitModule.h"

class DistributedNotificationObserver;
class QThread;

class RebaseMessageResponder {
 public:
  explicit RebaseMessageResponder(GitModule module);
  ~RebaseMessageResponder();
  RebaseMessageResponder(const RebaseMessageResponder&) = delete;
  RebaseMessageResponder& operator=(const RebaseMessageResponder&) = delete;

  // Fills `messageFile` for the commit the rebase is at, if the archive has a message
  // for it. False when the file is not of this repository or can't be written.
  static bool fillMessage(const GitModule& module, const QString& messageFile, bool* belongs = nullptr);

 private:
  std::unique_ptr<QThread> thread_;
  DistributedNotificationObserver* observer_ = nullptr;
};
