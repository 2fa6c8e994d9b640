#include <gtest/gtest.h>

#include "Models/FileListTree.h"
#include "StagingTestSupport.h"

namespace {

// One line per row, two spaces per level, folders with a trailing slash.
void render(const FileListViewItem& item, int depth, QStringList& lines) {
  for (const auto& child : item.children) {
    EXPECT_EQ(child->parent, &item);
    EXPECT_EQ(item.children[static_cast<size_t>(child->row)].get(), child.get());
    lines << QString(depth * 2, QLatin1Char(' ')) + child->text() + (child->isDirectory() ? QStringLiteral("/") : QString());
    render(*child, depth + 1, lines);
  }
}

QString picture(const ChangedFileList& files) {
  QStringList lines;
  render(*FileListTree::build(files), 0, lines);
  return lines.join(QLatin1Char('\n'));
}

ChangedFilePtr modified(const QString& path) { return changedFile(path, ChangeType::modified, false); }

}  // namespace

// Folders come first, single-folder chains become one row, and the files keep the order
// of the list they came from.
TEST(FileListTree, GroupsByFolderAndMergesChainsOfSingleFolders) {
  const ChangedFileList files{modified("README.md"),
                              modified("docs/guide/intro.md"),
                              // a rename is filed under its new folder
                              changedFile("docs/guide/moved.md", ChangeType::renamed, false, false, false, "old/moved.md"),
                              modified("src/app/main.cpp"),
                              modified("src/core/b.cpp"),
                              modified("src/core/a.cpp"),
                              modified("src/util.h"),
                              changedFile("vendor/lib/", ChangeType::unknown, false, true, true),
                              modified("z.txt")};
  EXPECT_EQ(picture(files), QStringLiteral("docs/guide/\n"
                                           "  intro.md\n"
                                           "  moved.md\n"
                                           "src/\n"
                                           "  app/\n"
                                           "    main.cpp\n"
                                           "  core/\n"
                                           "    b.cpp\n"
                                           "    a.cpp\n"
                                           "  util.h\n"
                                           "vendor/\n"
                                           "  lib\n"
                                           "README.md\n"
                                           "z.txt"));
}

TEST(FileListTree, FolderRowsGiveEveryFileUnderThemAndAreFoundByTheirPath) {
  const ChangedFileList files{modified("a/b/c/one.txt"), modified("a/b/c/two.txt"), modified("a/b/d/three.txt"),
                              modified("top.txt")};
  const auto root = FileListTree::build(files);
  // "a/b" is merged; c and d stay apart because b holds two folders.
  const FileListViewItem* ab = root->findDirectory("a/b");
  ASSERT_NE(ab, nullptr);
  EXPECT_EQ(ab->name, "a/b");
  EXPECT_EQ(root->findDirectory("a"), nullptr);
  const FileListViewItem* c = root->findDirectory("a/b/c");
  ASSERT_NE(c, nullptr);
  EXPECT_EQ(c->parent, ab);

  ChangedFileList under;
  ab->collectFiles(under);
  ASSERT_EQ(under.size(), 3u);
  EXPECT_EQ(under[0], files[0]);
  EXPECT_EQ(under[2], files[2]);
  ChangedFileList all;
  root->collectFiles(all);
  EXPECT_EQ(all.size(), files.size());
  EXPECT_TRUE(FileListTree::build({})->children.empty());
}
