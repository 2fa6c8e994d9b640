#include "Jobs/CancelationToken.h"

void CancelationToken::cancel() {
  std::lock_guard lock(updateLock_);
  isCanceledValue_ = true;
  if (cancelationActionValue_) cancelationActionValue_();
}

bool CancelationToken::isCanceled() const {
  std::lock_guard lock(updateLock_);
  return isCanceledValue_;
}

void CancelationToken::setCancelationAction(std::function<void()> action) {
  std::lock_guard lock(updateLock_);
  cancelationActionValue_ = std::move(action);
}
