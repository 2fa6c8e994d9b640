#pragma once
// Actions on one file as a commit has it, and on the commit itself: open the file with
// the desktop, save it elsewhere, show the commit's change of it in the outside diff
// tool, browse the commit's files.
#include "Commands/CommandContext.h"
#include "Models/ChangedFile.h"

struct OpenFileAtRevisionCommand {
  static void execute(const CommandContext& context);
};

struct SaveFileAtRevisionCommand {
  static void execute(const CommandContext& context);
};

struct ExternalDiffAtRevisionCommand {
  static void execute(const CommandContext& context, const ChangedFilePtr& file);
};

struct BrowseFilesAtRevisionCommand {
  static void execute(const CommandContext& context);
};
