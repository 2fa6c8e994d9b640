#pragma once
// What one change resolves to for display. Each kind has its own subclass; the view
// switches on kind() and picks the matching subview.
#include <memory>

#include "Models/ChangedFile.h"

class DiffFileContent {
 public:
  enum class Kind { text, binary, lfs, unknownBinary, submodule };

  explicit DiffFileContent(ChangedFilePtr changedFile) : changedFile(std::move(changedFile)) {}
  virtual ~DiffFileContent() = default;
  virtual Kind kind() const = 0;

  ChangedFilePtr changedFile;
};

using DiffFileContentPtr = std::shared_ptr<const DiffFileContent>;
