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
  options.remote = "origin";
  options.localFullReference = "refs/heads/main";
  options.localName = "main";
  return options;
}

}  // namespace

TEST(RemoteArguments, FetchPullAndPush) {
  PushBranchOptions force = mainToOrigin(), newName = mainToOrigin();
  force.remoteBranchName = "main";
  force.remoteBranchRemote = "origin";
  force.force = force.setUpstream = true;
  newName.newName = "release";
  newName.tags = true;
  const std::pair<QStringList, const char*> cases[] = {
      {FetchGitCommand::arguments(FetchTarget::ofRemote("origin"), {}), "fetch origin --verbose --progress"},
      {FetchGitCommand::arguments(FetchTarget::all(), {true, true, false, false}),
       "fetch --prune --tags --all --verbose --progress"},
      {FetchGitCommand::arguments(FetchTarget::defaultTarget(), {false, false, true, false}),
       "fetch --force --verbose --progress"},
      {FetchGitCommand::arguments(FetchTarget::ofRemote("up"), {true, true, true, false}),
       "fetch --prune --tags --force up --verbose --progress"},
      {PullGitCommand::arguments("origin", "main", false, false), "pull origin main --verbose --progress"},
      // Autostash only ever comes with a rebase.
      {PullGitCommand::arguments("origin", "main", false, true), "pull origin main --verbose --progress"},
      {PullGitCommand::arguments("origin", "main", true, true), "pull --rebase --autostash origin main --verbose --progress"},
      {FastForwardPullCommand::arguments("origin", "dev", "dev", false), "fetch --progress origin dev:dev --verbose"},
      {FastForwardPullCommand::arguments("origin", "dev", "dev", true), "pull --ff-only origin dev --verbose"},
      {FastForwardCommand::arguments("refs/heads/dev", "refs/remotes/origin/dev", false),
       "update-ref refs/heads/dev refs/remotes/origin/dev"},
      {PushGitCommand::branchArguments(force),
       "-c push.default=upstream push origin refs/heads/main:refs/heads/main --force-with-lease --set-upstream --verbose "
       "--progress"},
      {PushGitCommand::branchArguments(newName),
       "-c push.default=upstream push origin refs/heads/main:release --tags --verbose --progress"},
      {PushGitCommand::branchesArguments("origin", {"refs/heads/a", "refs/heads/b"}),
       "push origin refs/heads/a refs/heads/b --set-upstream --verbose --progress"},
      {PushGitCommand::referenceArguments("origin", "refs/tags/v1"), "push origin refs/tags/v1 --progress --verbose"},
  };
  for (const auto& [arguments, expected] : cases) EXPECT_EQ(joined(arguments), QString::fromUtf8(expected));
  EXPECT_EQ(JobProgress::commandLineForLog(PushGitCommand::branchArguments(force)),
            "$ git push origin refs/heads/main:refs/heads/main --force-with-lease --set-upstream --verbose");
  EXPECT_TRUE(FastForwardCommand::execute({}, "refs/heads/dev", std::nullopt, false, nullptr).isError<Error::CannotReachHere>());
}

TEST(RemoteArguments, PushRefspecs) {
  EXPECT_EQ(PushGitCommand::refspec(mainToOrigin()), "refs/heads/main");
  PushBranchOptions otherRemote = mainToOrigin();
  otherRemote.localFullReference = "refs/heads/topic";
  otherRemote.localName = "topic";
  otherRemote.remoteBranchName = "feature";
  otherRemote.remoteBranchRemote = "fork";
  EXPECT_EQ(PushGitCommand::refspec(otherRemote), "refs/heads/topic:refs/heads/topic");
}

TEST(RemoteArguments, Classification) {
  using Kind = RemoteOperation::Kind;
  const GitModule module{"/r", "/r/.git", std::nullopt};
  const QString origin = "origin";
  const struct {
    Kind kind;
    bool withRemote;
    const char* error;
    size_t expectedIndex;
  } cases[] = {
      {Kind::fetch, true, "fatal: Authentication failed for 'http://h/r.git/'", ResultError(Error::ConnectionError{}).index()},
      {Kind::push, true, "remote: HTTP Basic: Access denied", ResultError(Error::ConnectionError{}).index()},
      {Kind::pull, true, "Please make sure you have the correct access rights", ResultError(Error::ConnectionError{}).index()},
      // The push of several branches does not know GitLab's wording.
      {Kind::pushMultiple, true, "remote: HTTP Basic: Access denied", ResultError(Error::GitUnknownError{}).index()},
      {Kind::fetch, true, " ! [rejected] v1 -> v1 (would clobber existing tag)", ResultError(Error::TagMismatch{}).index()},
      {Kind::pull, true, " ! [rejected] v1 -> v1 (would clobber existing tag)", ResultError(Error::TagMismatch{}).index()},
      // Without a remote there is nothing to fetch again.
      {Kind::fetch, false, " ! [rejected] v1 -> v1 (would clobber existing tag)", ResultError(Error::GitUnknownError{}).index()},
      {Kind::push, true, " ! [rejected] v1 -> v1 (would clobber existing tag)", ResultError(Error::GitUnknownError{}).index()},
  };
  for (const auto& c : cases) {
    const ResultError error = RemoteOperation::classify(c.kind, "out", QString::fromUtf8(c.error), module,
                                                        c.withRemote ? std::optional<QString>(origin) : std::nullopt);
    EXPECT_EQ(error.index(), c.expectedIndex) << c.error;
    if (const auto* tag = std::get_if<Error::TagMismatch>(&error)) {
      EXPECT_EQ(tag->remote, origin);
      EXPECT_EQ(tag->gitModule, module);
      EXPECT_EQ(tag->output, "out");
    }
  }
}

TEST(RemoteArguments, CloneFolderAndDestination) {
  EXPECT_EQ(CloneGitCommand::folderName("https://host/group/repo.git"), "repo");
  EXPECT_EQ(CloneGitCommand::folderName("git@host:group/my-repo.git/"), "my-repo");
  EXPECT_EQ(CloneGitCommand::folderName("/srv/git/project/.git"), "project");
  EXPECT_TRUE(CloneGitCommand::destinationProblem("relative/path").has_value());
  EXPECT_TRUE(CloneGitCommand::destinationProblem(QString()).has_value());
}
