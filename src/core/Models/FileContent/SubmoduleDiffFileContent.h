#pragma once
#include <vector>

#include "Models/FileContent/DiffFileContent.h"
#include "Models/GitModule.h"
#include "Models/RevisionDetails.h"
#include "Models/Submodule.h"
#include "Models/Tag.h"

// A moved submodule pointer: the commit before and after, with their tags.
class SubmoduleDiffFileContent final : public DiffFileContent {
 public:
  SubmoduleDiffFileContent(ChangedFilePtr file, Submodule submodule, GitModule parentGitModule)
      : DiffFileContent(std::move(file)), submodule(std::move(submodule)), parentGitModule(std::move(parentGitModule)) {}
  Kind kind() const override { return Kind::submodule; }

  Submodule submodule;
  GitModule parentGitModule;
  RevisionDetails oldRevision;
  RevisionDetails newRevision;
  std::vector<TagPtr> oldTags;
  std::vector<TagPtr> newTags;
  int submoduleChangesCount = 0;  // changed files inside a dirty submodule
};
