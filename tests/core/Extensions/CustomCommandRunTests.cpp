#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>
#include <thread>

#include "Jobs/JobProgress.h"
#include "Models/LocalBranch.h"
#include "Models/RemoteBranch.h"
#include "Services/CustomCommandRunner.h"
#include "support/TempRepository.h"

namespace {

const QString sha = QStringLiteral("0123456789abcdef0123456789abcdef01234567");
const GitModule module{QStringLiteral("/src/my repo"), QStringLiteral("/src/my repo/.git"), std::nullopt};
const QString git = QStringLiteral("/usr/bin/git");

std::shared_ptr<const CustomCommandEnvironment> environment(const QString& kind) {
  if (kind == "revision") return std::make_shared<RevisionCustomCommandEnvironment>(module, git, sha);
  if (kind == "file") return std::make_shared<FileCustomCommandEnvironment>(module, git, "src/a b.c", "a b.c", sha);
  if (kind == "workingFile") return std::make_shared<FileCustomCommandEnvironment>(module, git, "src/a b.c", "a b.c", std::nullopt);
  if (kind == "remoteBranch")
    return std::make_shared<RefCustomCommandEnvironment>(
        module, git, std::make_shared<RemoteBranch>(sha, "refs/remotes/origin/dev/x", "dev/x", "origin/dev/x", QDateTime(), "origin"));
  if (kind == "localBranch")
    return std::make_shared<RefCustomCommandEnvironment>(
        module, git, std::make_shared<LocalBranch>(sha, "refs/heads/main", "main", "main", QDateTime(), true, std::nullopt));
  return std::make_shared<CustomCommandEnvironment>(module, git);
}

struct Row {
  const char* kind;
  const char* text;
  bool urlEncode;
  const char* expected;
};

}  // namespace

// Plain search and replace, own variables before the common ones, nothing quoted.
TEST(CustomCommandEnvironment, ReplacesTheVariablesOfEachTarget) {
  const Row rows[] = {
      {"repository", "$git -C $path log", false, "/usr/bin/git -C /src/my repo log"},
      {"repository", "$repository=$reponame", false, "my repo=my repo"},
      {"repository", "$name $SHA $filepath", false, "$name $SHA $filepath"},  // not this target's
      {"repository", "$pathname", false, "/src/my reponame"},                // a prefix of a longer word too
      {"repository", "https://x.invalid/?r=$reponame&p=$path", true, "https://x.invalid/?r=my%20repo&p=%2Fsrc%2Fmy%20repo"},
      {"revision", "$SHA $sha", false, "0123456789abcdef0123456789abcdef01234567 0123456"},
      {"revision", "$sha.$reponame", true, "0123456.my%20repo"},
      {"file", "$filepath|$filename|$sha|$path", false, "src/a b.c|a b.c|0123456|/src/my repo"},
      // The file's own values are never encoded, the common ones are.
      {"file", "$filepath?$reponame", true, "src/a b.c?my%20repo"},
      {"workingFile", "$filename $SHA $sha", false, "a b.c $SHA $sha"},
      {"remoteBranch", "$name $shortname $fullreference $sha", false, "origin/dev/x dev/x refs/remotes/origin/dev/x 0123456"},
      {"remoteBranch", "$shortname", true, "dev%2Fx"},
      {"localBranch", "$name@$SHA", false, "main@0123456789abcdef0123456789abcdef01234567"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(environment(row.kind)->replace(row.text, row.urlEncode).toStdString(), std::string(row.expected))
        << row.kind << ": " << row.text;
  }
}

// No parameters at all is no argument, not one empty one (the split and the replacing of
// the others: CustomCommandProcess.RunsInTheWorkTreeWithTheReplacedArguments).
TEST(CustomCommandRunner, NoParametersIsNoArgument) {
  const auto invocation = CustomCommandRunner::invocation(ProcessCustomCommandAction("$git", "", false, true), *environment("file"));
  EXPECT_EQ(invocation.arguments, QStringList{});
}

class CustomCommandProcess : public ::testing::Test {
 protected:
  void SetUp() override { repo.commitFile("a.txt", "a\n", "first"); }

  TempRepository repo{true, QStringLiteral("ré po")};
  JobProgress progress;

  GitResult<ShellStringResponse> run(const QString& path, const QString& parameters, const QString& target = "revision") {
    const QString head = repo.headSha();
    std::shared_ptr<const CustomCommandEnvironment> env;
    if (target == "revision") env = std::make_shared<RevisionCustomCommandEnvironment>(repo.module(), git, head);
    else env = std::make_shared<CustomCommandEnvironment>(repo.module(), git);
    return CustomCommandRunner::run(CustomCommandRunner::invocation(ProcessCustomCommandAction(path, parameters, true, false), *env), progress);
  }
};

// The program runs in the work tree with the replaced arguments; what it prints reaches
// the job's output and the response.
TEST_F(CustomCommandProcess, RunsInTheWorkTreeWithTheReplacedArguments) {
  repo.writeExecutable("tool.sh", "#!/bin/sh\nprintf '%s\\n' \"$PWD\" \"$@\" > got.txt\necho done; echo careful >&2\n");
  const auto result = run("$path/tool.sh", "$sha $reponame  $SHA");
  ASSERT_TRUE(result) << describe(result.error()).toStdString();
  const QString head = repo.headSha();
  EXPECT_EQ(QString::fromUtf8(repo.readFile("got.txt")),
            QDir(repo.path()).canonicalPath() + "\n" + head.left(7) + "\nré po\n\n" + head + "\n");
  EXPECT_EQ(result.value().output.trimmed(), "done");
  const QString output = progress.output();
  EXPECT_TRUE(output.startsWith("$ " + repo.path() + "/tool.sh " + head.left(7) + " ré po  " + head + "\n\n")) << output.toStdString();
  EXPECT_TRUE(output.contains("done\n") && output.contains("careful\n")) << output.toStdString();
  EXPECT_EQ(progress.state(), JobProgressState::succeeded);
}

// A program that is missing, or ends with a failing status, fails with words that say so
// and what it printed.
TEST_F(CustomCommandProcess, FailuresSayWhatWentWrong) {
  const auto missing = run("$path/nothing-here.sh", "", "repository");
  ASSERT_TRUE(missing.isFailure());
  EXPECT_TRUE(describe(missing.error()).contains("nothing-here.sh")) << describe(missing.error()).toStdString();

  repo.writeExecutable("fail.sh", "#!/bin/sh\necho 'no such branch' >&2\nexit 3\n");
  const auto failed = run("$path/fail.sh", "", "repository");
  ASSERT_TRUE(failed.isFailure());
  const QString text = describe(failed.error());
  EXPECT_TRUE(text.contains("exited with status 3") && text.contains("no such branch")) << text.toStdString();
  EXPECT_TRUE(progress.output().contains("no such branch"));
  EXPECT_EQ(progress.state(), JobProgressState::failed);
}

// Whether a "sleep" runs in the folder. A cancel while the script is still forking its
// child would reach only the script, and the orphan would hold the output pipe open.
bool sleepRunsIn(const QString& folder) {
  for (const QString& pid : QDir(QStringLiteral("/proc")).entryList(QDir::Dirs)) {
    QFile comm("/proc/" + pid + "/comm");
    if (comm.open(QIODevice::ReadOnly) && comm.readAll() == "sleep\n" && QFileInfo("/proc/" + pid + "/cwd").symLinkTarget() == folder)
      return true;
  }
  return false;
}

// Cancelling the job stops the program and whatever it started, at once.
TEST_F(CustomCommandProcess, CancelStopsTheProgram) {
  repo.writeExecutable("slow.sh", "#!/bin/sh\nsleep 30\necho finished > done.txt\n");
  QElapsedTimer timer;
  timer.start();
  std::optional<GitResult<ShellStringResponse>> result;
  std::thread job([&] { result = run("$path/slow.sh", "", "repository"); });
  const QString folder = QDir(repo.path()).canonicalPath();
  while (!sleepRunsIn(folder) && timer.elapsed() < 10000) QThread::msleep(20);
  progress.cancel();
  job.join();
  ASSERT_TRUE(result.has_value());
  EXPECT_TRUE(result->isError<Error::Canceled>());
  EXPECT_LT(timer.elapsed(), 10000);
  EXPECT_FALSE(QFile::exists(repo.path() + "/done.txt"));
}
