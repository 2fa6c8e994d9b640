// The log state machine over real git output, cut and spoiled in the ways a stream can be.
#include <gtest/gtest.h>

#include "../References/ReferencesTestSupport.h"
#include "Git/Commands/Revision/RevisionLogParser.h"
#include "Jobs/CancelationToken.h"
#include "support/TempRepository.h"

namespace {

const QString kFormat = "--pretty=format:%H%n%T%n%P%n%an%n%ae%n%at%n%s";
const QByteArray kSha = "0123456789abcdef0123456789abcdef01234567";
const QByteArray kTree = "89abcdef0123456789abcdef0123456789abcdef";

// One record as the format prints it; a stash record has its reflog name before the subject.
QByteArray record(const QByteArray& sha, const QByteArray& parents, const QByteArray& time, const QByteArray& subject = "subject") {
  return QByteArrayList{sha, kTree, parents, "Name", "mail@example.org", time, subject}.join('\n');
}

// A root, a merge and an octopus, an empty subject in the middle and on the root of a
// second history, a non-ASCII author.
class HistoryOutputTest : public ::testing::Test {
 protected:
  void SetUp() override {
    FixedDates dates("1600000000 +0200", "1600000000 +0200");
    root = repo.commitFile("a", "1", "root");
    repo.git({"checkout", "-q", "-b", "one"});
    one = repo.commitFile("one", "1", "one");
    repo.git({"checkout", "-q", "-b", "two", root});
    two = repo.commitFile("two", "1", "two");
    repo.git({"checkout", "-q", "-b", "three", root});
    three = repo.commitFile("three", "1", "three");
    repo.git({"checkout", "-q", "main"});
    {
      const QByteArray usual = qgetenv("GIT_AUTHOR_NAME");
      qputenv("GIT_AUTHOR_NAME", "Zoë Ünal");
      repo.git({"merge", "-q", "--no-ff", "-m", "merge one", "one"});
      qputenv("GIT_AUTHOR_NAME", usual);
    }
    merge = repo.headSha();
    repo.git({"merge", "-q", "--no-ff", "-m", "octopus", "two", "three"});
    octopus = repo.headSha();
    repo.git({"commit", "-q", "--allow-empty", "--allow-empty-message", "-m", ""});
    emptySubject = repo.headSha();
    repo.git({"checkout", "-q", "--orphan", "other"});
    repo.git({"commit", "-q", "--allow-empty", "--allow-empty-message", "-m", ""});
    otherRoot = repo.headSha();
    repo.git({"checkout", "-q", "main"});
  }

  QByteArray log(const QStringList& extra = {}) const {
    return repo.gitBytes(QStringList{"log", "--branches", "--topo-order", kFormat} + extra);
  }

  TempRepository repo;
  QString root, one, two, three, merge, octopus, emptySubject, otherRoot;
};

TEST_F(HistoryOutputTest, ReadsEveryRecordAsGitPrintsItAndKeepsTheCompleteOnesOfACutOutput) {
  const QByteArray output = log();
  // The last record has an empty subject: the output ends in the line feed before it,
  // which a line reader doesn't turn into an empty last line.
  ASSERT_TRUE(output.endsWith('\n'));
  auto result = RevisionLogParser::parseRevisions(output);
  ASSERT_TRUE(result.isSuccess()) << describe(result.error()).toStdString();
  // Every field of every record, in git's order: the octopus with three parents, the
  // merge's parents line of 81 bytes, the non-ASCII author, the empty subjects.
  QStringList records;
  for (const auto& revision : result.value()) {
    QStringList parents;
    for (const Sha& parent : revision->parents()) parents << parent.toString();
    const QString time = QString::number(revision->authorTime());
    records << QStringList{revision->sha().toString(), revision->treeSha().toString(), parents.join(' '), revision->author(),
                           revision->authorEmail(), time, revision->message()}
                   .join('|');
  }
  EXPECT_EQ(records,
            repo.git({"log", "--branches", "--topo-order", "--format=%H|%T|%P|%an|%ae|%at|%s"}).split('\n', Qt::SkipEmptyParts));
  ASSERT_EQ(records.size(), 8);
  // Revisions of the same person share one identity.
  EXPECT_EQ(result.value().front()->authorIdentity(), result.value().back()->authorIdentity());

  // Truncated output keeps the complete records.
  const QList<QByteArray> lines = output.split('\n');
  ASSERT_GE(lines.size(), 21);
  // Two complete records, then the third one cut after its author name (part 3).
  for (int keep : {14 + 4, 14 + 1, 14}) {
    const QByteArray cut = lines.mid(0, keep).join('\n');
    auto part = RevisionLogParser::parseRevisions(cut);
    ASSERT_TRUE(part.isSuccess()) << keep;
    EXPECT_EQ(part.value().size(), 2u) << keep;
  }
  // Cut in the middle of the third record's sha: that record is lost, the rest stands.
  LogCapture capture;
  const QByteArray midSha = lines.mid(0, 14).join('\n') + '\n' + lines.at(14).left(17);
  auto cutSha = RevisionLogParser::parseRevisions(midSha);
  ASSERT_TRUE(cutSha.isSuccess());
  EXPECT_EQ(cutSha.value().size(), 2u);
}

TEST(RevisionLogParserTest, HostileLines) {
  const QByteArray& sha = kSha;

  {  // A date that isn't a number fails the whole read with the line.
    auto result = RevisionLogParser::parseRevisions(record(sha, "", "1600000000") + '\n' + record(sha, "", "yesterday"));
    ASSERT_TRUE(result.isError<Error::CannotParse>());
    EXPECT_EQ(result.errorAs<Error::CannotParse>()->error, "Cannot parse author date in 'yesterday'");
  }
  {  // Object names that aren't hex drop their record only, with a log line.
    LogCapture capture;
    const QByteArray notHex(40, 'z');
    const QByteArray output = QByteArrayList{record(notHex, "", "1"), record(sha, "", "2"),
                                             record(sha, notHex, "3"),       // a 40-byte parents line is one name
                                             record(sha, sha + "  " + kTree, "4"),  // double blank between parents
                                             record(sha, sha + " " + notHex, "5")}
                                  .join('\n');
    auto result = RevisionLogParser::parseRevisions(output);
    ASSERT_TRUE(result.isSuccess());
    ASSERT_EQ(result.value().size(), 2u);
    EXPECT_EQ(result.value()[0]->authorTime(), 2);
    EXPECT_EQ(result.value()[1]->parents().size(), 2u);
    EXPECT_EQ(capture.messages().size(), 3);
    EXPECT_TRUE(capture.contains("Cannot parse revision line '" + QString::fromLatin1(notHex) + "'"));
  }
  {  // A subject that isn't UTF-8 reads as ISO Latin 1; other fields too.
    auto result = RevisionLogParser::parseRevisions(
        QByteArrayList{sha, kTree, "", "Andr\xe9", "a@b", "7", "caf\xe9 \xbd"}.join('\n'));
    ASSERT_TRUE(result.isSuccess());
    ASSERT_EQ(result.value().size(), 1u);
    EXPECT_EQ(result.value()[0]->message(), "café ½");
    EXPECT_EQ(result.value()[0]->author(), "André");
  }
  // Nothing at all is an empty history, not a failure.
  auto empty = RevisionLogParser::parseRevisions({});
  ASSERT_TRUE(empty.isSuccess());
  EXPECT_TRUE(empty.value().empty());
}

TEST(RevisionLogParserTest, CancellationIsTestedEveryFiftyRecords) {
  const QByteArray one = record(kSha, "", "1");
  {  // Canceled before the first record: the test also holds for the empty list.
    CancelationToken token;
    token.cancel();
    RevisionLogParser parser(RevisionLogParser::Format::revisions, &token);
    EXPECT_TRUE(parser.consume(QByteArrayView("0123456789abcdef0123456789abcdef01234567")).has_value());
  }
  CancelationToken token;
  RevisionLogParser parser(RevisionLogParser::Format::revisions, &token);
  std::optional<ResultError> failure;
  int records = 0;
  for (; records < 200 && !failure; ++records) {
    if (records == 60) token.cancel();
    for (const QByteArray& line : one.split('\n')) {
      if ((failure = parser.consume(QByteArrayView(line)))) break;
    }
  }
  ASSERT_TRUE(failure);
  EXPECT_TRUE(std::holds_alternative<Error::Canceled>(*failure));
  EXPECT_EQ(parser.count(), 100u);  // noticed at the next multiple of 50
}

// Only the first parent kept: RevisionsRepositoryTest.StashOnAMergeKeepsOneParentAndNamesFollowTheReflog.
TEST(RevisionLogParserTest, StashRecordsNeedAParent) {
  auto result = RevisionLogParser::parseStashes(record(kSha, "", "1", "stash@{1}\nno parent") + '\n' + record(kSha, kTree, "1", "stash@{2}\n"));
  ASSERT_TRUE(result.isSuccess());
  const StashRevisionList& stashes = result.value();
  ASSERT_EQ(stashes.size(), 1u);
  EXPECT_EQ(stashes[0]->reflogName(), "stash@{2}");  // the last one, its empty subject unprinted
  EXPECT_EQ(stashes[0]->message(), QString());
}

}  // namespace
