#pragma once
// Shared helpers of the benchmark programs: a private preferences file, timing of our
// code and of git itself in the same run, peak memory, and the one-line report.
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <functional>
#include <unistd.h>
#include <vector>

#include "Git/Commands/Revision/GetRevisionsGitCommand.h"
#include "Git/Process/Task.h"
#include "Jobs/JobProgress.h"
#include "Services/Preferences.h"

namespace Bench {

// The programs take the figure's name and a repository; false, after saying so, when
// they are missing.
inline bool hasArguments(int argc, char** argv) {
  if (argc >= 3) return true;
  std::fprintf(stderr, "usage: %s NAME REPOSITORY\n", argv[0]);
  return false;
}

inline void setUpEnvironment() {
  ::setenv("JELV_LOG_LEVEL", "warn", 0);
  static QTemporaryDir dir;
  Preferences::useStoreFile(dir.path() + QStringLiteral("/bench.ini"));
  Preferences::shared().setGitInstance(GitInstanceType::system());
  // The generated histories stay as generated: no commit-graph written behind our back.
  Preferences::shared().setKeepCommitGraphUpToDate(false);
}

inline double seconds(const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

// The median of several measurements, after one warm-up run that fills the file cache.
inline double medianOf(const std::function<double()>& measure, int runs = 5) {
  measure();
  std::vector<double> values;
  for (int i = 0; i < runs; ++i) values.push_back(measure());
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

inline double medianSeconds(const std::function<void()>& work, int runs = 5) {
  return medianOf([&] { return seconds(work); }, runs);
}

// The repository a benchmark is given, its Git directory inside it.
inline GitModule moduleAt(const QString& repo) { return GitModule{repo, repo + QStringLiteral("/.git"), std::nullopt}; }

// The commit list read as the application reads it.
inline GitResult<RevisionList> loadHistory(const GitModule& module) {
  JobProgress progress;
  return GetRevisionsGitCommand::execute(module, true, false, progress);
}

// Set-up of generated repositories: git's stdout, stderr passed through.
inline QByteArray git(const QString& directory, const QStringList& args) {
  QProcess process;
  process.setWorkingDirectory(directory);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(QStringLiteral("/usr/bin/git"), args);
  process.waitForFinished(-1);
  return process.readAllStandardOutput();
}

inline void writeFile(const QString& path, const QByteArray& content) {
  QFile file(path);
  if (file.open(QIODevice::WriteOnly | QIODevice::Truncate)) file.write(content);
}

inline void commitAll(const QString& directory, const QString& message) {
  git(directory, {QStringLiteral("add"), QStringLiteral("-A")});
  git(directory, {QStringLiteral("-c"), QStringLiteral("user.name=Bench"), QStringLiteral("-c"), QStringLiteral("user.email=bench@example.com"),
                  QStringLiteral("commit"), QStringLiteral("-q"), QStringLiteral("-m"), message});
}

// A new repository whose "big.txt" of 5,000 committed lines has every line replaced in
// the work tree: one hunk of 10,000 changed lines.
inline void makeRepositoryWithReplacedFile(const QString& repo) {
  git(repo, {QStringLiteral("init"), QStringLiteral("-q")});
  QByteArray before, after;
  for (int line = 0; line < 5000; ++line) {
    before += "old line " + QByteArray::number(line) + '\n';
    after += "new line " + QByteArray::number(line) + '\n';
  }
  writeFile(repo + QStringLiteral("/big.txt"), before);
  commitAll(repo, QStringLiteral("one"));
  writeFile(repo + QStringLiteral("/big.txt"), after);
}

// Starts git in the repository with its stdout on a pipe; gives the pipe.
inline int launchGit(Task& task, const QString& repo, const QStringList& args) {
  task.launchPath = QStringLiteral("/usr/bin/git");
  task.arguments = args;
  task.environment = Task::Environment::current();
  task.currentDirectory = repo;
  task.pipeStdout = true;
  task.pipeStderr = false;
  task.launch();
  return task.takeStdout();
}

// Runs git with stdout to /dev/null, the reference for what git alone costs.
inline void runGitToDevNull(const QString& repo, const QStringList& args) {
  Task task;
  const int out = launchGit(task, repo, args);
  char buffer[65536];
  while (::read(out, buffer, sizeof buffer) > 0) {
  }
  ::close(out);
  task.waitForExit();
}

// Peak resident memory of this process in bytes.
inline long peakRssBytes() {
  FILE* f = std::fopen("/proc/self/status", "r");
  if (!f) return 0;
  char line[256];
  long kb = 0;
  while (std::fgets(line, sizeof line, f)) {
    if (std::sscanf(line, "VmHWM: %ld kB", &kb) == 1) break;
  }
  std::fclose(f);
  return kb * 1024;
}

inline long currentRssBytes() {
  FILE* f = std::fopen("/proc/self/status", "r");
  if (!f) return 0;
  char line[256];
  long kb = 0;
  while (std::fgets(line, sizeof line, f)) {
    if (std::sscanf(line, "VmRSS: %ld kB", &kb) == 1) break;
  }
  std::fclose(f);
  return kb * 1024;
}

inline void report(const char* name, double ours, const char* unit, double ref, const char* refUnit) {
  std::printf("%s ours=%.3f%s ref=%.3f%s ratio=%.3f\n", name, ours, unit, ref, refUnit, ref > 0 ? ours / ref : 0.0);
  std::fflush(stdout);
}

inline void report(const char* name, double ours, const char* unit) {
  std::printf("%s ours=%.3f%s\n", name, ours, unit);
  std::fflush(stdout);
}

}  // namespace Bench
