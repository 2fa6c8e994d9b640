#pragma once
// One changed path: of the work tree, of the index, or of a commit. Immutable; a file
// with staged and unstaged changes gives two objects, one per side.
#include <QString>
#include <QStringView>
#include <memory>
#include <optional>
#include <vector>

#include "Models/ChangeType.h"
#include "Models/Submodule.h"

class ChangedFile {
 public:
  using ChangeType = ::ChangeType;

  ChangedFile() = default;
  ChangedFile(std::optional<QString> oldPath, QString path, ChangeType changeType, bool staged, bool tracked, bool isNew,
              bool isDirectory = false, std::optional<QString> treeIsh = std::nullopt,
              std::optional<QString> fileMode = std::nullopt)
      : oldPath(std::move(oldPath)), path(std::move(path)), changeType(changeType), staged(staged), tracked(tracked),
        isNew(isNew), isDirectory(isDirectory), treeIsh(std::move(treeIsh)), fileMode(std::move(fileMode)) {}
  virtual ~ChangedFile() = default;

  std::optional<QString> oldPath;  // the source of a rename or copy
  QString path;                    // relative to the work tree
  ChangeType changeType = ChangeType::unknown;
  bool staged = false;       // the entry is for the index side
  bool tracked = false;      // git knows the file
  bool isNew = false;        // untracked, shown as new
  bool isDirectory = false;  // the entry stands for a directory
  std::optional<QString> treeIsh;   // the revision an entry of a commit belongs to
  std::optional<QString> fileMode;  // the mode, where it was read

  // The submodule at this path when this is a SubmoduleChangedFile, else null.
  virtual const Submodule* changedSubmodule() const { return nullptr; }

  // Same fields, and the same submodule when there is one.
  bool operator==(const ChangedFile& other) const;

  // The list order: path (case-insensitive, digit runs as numbers), then an unstaged
  // entry before a staged one, then the change type's index, then oldPath with an
  // absent one first. Negative, zero or positive.
  static int compare(const ChangedFile& a, const ChangedFile& b);

  // One line of `diff --name-status` ("M\tpath", "R100\told\tnew") or of the raw form
  // (":100644 100644 <sha> <sha> M\tpath", whose new mode becomes fileMode). Quoted
  // paths are unquoted. A line without a tab is logged and gives nothing.
  static std::optional<ChangedFile> fromDiffLine(QStringView line, bool staged = false,
                                                 const std::optional<QString>& treeIsh = std::nullopt);

  // The word a user sees: "modified", ..., "changed" for a type change, "unknown".
  static QString changeTypeName(ChangeType type);
};

using ChangedFilePtr = std::shared_ptr<const ChangedFile>;
using ChangedFileList = std::vector<ChangedFilePtr>;
