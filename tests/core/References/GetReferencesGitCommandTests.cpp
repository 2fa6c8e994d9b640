// References, HEAD, ahead/behind counts and remotes read from real repositories.
#include <gtest/gtest.h>

#include "Git/Commands/Repository/GetBehindAheadInfoGitCommand.h"
#include "Git/Commands/Repository/GetHeadGitCommand.h"
#include "Git/Commands/Remotes/GetRemotesGitCommand.h"
#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Models/BisectMark.h"
#include "Models/RepositoryReferences.h"
#include "ReferencesTestSupport.h"
#include "support/TempRepository.h"

namespace {

template <typename T>
std::shared_ptr<const T> find(const ReferenceList& refs, const QString& fullReference) {
  for (const auto& ref : refs) {
    if (ref->fullReference == fullReference) return std::dynamic_pointer_cast<const T>(ref);
  }
  return nullptr;
}

QStringList fullReferences(const ReferenceList& refs) {
  QStringList names;
  for (const auto& ref : refs) names << ref->fullReference;
  return names;
}

QStringList names(const std::vector<Remote>& remotes) {
  QStringList result;
  for (const Remote& remote : remotes) result << remote.name;
  return result;
}

// An upstream repository with two branches and both kinds of tag, and a clone of it
// with a remote HEAD, a local branch of odd name and a bisect in progress.
class ReferencesRepositoryTest : public ::testing::Test {
 protected:
  void SetUp() override {
    first = commitAt("1500000000 +0000", upstream, "a.txt", "1\n", "first");
    second = commitAt("1600000000 +0000", upstream, "a.txt", "2\n", "second");
    upstream.git({"branch", "feature/x", first});
    {
      // The tag object is made later than the commit it points at.
      FixedDates dates("1700000000 +0000", "1700000000 +0000");
      upstream.git({"tag", "-a", "v1.0", "-m", "release", first});
    }
    upstream.git({"tag", "light", second});
    // Tags of a blob and of a tree point at no commit and have no date.
    upstream.git({"tag", "-a", "blob-tag", "-m", "key", upstream.git({"rev-parse", "HEAD:a.txt"}).trimmed()});
    upstream.git({"tag", "tree-tag", upstream.git({"rev-parse", "HEAD^{tree}"}).trimmed()});
    clone.git({"clone", "-q", upstream.path(), "."});
    clone.git({"branch", "--track", "feature/x", "origin/feature/x"});
    clone.git({"branch", "ünïcode-ß"});
  }

  TempRepository upstream{true, "upstream"};
  TempRepository clone{false, "clone"};
  QString first, second;
};

TEST_F(ReferencesRepositoryTest, ReadsBranchesRemotesAndBothKindsOfTag) {
  auto result = GetReferencesGitCommand::execute(clone.module(), Subdomain::all());
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  const ReferenceList& refs = result.value();
  EXPECT_EQ(fullReferences(refs),
            (QStringList{"refs/heads/feature/x", "refs/heads/main", "refs/heads/ünïcode-ß", "refs/remotes/origin/feature/x",
                         "refs/remotes/origin/main", "refs/tags/blob-tag", "refs/tags/light", "refs/tags/tree-tag",
                         "refs/tags/v1.0"}));  // no origin/HEAD

  // A tag object's date is its commit's; a local branch tracks its remote one.
  const QString tagObject = clone.git({"rev-parse", "refs/tags/v1.0"}).trimmed();
  const ReferenceList expected{
      std::make_shared<const LocalBranch>(first, "refs/heads/feature/x", "feature/x", "feature/x", utc(1500000000), false,
                                          "refs/remotes/origin/feature/x"),
      std::make_shared<const LocalBranch>(second, "refs/heads/main", "main", "main", utc(1600000000), true,
                                          "refs/remotes/origin/main"),
      std::make_shared<const LocalBranch>(second, "refs/heads/ünïcode-ß", "ünïcode-ß", "ünïcode-ß", utc(1600000000), false,
                                          std::nullopt),
      std::make_shared<const RemoteBranch>(first, "refs/remotes/origin/feature/x", "feature/x", "origin/feature/x",
                                           utc(1500000000), "origin"),
      std::make_shared<const Tag>(second, "refs/tags/light", "light", "light", utc(1600000000), std::nullopt),
      std::make_shared<const Tag>(tagObject, "refs/tags/v1.0", "v1.0", "v1.0", utc(1500000000), first)};
  for (const auto& reference : expected) {
    ASSERT_TRUE(find<Reference>(refs, reference->fullReference)) << reference->fullReference.toStdString();
    EXPECT_EQ(*find<Reference>(refs, reference->fullReference), *reference);
  }
  EXPECT_NE(tagObject, first);
  for (const char* dateless : {"refs/tags/blob-tag", "refs/tags/tree-tag"}) {
    ASSERT_TRUE(find<Tag>(refs, dateless)) << dateless;
    EXPECT_FALSE(find<Tag>(refs, dateless)->committerDate.isValid()) << dateless;
  }
}

TEST_F(ReferencesRepositoryTest, PatternsReadOnlyTheAskedNamespaces) {
  auto tagsOnly = GetReferencesGitCommand::execute(clone.module(), Subdomain::tags());
  ASSERT_TRUE(tagsOnly.isSuccess());
  EXPECT_EQ(fullReferences(tagsOnly.value()), (QStringList{"refs/tags/blob-tag", "refs/tags/light", "refs/tags/tree-tag", "refs/tags/v1.0"}));

  auto branches = GetReferencesGitCommand::execute(clone.module(), Subdomain::branches());
  ASSERT_TRUE(branches.isSuccess());
  EXPECT_EQ(branches.value().size(), 5u);
  for (const auto& ref : branches.value()) EXPECT_FALSE(ref->fullReference.startsWith("refs/tags/"));
}

TEST_F(ReferencesRepositoryTest, BisectMarksStashAndDetachedHead) {
  clone.commitFile("b.txt", "b\n", "third");
  clone.git({"bisect", "start"});
  clone.git({"bisect", "bad"});
  clone.git({"bisect", "good", first});  // checks out a commit between: HEAD detached
  clone.writeFile("a.txt", "dirty\n");
  clone.git({"stash", "-q"});

  auto result = GetReferencesGitCommand::execute(clone.module(), Subdomain::all());
  ASSERT_TRUE(result.isSuccess());
  const ReferenceList& refs = result.value();
  EXPECT_FALSE(fullReferences(refs).contains("refs/stash"));
  auto bad = find<BisectMark>(refs, "refs/bisect/bad");
  auto good = find<BisectMark>(refs, "refs/bisect/good-" + first);
  ASSERT_TRUE(bad && good);
  EXPECT_FALSE(bad->isGood);
  EXPECT_TRUE(good->isGood);

  // No local branch is checked out while bisecting.
  const auto snapshot = RepositoryReferences::make(QString(), std::nullopt, refs);
  EXPECT_FALSE(snapshot.activeBranch);

  auto head = GetHeadGitCommand::execute(clone.module());
  ASSERT_TRUE(head.isSuccess());
  EXPECT_EQ(head.value(), clone.git({"rev-parse", "HEAD"}).trimmed());
  EXPECT_EQ(head.value().size(), 40);
}

TEST_F(ReferencesRepositoryTest, AheadAndBehindOfTrackingBranches) {
  // main: one commit ahead; feature/x: one behind after the upstream moves on.
  clone.commitFile("mine.txt", "1\n", "mine");
  upstream.git({"checkout", "-q", "feature/x"});
  upstream.commitFile("theirs.txt", "1\n", "theirs");
  upstream.commitFile("theirs.txt", "2\n", "theirs 2");
  clone.git({"fetch", "-q"});
  clone.git({"checkout", "-q", "-b", "both", "origin/feature/x~1"});
  clone.commitFile("both.txt", "1\n", "both");
  clone.git({"branch", "-u", "origin/feature/x"});
  // A branch whose upstream went away shows "[gone]".
  clone.git({"branch", "orphaned", "main"});
  clone.git({"config", "branch.orphaned.remote", "origin"});
  clone.git({"config", "branch.orphaned.merge", "refs/heads/nowhere"});

  LogCapture log;
  auto result = GetBehindAheadInfoGitCommand::execute(clone.module());
  ASSERT_TRUE(result.isSuccess());
  const BehindAheadInfoCache& cache = result.value();
  EXPECT_EQ(cache.info("refs/heads/main"), (BehindAheadInfo{0, 1}));
  EXPECT_EQ(cache.info("refs/heads/feature/x"), (BehindAheadInfo{2, 0}));
  EXPECT_EQ(cache.info("refs/heads/both"), (BehindAheadInfo{1, 1}));
  EXPECT_FALSE(cache.info("refs/heads/ünïcode-ß"));  // no upstream
  EXPECT_FALSE(cache.info("refs/heads/orphaned"));
  EXPECT_TRUE(log.contains("Cannot parse behind/ahead line 'refs/heads/orphaned\t[gone]'"))
      << log.messages().join('|').toStdString();
  EXPECT_EQ(cache.entries.size(), 3);
}

// Each form of the track is read from a real repository above; here counts of two digits
// and damaged lines.
TEST(BehindAheadParseTest, ReadsEachFormOfTheTrack) {
  const auto cache = GetBehindAheadInfoGitCommand::parse(
      "refs/heads/a\t[ahead 12, behind 10]\n"
      "refs/heads/none\n"
      "refs/heads/d\t[ahead 1]\textra\n"
      "\n");
  EXPECT_EQ(cache.info("refs/heads/a"), (BehindAheadInfo{10, 12}));
  EXPECT_FALSE(cache.info("refs/heads/d"));  // three fields
  EXPECT_EQ(cache.entries.size(), 1);
}

TEST(EmptyRepositoryTest, HasNoReferencesNoRemotesAndNoHead) {
  TempRepository empty;
  LogCapture log;
  auto refs = GetReferencesGitCommand::execute(empty.module(), Subdomain::all());
  ASSERT_TRUE(refs.isSuccess());
  EXPECT_TRUE(refs.value().empty());
  auto remotes = GetRemotesGitCommand::execute(empty.module());
  ASSERT_TRUE(remotes.isSuccess());
  EXPECT_TRUE(remotes.value().empty());
  EXPECT_TRUE(log.messages().isEmpty()) << log.messages().join('|').toStdString();
  auto head = GetHeadGitCommand::execute(empty.module());
  EXPECT_TRUE(head.isError<Error::GitUnknownError>());
  for (const QString& message : log.messages()) EXPECT_FALSE(message.startsWith("Git error")) << message.toStdString();
}

TEST(MissingRepositoryTest, FailsWithTheDirectory) {
  const GitModule gone{"/nonexistent/jelv/repo", "/nonexistent/jelv/repo/.git", std::nullopt};
  EXPECT_TRUE(GetReferencesGitCommand::execute(gone, Subdomain::all()).isError<Error::GitWorkingDirectoryNotExists>());
  EXPECT_TRUE(GetHeadGitCommand::execute(gone).isError<Error::GitWorkingDirectoryNotExists>());
  EXPECT_TRUE(GetBehindAheadInfoGitCommand::execute(gone).isError<Error::GitWorkingDirectoryNotExists>());
  EXPECT_TRUE(GetRemotesGitCommand::execute(gone).isError<Error::GitWorkingDirectoryNotExists>());
}

TEST(GetRemotesGitCommandTest, ReadsUrlsInConfigurationOrder) {
  TempRepository repo;
  repo.git({"remote", "add", "origin", "https://github.com/jelv/jelv.git"});
  repo.git({"remote", "add", "my.fork", "git@gitlab.com:someone/jelv.git"});
  repo.git({"remote", "add", "local", "/srv/git/repo.v2 backup/x.git"});
  // A remote with settings but no url is none.
  repo.git({"config", "remote.nourl.fetch", "+refs/heads/*:refs/remotes/nourl/*"});

  auto result = GetRemotesGitCommand::execute(repo.module());
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  const auto& remotes = result.value();
  EXPECT_EQ(names(remotes), (QStringList{"origin", "my.fork", "local"}));

  EXPECT_EQ(remotes[0].repositoryUrl.rawUrlString, "https://github.com/jelv/jelv.git");
  EXPECT_EQ(remotes[0].repositoryUrl.repositoryName, "jelv");
  EXPECT_EQ(remotes[1].repositoryUrl.user, "someone");
  EXPECT_EQ(remotes[2].repositoryUrl.rawUrlString, "/srv/git/repo.v2 backup/x.git");
}

TEST(GetRemotesParseTest, GathersLinesPerRemoteAndLogsWhatItCannotRead) {
  LogCapture log;
  // A plain remote's lines are read from a real repository above.
  const auto remotes = GetRemotesGitCommand::parse(
      "garbage line\n"
      "remote.up.disableimplicitfetch false\n"
      "remote.up.url ../relative/path\n"
      "remote.up.url https://example.com/second.git\n"
      "remote.gone.fetch +refs/heads/*:refs/remotes/gone/*\n"
      "remote.last.disableimplicitfetch true\n"
      "remote.last.url ssh://git@example.com:2222/x/y.git");
  ASSERT_EQ(names(remotes), (QStringList{"up", "last"}));
  // The later url of a remote wins.
  EXPECT_EQ(remotes[0].repositoryUrl.rawUrlString, "https://example.com/second.git");
  EXPECT_FALSE(remotes[0].disableImplicitFetch);
  EXPECT_TRUE(remotes[1].disableImplicitFetch);  // set before the url, kept
  EXPECT_EQ(remotes[1].repositoryUrl.host, "example.com");
  EXPECT_TRUE(log.contains("Cannot parse remote config line: 'garbage line'"));
  EXPECT_TRUE(log.contains("Cannot parse remote line 'remote.up.url ../relative/path'"));
  EXPECT_TRUE(GetRemotesGitCommand::parse(QString()).empty());
  EXPECT_TRUE(GetRemotesGitCommand::parse("remote.x.url").empty());  // no blank: doesn't match
}

}  // namespace
