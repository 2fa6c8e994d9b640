#pragma once
// Runs an action with the last arguments given once the calls have paused: a quick run
// of changes costs one read, not one per change.
#include <QTimer>
#include <functional>
#include <optional>

template <typename Args>
class DelayedAction {
 public:
  DelayedAction(int msecs, std::function<void(const Args&)> action) : action_(std::move(action)) {
    timer_.setSingleShot(true);
    timer_.setInterval(msecs);
    QObject::connect(&timer_, &QTimer::timeout, [this] { flush(); });
  }

  void schedule(Args args) {
    pending_ = std::move(args);
    timer_.start();
  }
  // Runs what is pending now.
  void flush() {
    timer_.stop();
    if (!pending_) return;
    Args args = std::move(*pending_);
    pending_.reset();
    action_(args);
  }
  bool isPending() const { return pending_.has_value(); }

 private:
  std::function<void(const Args&)> action_;
  std::optional<Args> pending_;
  QTimer timer_;
};
