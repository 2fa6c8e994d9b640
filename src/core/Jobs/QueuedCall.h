#pragma once
// Runs a function later on the thread of `context` (a queued call), typically to hand a
// worker's result to the main thread.
//
// Qt orders the two sides with a lock and reference counts inside the Qt library, which
// ThreadSanitizer cannot see when Qt is not built with it. The worker's writes (the
// captured values, Qt's event and its list of posted events) and the main thread's reads
// and deletes then read as races. In such a build the edges are made visible here:
//  - posts take one lock of ours, held until Qt has queued the event; the receiving side
//    takes it once before running the function, so the whole post happened before;
//  - a call dropped unrun (its receiver destroyed) is destroyed after an acquire on its
//    own address, released by the worker once the call object stood in place.
// In other builds the wrapper adds nothing.
#include <QMetaObject>
#include <QObject>
#include <mutex>
#include <type_traits>
#include <utility>

#if defined(__SANITIZE_THREAD__)
#define JELV_THREAD_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(thread_sanitizer)
#define JELV_THREAD_SANITIZER 1
#endif
#endif

#ifdef JELV_THREAD_SANITIZER
extern "C" void __tsan_acquire(void* address);
extern "C" void __tsan_release(void* address);

inline std::mutex& queuedCallPostLock() {
  static std::mutex lock;
  return lock;
}
#endif

template <typename Function>
class QueuedCall {
 public:
  explicit QueuedCall(Function function) : function_(std::move(function)) { publish(); }
  QueuedCall(QueuedCall&& other) noexcept(std::is_nothrow_move_constructible_v<Function>)
      : function_(std::move(other.function_)) {
    publish();
  }
  QueuedCall(const QueuedCall&) = delete;
  QueuedCall& operator=(const QueuedCall&) = delete;
  QueuedCall& operator=(QueuedCall&&) = delete;
  // Never takes the post lock: a worker still inside its post may destroy the last copy.
  ~QueuedCall() { receive(); }

  void operator()() {
    receive();
#ifdef JELV_THREAD_SANITIZER
    { std::lock_guard postDone(queuedCallPostLock()); }
#endif
    function_();
    publish();
  }

 private:
#ifdef JELV_THREAD_SANITIZER
  void publish() { __tsan_release(this); }
  void receive() { __tsan_acquire(this); }
#else
  void publish() {}
  void receive() {}
#endif

  Function function_;
};

// Posts `function` to run on `context`'s thread; dropped (and destroyed) unrun if
// `context` is destroyed first.
template <typename Function>
void postQueuedCall(QObject* context, Function&& function) {
#ifdef JELV_THREAD_SANITIZER
  std::lock_guard posting(queuedCallPostLock());
#endif
  QMetaObject::invokeMethod(context, QueuedCall<std::decay_t<Function>>(std::forward<Function>(function)),
                            Qt::QueuedConnection);
}
