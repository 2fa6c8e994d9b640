#pragma once
#include <QString>
#include <vector>

// A submodule as ".gitmodules" names it.
struct Submodule {
  QString namePrifix = QStringLiteral("submodule.");  // prefix of its configuration keys
  QString path;                                       // relative to the work tree
  QString name;

  bool operator==(const Submodule&) const = default;
};

using SubmoduleList = std::vector<Submodule>;
