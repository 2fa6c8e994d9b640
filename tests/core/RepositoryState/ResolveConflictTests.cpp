// Taking one side of a conflict, on real merges.
#include <gtest/gtest.h>

#include <QFile>

#include "Git/Commands/Merge/ResolveConflictGitCommand.h"
#include "support/Conflicts.h"

namespace {

// main and topic both edit "notes é.txt"; topic deletes "gone.txt", which main edits.
void mergeWithConflicts(TempRepository& repo) {
  repo.commitFile("notes é.txt", "base\n", "base");
  repo.commitFile("gone.txt", "base\n", "base of gone");
  repo.git({"checkout", "-q", "-b", "topic"});
  repo.commitFile("notes é.txt", "theirs\n", "theirs");
  repo.git({"rm", "-q", "gone.txt"});
  repo.git({"commit", "-q", "-m", "delete gone"});
  repo.git({"checkout", "-q", "main"});
  repo.commitFile("notes é.txt", "mine\n", "mine");
  repo.commitFile("gone.txt", "edited\n", "edit gone");
  repo.git({"merge", "topic"}, true);
}

}  // namespace

// Their side deleted "gone.txt": taking it removes the path from index and work tree.
TEST(ResolveConflict, EachSideIsTakenWholeAndADeletingSideRemovesThePath) {
  EXPECT_EQ(ResolveConflictGitCommand::argumentLists(UnmergedFile{"gone.txt", {}, {}, {}, {}, {}}, UnmergedFileVersionType::remote),
            (std::vector<QStringList>{{"rm", "--", "gone.txt"}}));
  const struct {
    UnmergedFileVersionType side;
    QByteArray notes;
    std::optional<QByteArray> gone;
    QString status;  // after both are settled; the merge itself is left to commit
  } cases[] = {{UnmergedFileVersionType::remote, "theirs\n", std::nullopt, "D  gone.txt\nM  \"notes é.txt\"\n"},
               {UnmergedFileVersionType::local, "mine\n", QByteArray("edited\n"), ""}};
  for (const auto& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.side));
    TempRepository repo;
    mergeWithConflicts(repo);
    for (const QString path : {"notes é.txt", "gone.txt"})
      ASSERT_TRUE(ResolveConflictGitCommand::execute(repo.module(), unmerged(repo, path), c.side).isSuccess());
    EXPECT_EQ(repo.readFile("notes é.txt"), c.notes);
    EXPECT_EQ(QFile::exists(repo.path() + "/gone.txt"), c.gone.has_value());
    if (c.gone) EXPECT_EQ(repo.readFile("gone.txt"), *c.gone);
    EXPECT_TRUE(GetUnmergedFilesGitCommand::execute(repo.module()).value().empty());
    EXPECT_EQ(repo.git({"-c", "core.quotePath=false", "status", "--porcelain"}), c.status);
  }
}
