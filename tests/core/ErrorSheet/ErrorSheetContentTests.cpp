#include <gtest/gtest.h>

#include "Git/Commands/WorkingDirectory/CommitGitCommand.h"
#include "Git/Commands/WorkingDirectory/StageFilesGitCommand.h"
#include "Models/ChangedFile.h"
#include "Models/ErrorSheetContent.h"
#include "support/TempRepository.h"

namespace {
using Repair = ErrorSheetContent::Repair;

void writeHook(const TempRepository& repo, const QString& name, const QByteArray& body) {
  repo.writeExecutable(".git/hooks/" + name, "#!/bin/sh\n" + body);
}

ChangedFilePtr fileAt(const QString& path) {
  ChangedFile file;
  file.path = path;
  return std::make_shared<const ChangedFile>(file);
}
}  // namespace

// A lock left behind by a crashed git makes any index-writing command fail the same way.
TEST(ErrorClassification, StaleIndexLockIsRecognisedByStageAndCommit) {
  TempRepository repo;
  repo.commitFile("a.txt", "a\n", "base");
  repo.writeFile("a.txt", "b\n");
  repo.writeFile(".git/index.lock", "");

  const GitVoidResult staged = StageFilesGitCommand::execute(repo.module(), {fileAt("a.txt")});
  ASSERT_TRUE(staged.isError<Error::RepositoryIsLocked>()) << describe(staged.error()).toStdString();
  EXPECT_TRUE(staged.errorAs<Error::RepositoryIsLocked>()->error.contains(u"index.lock"));

  const GitVoidResult committed = CommitGitCommand::execute(repo.module(), "msg", {});
  EXPECT_TRUE(committed.isError<Error::RepositoryIsLocked>());

  const ErrorSheetContent content = ErrorSheetContent::make(staged.error());
  EXPECT_EQ(content.repair, Repair::removeIndexLock);
  EXPECT_EQ(content.buttonTitle, "Remove .git/index.lock");
}

TEST(ErrorSheetContent, CommitFailureOffersTheRepairThatFits) {
  TempRepository repo;
  const Error::GitCommitFailed identity{repo.module(), "m", false, "\n*** Please tell me who you are.\n\nRun\n"};
  const Error::GitCommitFailed hookFailed{repo.module(), "m", false, "lint failed\n"};

  // Without hook files nothing can be skipped.
  EXPECT_EQ(ErrorSheetContent::make(ResultError(hookFailed)).repair, Repair::none);
  EXPECT_TRUE(ErrorSheetContent::make(ResultError(hookFailed)).buttonTitle.isEmpty());

  for (const char* hook : {"pre-commit", "commit-msg", "post-commit"}) {
    TempRepository withHook;
    writeHook(withHook, QLatin1String(hook), "exit 0\n");
    const Error::GitCommitFailed failed{withHook.module(), "m", false, "x"};
    EXPECT_EQ(ErrorSheetContent::make(ResultError(failed)).buttonTitle, "Skip pre-commit hooks and commit") << hook;
  }

  // A missing identity wins even when hooks exist.
  writeHook(repo, "pre-commit", "exit 1\n");
  const ErrorSheetContent content = ErrorSheetContent::make(ResultError(identity));
  EXPECT_EQ(content.repair, Repair::setupIdentity);
  EXPECT_EQ(content.buttonTitle, "Setup identity for this repository");
  EXPECT_EQ(ErrorSheetContent::make(ResultError(hookFailed)).repair, Repair::skipHooksAndCommit);
}

TEST(ErrorSheetContent, TextsOfTheOtherCases) {
  EXPECT_EQ(ErrorSheetContent::make(ResultError(Error::GitUnknownError{"out", "err"})).text, "out\nerr");
  EXPECT_EQ(ErrorSheetContent::make(ResultError(Error::GitUnknownError{{}, "err"})).text, "err");
  EXPECT_EQ(ErrorSheetContent::make(ResultError(Error::GitUnknownError{"out", {}})).text, "out");
  EXPECT_EQ(ErrorSheetContent::make(ResultError(Error::GitUnknownError{})).text, QString());
  EXPECT_EQ(ErrorSheetContent::make(ResultError(Error::LaunchPathIsNotExecutable{"/x/git"})).text,
            "Launch path is not executable '/x/git'");
  EXPECT_EQ(ErrorSheetContent::make(ResultError(Error::ConnectionError{"denied"})).text,
            "denied\n\nIn a case you entered incorrect password, please\nupdate it in Keychain Access application.");
  EXPECT_EQ(ErrorSheetContent::make(ResultError(Error::UnknownException{"boom"})).text, "Unhandled error 'boom'");
  EXPECT_EQ(ErrorSheetContent::make(ResultError(Error::NoChanges{})).text, "unknown error");
  EXPECT_EQ(ErrorSheetContent::make(std::nullopt).text, "Unknown error");
  EXPECT_EQ(ErrorSheetContent::make(ResultError(Error::Generic{"plain"})).repair, Repair::none);
}
