#pragma once
// Whether a path may join the registry or open as a repository, and the words for a
// refusal.
#include <QString>
#include <variant>

#include "Models/GitModule.h"

enum class RepositoryRefusal { notARepository, submodule };

struct RepositoryValidation {
  // Runs git: call it off the main thread. The path is trimmed first. A submodule is
  // refused unless asked for: the registry lists top-level repositories only.
  static std::variant<GitModule, RepositoryRefusal> validate(const QString& path, bool allowSubmodule = false);

  // The alert of the repository manager.
  static QString alertTitle(RepositoryRefusal refusal);
  static QString alertMessage(RepositoryRefusal refusal, const QString& path);
  // The text shown when a path is opened.
  static QString openFailureText(RepositoryRefusal refusal, const QString& path);
};
