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
  EXPECT_EQ(titles(ignoreMenuItems(QStringLiteral("src/ui/view.cpp"))),
            (QStringList{QStringLiteral("Ignore view.cpp"), QStringLiteral("Ignore All .cpp"), QStringLiteral("Ignore All Files in 'src/ui'"),
                         QStringLiteral("Ignore All Files in 'src'"), QStringLiteral("Custom Pattern…")}));
  // No extension for "Makefile" or a dotfile, no folder at the top.
  EXPECT_EQ(titles(ignoreMenuItems(QStringLiteral(".env"))), (QStringList{QStringLiteral("Ignore .env"), QStringLiteral("Custom Pattern…")}));
  EXPECT_EQ(titles(ignoreMenuItems(QStringLiteral("Makefile"))).size(), 2);
  EXPECT_EQ(ignoreMenuItems(QStringLiteral("Makefile")).back().kind, PatternMenuItem::Kind::customPattern);

  const auto lfs = lfsTrackMenuItems(QStringLiteral("assets/big.psd"));
  EXPECT_EQ(titles(lfs), (QStringList{QStringLiteral("Track big.psd"), QStringLiteral("Track All .psd"),
                                      QStringLiteral("Track All Files in 'assets'"), QStringLiteral("Custom Pattern…"), QStringLiteral("Unlock")}));
  EXPECT_EQ(lfs.at(1).pattern, QStringLiteral("*.psd"));
  EXPECT_EQ(lfs.at(2).pattern, QStringLiteral("assets/**"));
  EXPECT_EQ(lfs.back().kind, PatternMenuItem::Kind::unlock);
}

// Each offered pattern, written to .gitignore, catches what its title promises and no more.
TEST(PatternMenuItems, PatternsIgnoreExactlyWhatTheTitleSays) {
  TempRepository repo;
  const QString target = QStringLiteral("docs/[draft] #1 notes.txt");
  const QStringList files{target,
                          QStringLiteral("docs/d #1 notes.txt"),  // what "[draft]" would match as a glob
                          QStringLiteral("docs/other.txt"),
                          QStringLiteral("top.txt"),
                          QStringLiteral("sub/docs/[draft] #1 notes.txt"),  // same name deeper down
                          QStringLiteral("trailing ")};
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

  const auto trailing = ignoreMenuItems(QStringLiteral("trailing "));
  EXPECT_EQ(IgnorePatternGitCommand::preview(repo.module(), trailing.at(0).pattern).value(), QStringList{QStringLiteral("trailing ")});
}

TEST(IgnorePattern, PreviewListsTrackedAndUntrackedMatchesAndAppendHidesThem) {
  TempRepository repo;
  repo.commitFile(QStringLiteral("logs/tracked.log"), "1\n", QStringLiteral("Tracked log"));
  repo.writeFile(QStringLiteral("logs/tracked.log"), "changed\n");
  repo.writeFile(QStringLiteral("logs/\u00FCber.log"), "2\n");
  repo.writeFile(QStringLiteral("keep.txt"), "3\n");
  repo.writeFile(QStringLiteral(".gitignore"), "*.tmp");  // no final newline

  const GitResult<QStringList> preview = IgnorePatternGitCommand::preview(repo.module(), QStringLiteral("*.log"));
  ASSERT_TRUE(preview.isSuccess());
  QStringList listed = preview.value();
  listed.sort();
  EXPECT_EQ(listed, (QStringList{QStringLiteral("logs/tracked.log"), QStringLiteral("logs/\u00FCber.log")}));

  ASSERT_TRUE(IgnorePatternGitCommand::append(repo.module(), QStringLiteral("*.log")).isSuccess());
  EXPECT_EQ(repo.readFile(QStringLiteral(".gitignore")), QByteArray("*.tmp\n*.log\n"));
  EXPECT_EQ(untrackedPaths(repo), (QStringList{QStringLiteral(".gitignore"), QStringLiteral("keep.txt")}));

  TempRepository fresh;
  ASSERT_TRUE(IgnorePatternGitCommand::append(fresh.module(), QStringLiteral("/build/")).isSuccess());
  EXPECT_EQ(fresh.readFile(QStringLiteral(".gitignore")), QByteArray("/build/\n"));
}
