#include "Git/Commands/Revision/GetStashesGitCommand.h"

#include <QFileInfo>

#include "Git/Commands/Revision/RevisionLogStream.h"

QStringList GetStashesGitCommand::arguments() {
  return {QStringLiteral("log"), QStringLiteral("--no-show-signature"),
          QStringLiteral("--pretty=format:%H\n%T\n%P\n%an\n%ae\n%at\n%gd\n%s"),
          QStringLiteral("-g"), QStringLiteral("--first-parent"), QStringLiteral("-m"), QStringLiteral("refs/stash"),
          QStringLiteral("--")};
}

GitResult<StashRevisionList> GetStashesGitCommand::execute(const GitModule& module) {
  // The stash list is the reflog of refs/stash: without that file there are none, and
  // git need not be asked. A linked work tree keeps it in the common directory, and a
  // repository whose references live in a reftable has no such file: there git is asked.
  if (!QFileInfo::exists(module.gitDirectoryPath(QStringLiteral("logs/refs/stash"))) &&
      !QFileInfo::exists(module.gitDirectoryPath(QStringLiteral("commondir"))) &&
      !QFileInfo::exists(module.gitDirectoryPath(QStringLiteral("reftable")))) {
    return StashRevisionList{};
  }
  RevisionLogParser parser(RevisionLogParser::Format::stashes);
  auto failure = RevisionLogStream::run(module, arguments(), parser);
  if (failure) {
    // Without any stash there is no refs/stash and git fails on the name. That is an
    // empty list, not a failure: a failed read would keep the stashes of before.
    const bool noStashRef = std::holds_alternative<Error::GitUnknownError>(*failure) && parser.count() == 0;
    if (!noStashRef) return *failure;
  }
  return parser.takeStashes();
}
