#pragma once
#include <functional>
#include <memory>
#include <mutex>

#include "Jobs/Cancelable.h"

class CancelationToken final : public Cancelable {
 public:
  // Sets the flag and runs the action, under the lock.
  void cancel();
  bool isCanceled() const override;
  void setCancelationAction(std::function<void()> action) override;
  bool interruptsOnlyWhenRunning() const override { return false; }

 private:
  mutable std::mutex updateLock_;
  bool isCanceledValue_ = false;
  std::function<void()> cancelationActionValue_;
};
