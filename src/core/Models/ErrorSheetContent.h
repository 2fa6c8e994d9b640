#pragma once
// What the error sheet shows for a failure and which one-button repair it offers. Pure
// apart from looking at the hook files, so the sheet itself only displays the result.
#include <QString>
#include <optional>

#include "Git/ResultError.h"

struct ErrorSheetContent {
  enum class Repair { none, forceFetch, setupIdentity, skipHooksAndCommit, removeIndexLock };

  QString text;
  bool styled = false;  // git's own text: shown through the GitOutput styling
  Repair repair = Repair::none;
  QString buttonTitle;  // empty when there is no repair

  bool operator==(const ErrorSheetContent&) const = default;

  static ErrorSheetContent make(const std::optional<ResultError>& error);

  // Output and error on two lines when both are there, else whichever is.
  static QString joined(const QString& output, const QString& error);
  // The first of "pre-commit", "commit-msg", "post-commit" present in the hooks folder.
  static bool hasCommitHook(const GitModule& module);
  static QString repairTitle(Repair repair);
};
