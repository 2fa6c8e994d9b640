// The commit search on real histories: every search type, both scopes, and
// the walk that turns streamed matches into rows of the list.
#include <gtest/gtest.h>

#include <QTest>

#include "Git/Commands/Revision/RevisionSearchGitCommand.h"
#include "Graph/RevisionSearch.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Repository/RepositoryController.h"
#include "Repository/RevisionSearchCommand.h"
#include "RevisionsTestSupport.h"

namespace {

// Two authors on main, one commit on a side branch only, files in upper and lower case.
class SearchHistory : public ::testing::Test {
 protected:
  void SetUp() override {
    commitAs("src/Main.JS", "let answer = 41;\n", "Add the engine", "Ada Lovelace");
    commitAs("docs/readme.txt", "How to use it\n", "Write the manual", "Ben Keller");
    repo.git({"checkout", "-q", "-b", "side"});
    commitAs("src/extra.js", "needle\n", "Side work with a NEEDLE", "Ben Keller");
    repo.git({"checkout", "-q", "main"});
    commitAs("src/Main.JS", "let answer = 42;\n", "Fix the answer \u00b1.5 off", "Ada Lovelace");
  }

  void commitAs(const QString& path, const QByteArray& content, const QString& message, const QString& author) {
    repo.writeFile(path, content);
    repo.git({"add", "--", path});
    repo.git({"commit", "-q", "--author=" + author + " <someone@example.org>", "-m", message});
  }

  std::vector<RevisionWithFiles> search(RevisionSearchType type, const QString& text,
                                        RevisionSearchScope scope = RevisionSearchScope::repository) {
    std::vector<RevisionWithFiles> found;
    EXPECT_TRUE(
        RevisionSearchGitCommand::execute(
            repo.module(), {type, scope, text}, [&](RevisionWithFiles match) { found.push_back(std::move(match)); }, nullptr)
            .isSuccess());
    return found;
  }

  // Sorted: commits made within one second have no fixed log order.
  static QStringList subjects(const std::vector<RevisionWithFiles>& found) {
    QStringList list;
    for (const auto& match : found) list << match.revision->message();
    list.sort();
    return list;
  }

  TempRepository repo;
};

TEST_F(SearchHistory, EachTypeAndScopeFindsItsCommitsWithTheirFiles) {
  struct Case {
    const char* name;
    RevisionSearchType type;
    RevisionSearchScope scope;
    QString text;
    QStringList expected;
  };
  using T = RevisionSearchType;
  const auto all = RevisionSearchScope::repository;
  const auto branch = RevisionSearchScope::currentBranch;
  const Case cases[] = {
      {"message ignores case", T::message, all, "needle", {"Side work with a NEEDLE"}},
      {"message on the current branch misses the side", T::message, branch, "needle", {}},
      {"author by part of the name", T::author, all, "ada", {"Add the engine", "Fix the answer \u00b1.5 off"}},
      {"content that appears and changes", T::diffContent, all, "answer", {"Add the engine"}},
      {"path in any case", T::diffPath, all, "SRC/*.js", {"Add the engine", "Fix the answer \u00b1.5 off", "Side work with a NEEDLE"}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(subjects(search(c.type, c.text, c.scope)), c.expected) << c.name;
  }

  // File searches carry their files up to the last record: git ends it without an empty
  // line, and it must not be lost.
  const auto found = search(RevisionSearchType::diffPath, "docs");
  ASSERT_EQ(found.size(), 1u);
  ASSERT_EQ(found[0].changedFiles.size(), 1u);
  EXPECT_EQ(found[0].changedFiles[0]->path, "docs/readme.txt");
  EXPECT_EQ(found[0].changedFiles[0]->changeType, ChangeType::added);
  EXPECT_EQ(found[0].revision->author(), "Ben Keller");

  // A failing git is a failure.
  EXPECT_TRUE(RevisionSearchGitCommand::execute(
                  repo.module(), {RevisionSearchType::message, RevisionSearchScope::repository, "[unclosed"},
                  [](RevisionWithFiles) {}, nullptr)
                  .isFailure());
}

TEST(RevisionSearchWalk, MatchesBecomeRowsWalkingOnFromTheLast) {
  auto source = std::make_shared<RevisionGraphSource>();
  RevisionList revisions;
  std::vector<QString> shas;
  for (int i = 0; i < 6; ++i) {
    const QString sha = QString::number(i + 1).repeated(40).left(40);
    shas.push_back(sha);
    revisions.push_back(Revision::create(sha, sha, i < 5 ? QStringList{QString::number(i + 2).repeated(40)} : QStringList{},
                                                 QStringLiteral("c%1").arg(i), "A", "a@x", 1000 - i));
  }
  source->revisions = std::make_shared<const RevisionList>(revisions);
  RevisionGraph graph;
  graph.update(source);
  RevisionSearch search(&graph);
  EXPECT_FALSE(search.recordMatch(*Sha::fromHex(shas[1])));  // no search started: nothing
  search.start(RevisionSearchType::message, "c");
  EXPECT_EQ(search.recordMatch(*Sha::fromHex(shas[1])), 1);
  EXPECT_EQ(search.recordMatch(*Sha::fromHex(shas[4])), 4);
  // Behind the last match (git's date order against the list's): found all the same, in
  // row order, and the walk goes on from where it was. Not listed at all: nothing.
  EXPECT_EQ(search.recordMatch(*Sha::fromHex(shas[0])), 0);
  EXPECT_FALSE(search.recordMatch(*Sha::fromHex(QString(40, 'f'))));
  EXPECT_EQ(search.lastSearchMatchIndex(), 4);
  EXPECT_EQ(search.recordMatch(*Sha::fromHex(shas[5])), 5);
  EXPECT_EQ(search.matchRows(), (std::vector<int>{0, 1, 4, 5}));
  EXPECT_TRUE(search.isMatch(*Sha::fromHex(shas[0])));
  EXPECT_FALSE(search.isMatch(*Sha::fromHex(shas[2])));

  // A refresh that drops a row moves the marks with their commits.
  auto shorter = std::make_shared<RevisionGraphSource>(*source);
  shorter->revisions = std::make_shared<const RevisionList>(revisions.begin() + 1, revisions.end());
  graph.update(shorter);
  search.relocate();
  EXPECT_EQ(search.matchRows(), (std::vector<int>{0, 3, 4}));
  search.clear();
  EXPECT_FALSE(search.isMatch(*Sha::fromHex(shas[4])));
}

TEST_F(SearchHistory, TheNextQueryCancelsTheRunningSearch) {
  auto queue = std::make_shared<JobQueue>();
  RepositoryController controller(repo.module(), queue);
  QObject receiver;
  QStringList first;
  QStringList second;
  bool firstEnded = false;
  bool secondEnded = false;
  auto old = RevisionSearchCommand::start(
      controller, {RevisionSearchType::message, RevisionSearchScope::repository, "a"}, &receiver,
      [&](const RevisionWithFiles& match) { first << match.revision->message(); }, [&](const GitVoidResult&) { firstEnded = true; });
  ASSERT_TRUE(old);
  auto current = RevisionSearchCommand::start(
      controller, {RevisionSearchType::message, RevisionSearchScope::repository, "manual"}, &receiver,
      [&](const RevisionWithFiles& match) { second << match.revision->message(); },
      [&](const GitVoidResult& result) { secondEnded = result.isSuccess(); });
  EXPECT_TRUE(old->progress().isCanceled());
  EXPECT_TRUE(QTest::qWaitFor([&] { return secondEnded; }, 20000));
  queue->waitForDone(20000);
  QCoreApplication::processEvents();
  EXPECT_EQ(second, QStringList{"Write the manual"});
  EXPECT_TRUE(first.isEmpty());
  EXPECT_FALSE(firstEnded);
  EXPECT_TRUE(controller.activeSearchJob.expired());
}

}  // namespace
