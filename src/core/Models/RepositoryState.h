#pragma once
// What git is in the middle of, read from the marker files of the Git directory.
#include <QString>
#include <optional>
#include <variant>

#include "Models/Reference.h"
#include "Models/UnmergedFile.h"

class RepositoryState {
 public:
  struct MergeInProgress {
    ReferencePtr our;
    ReferencePtr their;
    UnmergedFileList unmergedFiles;
    bool operator==(const MergeInProgress& other) const;
  };
  struct RebaseInProgress {
    ReferencePtr our;
    ReferencePtr their;
    std::optional<QString> activeSha;
    int done = 0;
    int total = 0;
    UnmergedFileList unmergedFiles;
    bool interactive = false;
    std::optional<QString> amend;
    bool operator==(const RebaseInProgress& other) const;
  };
  struct CherryPickInProgress {
    ReferencePtr head;
    ReferencePtr cherryPickHead;
    UnmergedFileList unmergedFiles;
    bool operator==(const CherryPickInProgress& other) const;
  };
  struct RevertInProgress {
    QString revertHead;
    UnmergedFileList unmergedFiles;
    bool operator==(const RevertInProgress&) const = default;
  };
  struct SquashInProgress {
    UnmergedFileList unmergedFiles;
    bool operator==(const SquashInProgress&) const = default;
  };
  // Conflict stages in the index with no operation under way.
  struct UnmergedFiles {
    ReferencePtr reference;
    UnmergedFileList unmergedFiles;
    bool operator==(const UnmergedFiles& other) const;
  };
  struct BisectInProgress {
    ReferencePtr start;
    std::optional<QString> current;
    bool operator==(const BisectInProgress& other) const;
  };
  struct Ok {
    bool operator==(const Ok&) const = default;
  };
  struct SequencerInProgress {
    bool operator==(const SequencerInProgress&) const = default;
  };

  using Value = std::variant<MergeInProgress, RebaseInProgress, CherryPickInProgress, RevertInProgress, SquashInProgress,
                             UnmergedFiles, BisectInProgress, Ok, SequencerInProgress>;

  RepositoryState() = default;
  template <typename Case, typename = std::enable_if_t<std::is_constructible_v<Value, Case>>>
  RepositoryState(Case value) : value(std::move(value)) {}

  Value value = Ok{};

  template <typename Case>
  const Case* as() const { return std::get_if<Case>(&value); }
  template <typename Case>
  bool is() const { return std::holds_alternative<Case>(value); }

  // The conflicted files of the cases that carry them; null for the others.
  const UnmergedFileList* unmergedFiles() const;
  // Logs "Can't find unmerged file for <path>" when there is none.
  std::optional<UnmergedFile> unmergedFile(const QString& path) const;

  bool operator==(const RepositoryState&) const = default;
};
