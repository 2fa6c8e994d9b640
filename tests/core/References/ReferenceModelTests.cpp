#include <gtest/gtest.h>

#include "Models/BisectMark.h"
#include "Models/HeadReference.h"
#include "Models/RepositoryReferences.h"
#include "Models/Subdomain.h"

namespace {

QDateTime at(qint64 seconds) { return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC); }

std::shared_ptr<const LocalBranch> local(const QString& name, bool active = false, std::optional<QString> upstream = {}) {
  return std::make_shared<const LocalBranch>(QStringLiteral("a1"), QStringLiteral("refs/heads/") + name, name, name, at(1),
                                             active, std::move(upstream));
}

TEST(LocalBranchTest, UpstreamNameAndRemoteOnlyUnderRemotes) {
  auto tracking = local(QStringLiteral("dev"), false, QStringLiteral("refs/remotes/origin/feature/x"));
  EXPECT_EQ(tracking->upstreamName(), QStringLiteral("origin/feature/x"));
  EXPECT_EQ(tracking->remoteName(), QStringLiteral("origin"));

  auto localUpstream = local(QStringLiteral("dev"), false, QStringLiteral("refs/heads/main"));
  EXPECT_FALSE(localUpstream->upstreamName());
  EXPECT_FALSE(localUpstream->remoteName());
  EXPECT_FALSE(local(QStringLiteral("dev"))->remoteName());
}

TEST(RepositoryReferencesTest, SortsObjectsIntoListsAndFindsFirstActiveBranch) {
  auto main = local(QStringLiteral("main"), true);
  auto second = local(QStringLiteral("zzz"), true);  // never two in practice; the first wins
  auto remote = std::make_shared<const RemoteBranch>(QStringLiteral("b2"), QStringLiteral("refs/remotes/origin/main"),
                                                     QStringLiteral("main"), QStringLiteral("origin/main"), at(2),
                                                     QStringLiteral("origin"));
  auto tag = std::make_shared<const Tag>(QStringLiteral("c3"), QStringLiteral("refs/tags/v1"), QStringLiteral("v1"),
                                         QStringLiteral("v1"), at(3), QStringLiteral("a1"));
  auto bisect = std::make_shared<const BisectMark>(QStringLiteral("d4"), QStringLiteral("refs/bisect/bad"), QStringLiteral("bad"),
                                                   QStringLiteral("bad"), at(4), false);
  const auto refs = RepositoryReferences::make(QStringLiteral("a1"), std::nullopt, {main, remote, tag, second, bisect},
                                               {QStringLiteral("refs/heads/main")});
  EXPECT_EQ(refs.all.size(), 5u);
  EXPECT_EQ(refs.localBranches.size(), 2u);
  ASSERT_EQ(refs.remoteBranches.size(), 1u);
  ASSERT_EQ(refs.tags.size(), 1u);
  EXPECT_EQ(refs.tags[0]->commitSha(), QStringLiteral("a1"));
  EXPECT_EQ(refs.activeBranch, main);
  EXPECT_EQ(refs.reference(QStringLiteral("refs/bisect/bad")), bisect);
  EXPECT_FALSE(refs.reference(QStringLiteral("refs/heads/none")));

  const auto detached = RepositoryReferences::make(QStringLiteral("a1"), std::nullopt, {local(QStringLiteral("main"))});
  EXPECT_FALSE(detached.activeBranch);
}

TEST(RepositoryReferencesTest, EqualityComparesValuesNotObjects) {
  const auto a = RepositoryReferences::make(QStringLiteral("a1"), at(10), {local(QStringLiteral("main"), true)});
  const auto b = RepositoryReferences::make(QStringLiteral("a1"), at(99), {local(QStringLiteral("main"), true)});
  EXPECT_EQ(a, b);  // new objects with the same values; the read time doesn't count
  EXPECT_NE(a, RepositoryReferences::make(QStringLiteral("a1"), at(10), {local(QStringLiteral("main"), false)}));
  EXPECT_NE(a, RepositoryReferences::make(QStringLiteral("b2"), at(10), {local(QStringLiteral("main"), true)}));
  EXPECT_NE(a, RepositoryReferences::make(QStringLiteral("a1"), at(10), {local(QStringLiteral("main"), true)}, {},
                                          {QStringLiteral("refs/heads/main")}));
  // Same fields but another class is another reference.
  const ReferencePtr head = std::make_shared<const HeadReference>(QStringLiteral("a1"), QStringLiteral("refs/heads/main"),
                                                                  QStringLiteral("main"), QStringLiteral("main"), at(1));
  const ReferencePtr branch = local(QStringLiteral("main"));
  EXPECT_FALSE(*head == *branch);
}

TEST(SubdomainTest, PrintsSingleBitsAndNamedCompounds) {
  EXPECT_EQ(Subdomain::none().description(), QStringLiteral(".none"));
  EXPECT_EQ(Subdomain::head().description(), QStringLiteral(".head"));
  EXPECT_EQ(Subdomain(4096).description(), QStringLiteral(".repositoryStatus"));
  EXPECT_EQ(Subdomain(16384).description(), QStringLiteral(".gitLfsInitialized"));
  EXPECT_EQ(Subdomain(512 | 1024).description(), QStringLiteral(".branches"));
  EXPECT_EQ(Subdomain(512 | 1024 | 2048).description(), QStringLiteral(".references"));
  EXPECT_EQ(Subdomain(4095 | 16384).description(), QStringLiteral(".repositoryData"));
  EXPECT_EQ(Subdomain(-1).description(), QStringLiteral(".all"));
  EXPECT_EQ((Subdomain::head() | Subdomain::references() | Subdomain::changedFiles()).description(),
            QStringLiteral("[.references, .head, .changedFiles]"));

  const Subdomain set = Subdomain::localBranches() | Subdomain::tags();
  EXPECT_TRUE(set.contains(Subdomain::tags()));
  EXPECT_FALSE(set.contains(Subdomain::references()));
  EXPECT_TRUE(set.intersects(Subdomain::references()));
  EXPECT_EQ(Subdomain::all().subtracting(Subdomain::repositoryStatus()).contains(Subdomain::repositoryData()), true);
  EXPECT_FALSE(Subdomain::repositoryData().intersects(Subdomain::repositoryStatus()));
}

}  // namespace
