// Argument lists and the classification of failures, without a server.
#include <gtest/gtest.h>

#include "Git/Commands/Remotes/CloneGitCommand.h"
#include "Git/Commands/Remotes/FetchGitCommand.h"
#include "Git/Commands/Remotes/PullGitCommand.h"
#include "Git/Commands/Remotes/PushGitCommand.h"
#include "Git/Commands/Remotes/RemoteOperation.h"
#include "Jobs/JobProgress.h"

namespace {

QString joined(const QStringList& list) { return list.join(QLatin1Char(' ')); }

PushBranchOptions mainToOrigin() {
  PushBranchOptions options;
  options.remote = QStringLiteral("origin");
  options.localFullReference = QStringLiteral("refs/heads/main");
  options.localName = QStringLiteral("main");
  return options;
}

}  // namespace

TEST(RemoteArguments, Fetch) {
  const struct {
    FetchTarget target;
    FetchOptions options;
    const char* expected;
  } cases[] = {
      {FetchTarget::ofRemote(QStringLiteral("origin")), {}, "fetch origin --verbose --progress"},
      {FetchTarget::all(), {true, true, false, false}, "fetch --prune --tags --all --verbose --progress"},
      {FetchTarget::defaultTarget(), {false, false, true, false}, "fetch --force --verbose --progress"},
      {FetchTarget::ofRemote(QStringLiteral("up")), {true, true, true, false}, "fetch --prune --tags --force up --verbose --progress"},
  };
  for (const auto& c : cases) EXPECT_EQ(joined(FetchGitCommand::arguments(c.target, c.options)), QString::fromUtf8(c.expected));
}

TEST(RemoteArguments, Pull) {
  EXPECT_EQ(joined(PullGitCommand::arguments(QStringLiteral("origin"), QStringLiteral("main"), false, false)),
            QStringLiteral("pull origin main --verbose --progress"));
  // Autostash only ever comes with a rebase.
  EXPECT_EQ(joined(PullGitCommand::arguments(QStringLiteral("origin"), QStringLiteral("main"), false, true)),
            QStringLiteral("pull origin main --verbose --progress"));
  EXPECT_EQ(joined(PullGitCommand::arguments(QStringLiteral("origin"), QStringLiteral("main"), true, true)),
            QStringLiteral("pull --rebase --autostash origin main --verbose --progress"));
  EXPECT_EQ(joined(FastForwardPullCommand::arguments(QStringLiteral("origin"), QStringLiteral("dev"), QStringLiteral("dev"), false)),
            QStringLiteral("fetch --progress origin dev:dev --verbose"));
  EXPECT_EQ(joined(FastForwardPullCommand::arguments(QStringLiteral("origin"), QStringLiteral("dev"), QStringLiteral("dev"), true)),
            QStringLiteral("pull --ff-only origin dev --verbose"));
  EXPECT_EQ(joined(FastForwardCommand::arguments(QStringLiteral("refs/heads/dev"), QStringLiteral("refs/remotes/origin/dev"), false)),
            QStringLiteral("update-ref refs/heads/dev refs/remotes/origin/dev"));
  const GitVoidResult noUpstream = FastForwardCommand::execute({}, QStringLiteral("refs/heads/dev"), std::nullopt, false, nullptr);
  ASSERT_TRUE(noUpstream.isError<Error::CannotReachHere>());
}

TEST(RemoteArguments, PushRefspecs) {
  PushBranchOptions force = mainToOrigin();
  force.remoteBranchName = QStringLiteral("main");
  force.remoteBranchRemote = QStringLiteral("origin");
  force.force = true;
  force.setUpstream = true;
  EXPECT_EQ(joined(PushGitCommand::branchArguments(force)),
            QStringLiteral("-c push.default=upstream push origin refs/heads/main:refs/heads/main --force-with-lease --set-upstream "
                           "--verbose --progress"));

  PushBranchOptions otherRemote = mainToOrigin();
  otherRemote.localFullReference = QStringLiteral("refs/heads/topic");
  otherRemote.localName = QStringLiteral("topic");
  otherRemote.remoteBranchName = QStringLiteral("feature");
  otherRemote.remoteBranchRemote = QStringLiteral("fork");
  EXPECT_EQ(PushGitCommand::refspec(otherRemote), QStringLiteral("refs/heads/topic:refs/heads/topic"));

  PushBranchOptions newName = mainToOrigin();
  newName.newName = QStringLiteral("release");
  newName.tags = true;
  EXPECT_EQ(joined(PushGitCommand::branchArguments(newName)),
            QStringLiteral("-c push.default=upstream push origin refs/heads/main:release --tags --verbose --progress"));

  EXPECT_EQ(PushGitCommand::refspec(mainToOrigin()), QStringLiteral("refs/heads/main"));
  EXPECT_EQ(joined(PushGitCommand::branchesArguments(QStringLiteral("origin"), {QStringLiteral("refs/heads/a"), QStringLiteral("refs/heads/b")})),
            QStringLiteral("push origin refs/heads/a refs/heads/b --set-upstream --verbose --progress"));
  EXPECT_EQ(joined(PushGitCommand::referenceArguments(QStringLiteral("origin"), QStringLiteral("refs/tags/v1"))),
            QStringLiteral("push origin refs/tags/v1 --progress --verbose"));
  EXPECT_EQ(JobProgress::commandLineForLog(PushGitCommand::branchArguments(force)),
            QStringLiteral("$ git push origin refs/heads/main:refs/heads/main --force-with-lease --set-upstream --verbose"));
}

TEST(RemoteArguments, Classification) {
  using Kind = RemoteOperation::Kind;
  const GitModule module{QStringLiteral("/r"), QStringLiteral("/r/.git"), std::nullopt};
  const QString origin = QStringLiteral("origin");
  const struct {
    Kind kind;
    bool withRemote;
    const char* error;
    size_t expectedIndex;
  } cases[] = {
      {Kind::fetch, true, "fatal: Authentication failed for 'http://h/r.git/'", ResultError(Error::ConnectionError{}).index()},
      {Kind::fetch, false, "fatal: Authentication failed for 'http://h/r.git/'", ResultError(Error::ConnectionError{}).index()},
      {Kind::push, true, "remote: HTTP Basic: Access denied", ResultError(Error::ConnectionError{}).index()},
      {Kind::pull, true, "Please make sure you have the correct access rights", ResultError(Error::ConnectionError{}).index()},
      // The push of several branches does not know GitLab's wording.
      {Kind::pushMultiple, true, "remote: HTTP Basic: Access denied", ResultError(Error::GitUnknownError{}).index()},
      {Kind::fetch, true, " ! [rejected] v1 -> v1 (would clobber existing tag)", ResultError(Error::TagMismatch{}).index()},
      {Kind::pull, true, " ! [rejected] v1 -> v1 (would clobber existing tag)", ResultError(Error::TagMismatch{}).index()},
      // Without a remote there is nothing to fetch again.
      {Kind::fetch, false, " ! [rejected] v1 -> v1 (would clobber existing tag)", ResultError(Error::GitUnknownError{}).index()},
      {Kind::push, true, " ! [rejected] v1 -> v1 (would clobber existing tag)", ResultError(Error::GitUnknownError{}).index()},
      {Kind::fetch, true, "fatal: unable to access 'http://127.0.0.1:1/x/': Failed to connect", ResultError(Error::GitUnknownError{}).index()},
  };
  for (const auto& c : cases) {
    const ResultError error = RemoteOperation::classify(c.kind, QStringLiteral("out"), QString::fromUtf8(c.error), module,
                                                        c.withRemote ? std::optional<QString>(origin) : std::nullopt);
    EXPECT_EQ(error.index(), c.expectedIndex) << c.error;
    if (const auto* tag = std::get_if<Error::TagMismatch>(&error)) {
      EXPECT_EQ(tag->remote, origin);
      EXPECT_EQ(tag->gitModule, module);
      EXPECT_EQ(tag->output, QStringLiteral("out"));
    }
  }
}

TEST(RemoteArguments, CloneFolderAndDestination) {
  EXPECT_EQ(CloneGitCommand::folderName(QStringLiteral("https://host/group/repo.git")), QStringLiteral("repo"));
  EXPECT_EQ(CloneGitCommand::folderName(QStringLiteral("git@host:group/my-repo.git/")), QStringLiteral("my-repo"));
  EXPECT_EQ(CloneGitCommand::folderName(QStringLiteral("/srv/git/project/.git")), QStringLiteral("project"));
  EXPECT_TRUE(CloneGitCommand::destinationProblem(QStringLiteral("relative/path")).has_value());
  EXPECT_TRUE(CloneGitCommand::destinationProblem(QString()).has_value());
}
