#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/SaveChangesAsPatchGitCommand.h"
#include "Services/Preferences.h"
#include "StagingTestSupport.h"

// The saved patch brings a clean checkout to the same files: a staged new file, an
// unstaged edit in Latin-1, an untracked file and a binary change, each byte kept.
TEST(SaveAsPatch, ThePatchRecreatesTheChangesInACleanCheckout) {
  Preferences::shared().setGitInstance(GitInstanceType::system());
  TempRepository repo;
  const QByteArray latin1("caf\xe9 cr\xe8me\n");
  QByteArray binary(300, '\0');
  for (int i = 0; i < binary.size(); ++i) binary[i] = static_cast<char>(i * 7);
  repo.commitFile(QStringLiteral("menu.txt"), "cafe\n", QStringLiteral("base"));
  repo.commitFile(QStringLiteral("logo.bin"), QByteArray(300, '\1'), QStringLiteral("logo"));
  repo.writeFile(QStringLiteral("menu.txt"), latin1);
  repo.writeFile(QStringLiteral("logo.bin"), binary);
  repo.writeFile(QStringLiteral("src/new.h"), "#pragma once\n");
  repo.git({QStringLiteral("add"), QStringLiteral("src/new.h")});
  repo.writeFile(QStringLiteral("notes/todo.txt"), "one\ntwo\n");

  auto status = GetChangedFilesGitCommand::execute(repo.module(), {}, false, false);
  ASSERT_TRUE(status.isSuccess());
  ASSERT_EQ(status.value().changedFiles.size(), 4u);
  QTemporaryDir out;
  const QString path = out.filePath(QStringLiteral("changes.patch"));
  ASSERT_TRUE(SaveChangesAsPatchGitCommand::execute(repo.module(), status.value().changedFiles, path));

  repo.git({QStringLiteral("reset"), QStringLiteral("-q"), QStringLiteral("--hard")});
  repo.git({QStringLiteral("clean"), QStringLiteral("-fdq")});
  ASSERT_EQ(repo.readFile(QStringLiteral("menu.txt")), QByteArray("cafe\n"));
  repo.git({QStringLiteral("apply"), path});
  EXPECT_EQ(repo.readFile(QStringLiteral("menu.txt")), latin1);
  EXPECT_EQ(repo.readFile(QStringLiteral("logo.bin")), binary);
  EXPECT_EQ(repo.readFile(QStringLiteral("src/new.h")), QByteArray("#pragma once\n"));
  EXPECT_EQ(repo.readFile(QStringLiteral("notes/todo.txt")), QByteArray("one\ntwo\n"));

}
