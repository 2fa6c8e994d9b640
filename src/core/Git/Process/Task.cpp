#include "Git/Process/Task.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

std::atomic<long> Task::launchCount{0};

namespace {
std::atomic<Task::LaunchObserver> launchObserver{nullptr};
}  // namespace

void Task::setLaunchObserver(LaunchObserver observer) { launchObserver.store(observer); }

namespace {

// Writing to a pipe whose reader has gone must give EPIPE, not end our process.
const bool sigpipeIgnored = [] {
  std::signal(SIGPIPE, SIG_IGN);
  return true;
}();

void closeFd(int& fd) {
  if (fd >= 0) {
    ::close(fd);
    fd = -1;
  }
}

}  // namespace

void Task::Environment::set(const QString& name, const QString& value) {
  for (auto& [key, val] : variables) {
    if (key == name) {
      val = value;
      return;
    }
  }
  variables.emplace_back(name, value);
}

void Task::Environment::remove(const QString& name) {
  std::erase_if(variables, [&](const auto& pair) { return pair.first == name; });
}

std::optional<QString> Task::Environment::value(const QString& name) const {
  for (const auto& [key, val] : variables) {
    if (key == name) return val;
  }
  return std::nullopt;
}

Task::Environment Task::Environment::current() {
  Environment env;
  for (char** entry = environ; entry && *entry; ++entry) {
    const char* eq = std::strchr(*entry, '=');
    if (!eq) continue;
    env.variables.emplace_back(QString::fromLocal8Bit(*entry, eq - *entry), QString::fromLocal8Bit(eq + 1));
  }
  return env;
}

Task::~Task() {
  closeFd(stdinFd_);
  closeFd(stdoutFd_);
  closeFd(stderrFd_);
  // Never leave a zombie behind.
  if (pid_ > 0 && !reaped_) waitForExit();
}

bool Task::launch(QString* error) {
  (void)sigpipeIgnored;
  int inPipe[2] = {-1, -1}, outPipe[2] = {-1, -1}, errPipe[2] = {-1, -1};
  auto fail = [&](const QString& why) {
    for (int* p : {inPipe, outPipe, errPipe}) {
      closeFd(p[0]);
      closeFd(p[1]);
    }
    if (error) *error = why;
    return false;
  };
  if ((pipeStdin && ::pipe2(inPipe, O_CLOEXEC) != 0) || (pipeStdout && ::pipe2(outPipe, O_CLOEXEC) != 0) ||
      (pipeStderr && ::pipe2(errPipe, O_CLOEXEC) != 0)) {
    return fail(QString::fromLocal8Bit(std::strerror(errno)));
  }

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  if (pipeStdin) posix_spawn_file_actions_adddup2(&actions, inPipe[0], STDIN_FILENO);
  if (pipeStdout) posix_spawn_file_actions_adddup2(&actions, outPipe[1], STDOUT_FILENO);
  if (pipeStderr) posix_spawn_file_actions_adddup2(&actions, errPipe[1], STDERR_FILENO);
  QByteArray dir;
  if (currentDirectory) {
    dir = QFile::encodeName(*currentDirectory);
    posix_spawn_file_actions_addchdir_np(&actions, dir.constData());
  }

  posix_spawnattr_t attr;
  posix_spawnattr_init(&attr);
  sigset_t none, defaults;
  sigemptyset(&none);
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGPIPE);
  sigaddset(&defaults, SIGINT);
  sigaddset(&defaults, SIGTERM);
  posix_spawnattr_setsigmask(&attr, &none);
  posix_spawnattr_setsigdefault(&attr, &defaults);
  posix_spawnattr_setpgroup(&attr, 0);
  posix_spawnattr_setflags(&attr, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);

  const QByteArray path = QFile::encodeName(launchPath);
  std::vector<QByteArray> argStore;
  argStore.reserve(arguments.size() + 1);
  argStore.push_back(path);
  for (const QString& a : arguments) argStore.push_back(a.toUtf8());
  std::vector<char*> argv;
  for (auto& a : argStore) argv.push_back(a.data());
  argv.push_back(nullptr);

  std::vector<QByteArray> envStore;
  envStore.reserve(environment.variables.size());
  for (const auto& [k, v] : environment.variables) envStore.push_back((k + QLatin1Char('=') + v).toLocal8Bit());
  std::vector<char*> envp;
  for (auto& e : envStore) envp.push_back(e.data());
  envp.push_back(nullptr);

  pid_t pid = -1;
  const int rc = posix_spawn(&pid, path.constData(), &actions, &attr, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attr);
  if (rc != 0) return fail(QString::fromLocal8Bit(std::strerror(rc)));

  ++launchCount;
  if (auto observer = launchObserver.load()) observer(arguments);
  {
    // A cancel on another thread may already ask isRunning() or interrupt().
    std::lock_guard lock(reapLock_);
    pid_ = pid;
    reaped_ = false;
  }
  closeFd(inPipe[0]);
  closeFd(outPipe[1]);
  closeFd(errPipe[1]);
  stdinFd_ = inPipe[1];
  stdoutFd_ = outPipe[0];
  // A larger pipe lets git run ahead of a reader that parses as it goes.
  if (stdoutFd_ >= 0) ::fcntl(stdoutFd_, F_SETPIPE_SZ, 1 << 20);
  stderrFd_ = errPipe[0];
  return true;
}

bool Task::isRunning() {
  std::lock_guard lock(reapLock_);
  if (pid_ <= 0 || reaped_) return false;
  int status = 0;
  const pid_t r = ::waitpid(pid_, &status, WNOHANG);
  if (r == pid_) {
    reaped_ = true;
    status_ = WIFEXITED(status) ? WEXITSTATUS(status) : (WIFSIGNALED(status) ? WTERMSIG(status) : status);
    return false;
  }
  return r == 0;
}

void Task::interrupt() {
  std::lock_guard lock(reapLock_);
  // After the reap the pid may belong to someone else.
  if (pid_ <= 0 || reaped_) return;
  ::kill(-pid_, SIGINT);
}

int Task::waitForExit() {
  if (pid_ <= 0) return status_;
  int status = 0;
  pid_t r;
  // Wait without holding the lock, so interrupt() stays possible meanwhile; WNOWAIT
  // keeps the child a zombie until the lock is held, so its pid can't be reused yet.
  siginfo_t info;
  do {
    std::memset(&info, 0, sizeof info);
    r = ::waitid(P_PID, static_cast<id_t>(pid_), &info, WEXITED | WNOWAIT);
  } while (r < 0 && errno == EINTR);
  std::lock_guard lock(reapLock_);
  if (reaped_) return status_;
  do {
    r = ::waitpid(pid_, &status, 0);
  } while (r < 0 && errno == EINTR);
  reaped_ = true;
  if (r == pid_) status_ = WIFEXITED(status) ? WEXITSTATUS(status) : (WIFSIGNALED(status) ? WTERMSIG(status) : status);
  return status_;
}

int Task::takeStdin() { return std::exchange(stdinFd_, -1); }
int Task::takeStdout() { return std::exchange(stdoutFd_, -1); }
int Task::takeStderr() { return std::exchange(stderrFd_, -1); }

bool Task::writeAllAndClose(int fd, const QByteArray& data) {
  qsizetype offset = 0;
  bool ok = true;
  while (offset < data.size()) {
    const ssize_t n = ::write(fd, data.constData() + offset, static_cast<size_t>(data.size() - offset));
    if (n < 0) {
      if (errno == EINTR) continue;
      ok = false;
      break;
    }
    offset += n;
  }
  ::close(fd);
  return ok;
}

QByteArray Task::readAll(int fd) {
  QByteArray out;
  QByteArray none;
  readBoth(fd, -1, out, none);
  return out;
}

void Task::readBoth(int outFd, int errFd, QByteArray& out, QByteArray& err) {
  char buffer[65536];
  struct pollfd fds[2];
  int open = 0;
  fds[0] = {outFd, POLLIN, 0};
  fds[1] = {errFd, POLLIN, 0};
  if (outFd >= 0) ++open;
  if (errFd >= 0) ++open;
  QByteArray* sinks[2] = {&out, &err};
  while (open > 0) {
    const int r = ::poll(fds, 2, -1);
    if (r < 0) {
      if (errno == EINTR) continue;
      break;
    }
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || fds[i].revents == 0) continue;
      const ssize_t n = ::read(fds[i].fd, buffer, sizeof buffer);
      if (n > 0) {
        sinks[i]->append(buffer, n);
      } else if (n == 0 || (errno != EINTR && errno != EAGAIN)) {
        ::close(fds[i].fd);
        fds[i].fd = -1;  // poll ignores negative descriptors
        --open;
      }
    }
  }
  for (auto& f : fds) {
    if (f.fd >= 0) ::close(f.fd);
  }
}
