// The reference parser over for-each-ref lines, good and bad.
#include <gtest/gtest.h>

#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Models/BisectMark.h"
#include "Models/LocalBranch.h"
#include "ReferencesTestSupport.h"

namespace {

const QString kCommit = "1111111111111111111111111111111111111111";

// One line of the seven fields of the format.
QString line(const QString& ref, const QString& head = {}, const QString& upstream = {}, const QString& peeled = {},
             const QString& date = "1700000000 +0100", const QString& peeledDate = {}, const QString& sha = kCommit) {
  return QStringList{sha, ref, head, upstream, peeled, date, peeledDate}.join(QLatin1Char('\t'));
}

// Branches, remotes and both kinds of tag are read from a real repository
// (GetReferencesGitCommandTests); the old/new bisect terms and the sort are left here.
TEST(GetReferencesParseTest, OldAndNewBisectMarksAreGoodAndBadAndTheListIsSorted) {
  const QString output = line("refs/heads/main") + QLatin1Char('\n') + line("refs/bisect/old-abc") + QLatin1Char('\n') +
                         line("refs/bisect/new-abc") + QLatin1Char('\n');
  const QDateTime date = utc(1700000000);
  const ReferenceList expected{
      std::make_shared<const BisectMark>(kCommit, "refs/bisect/new-abc", "new-abc", "new-abc", date, false),
      std::make_shared<const BisectMark>(kCommit, "refs/bisect/old-abc", "old-abc", "old-abc", date, true),
      std::make_shared<const LocalBranch>(kCommit, "refs/heads/main", "main", "main", date, false, std::nullopt)};
  const ReferenceList refs = GetReferencesGitCommand::parse(output);
  ASSERT_EQ(refs.size(), expected.size());
  for (size_t i = 0; i < refs.size(); ++i) EXPECT_EQ(*refs[i], *expected[i]) << i;
}

TEST(GetReferencesParseTest, LeavesOutWhatIsNoReferenceOfTheList) {
  LogCapture log;
  const QString output =
      QStringList{
          // A remote's HEAD and the stash: left out of a real clone's list (GetReferencesGitCommandTests).
          line("refs/remotes/lonely"),  // no slash behind the remote
          line("refs/notes/commits"),
          line("refs/heads/ok"),
      }
          .join(QLatin1Char('\n'));
  const ReferenceList refs = GetReferencesGitCommand::parse(output);
  ASSERT_EQ(refs.size(), 1u);
  EXPECT_EQ(refs[0]->fullReference, "refs/heads/ok");
  EXPECT_TRUE(log.messages().isEmpty()) << log.messages().join(QLatin1Char('\n')).toStdString();
}

TEST(GetReferencesParseTest, BadLinesAreLoggedAndDroppedWithoutHidingTheOthers) {
  struct Case {
    const char* name;
    QString text;
    QString logged;
  };
  const QString sixFields = QStringList{kCommit, "refs/heads/six", "", "", "", "1700000000 +0000"}.join('\t');
  const QString eightFields = line("refs/heads/eight") + "\textra";
  const QString badDate = line("refs/heads/baddate", {}, {}, {}, "soon +0000");
  const std::vector<Case> cases = {
      {"six fields", sixFields, QStringLiteral("Cannot parse reference line '%1'").arg(sixFields)},
      {"eight fields", eightFields, QStringLiteral("Cannot parse reference line '%1'").arg(eightFields)},
      {"garbage", "fatal: something", "Cannot parse reference line 'fatal: something'"},
      {"word as date", badDate, QStringLiteral("Cannot parse reference date in '%1'").arg(badDate)},
  };
  for (const Case& c : cases) {
    LogCapture log;
    const QString output = line("refs/heads/a") + QLatin1Char('\n') + c.text + QLatin1Char('\n') + line("refs/tags/z");
    const ReferenceList refs = GetReferencesGitCommand::parse(output);
    ASSERT_EQ(refs.size(), 2u) << c.name;
    EXPECT_EQ(refs[0]->fullReference, "refs/heads/a") << c.name;
    EXPECT_EQ(refs[1]->fullReference, "refs/tags/z") << c.name;
    EXPECT_TRUE(log.contains(c.logged)) << c.name << ": " << log.messages().join(QLatin1Char('|')).toStdString();
  }
}

TEST(GetReferencesParseTest, EmptyAndTruncatedOutput) {
  EXPECT_TRUE(GetReferencesGitCommand::parse(QString()).empty());
  EXPECT_TRUE(GetReferencesGitCommand::parse("\n\n").empty());
  // Cut in the middle of a line: the complete lines stand, the cut one is dropped.
  LogCapture log;
  const QString whole = line("refs/heads/a") + QLatin1Char('\n') + line("refs/heads/b");
  const ReferenceList refs = GetReferencesGitCommand::parse(whole.left(whole.size() - 30));
  ASSERT_EQ(refs.size(), 1u);
  EXPECT_EQ(refs[0]->name, "a");
  EXPECT_EQ(log.messages().size(), 1);
}

}  // namespace
