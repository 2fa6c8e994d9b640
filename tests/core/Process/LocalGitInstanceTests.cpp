// The application's own git must work through its private exec path: helpers such as
// remote-https and submodule are found there, and git-lfs / git-flow are on PATH.
#include <gtest/gtest.h>

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
  const GitResponse execPath = run(repo.path(), {"--exec-path"});
  ASSERT_TRUE(execPath.isSuccess());
  EXPECT_EQ(QFileInfo(execPath.output.trimmed()).canonicalFilePath(),
            QFileInfo(Consts::resourcesDirectory() + "/git-instance/libexec/git-core").canonicalFilePath());
}

TEST_F(LocalGitInstanceTest, ClonesOverFileUrlAndUpdatesSubmodules) {
  TempRepository lib(true, "lib");
  lib.commitFile("lib.txt", "library\n", "lib");
  TempRepository app(true, "app");
  app.commitFile("main.txt", "app\n", "app");
  app.git({"-c", "protocol.file.allow=always", "submodule", "add", "file://" + lib.path(), "lib"});
  app.commit("add submodule");

  QTemporaryDir target;
  const QString clonePath = target.path() + "/clone with blanks é";
  const GitResponse clone = run(target.path(), {"clone", "file://" + app.path(), clonePath});
  ASSERT_TRUE(clone.isSuccess()) << clone.failure->error.toStdString();
  EXPECT_TRUE(QFileInfo::exists(clonePath + "/main.txt"));

  const GitResponse update = run(clonePath, {"-c", "protocol.file.allow=always", "submodule", "update", "--init"});
  ASSERT_TRUE(update.isSuccess()) << update.failure->error.toStdString();
  EXPECT_TRUE(QFileInfo::exists(clonePath + "/lib/lib.txt"));
}

TEST_F(LocalGitInstanceTest, FindsTheHttpsHelper) {
  TempRepository repo;
  // Nothing listens on port 9; what matters is that git found its https transport.
  const GitResponse response = run(repo.path(), {"ls-remote", "https://127.0.0.1:9/none.git"});
  ASSERT_FALSE(response.isSuccess());
  EXPECT_FALSE(response.failure->error.contains("remote-https")) << response.failure->error.toStdString();
  EXPECT_TRUE(response.failure->error.contains("127.0.0.1")) << response.failure->error.toStdString();
}

TEST_F(LocalGitInstanceTest, LfsAndFlowAreOnThePath) {
  TempRepository repo;
  repo.commitFile("readme", "x\n", "init");
  ASSERT_TRUE(run(repo.path(), {"lfs", "install", "--local"}).isSuccess());
  ASSERT_TRUE(run(repo.path(), {"lfs", "track", "*.bin"}).isSuccess());
  repo.writeFile("big.bin", QByteArray(4096, 'z'));
  ASSERT_TRUE(run(repo.path(), {"add", ".gitattributes", "big.bin"}).isSuccess());
  ASSERT_TRUE(run(repo.path(), {"commit", "-m", "lfs"}).isSuccess());
  const GitResponse blob = run(repo.path(), {"cat-file", "-p", "HEAD:big.bin"});
  ASSERT_TRUE(blob.isSuccess());
  EXPECT_TRUE(blob.output.startsWith("version https://git-lfs.github.com/spec/v1")) << blob.output.toStdString();

  const GitResponse flow = run(repo.path(), {"flow", "version"});
  ASSERT_TRUE(flow.isSuccess()) << flow.failure->error.toStdString();
  EXPECT_FALSE(flow.output.trimmed().isEmpty());
}
