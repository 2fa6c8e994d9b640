#include "Models/RepositoryState.h"

#include "Logging/AdvancedLogger.h"

namespace {

bool same(const ReferencePtr& a, const ReferencePtr& b) { return a == b || (a && b && *a == *b); }

}  // namespace

bool RepositoryState::MergeInProgress::operator==(const MergeInProgress& other) const {
  return same(our, other.our) && same(their, other.their) && unmergedFiles == other.unmergedFiles;
}

bool RepositoryState::RebaseInProgress::operator==(const RebaseInProgress& other) const {
  return same(our, other.our) && same(their, other.their) && activeSha == other.activeSha && done == other.done &&
         total == other.total && unmergedFiles == other.unmergedFiles && interactive == other.interactive &&
         amend == other.amend;
}

bool RepositoryState::CherryPickInProgress::operator==(const CherryPickInProgress& other) const {
  return same(head, other.head) && same(cherryPickHead, other.cherryPickHead) && unmergedFiles == other.unmergedFiles;
}

bool RepositoryState::UnmergedFiles::operator==(const UnmergedFiles& other) const {
  return same(reference, other.reference) && unmergedFiles == other.unmergedFiles;
}

bool RepositoryState::BisectInProgress::operator==(const BisectInProgress& other) const {
  return same(start, other.start) && current == other.current;
}

const UnmergedFileList* RepositoryState::unmergedFiles() const {
  return std::visit(
      [](const auto& state) -> const UnmergedFileList* {
        if constexpr (requires { state.unmergedFiles; }) {
          return &state.unmergedFiles;
        } else {
          return nullptr;
        }
      },
      value);
}

std::optional<UnmergedFile> RepositoryState::unmergedFile(const QString& path) const {
  if (const UnmergedFileList* files = unmergedFiles()) {
    for (const UnmergedFile& file : *files) {
      if (file.path == path) return file;
    }
  }
  LOG_WARNING(QStringLiteral("Can't find unmerged file for %1").arg(path));
  return std::nullopt;
}
