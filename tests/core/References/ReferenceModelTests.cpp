#include <gtest/gtest.h>

#include "Models/BisectMark.h"
#include "Models/HeadReference.h"
#include "Models/RepositoryReferences.h"
#include "Models/Subdomain.h"

namespace {

QDateTime at(qint64 seconds) { return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC); }

std::shared_ptr<const LocalBranch> local(const QString& name, bool active = false, std::optional<QString> upstream = {}) {
  return std::make_shared<const LocalBranch>("a1", "refs/heads/" + name, name, name, at(1), active, std::move(upstream));
}

TEST(LocalBranchTest, UpstreamNameAndRemoteOnlyUnderRemotes) {
  auto tracking = local("dev", false, "refs/remotes/origin/feature/x");
  EXPECT_EQ(tracking->upstreamName(), "origin/feature/x");
  EXPECT_EQ(tracking->remoteName(), "origin");

  auto localUpstream = local("dev", false, "refs/heads/main");
  EXPECT_FALSE(localUpstream->upstreamName());
  EXPECT_FALSE(localUpstream->remoteName());
  EXPECT_FALSE(local("dev")->remoteName());
}

TEST(RepositoryReferencesTest, SortsObjectsIntoListsAndFindsFirstActiveBranch) {
  auto main = local("main", true);
  auto second = local("zzz", true);  // never two in practice; the first wins
  auto remote = std::make_shared<const RemoteBranch>("b2", "refs/remotes/origin/main", "main", "origin/main", at(2), "origin");
  auto tag = std::make_shared<const Tag>("c3", "refs/tags/v1", "v1", "v1", at(3), "a1");
  auto bisect = std::make_shared<const BisectMark>("d4", "refs/bisect/bad", "bad", "bad", at(4), false);
  const auto refs = RepositoryReferences::make("a1", std::nullopt, {main, remote, tag, second, bisect}, {"refs/heads/main"});
  EXPECT_EQ(refs.all.size(), 5u);
  EXPECT_EQ(refs.localBranches.size(), 2u);
  ASSERT_EQ(refs.remoteBranches.size(), 1u);
  ASSERT_EQ(refs.tags.size(), 1u);
  EXPECT_EQ(refs.tags[0]->commitSha(), "a1");
  EXPECT_EQ(refs.activeBranch, main);
  EXPECT_EQ(refs.reference("refs/bisect/bad"), bisect);
  EXPECT_FALSE(refs.reference("refs/heads/none"));

  const auto detached = RepositoryReferences::make("a1", std::nullopt, {local("main")});
  EXPECT_FALSE(detached.activeBranch);
}

TEST(RepositoryReferencesTest, EqualityComparesValuesNotObjects) {
  const auto a = RepositoryReferences::make("a1", at(10), {local("main", true)});
  const auto b = RepositoryReferences::make("a1", at(99), {local("main", true)});
  EXPECT_EQ(a, b);  // new objects with the same values; the read time doesn't count
  EXPECT_NE(a, RepositoryReferences::make("a1", at(10), {local("main", false)}));
  EXPECT_NE(a, RepositoryReferences::make("b2", at(10), {local("main", true)}));
  EXPECT_NE(a, RepositoryReferences::make("a1", at(10), {local("main", true)}, {}, {"refs/heads/main"}));
  // Same fields but another class is another reference.
  const ReferencePtr head = std::make_shared<const HeadReference>("a1", "refs/heads/main", "main", "main", at(1));
  const ReferencePtr branch = local("main");
  EXPECT_FALSE(*head == *branch);
}

TEST(SubdomainTest, PrintsSingleBitsAndNamedCompounds) {
  EXPECT_EQ(Subdomain::none().description(), ".none");
  EXPECT_EQ(Subdomain(16384).description(), ".gitLfsInitialized");
  EXPECT_EQ(Subdomain(512 | 1024 | 2048).description(), ".references");
  EXPECT_EQ(Subdomain(-1).description(), ".all");
  EXPECT_EQ((Subdomain::head() | Subdomain::references() | Subdomain::changedFiles()).description(),
            "[.references, .head, .changedFiles]");

  const Subdomain set = Subdomain::localBranches() | Subdomain::tags();
  EXPECT_TRUE(set.contains(Subdomain::tags()));
  EXPECT_FALSE(set.contains(Subdomain::references()));
  EXPECT_TRUE(set.intersects(Subdomain::references()));
  EXPECT_EQ(Subdomain::all().subtracting(Subdomain::repositoryStatus()).contains(Subdomain::repositoryData()), true);
  EXPECT_FALSE(Subdomain::repositoryData().intersects(Subdomain::repositoryStatus()));
}

}  // namespace
