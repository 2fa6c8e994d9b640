#pragma once
// Follows a growing file (git-lfs writes its progress to one) on a thread of its own.
#include <QString>
#include <functional>
#include <memory>
#include <thread>

class CancelationToken;

class TailReader {
 public:
  explicit TailReader(QString url) : url_(std::move(url)) {}
  ~TailReader();
  TailReader(const TailReader&) = delete;
  TailReader& operator=(const TailReader&) = delete;

  // Starts the read loop; it polls every 0.1 s until the token is canceled. The reader
  // is not reset at the end of the file, so only the first burst of lines after the
  // file became non-empty reaches the callback.
  void tail(std::shared_ptr<CancelationToken> cancel, std::function<void(const QString&)> callback);
  // Waits for the loop to end (after the token was canceled).
  void wait();

 private:
  QString url_;
  std::thread operationQueue_;
};
