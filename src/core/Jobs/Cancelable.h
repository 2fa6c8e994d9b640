#pragma once
#include <functional>

// A source of cancellation that a running child process can hang its interrupt on.
class Cancelable {
 public:
  virtual ~Cancelable() = default;
  virtual bool isCanceled() const = 0;
  // Replaces any earlier action; runs with the source's lock held.
  virtual void setCancelationAction(std::function<void()> action) = 0;
  // A progress interrupts only a running process; a token interrupts at once.
  virtual bool interruptsOnlyWhenRunning() const = 0;
};
