// The application's own git must work through its private exec path: helpers such as
// remote-https and submodule are found there, and git-lfs / git-flow are on PATH.
#include <gtest/gtest.h>

#include <QDir>
#include <QFileInfo>

#include "Consts.h"
#include "Git/Process/GitRequest.h"
#include "Services/Preferences.h"
#include "support/TempRepository.h"

class LocalGitInstanceTest : public ::testing::Test {
 protected:
  void SetUp() override { Preferences::shared().setGitInstance(GitInstanceType::local()); }
  void TearDown() override { Preferences::shared().setGitInstance(GitInstanceType::system()); }

  static GitResponse run(const QString& dir, const QStringList& args) { return GitRequest(dir, args).execute(); }
};

TEST_F(LocalGitInstanceTest, StagedCopyIsARealFileWithItsOwnExecPath) {
  const QFileInfo git(Consts::Git::localGitPath());
  ASSERT_TRUE(git.isFile()) << git.filePath().toStdString();
  EXPECT_FALSE(git.isSymLink());
  TempRepository repo;
  const GitResponse execPath = run(repo.path(), {QStringLiteral("--exec-path")});
  ASSERT_TRUE(execPath.isSuccess());
  EXPECT_EQ(QFileInfo(execPath.output.trimmed()).canonicalFilePath(),
            QFileInfo(Consts::resourcesDirectory() + QStringLiteral("/git-instance/libexec/git-core")).canonicalFilePath());
}

TEST_F(LocalGitInstanceTest, ClonesOverFileUrlAndUpdatesSubmodules) {
  TempRepository lib(true, QStringLiteral("lib"));
  lib.commitFile(QStringLiteral("lib.txt"), "library\n", QStringLiteral("lib"));
  TempRepository app(true, QStringLiteral("app"));
  app.commitFile(QStringLiteral("main.txt"), "app\n", QStringLiteral("app"));
  app.git({QStringLiteral("-c"), QStringLiteral("protocol.file.allow=always"), QStringLiteral("submodule"), QStringLiteral("add"),
           QStringLiteral("file://") + lib.path(), QStringLiteral("lib")});
  app.commit(QStringLiteral("add submodule"));

  QTemporaryDir target;
  const QString clonePath = target.path() + QStringLiteral("/clone with blanks é");
  const GitResponse clone = run(target.path(), {QStringLiteral("clone"), QStringLiteral("file://") + app.path(), clonePath});
  ASSERT_TRUE(clone.isSuccess()) << clone.failure->error.toStdString();
  EXPECT_TRUE(QFileInfo::exists(clonePath + QStringLiteral("/main.txt")));

  const GitResponse update = run(clonePath, {QStringLiteral("-c"), QStringLiteral("protocol.file.allow=always"), QStringLiteral("submodule"),
                                             QStringLiteral("update"), QStringLiteral("--init")});
  ASSERT_TRUE(update.isSuccess()) << update.failure->error.toStdString();
  EXPECT_TRUE(QFileInfo::exists(clonePath + QStringLiteral("/lib/lib.txt")));
}

TEST_F(LocalGitInstanceTest, FindsTheHttpsHelper) {
  TempRepository repo;
  // Nothing listens on port 9; what matters is that git found its https transport.
  const GitResponse response = run(repo.path(), {QStringLiteral("ls-remote"), QStringLiteral("https://127.0.0.1:9/none.git")});
  ASSERT_FALSE(response.isSuccess());
  EXPECT_FALSE(response.failure->error.contains(QStringLiteral("remote-https"))) << response.failure->error.toStdString();
  EXPECT_TRUE(response.failure->error.contains(QStringLiteral("127.0.0.1"))) << response.failure->error.toStdString();
}

TEST_F(LocalGitInstanceTest, LfsAndFlowAreOnThePath) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("readme"), "x\n", QStringLiteral("init"));
  ASSERT_TRUE(run(repo.path(), {QStringLiteral("lfs"), QStringLiteral("install"), QStringLiteral("--local")}).isSuccess());
  ASSERT_TRUE(run(repo.path(), {QStringLiteral("lfs"), QStringLiteral("track"), QStringLiteral("*.bin")}).isSuccess());
  repo.writeFile(QStringLiteral("big.bin"), QByteArray(4096, 'z'));
  ASSERT_TRUE(run(repo.path(), {QStringLiteral("add"), QStringLiteral(".gitattributes"), QStringLiteral("big.bin")}).isSuccess());
  ASSERT_TRUE(run(repo.path(), {QStringLiteral("commit"), QStringLiteral("-m"), QStringLiteral("lfs")}).isSuccess());
  const GitResponse blob = run(repo.path(), {QStringLiteral("cat-file"), QStringLiteral("-p"), QStringLiteral("HEAD:big.bin")});
  ASSERT_TRUE(blob.isSuccess());
  EXPECT_TRUE(blob.output.startsWith(QStringLiteral("version https://git-lfs.github.com/spec/v1"))) << blob.output.toStdString();

  const GitResponse flow = run(repo.path(), {QStringLiteral("flow"), QStringLiteral("version")});
  ASSERT_TRUE(flow.isSuccess()) << flow.failure->error.toStdString();
  EXPECT_FALSE(flow.output.trimmed().isEmpty());
}
