#include "support/TempRepository.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <thread>
#include <utility>
#include <vector>

#include "Git/Process/Task.h"

namespace {

struct Pipe {
  int fds[2] = {-1, -1};
  Pipe() {
    if (::pipe2(fds, O_CLOEXEC) != 0) fds[0] = fds[1] = -1;
  }
  ~Pipe() { closeBoth(); }
  void closeBoth() {
    closeEnd(0);
    closeEnd(1);
  }
  void closeEnd(int i) {
    if (fds[i] >= 0) ::close(fds[i]);
    fds[i] = -1;
  }
  // Gives the end away; the caller closes it.
  int take(int i) { return std::exchange(fds[i], -1); }
};

}  // namespace

// posix_spawnp rather than QProcess: QProcess starts the child with vfork semantics and
// runs hooked libc calls in it, which under ThreadSanitizer corrupts the calling thread's
// sanitizer state (the main thread's own locks stop being seen afterwards).
QByteArray runProgram(const QString& program, const QStringList& args, const QString& workingDirectory, int* status,
                      const QByteArray& input) {
  Pipe in, out, err;
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, in.fds[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, out.fds[1], STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, err.fds[1], STDERR_FILENO);
  const QByteArray dir = QFile::encodeName(workingDirectory);
  if (!workingDirectory.isEmpty()) posix_spawn_file_actions_addchdir_np(&actions, dir.constData());

  std::vector<QByteArray> argStore{QFile::encodeName(program)};
  for (const QString& a : args) argStore.push_back(a.toUtf8());
  std::vector<char*> argv;
  for (QByteArray& a : argStore) argv.push_back(a.data());
  argv.push_back(nullptr);

  // The child gets the default SIGPIPE back; this process ignores it.
  posix_spawnattr_t attr;
  posix_spawnattr_init(&attr);
  sigset_t defaults;
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGPIPE);
  posix_spawnattr_setsigdefault(&attr, &defaults);
  posix_spawnattr_setflags(&attr, POSIX_SPAWN_SETSIGDEF);

  pid_t pid = -1;
  const int rc = posix_spawnp(&pid, argv[0], &actions, &attr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attr);
  in.closeEnd(0);
  out.closeEnd(1);
  err.closeEnd(1);
  if (rc != 0) {
    if (status) *status = -1;
    else ADD_FAILURE() << program.toStdString() << " could not start: " << std::strerror(rc);
    return {};
  }

  // Written beside the reads: a child that answers before it has read everything must
  // not stall on a full pipe.
  std::thread writer;
  if (input.isEmpty()) {
    in.closeEnd(1);
  } else {
    writer = std::thread([fd = in.take(1), &input] { Task::writeAllAndClose(fd, input); });
  }
  QByteArray stdoutBytes, stderrBytes;
  Task::readBoth(out.take(0), err.take(0), stdoutBytes, stderrBytes);
  if (writer.joinable()) writer.join();

  int wstatus = 0;
  while (::waitpid(pid, &wstatus, 0) < 0 && errno == EINTR) {
  }
  const int code = WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : -1;
  if (status) *status = code;
  if (code != 0 && !status) {
    ADD_FAILURE() << program.toStdString() << " " << args.join(QLatin1Char(' ')).toStdString() << " failed: "
                  << stderrBytes.toStdString();
  }
  return stdoutBytes;
}

TempRepository::TempRepository(bool init, const QString& folderName) {
  path_ = QFileInfo(dir_.path()).canonicalFilePath() + QLatin1Char('/') + folderName;
  QDir().mkpath(path_);
  if (init) git({QStringLiteral("init"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("main")});
}

GitModule TempRepository::module() const { return GitModule{path_, gitDir(), std::nullopt}; }

QString TempRepository::git(const QStringList& args, bool allowFailure, int* status) const {
  int code = 0;
  const QByteArray out = runProgram(QStringLiteral("git"), args, path_, &code);
  if (status) *status = code;
  if (code != 0 && !allowFailure) ADD_FAILURE() << "git " << args.join(QLatin1Char(' ')).toStdString() << " exited " << code;
  return QString::fromUtf8(out);
}

QByteArray TempRepository::gitBytes(const QStringList& args, const QByteArray& input) const {
  int code = 0;
  QByteArray out = runProgram(QStringLiteral("git"), args, path_, &code, input);
  if (code != 0) ADD_FAILURE() << "git " << args.join(QLatin1Char(' ')).toStdString() << " exited " << code;
  return out;
}

void TempRepository::writeFile(const QString& relativePath, const QByteArray& content) const {
  const QString full = path_ + QLatin1Char('/') + relativePath;
  QDir().mkpath(QFileInfo(full).absolutePath());
  QFile file(full);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
    ADD_FAILURE() << "cannot write " << full.toStdString();
    return;
  }
  file.write(content);
}

void TempRepository::writeExecutable(const QString& relativePath, const QByteArray& content) const {
  writeFile(relativePath, content);
  const QString full = path_ + QLatin1Char('/') + relativePath;
  QFile::setPermissions(full, QFile::permissions(full) | QFileDevice::ExeOwner);
}

QByteArray TempRepository::readFile(const QString& relativePath) const {
  QFile file(path_ + QLatin1Char('/') + relativePath);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll();
}

void TempRepository::removeFile(const QString& relativePath) const { QFile::remove(path_ + QLatin1Char('/') + relativePath); }

void TempRepository::stageAll() const { git({QStringLiteral("add"), QStringLiteral("-A")}); }

QString TempRepository::commit(const QString& message) const {
  stageAll();
  git({QStringLiteral("commit"), QStringLiteral("-q"), QStringLiteral("--allow-empty"), QStringLiteral("-m"), message});
  return headSha();
}

QString TempRepository::commitFile(const QString& relativePath, const QByteArray& content, const QString& message) const {
  writeFile(relativePath, content);
  return commit(message);
}

QString TempRepository::headSha() const { return git({QStringLiteral("rev-parse"), QStringLiteral("HEAD")}).trimmed(); }
