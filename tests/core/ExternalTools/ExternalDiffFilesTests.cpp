#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "Git/Commands/RepositoryStatus/GetChangedFilesGitCommand.h"
#include "Git/Commands/WorkingDirectory/CheckoutFileVersionGitCommand.h"
#include "Services/ExternalDiff.h"
#include "support/TempRepository.h"

namespace {
QByteArray read(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<unreadable>");
}

// The entries of git's own status read, as the lists show them.
ChangedFilePtr entry(const TempRepository& repo, const QString& path, bool staged) {
  const auto files = GetChangedFilesGitCommand::execute(repo.module(), {}, false, false, nullptr);
  if (!files) return nullptr;
  for (const ChangedFilePtr& file : files.value().changedFiles) {
    if (file->path == path && file->staged == staged) return file;
  }
  return nullptr;
}
}  // namespace

// A version of the index or of HEAD lands byte for byte, whatever the path looks like;
// a path git does not have is a failure, not an empty file.
TEST(CheckoutFileVersion, WritesTheStoredBytes) {
  TempRepository repo;
  const QString path = QStringLiteral("dir with blank/naïve Datei.txt");
  repo.commitFile(path, "head\r\nline\n", QStringLiteral("Base"));
  repo.writeFile(path, "staged\n");
  repo.stageAll();
  repo.writeFile(path, "working\n");
  QTemporaryDir out;

  const auto index = CheckoutFileVersionGitCommand::execute(repo.module(), CheckoutFileVersionGitCommand::indexRevision(), path,
                                                            out.filePath(QStringLiteral("index")));
  ASSERT_TRUE(index.isSuccess());
  EXPECT_EQ(read(index.value()), repo.gitBytes({QStringLiteral("show"), QStringLiteral(":") + path}));
  EXPECT_EQ(read(index.value()), QByteArray("staged\n"));
  const auto head = CheckoutFileVersionGitCommand::execute(repo.module(), QStringLiteral("HEAD"), path, out.filePath(QStringLiteral("head")));
  ASSERT_TRUE(head.isSuccess());
  EXPECT_EQ(read(head.value()), repo.gitBytes({QStringLiteral("show"), QStringLiteral("HEAD:") + path}));

  const auto missing = CheckoutFileVersionGitCommand::execute(repo.module(), QStringLiteral("HEAD"), QStringLiteral("nope.txt"),
                                                              out.filePath(QStringLiteral("nope")));
  EXPECT_TRUE(missing.isFailure());
  EXPECT_FALSE(QFileInfo::exists(out.filePath(QStringLiteral("nope"))));
}

// The older side is the index for an unstaged change and HEAD for a staged one; the newer
// side is the working file itself or the index. A side the file lacks is an empty file.
// The side files keep the file's name and extension and tell the side.
TEST(ExternalDiffFiles, SidesOfUnstagedStagedNewAndDeletedFiles) {
  TempRepository repo;
  const QString path = QStringLiteral("src/ünï côde.cpp");
  repo.commitFile(path, "int head;\n", QStringLiteral("Base"));
  repo.commitFile(QStringLiteral("gone.txt"), "gone\n", QStringLiteral("Gone"));
  repo.writeFile(path, "int staged;\n");
  repo.stageAll();
  repo.writeFile(path, "int working;\n");
  repo.writeFile(QStringLiteral("added.txt"), "added\n");
  repo.git({QStringLiteral("add"), QStringLiteral("added.txt")});
  repo.writeFile(QStringLiteral("untracked.md"), "new\n");
  repo.removeFile(QStringLiteral("gone.txt"));

  QTemporaryDir folder;
  auto sides = [&](const QString& file, bool staged) {
    const ChangedFilePtr changed = entry(repo, file, staged);
    EXPECT_NE(changed, nullptr) << file.toStdString();
    QDir(folder.path()).mkpath(file + QString::number(staged));
    auto result = changed ? ExternalDiff::prepareFiles(repo.module(), *changed, false, folder.filePath(file + QString::number(staged)))
                          : GitResult<ExternalDiffFiles>(Error::NotFound{});
    EXPECT_TRUE(result.isSuccess()) << file.toStdString();
    return result ? result.value() : ExternalDiffFiles{};
  };

  const ExternalDiffFiles unstaged = sides(path, false);
  EXPECT_EQ(read(unstaged.local), repo.gitBytes({QStringLiteral("show"), QStringLiteral(":") + path}));
  EXPECT_EQ(unstaged.remote, QDir(repo.path()).filePath(path));
  EXPECT_EQ(QFileInfo(unstaged.local).fileName(), QStringLiteral("ünï côde (index).cpp"));
  EXPECT_EQ(unstaged.localTitle, path + QStringLiteral(" (index)"));

  const ExternalDiffFiles staged = sides(path, true);
  EXPECT_EQ(read(staged.local), repo.gitBytes({QStringLiteral("show"), QStringLiteral("HEAD:") + path}));
  EXPECT_EQ(read(staged.remote), QByteArray("int staged;\n"));
  EXPECT_EQ(QFileInfo(staged.local).fileName(), QStringLiteral("ünï côde (HEAD).cpp"));
  EXPECT_EQ(QFileInfo(staged.remote).fileName(), QStringLiteral("ünï côde (index).cpp"));

  const ExternalDiffFiles added = sides(QStringLiteral("added.txt"), true);
  EXPECT_TRUE(QFileInfo(added.local).isFile());
  EXPECT_EQ(read(added.local), QByteArray());
  EXPECT_EQ(read(added.remote), QByteArray("added\n"));

  const ExternalDiffFiles untracked = sides(QStringLiteral("untracked.md"), false);
  EXPECT_EQ(read(untracked.local), QByteArray());
  EXPECT_EQ(read(untracked.remote), QByteArray("new\n"));

  const ExternalDiffFiles deleted = sides(QStringLiteral("gone.txt"), false);
  EXPECT_EQ(read(deleted.local), QByteArray("gone\n"));
  EXPECT_TRUE(QFileInfo(deleted.remote).isFile());
  EXPECT_EQ(read(deleted.remote), QByteArray());
}

TEST(ExternalDiffFiles, SideNamesKeepTheExtensionLast) {
  EXPECT_EQ(ExternalDiff::sideFileName(QStringLiteral("a/b/archive.tar.gz"), QStringLiteral("HEAD")),
            QStringLiteral("archive.tar (HEAD).gz"));
  EXPECT_EQ(ExternalDiff::sideFileName(QStringLiteral(".gitignore"), QStringLiteral("index")), QStringLiteral(".gitignore (index)"));
  EXPECT_EQ(ExternalDiff::sideFileName(QStringLiteral("Makefile"), QStringLiteral("index")), QStringLiteral("Makefile (index)"));
  // Each comparison gets a folder of its own below the process's folder.
  const QString first = ExternalDiff::newFolder();
  const QString second = ExternalDiff::newFolder();
  EXPECT_NE(first, second);
  EXPECT_TRUE(QFileInfo(first).isDir());
  EXPECT_TRUE(first.startsWith(ExternalDiff::temporaryRoot() + QLatin1Char('/')));
}
