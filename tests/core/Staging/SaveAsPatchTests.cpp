#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/SaveChangesAsPatchGitCommand.h"
#include "StagingTestSupport.h"

// The saved patch brings a clean checkout to the same files: a staged new file, an
// unstaged edit in Latin-1, an untracked file and a binary change, each byte kept.
TEST(SaveAsPatch, ThePatchRecreatesTheChangesInACleanCheckout) {
  TempRepository repo;
  const QByteArray latin1("caf\xe9 cr\xe8me\n");
  QByteArray binary(300, '\0');
  for (int i = 0; i < binary.size(); ++i) binary[i] = static_cast<char>(i * 7);
  repo.commitFile("menu.txt", "cafe\n", "base");
  repo.commitFile("logo.bin", QByteArray(300, '\1'), "logo");
  repo.writeFile("menu.txt", latin1);
  repo.writeFile("logo.bin", binary);
  repo.writeFile("src/new.h", "#pragma once\n");
  repo.git({"add", "src/new.h"});
  repo.writeFile("notes/todo.txt", "one\ntwo\n");

  auto status = GetChangedFilesGitCommand::execute(repo.module(), {}, false, false);
  ASSERT_TRUE(status.isSuccess());
  ASSERT_EQ(status.value().changedFiles.size(), 4u);
  QTemporaryDir out;
  const QString path = out.filePath("changes.patch");
  ASSERT_TRUE(SaveChangesAsPatchGitCommand::execute(repo.module(), status.value().changedFiles, path));

  repo.git({"reset", "-q", "--hard"});
  repo.git({"clean", "-fdq"});
  ASSERT_EQ(repo.readFile("menu.txt"), QByteArray("cafe\n"));
  repo.git({"apply", path});
  EXPECT_EQ(repo.readFile("menu.txt"), latin1);
  EXPECT_EQ(repo.readFile("logo.bin"), binary);
  EXPECT_EQ(repo.readFile("src/new.h"), QByteArray("#pragma once\n"));
  EXPECT_EQ(repo.readFile("notes/todo.txt"), QByteArray("one\ntwo\n"));
}
