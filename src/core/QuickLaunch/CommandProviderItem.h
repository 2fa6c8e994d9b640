#pragma once
// One row of the quick launch: a group header, a repository of the registry, a command,
// a reference or a file of the repository. Each row has a title and a secondary text;
// the view picks the icon by the row's kind.
#include <QString>
#include <variant>
#include <vector>

#include "Models/Reference.h"
#include "Models/RepositoryRecord.h"

struct HeaderCommandProviderItem {
  QString commandTitle;
  bool operator==(const HeaderCommandProviderItem&) const = default;
};

// A command as the palette lists it. The application fills it from its command table
// (or the custom commands) and runs it by `identifier`.
struct QuickLaunchCommand {
  QString identifier;
  QString name;
  QString detail;  // its keys, or where a custom command comes from
  bool enabled = true;
  bool operator==(const QuickLaunchCommand&) const = default;
};

// A tracked file, by its path from the top of the work tree.
struct RepositoryFile {
  QString path;
  bool operator==(const RepositoryFile&) const = default;
};

using CommandProviderItem = std::variant<HeaderCommandProviderItem, RepositoryRecordPtr, QuickLaunchCommand, ReferencePtr, RepositoryFile>;

namespace CommandProviderItems {
QString title(const CommandProviderItem& item);
QString secondaryText(const CommandProviderItem& item);
inline bool isHeader(const CommandProviderItem& item) { return std::holds_alternative<HeaderCommandProviderItem>(item); }
// The text a query is matched against.
QString matchText(const CommandProviderItem& item);
}  // namespace CommandProviderItems
