#pragma once
#include "Models/ChangedFile.h"

// An entry whose path is a submodule's path; its diff is the submodule's commits.
class SubmoduleChangedFile final : public ChangedFile {
 public:
  SubmoduleChangedFile(const ChangedFile& file, Submodule submodule) : ChangedFile(file), submodule(std::move(submodule)) {}

  const Submodule* changedSubmodule() const override { return &submodule; }

  Submodule submodule;
};
