#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "Git/Commands/WorkingDirectory/CommitGitCommand.h"
#include "Jobs/JobProgress.h"
#include "Models/CommitMessage.h"
#include "Models/GitModuleSettings.h"
#include "SigningKey.h"
#include "support/TempRepository.h"

namespace {

void writeHook(const TempRepository& repo, const QString& name, const QByteArray& body) {
  repo.writeExecutable(".git/hooks/" + name, "#!/bin/sh\n" + body + "\n");
}

QByteArray rawHeadMessage(const TempRepository& repo) {
  const QByteArray object = repo.gitBytes({"cat-file", "commit", "HEAD"});
  return object.mid(object.indexOf("\n\n") + 2);
}

// Points the temporary directory at a private folder so that left-over message files show.
class PrivateTempDir {
 public:
  PrivateTempDir() : previous_(qgetenv("TMPDIR")) { qputenv("TMPDIR", dir_.path().toLocal8Bit()); }
  ~PrivateTempDir() { qputenv("TMPDIR", previous_); }
  QStringList entries() const { return QDir(dir_.path()).entryList(QDir::Files | QDir::NoDotAndDotDot); }

 private:
  QTemporaryDir dir_;
  QByteArray previous_;
};

}  // namespace

TEST(CommitGitCommand, WritesTheMessageComposedAndRemovesTheTemporaryFile) {
  TempRepository repo;
  repo.writeFile("a.txt", "a\n");
  repo.stageAll();
  PrivateTempDir temp;

  // "Café" typed with a combining acute accent, and a body that starts with a dash.
  const CommitMessage message{"Cafe\u0301 menu", "- first point\n- e\u0301te\u0301"};
  const GitVoidResult result = CommitGitCommand::execute(repo.module(), message.text(), {});
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();

  EXPECT_EQ(rawHeadMessage(repo), QByteArray("Caf\xC3\xA9 menu\n\n- first point\n- \xC3\xA9t\xC3\xA9\n"));
  EXPECT_TRUE(temp.entries().isEmpty()) << temp.entries().join(QLatin1Char(',')).toStdString();
}

TEST(CommitGitCommand, SignsOffAndAmends) {
  TempRepository repo;
  const QString first = repo.commitFile("a.txt", "a\n", "First");
  repo.writeFile("b.txt", "b\n");
  repo.stageAll();

  CommitOptions options;
  options.signOff = true;
  ASSERT_TRUE(CommitGitCommand::execute(repo.module(), "Second", options).isSuccess());
  EXPECT_EQ(rawHeadMessage(repo), QByteArray("Second\n\nSigned-off-by: Jelv Test <test@jelv.invalid>\n"));

  options = {};
  options.amend = true;
  ASSERT_TRUE(CommitGitCommand::execute(repo.module(), "Second, reworded", options).isSuccess());
  EXPECT_EQ(rawHeadMessage(repo), QByteArray("Second, reworded\n"));
  // The amended commit replaced the second one: its parent is still the first.
  EXPECT_EQ(repo.git({"rev-parse", "HEAD^"}).trimmed(), first);
  EXPECT_EQ(repo.git({"ls-tree", "--name-only", "HEAD"}), "a.txt\nb.txt\n");
}

TEST(CommitGitCommand, FailingHookGivesCommitFailedThatCanBeRetriedWithoutHooks) {
  TempRepository repo;
  const QString base = repo.commitFile("a.txt", "a\n", "Base");
  repo.writeFile("a.txt", "a changed\n");
  repo.stageAll();
  writeHook(repo, "pre-commit", "echo 'lint: trailing blank in a.txt' >&2\nexit 1");

  JobProgress progress;
  const GitVoidResult failed = CommitGitCommand::execute(repo.module(), "Change a", {}, &progress);
  ASSERT_TRUE(failed.isError<Error::GitCommitFailed>());
  const auto* error = failed.errorAs<Error::GitCommitFailed>();
  EXPECT_EQ(*error, (Error::GitCommitFailed{repo.module(), "Change a", false, error->error}));
  EXPECT_TRUE(error->error.contains("lint: trailing blank in a.txt")) << error->error.toStdString();
  EXPECT_EQ(progress.state(), JobProgressState::failed);
  EXPECT_EQ(repo.headSha(), base);

  CommitOptions retry;
  retry.noVerify = true;
  retry.amend = error->amend;
  ASSERT_TRUE(CommitGitCommand::execute(repo.module(), error->message, retry).isSuccess());
  EXPECT_NE(repo.headSha(), base);
  EXPECT_EQ(rawHeadMessage(repo), QByteArray("Change a\n"));
}

TEST(CommitGitCommand, CommitMsgHookRejectionAndNothingToCommitKeepTheAmendFlagAndText) {
  TempRepository repo;
  repo.commitFile("a.txt", "a\n", "Base");

  // Nothing staged: git explains on stdout, which must reach the error text.
  const GitVoidResult empty = CommitGitCommand::execute(repo.module(), "Nothing", {});
  ASSERT_TRUE(empty.isError<Error::GitCommitFailed>());
  EXPECT_TRUE(empty.errorAs<Error::GitCommitFailed>()->error.contains("nothing to commit"))
      << empty.errorAs<Error::GitCommitFailed>()->error.toStdString();

  writeHook(repo, "commit-msg", "grep -q 'JIRA-' \"$1\" || { echo 'missing ticket' >&2; exit 1; }");
  CommitOptions amend;
  amend.amend = true;
  const GitVoidResult rejected = CommitGitCommand::execute(repo.module(), "Reword", amend);
  ASSERT_TRUE(rejected.isError<Error::GitCommitFailed>());
  EXPECT_TRUE(rejected.errorAs<Error::GitCommitFailed>()->amend);
  EXPECT_EQ(rejected.errorAs<Error::GitCommitFailed>()->message, "Reword");
  EXPECT_TRUE(CommitGitCommand::execute(repo.module(), "Reword JIRA-7", amend).isSuccess());
  EXPECT_EQ(rawHeadMessage(repo), QByteArray("Reword JIRA-7\n"));
}

// The commit goes through the application's gpg wrapper with the repository's key.
TEST(CommitGitCommand, SignsWithTheConfiguredKeyThroughTheWrapper) {
  const SigningKey key;
  ASSERT_FALSE(key.fingerprint.isEmpty());

  TempRepository repo;
  repo.writeFile("signed.txt", "x\n");
  repo.stageAll();
  GitModuleSettings settings = GitModuleSettings::load(repo.module());
  settings.signingKey = key.fingerprint;
  settings.save(repo.module());
  CommitOptions options = CommitOptions::fromSettings(GitModuleSettings::load(repo.module()));
  const GitVoidResult result = CommitGitCommand::execute(repo.module(), "Signed", options);
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();

  const QByteArray object = repo.gitBytes({"cat-file", "commit", "HEAD"});
  EXPECT_TRUE(object.contains("gpgsig -----BEGIN PGP SIGNATURE-----"));
  int status = 0;
  repo.git({"verify-commit", "HEAD"}, true, &status);
  EXPECT_EQ(status, 0);

  // A key that doesn't exist fails the commit rather than committing unsigned.
  repo.writeFile("other.txt", "y\n");
  repo.stageAll();
  const QString head = repo.headSha();
  options.signingKey = "0000000000000000000000000000000000000000";
  EXPECT_TRUE(CommitGitCommand::execute(repo.module(), "Unsigned?", options).isError<Error::GitCommitFailed>());
  EXPECT_EQ(repo.headSha(), head);
}
