#pragma once
// The view settings every diff request carries, read from the preferences each time.
struct DiffSettings {
  int contextSize = 3;
  bool ignoreWhitespaces = false;
  bool showEntireFile = false;

  // A context below one line is raised to one.
  int effectiveContextSize() const { return contextSize < 1 ? 1 : contextSize; }
  static DiffSettings fromPreferences();

  bool operator==(const DiffSettings&) const = default;
};
