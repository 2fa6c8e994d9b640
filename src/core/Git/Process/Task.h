#pragma once
// A child process on posix_spawn with optional pipes for the three standard streams.
// The child leads its own process group so that an interrupt also reaches the
// programs it started (a hook, a credential helper, a script's children).
#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <atomic>
#include <mutex>
#include <optional>
#include <sys/types.h>
#include <vector>

class Task {
 public:
  struct Environment {
    std::vector<std::pair<QString, QString>> variables;
    void set(const QString& name, const QString& value);
    void remove(const QString& name);
    std::optional<QString> value(const QString& name) const;
    static Environment current();
  };

  QString launchPath;
  QStringList arguments;
  Environment environment;
  std::optional<QString> currentDirectory;
  bool pipeStdin = false;
  bool pipeStdout = true;
  bool pipeStderr = true;

  Task() = default;
  ~Task();
  Task(const Task&) = delete;
  Task& operator=(const Task&) = delete;

  // Starts the child. On failure gives the reason and no process exists.
  bool launch(QString* error = nullptr);
  bool isRunning();
  // Sends SIGINT to the child's process group while it has not been reaped.
  void interrupt();
  // Blocks until the child ends; gives the termination status (the exit code, or the
  // signal number for a child killed by a signal).
  int waitForExit();
  int terminationStatus() const { return status_; }
  pid_t pid() const { return pid_; }

  // The parent's ends of the pipes; the caller may take them over (set to -1 here).
  int takeStdin();
  int takeStdout();
  int takeStderr();

  // Writes all bytes to fd and closes it; a child that stops reading doesn't hurt us.
  static bool writeAllAndClose(int fd, const QByteArray& data);
  // Reads stdout and stderr to their ends concurrently (poll), so a child filling one
  // pipe while the other is read can never stall. Closes both.
  static void readBoth(int outFd, int errFd, QByteArray& out, QByteArray& err);
  static QByteArray readAll(int fd);

  // Counts launches, for tests that prove how many children an operation starts.
  static std::atomic<long> launchCount;
  // Sees the arguments of every launch, for tests that prove which commands ran. Called
  // on the launching thread; the observer guards its own state.
  using LaunchObserver = void (*)(const QStringList& arguments);
  static void setLaunchObserver(LaunchObserver observer);

 private:
  pid_t pid_ = -1;
  int status_ = 0;
  bool reaped_ = false;
  std::mutex reapLock_;
  int stdinFd_ = -1;
  int stdoutFd_ = -1;
  int stderrFd_ = -1;
};
