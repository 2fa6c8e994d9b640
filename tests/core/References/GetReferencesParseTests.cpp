// The reference parser over for-each-ref lines, good and bad.
#include <gtest/gtest.h>

#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Models/BisectMark.h"
#include "Models/LocalBranch.h"
#include "Models/RemoteBranch.h"
#include "Models/Tag.h"
#include "ReferencesTestSupport.h"

namespace {

const QString kCommit = QStringLiteral("1111111111111111111111111111111111111111");
const QString kTagObject = QStringLiteral("2222222222222222222222222222222222222222");

// One line of the seven fields of the format.
QString line(const QString& ref, const QString& head = {}, const QString& upstream = {}, const QString& peeled = {},
             const QString& date = QStringLiteral("1700000000 +0100"), const QString& peeledDate = {},
             const QString& sha = kCommit) {
  return QStringList{sha, ref, head, upstream, peeled, date, peeledDate}.join(QLatin1Char('\t'));
}

TEST(GetReferencesParseTest, BuildsEachClassFromItsNamespace) {
  const QString output = QStringList{
      line(QStringLiteral("refs/heads/dev/x"), QStringLiteral("*"), QStringLiteral("refs/remotes/origin/dev/x")),
      line(QStringLiteral("refs/remotes/origin/feature/x")),
      line(QStringLiteral("refs/tags/v1.0"), {}, {}, kCommit, QStringLiteral("1800000000 +0000"),
           QStringLiteral("1600000000 -0500"), kTagObject),
      line(QStringLiteral("refs/tags/light")),
      line(QStringLiteral("refs/bisect/old-abc")),
      line(QStringLiteral("refs/bisect/good-abc")),
      line(QStringLiteral("refs/bisect/new-abc")),
      line(QStringLiteral("refs/bisect/bad")),
  }.join(QLatin1Char('\n')) + QLatin1Char('\n');

  const ReferenceList refs = GetReferencesGitCommand::parse(output);
  ASSERT_EQ(refs.size(), 8u);
  // Sorted by full reference.
  QStringList order;
  for (const auto& ref : refs) order << ref->fullReference;
  EXPECT_EQ(order, (QStringList{"refs/bisect/bad", "refs/bisect/good-abc", "refs/bisect/new-abc", "refs/bisect/old-abc",
                                "refs/heads/dev/x", "refs/remotes/origin/feature/x", "refs/tags/light", "refs/tags/v1.0"}));

  const auto* bad = dynamic_cast<const BisectMark*>(refs[0].get());
  const auto* good = dynamic_cast<const BisectMark*>(refs[1].get());
  const auto* fresh = dynamic_cast<const BisectMark*>(refs[2].get());
  const auto* old = dynamic_cast<const BisectMark*>(refs[3].get());
  ASSERT_TRUE(bad && good && fresh && old);
  EXPECT_FALSE(bad->isGood);
  EXPECT_TRUE(good->isGood);
  EXPECT_FALSE(fresh->isGood);
  EXPECT_TRUE(old->isGood);
  EXPECT_EQ(old->name, QStringLiteral("old-abc"));

  const auto* branch = dynamic_cast<const LocalBranch*>(refs[4].get());
  ASSERT_TRUE(branch);
  EXPECT_EQ(branch->name, QStringLiteral("dev/x"));
  EXPECT_EQ(branch->fullName, QStringLiteral("dev/x"));
  EXPECT_TRUE(branch->isActive);
  EXPECT_EQ(branch->upstreamFullReference, QStringLiteral("refs/remotes/origin/dev/x"));
  EXPECT_EQ(branch->committerDate.toSecsSinceEpoch(), 1700000000);

  const auto* remote = dynamic_cast<const RemoteBranch*>(refs[5].get());
  ASSERT_TRUE(remote);
  EXPECT_EQ(remote->remote, QStringLiteral("origin"));
  EXPECT_EQ(remote->name, QStringLiteral("feature/x"));
  EXPECT_EQ(remote->fullName, QStringLiteral("origin/feature/x"));

  const auto* light = dynamic_cast<const Tag*>(refs[6].get());
  ASSERT_TRUE(light);
  EXPECT_FALSE(light->dereferencedSha);
  EXPECT_EQ(light->sha, kCommit);

  const auto* annotated = dynamic_cast<const Tag*>(refs[7].get());
  ASSERT_TRUE(annotated);
  EXPECT_EQ(annotated->sha, kTagObject);
  EXPECT_EQ(annotated->dereferencedSha, kCommit);
  EXPECT_EQ(annotated->committerDate.toSecsSinceEpoch(), 1600000000);  // the commit's date, not the tag's
}

TEST(GetReferencesParseTest, LeavesOutWhatIsNoReferenceOfTheList) {
  LogCapture log;
  const QString output = QStringList{
      line(QStringLiteral("refs/remotes/origin/HEAD")),  // the remote's symbolic HEAD
      line(QStringLiteral("refs/remotes/lonely")),       // no slash behind the remote
      line(QStringLiteral("refs/stash")),
      line(QStringLiteral("refs/notes/commits")),
      line(QStringLiteral("refs/replace/") + kCommit),
      line(QStringLiteral("refs/heads/ok")),
  }.join(QLatin1Char('\n'));
  const ReferenceList refs = GetReferencesGitCommand::parse(output);
  ASSERT_EQ(refs.size(), 1u);
  EXPECT_EQ(refs[0]->fullReference, QStringLiteral("refs/heads/ok"));
  EXPECT_TRUE(log.messages().isEmpty()) << log.messages().join(QLatin1Char('\n')).toStdString();
}

TEST(GetReferencesParseTest, BadLinesAreLoggedAndDroppedWithoutHidingTheOthers) {
  struct Case {
    const char* name;
    QString text;
    QString logged;
  };
  const QString sixFields = QStringList{kCommit, "refs/heads/six", "", "", "", "1700000000 +0000"}.join('\t');
  const QString eightFields = line(QStringLiteral("refs/heads/eight")) + QStringLiteral("\textra");
  const QString badDate = line(QStringLiteral("refs/heads/baddate"), {}, {}, {}, QStringLiteral("soon +0000"));
  const QString padded = line(QStringLiteral("refs/heads/padded"), {}, {}, {}, QStringLiteral(" 1700000000 +0000"));
  const std::vector<Case> cases = {
      {"six fields", sixFields, QStringLiteral("Cannot parse reference line '%1'").arg(sixFields)},
      {"eight fields", eightFields, QStringLiteral("Cannot parse reference line '%1'").arg(eightFields)},
      {"garbage", QStringLiteral("fatal: something"), QStringLiteral("Cannot parse reference line 'fatal: something'")},
      {"word as date", badDate, QStringLiteral("Cannot parse reference date in '%1'").arg(badDate)},
      {"blank before date", padded, QStringLiteral("Cannot parse reference date in '%1'").arg(padded)},
  };
  for (const Case& c : cases) {
    LogCapture log;
    const QString output = line(QStringLiteral("refs/heads/a")) + QLatin1Char('\n') + c.text + QLatin1Char('\n') +
                           line(QStringLiteral("refs/tags/z"));
    const ReferenceList refs = GetReferencesGitCommand::parse(output);
    ASSERT_EQ(refs.size(), 2u) << c.name;
    EXPECT_EQ(refs[0]->fullReference, QStringLiteral("refs/heads/a")) << c.name;
    EXPECT_EQ(refs[1]->fullReference, QStringLiteral("refs/tags/z")) << c.name;
    EXPECT_TRUE(log.contains(c.logged)) << c.name << ": " << log.messages().join(QLatin1Char('|')).toStdString();
  }
}

TEST(GetReferencesParseTest, EmptyAndTruncatedOutput) {
  EXPECT_TRUE(GetReferencesGitCommand::parse(QString()).empty());
  EXPECT_TRUE(GetReferencesGitCommand::parse(QStringLiteral("\n\n")).empty());
  // Cut in the middle of a line: the complete lines stand, the cut one is dropped.
  LogCapture log;
  const QString whole = line(QStringLiteral("refs/heads/a")) + QLatin1Char('\n') + line(QStringLiteral("refs/heads/b"));
  const ReferenceList refs = GetReferencesGitCommand::parse(whole.left(whole.size() - 30));
  ASSERT_EQ(refs.size(), 1u);
  EXPECT_EQ(refs[0]->name, QStringLiteral("a"));
  EXPECT_EQ(log.messages().size(), 1);
}

TEST(GetReferencesParseTest, PatternsFollowTheSubdomains) {
  const auto patterns = [](Subdomain set) { return GetReferencesGitCommand::arguments(set).mid(2); };
  EXPECT_EQ(patterns(Subdomain::references()), QStringList());
  EXPECT_EQ(patterns(Subdomain::all()), QStringList());
  EXPECT_EQ(patterns(Subdomain::tags() | Subdomain::localBranches()),
            (QStringList{"refs/heads/", "refs/tags/"}));
  EXPECT_EQ(patterns(Subdomain::remoteBranches() | Subdomain::head()), QStringList{"refs/remotes/"});
}

}  // namespace
