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

// The older side is the index for an unstaged change and HEAD for a staged one; the newer
// side is the working file itself or the index. A side the file lacks is an empty file.
// The side files keep the file's name and extension and tell the side; each side's
// bytes are git's own, line ends included.
TEST(ExternalDiffFiles, SidesOfUnstagedStagedNewAndDeletedFiles) {
  TempRepository repo;
  const QString path = "src/ünï côde.cpp";
  repo.commitFile(path, "int head;\r\n", "Base");
  repo.commitFile("gone.txt", "gone\n", "Gone");
  repo.writeFile(path, "int staged;\n");
  repo.stageAll();
  repo.writeFile(path, "int working;\n");
  repo.writeFile("added.txt", "added\n");
  repo.git({"add", "added.txt"});
  repo.writeFile("untracked.md", "new\n");
  repo.removeFile("gone.txt");

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
  EXPECT_EQ(read(unstaged.local), repo.gitBytes({"show", ":" + path}));
  EXPECT_EQ(unstaged.remote, QDir(repo.path()).filePath(path));
  EXPECT_EQ(QFileInfo(unstaged.local).fileName(), "ünï côde (index).cpp");
  EXPECT_EQ(unstaged.localTitle, path + " (index)");

  const ExternalDiffFiles staged = sides(path, true);
  EXPECT_EQ(read(staged.local), repo.gitBytes({"show", "HEAD:" + path}));
  EXPECT_EQ(read(staged.remote), QByteArray("int staged;\n"));
  EXPECT_EQ(QFileInfo(staged.local).fileName(), "ünï côde (HEAD).cpp");
  EXPECT_EQ(QFileInfo(staged.remote).fileName(), "ünï côde (index).cpp");

  // The side a file lacks is an empty file, not a missing one (read() tells them apart).
  const std::tuple<const char*, bool, QByteArray, QByteArray> rows[] = {
      {"added.txt", true, "", "added\n"}, {"untracked.md", false, "", "new\n"}, {"gone.txt", false, "gone\n", ""}};
  for (const auto& [file, staged, local, remote] : rows) {
    const ExternalDiffFiles files = sides(file, staged);
    EXPECT_EQ(std::pair(read(files.local), read(files.remote)), std::pair(local, remote)) << file;
  }
  // A path git does not have is a failure, not an empty file.
  EXPECT_TRUE(CheckoutFileVersionGitCommand::execute(repo.module(), "HEAD", "nope.txt", folder.filePath("nope")).isFailure());
  EXPECT_FALSE(QFileInfo::exists(folder.filePath("nope")));
}

TEST(ExternalDiffFiles, SideNamesKeepTheExtensionLast) {
  EXPECT_EQ(ExternalDiff::sideFileName("a/b/archive.tar.gz", "HEAD"), "archive.tar (HEAD).gz");
  EXPECT_EQ(ExternalDiff::sideFileName(".gitignore", "index"), ".gitignore (index)");
  EXPECT_EQ(ExternalDiff::sideFileName("Makefile", "index"), "Makefile (index)");
  // Each comparison gets a folder of its own below the process's folder.
  const QString first = ExternalDiff::newFolder();
  const QString second = ExternalDiff::newFolder();
  EXPECT_NE(first, second);
  EXPECT_TRUE(QFileInfo(first).isDir());
  EXPECT_TRUE(first.startsWith(ExternalDiff::temporaryRoot() + QLatin1Char('/')));
}
