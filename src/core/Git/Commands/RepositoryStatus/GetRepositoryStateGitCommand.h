#pragma once
// Tells what git is in the middle of. The marker files of the Git directory are tested
// in a fixed order and the first one found decides; conflicted files come from the index.
#include <QString>
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"
#include "Models/Reference.h"
#include "Models/RepositoryState.h"

class JobProgress;

class GetRepositoryStateGitCommand {
 public:
  // `references` turn the shas and names of the marker files into objects.
  static GitResult<RepositoryState> execute(const GitModule& module, const ReferenceList& references,
                                            JobProgress* progress = nullptr);

  // A file holding a sha, such as "rebase-merge/onto"; unreadable gives unknownException.
  static GitResult<ReferencePtr> readHeadReferenceFromFile(const QString& path, const ReferenceList& references);
  // A file holding a name, such as "BISECT_START".
  static GitResult<ReferencePtr> readReferenceFromFile(const QString& path, const ReferenceList& references);

  // The first reference at the sha, or a plain one made from it.
  static ReferencePtr referenceForSha(const QString& sha, const ReferenceList& references);
  // The reference of that short, full or namespaced name; a sha is matched as a sha.
  static ReferencePtr referenceForName(const QString& name, const ReferenceList& references);

  // The entries of a rebase todo or done file: trimmed lines, no blanks, no comments.
  static QStringList todoEntries(const QString& text);
};
