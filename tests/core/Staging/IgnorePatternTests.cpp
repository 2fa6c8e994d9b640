#include <gtest/gtest.h>

#include "Git/Commands/WorkingDirectory/IgnorePatternGitCommand.h"
#include "Models/PatternMenuItems.h"
#include "StagingTestSupport.h"

namespace {
QStringList titles(const std::vector<PatternMenuItem>& items) {
  QStringList result;
  for (const PatternMenuItem& item : items) result << item.title;
  return result;
}
}  // namespace

TEST(PatternMenuItems, OffersTheFileItsExtensionEachFolderAndACustomPattern) {
  EXPECT_EQ(titles(ignoreMenuItems("src/ui/view.cpp")),
            (QStringList{"Ignore view.cpp", "Ignore All .cpp", "Ignore All Files in 'src/ui'", "Ignore All Files in 'src'",
                         "Custom Pattern…"}));
  // No extension for "Makefile" or a dotfile, no folder at the top.
  EXPECT_EQ(titles(ignoreMenuItems(".env")), (QStringList{"Ignore .env", "Custom Pattern…"}));
  EXPECT_EQ(titles(ignoreMenuItems("Makefile")).size(), 2);
  EXPECT_EQ(ignoreMenuItems("Makefile").back().kind, PatternMenuItem::Kind::customPattern);

  const auto lfs = lfsTrackMenuItems("assets/big.psd");
  EXPECT_EQ(titles(lfs),
            (QStringList{"Track big.psd", "Track All .psd", "Track All Files in 'assets'", "Custom Pattern…", "Unlock"}));
  EXPECT_EQ(lfs.at(1).pattern, "*.psd");
  EXPECT_EQ(lfs.at(2).pattern, "assets/**");
  EXPECT_EQ(lfs.back().kind, PatternMenuItem::Kind::unlock);
}

// Each offered pattern, written to .gitignore, catches what its title promises and no more.
TEST(PatternMenuItems, PatternsIgnoreExactlyWhatTheTitleSays) {
  TempRepository repo;
  const QString target = "docs/[draft] #1 notes.txt";
  const QStringList files{target,
                          "docs/d #1 notes.txt",  // what "[draft]" would match as a glob
                          "docs/other.txt",
                          "top.txt",
                          "sub/docs/[draft] #1 notes.txt",  // same name deeper down
                          "trailing "};
  for (const QString& file : files) repo.writeFile(file, "x\n");

  const auto items = ignoreMenuItems(target);
  ASSERT_EQ(items.size(), 4u);
  const struct {
    PatternMenuItem item;
    QStringList ignored;
  } expectations[] = {
      {items.at(0), {target}},
      {items.at(1), {files.at(0), files.at(1), files.at(2), files.at(3), files.at(4)}},
      {items.at(2), {target, files.at(1), files.at(2)}},
  };
  for (const auto& expectation : expectations) {
    const GitResult<QStringList> preview = IgnorePatternGitCommand::preview(repo.module(), expectation.item.pattern);
    ASSERT_TRUE(preview.isSuccess());
    QStringList sortedPreview = preview.value();
    sortedPreview.sort();
    QStringList expected = expectation.ignored;
    expected.sort();
    EXPECT_EQ(sortedPreview, expected) << expectation.item.title.toStdString() << " as " << expectation.item.pattern.toStdString();
  }

  const auto trailing = ignoreMenuItems("trailing ");
  EXPECT_EQ(IgnorePatternGitCommand::preview(repo.module(), trailing.at(0).pattern).value(), QStringList{"trailing "});
}

TEST(IgnorePattern, PreviewListsTrackedAndUntrackedMatchesAndAppendHidesThem) {
  TempRepository repo;
  repo.commitFile("logs/tracked.log", "1\n", "Tracked log");
  repo.writeFile("logs/tracked.log", "changed\n");
  repo.writeFile("logs/\u00FCber.log", "2\n");
  repo.writeFile("keep.txt", "3\n");
  repo.writeFile(".gitignore", "*.tmp");  // no final newline

  const GitResult<QStringList> preview = IgnorePatternGitCommand::preview(repo.module(), "*.log");
  ASSERT_TRUE(preview.isSuccess());
  QStringList listed = preview.value();
  listed.sort();
  EXPECT_EQ(listed, (QStringList{"logs/tracked.log", "logs/\u00FCber.log"}));

  ASSERT_TRUE(IgnorePatternGitCommand::append(repo.module(), "*.log").isSuccess());
  EXPECT_EQ(repo.readFile(".gitignore"), QByteArray("*.tmp\n*.log\n"));
  EXPECT_EQ(untrackedPaths(repo), (QStringList{".gitignore", "keep.txt"}));

  TempRepository fresh;
  ASSERT_TRUE(IgnorePatternGitCommand::append(fresh.module(), "/build/").isSuccess());
  EXPECT_EQ(fresh.readFile(".gitignore"), QByteArray("/build/\n"));
}
