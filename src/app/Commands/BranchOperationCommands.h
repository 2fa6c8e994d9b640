#pragma once
// The sheets and actions of branch and revision work. Each is stateless: it reads the
// context, opens its sheet or asks first, and hands the run to CommandFlow.
#include "Commands/CommandContext.h"

struct ShowMergeBranchSheetCommand { static void execute(const CommandContext& context); };
struct ShowRebaseSheetCommand { static void execute(const CommandContext& context); };
struct ShowCherryPickSheetCommand { static void execute(const CommandContext& context); };
struct ShowRevertSheetCommand { static void execute(const CommandContext& context); };
struct ShowResetBranchSheetCommand {
  enum class Mode { soft, mixed, hard };
  static void execute(const CommandContext& context, Mode mode);
};
struct ShowCheckoutRevisionSheetCommand { static void execute(const CommandContext& context); };
struct ShowTrackRemoteBranchSheetCommand { static void execute(const CommandContext& context); };
struct ShowRenameLocalBranchSheetCommand { static void execute(const CommandContext& context); };
struct ShowRemoveLocalBranchSheetCommand { static void execute(const CommandContext& context); };
struct ShowSetUpstreamSheetCommand { static void execute(const CommandContext& context); };
struct UnsetUpstreamCommand { static void execute(const CommandContext& context); };
// Copies a commit's sha or subject, or a reference's name, to the clipboard.
struct CopyToClipboardCommand {
  enum class What { sha, subject, referenceName };
  static void execute(const CommandContext& context, What what);
};
