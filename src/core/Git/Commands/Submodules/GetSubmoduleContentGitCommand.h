#pragma once
// The content of a moved submodule pointer: both commits in the submodule's own
// repository, the tags on each, and how many files are changed when it's dirty.
#include <QString>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/FileContent/FileChangeClassifier.h"
#include "Models/FileContent/SubmoduleDiffFileContent.h"
#include "Models/GitModule.h"
#include "Models/Submodule.h"

struct GetSubmoduleContentGitCommand {
  // The submodule's GitModule when its checkout is there ("<path>/.git", a folder or a
  // "gitdir:" file); nothing for an uninitialised submodule.
  static std::optional<GitModule> openSubmodule(const GitModule& superproject, const QString& submodulePath);
  // Entries of "status --porcelain -uno -z": NUL-separated records, a rename taking two.
  static int countStatusEntries(const QString& output);

  static GitResult<DiffFileContentPtr> execute(const GitModule& superproject, const GitModule& submoduleModule,
                                               const Submodule& submodule, const ChangedFilePtr& file,
                                               const FileChangeClassifier::SubmoduleShas& shas);
};
