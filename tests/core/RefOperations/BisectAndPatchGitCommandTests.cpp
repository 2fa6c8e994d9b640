// Bisect to the first bad commit, and commits saved as patches and applied again.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

#include "Git/Commands/Repository/BisectGitCommand.h"
#include "Git/Commands/Revision/FormatPatchGitCommand.h"
#include "Git/Commands/WorkingDirectory/ApplyPatchGitCommand.h"
#include "support/TempRepository.h"

TEST(BisectGitCommandTest, MarksLeadToTheFirstBadCommit) {
  TempRepository repo;
  QStringList shas;
  for (int i = 0; i < 9; ++i) {
    // From the sixth commit on the file carries the fault.
    shas << repo.commitFile("value.txt", i >= 5 ? "broken\n" : QByteArray::number(i) + "\n", QStringLiteral("Commit %1").arg(i));
  }
  const GitModule module = repo.module();
  ASSERT_TRUE(BisectGitCommand::execute(module, BisectGitCommand::Step::start).isSuccess());
  auto step = BisectGitCommand::execute(module, BisectGitCommand::Step::bad);
  ASSERT_TRUE(step.isSuccess());
  step = BisectGitCommand::execute(module, BisectGitCommand::Step::good, shas.front());
  ASSERT_TRUE(step.isSuccess());

  int steps = 0;
  while (!step.value().firstBadCommit && steps++ < 10) {
    const bool bad = repo.readFile("value.txt") == "broken\n";
    step = BisectGitCommand::execute(module, bad ? BisectGitCommand::Step::bad : BisectGitCommand::Step::good);
    ASSERT_TRUE(step.isSuccess()) << describe(step.error()).toStdString();
  }
  ASSERT_TRUE(step.value().firstBadCommit);
  EXPECT_EQ(*step.value().firstBadCommit, shas[5]);
  EXPECT_LE(steps, 4);

  ASSERT_TRUE(BisectGitCommand::execute(module, BisectGitCommand::Step::reset).isSuccess());
  EXPECT_EQ(repo.headSha(), shas.back());
  EXPECT_FALSE(QFile::exists(repo.gitDir() + "/BISECT_START"));
}

// The line itself is read from a real bisect above.
TEST(BisectGitCommandTest, ReadsTheFirstBadCommitOnlyFromItsOwnLine) {
  EXPECT_EQ(BisectGitCommand::parseFirstBadCommit("Bisecting: 2 revisions left to test after this (roughly 1 step)\n"
                                                  "[89ab0123cdef] is the first bad commit in the subject"),
            std::nullopt);
  EXPECT_EQ(BisectGitCommand::parseFirstBadCommit(""), std::nullopt);
}

TEST(FormatPatchGitCommandTest, SavesOneCommitOrARangeThatApplyElsewhere) {
  TempRepository repo;
  const QString root = repo.commitFile("a.txt", "1\n", "Root");
  const QString second = repo.commitFile("a.txt", "1\n2\n", "Second");
  const QString third = repo.commitFile("b ä.txt", "b\n", "Third");
  TempRepository out(false, "patches with blank");

  struct Case {
    const char* name;
    QString oldest;
    QString newest;
    bool oldestIsRoot;
    int files;
  };
  for (const Case& c : {Case{"one", third, third, false, 1}, Case{"range", second, third, false, 2}, Case{"from root", root, third, true, 3}}) {
    SCOPED_TRACE(c.name);
    const QString folder = out.path() + "/" + c.name;
    auto written = FormatPatchGitCommand::execute(repo.module(), folder, c.oldest, c.newest, c.oldestIsRoot);
    ASSERT_TRUE(written.isSuccess()) << describe(written.error()).toStdString();
    ASSERT_EQ(written.value().size(), c.files);
    for (const QString& file : written.value()) EXPECT_TRUE(QFileInfo(QDir(repo.path()).filePath(file)).isFile()) << file.toStdString();
  }

  // The last commit's patch, applied on the commit before it, makes its change.
  repo.git({"checkout", "-q", second});
  const QString patch = QDir(out.path() + "/one").entryInfoList({"*.patch"}).value(0).absoluteFilePath();
  ASSERT_TRUE(ApplyPatchGitCommand::execute(repo.module(), patch).isSuccess());
  EXPECT_EQ(repo.readFile("b ä.txt"), "b\n");
  EXPECT_EQ(repo.headSha(), second);  // applied, not committed
  // Once more it no longer applies: git says why and nothing changes.
  EXPECT_TRUE(ApplyPatchGitCommand::execute(repo.module(), patch).isError<Error::GitUnknownError>());
  EXPECT_EQ(repo.readFile("b ä.txt"), "b\n");
}
