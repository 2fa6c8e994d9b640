#pragma once
// The global custom commands, and the reading and writing of the three command files:
// the global one, the repository's shared one (committed) and its local one.
#include <QString>
#include <mutex>
#include <optional>

#include "Models/CustomCommands/CustomCommand.h"
#include "Models/GitModule.h"

class CustomCommandManager {
 public:
  static CustomCommandManager& shared();

  // Loads the global file; without one, imports the old user default "customActions"
  // once and writes the file at once. No path: an empty list and nothing else.
  explicit CustomCommandManager(std::optional<QString> globalPath);

  // "<application support>/org.jelv.Jelv/custom-commands.json"; the folder is created.
  static std::optional<QString> globalURL();
  static QString sharedURL(const GitModule& module);  // "<work tree>/.jelv/custom-commands.json"
  static QString localURL(const GitModule& module);   // "<git dir>/jelv/custom-commands.json"

  // One file; every command gets the flag. A missing or broken file gives an empty list.
  static CustomCommandList load(const QString& path, bool shared);
  static void save(const CustomCommandList& commands, const std::optional<QString>& path, bool removeIfEmpty);
  // Local commands to the Git directory, shared ones to the work tree; an empty side
  // removes its file.
  static void saveRepositoryCommands(const CustomCommandList& commands, const GitModule& module);

  CustomCommandList customCommands() const;
  // Replaces the global list and writes the global file.
  void setCustomCommands(CustomCommandList commands);

  // The commands of a menu: the global ones, then the repository's, of that target; for
  // a reference, only those that apply to the clicked kind.
  CustomCommandList commands(CustomCommand::Target target, const CustomCommandList& repositoryCommands,
                             std::optional<CustomCommand::ReferenceTarget> referenceKind = std::nullopt) const;

 private:
  const std::optional<QString> globalPath_;
  mutable std::mutex lock_;
  CustomCommandList customCommands_;
};
