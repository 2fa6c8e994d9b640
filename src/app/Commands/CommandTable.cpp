#include "Commands/CommandTable.h"

#include <algorithm>

#include <QAction>
#include <QHash>
#include <QMenu>

#include "Commands/CopyToClipboardCommand.h"
#include "Commands/ShowCheckoutRevisionSheetCommand.h"
#include "Commands/ShowCherryPickSheetCommand.h"
#include "Commands/ShowMergeBranchSheetCommand.h"
#include "Commands/ShowRebaseSheetCommand.h"
#include "Commands/ShowRemoveLocalBranchSheetCommand.h"
#include "Commands/ShowRenameLocalBranchSheetCommand.h"
#include "Commands/ShowResetBranchSheetCommand.h"
#include "Commands/ShowRevertSheetCommand.h"
#include "Commands/ShowSetUpstreamSheetCommand.h"
#include "Commands/ShowTrackRemoteBranchSheetCommand.h"
#include "Commands/UnsetUpstreamCommand.h"
#include "Commands/CheckoutBranchCommand.h"
#include "Commands/OperationControlCommand.h"
#include "UI/JelvDocument.h"
#include "Models/LocalBranch.h"
#include "Commands/RevisionFileCommands.h"
#include "Commands/ShowBlameSheetCommand.h"
#include "Commands/ShowFileHistorySheetCommand.h"
#include "Commands/ShowCreateBranchSheetCommand.h"
#include "Commands/ShowFetchSheetCommand.h"
#include "Commands/ShowPullSheetCommand.h"
#include "Commands/ShowPushSheetCommand.h"
#include "Commands/ShowPushMultipleBranchesSheetCommand.h"
// Stash, tags, bisect, patches and remotes.
#include "Commands/ApplyPatchCommand.h"
#include "Commands/BisectCommand.h"
#include "Commands/DropStashCommand.h"
#include "Commands/PopStashCommand.h"
#include "Commands/RemoveRemoteCommand.h"
#include "Commands/ShowAddRemoteSheetCommand.h"
#include "Commands/ShowApplyStashSheetCommand.h"
#include "Commands/ShowCreatePartialStashSheetCommand.h"
#include "Commands/ShowCreateTagSheetCommand.h"
#include "Commands/ShowDeleteRemoteBranchSheetCommand.h"
#include "Commands/ShowDeleteRemoteTagSheetCommand.h"
#include "Commands/ShowDeleteTagSheetCommand.h"
#include "Commands/ShowEditRemoteSheetCommand.h"
#include "Commands/ShowPushTagSheetCommand.h"
#include "Commands/ShowSaveAsPatchSheetCommand.h"
#include "Commands/ShowSaveSnapshotSheetCommand.h"
#include "Commands/ShowSaveStashSheetCommand.h"
#include "Commands/ShowResolveConflictsSheetCommand.h"
#include "Commands/ShowRebaseInteractiveSheetCommand.h"
#include "Commands/ShowRepositoryCustomCommandsSheetCommand.h"
#include "Commands/ShowQuickLaunchCommand.h"

namespace {

using Needs = CommandContext::Needs;
using Type = CommandDescriptor::ArgumentType;
constexpr int menu = CommandDescriptor::repositoryMenu;
constexpr int toolbar = CommandDescriptor::toolbar;

// Stash, tags, bisect, patches and remotes.
template <typename Add>
void addReferenceOperations(const Add& add) {
  const QString stash = QStringLiteral("stash");
  add({QStringLiteral("saveStash"), QStringLiteral("Stash..."), {}, ShowSaveStashSheetCommand::execute, Needs::repository,
       QKeySequence(QStringLiteral("Ctrl+Shift+H")), menu | toolbar, stash, {}});
  add({QStringLiteral("saveSnapshot"), QStringLiteral("Save Snapshot..."), {}, ShowSaveSnapshotSheetCommand::execute, Needs::repository, {}, menu,
       stash, {}});
  add({QStringLiteral("createPartialStash"), QStringLiteral("Stash Selected Files..."), {{QStringLiteral("files"), Type::repositoryFile}},
       ShowCreatePartialStashSheetCommand::execute, Needs::paths, {}, 0, stash, {}});
  add({QStringLiteral("applyStash"), QStringLiteral("Apply Stash..."), {}, ShowApplyStashSheetCommand::execute, Needs::stash, {}, 0, stash, {}});
  add({QStringLiteral("popStash"), QStringLiteral("Pop Stash"), {}, PopStashCommand::execute, Needs::stash, {}, 0, stash, {}});
  add({QStringLiteral("dropStash"), QStringLiteral("Delete Stash..."), {}, DropStashCommand::execute, Needs::stash, {}, 0, stash, {}});

  const QString tag = QStringLiteral("tag");
  add({QStringLiteral("createTag"), QStringLiteral("New Tag..."), {}, ShowCreateTagSheetCommand::execute, Needs::repository,
       QKeySequence(QStringLiteral("Ctrl+Shift+T")), menu, tag, {}});
  add({QStringLiteral("createTagHere"), QStringLiteral("New Tag Here..."), {}, ShowCreateTagSheetCommand::execute, Needs::revision, {}, 0, tag, {}});
  add({QStringLiteral("deleteTag"), QStringLiteral("Delete Tag..."), {{QStringLiteral("tag"), Type::tag}}, ShowDeleteTagSheetCommand::execute,
       Needs::tag, {}, 0, tag, {}});
  add({QStringLiteral("deleteRemoteTag"), QStringLiteral("Delete Tag on Remote..."), {{QStringLiteral("tag"), Type::tag}},
       ShowDeleteRemoteTagSheetCommand::execute, Needs::tag, {}, 0, tag, {}});
  add({QStringLiteral("pushTag"), QStringLiteral("Push Tag..."), {{QStringLiteral("tag"), Type::tag}}, ShowPushTagSheetCommand::execute,
       Needs::tag, {}, 0, tag, {}});

  const QString bisect = QStringLiteral("bisect");
  const auto bisecting = [](const CommandContext& c) {
    const RepositoryStatusPtr status = c.status();
    return status && status->repositoryState.is<RepositoryState::BisectInProgress>();
  };
  add({QStringLiteral("bisectStart"), BisectCommand::title(BisectGitCommand::Step::start), {}, BisectCommand::start, Needs::repository, {}, menu,
       bisect, {}});
  // Good and Bad are pressed again and again while bisecting.
  add({QStringLiteral("bisectGood"), BisectCommand::title(BisectGitCommand::Step::good), {}, BisectCommand::good, Needs::repository,
       QKeySequence(QStringLiteral("Ctrl+Alt+G")), menu, bisect, bisecting});
  add({QStringLiteral("bisectBad"), BisectCommand::title(BisectGitCommand::Step::bad), {}, BisectCommand::bad, Needs::repository,
       QKeySequence(QStringLiteral("Ctrl+Alt+B")), menu, bisect, bisecting});
  add({QStringLiteral("bisectReset"), BisectCommand::title(BisectGitCommand::Step::reset), {}, BisectCommand::reset, Needs::repository, {}, menu,
       bisect, bisecting});

  const QString patch = QStringLiteral("patch");
  add({QStringLiteral("saveAsPatch"), QStringLiteral("Save as Patch..."), {}, ShowSaveAsPatchSheetCommand::execute, Needs::revision, {}, 0, patch, {}});
  add({QStringLiteral("applyPatch"), QStringLiteral("Apply Patch..."), {}, ApplyPatchCommand::execute, Needs::repository, {}, menu, patch, {}});

  const QString remote = QStringLiteral("remote");
  add({QStringLiteral("addRemote"), QStringLiteral("Add Remote..."), {}, ShowAddRemoteSheetCommand::execute, Needs::repository, {}, menu, remote, {}});
  add({QStringLiteral("editRemote"), QStringLiteral("Edit Remote..."), {}, ShowEditRemoteSheetCommand::execute, Needs::remote, {}, 0, remote, {}});
  // The edit sheet renames as well.
  add({QStringLiteral("renameRemote"), QStringLiteral("Rename Remote..."), {}, ShowEditRemoteSheetCommand::execute, Needs::remote, {}, 0, remote, {}});
  add({QStringLiteral("removeRemote"), QStringLiteral("Remove Remote..."), {}, RemoveRemoteCommand::execute, Needs::remote, {}, 0, remote, {}});
  add({QStringLiteral("deleteRemoteBranch"), QStringLiteral("Delete on Remote..."), {{QStringLiteral("branch"), Type::remoteBranch}},
       ShowDeleteRemoteBranchSheetCommand::execute, Needs::remoteBranch, {}, 0, remote, {}});
}

std::vector<CommandDescriptor> makeTable() {
  std::vector<CommandDescriptor> table;
  const auto add = [&table](CommandDescriptor descriptor) { table.push_back(std::move(descriptor)); };

  // Branches and revisions.
  const QString branch = QStringLiteral("branch");
  const auto inactiveBranch = [](const CommandContext& c) {
    const auto* local = dynamic_cast<const LocalBranch*>(c.reference.get());
    return local && !local->isActive;
  };
  const auto withUpstream = [](const CommandContext& c) {
    const auto* local = dynamic_cast<const LocalBranch*>(c.reference.get());
    return local && local->upstreamFullReference.has_value();
  };
  add({QStringLiteral("createBranch"), QStringLiteral("New Branch..."), {}, ShowCreateBranchSheetCommand::execute,
       Needs::repository, QKeySequence(QStringLiteral("Ctrl+Shift+B")), menu | toolbar, branch});
  add({QStringLiteral("checkoutBranch"), QStringLiteral("Checkout"), {{QStringLiteral("branch"), Type::localBranch}},
       CheckoutBranchCommand::execute, Needs::localBranch, {}, 0, branch, inactiveBranch});
  add({QStringLiteral("checkoutRemoteBranch"), QStringLiteral("Checkout..."), {{QStringLiteral("branch"), Type::remoteBranch}},
       ShowTrackRemoteBranchSheetCommand::execute, Needs::remoteBranch, {}, 0, branch});
  add({QStringLiteral("checkoutRevision"), QStringLiteral("Checkout..."), {}, ShowCheckoutRevisionSheetCommand::execute,
       Needs::repository, {}, 0, branch, [](const CommandContext& c) {
         return (c.reference && c.reference->kind() == Reference::Kind::tag) || (!c.reference && c.revisions.size() == 1);
       }});
  add({QStringLiteral("renameBranch"), QStringLiteral("Rename..."), {{QStringLiteral("branch"), Type::localBranch}},
       ShowRenameLocalBranchSheetCommand::execute, Needs::localBranch, {}, 0, branch});
  add({QStringLiteral("deleteBranch"), QStringLiteral("Delete..."), {{QStringLiteral("branch"), Type::localBranch}},
       ShowRemoveLocalBranchSheetCommand::execute, Needs::localBranch, {}, 0, branch, inactiveBranch});
  add({QStringLiteral("setUpstream"), QStringLiteral("Set Upstream..."), {{QStringLiteral("branch"), Type::localBranch}},
       ShowSetUpstreamSheetCommand::execute, Needs::localBranch, {}, 0, branch});
  add({QStringLiteral("unsetUpstream"), QStringLiteral("Unset Upstream"), {{QStringLiteral("branch"), Type::localBranch}},
       UnsetUpstreamCommand::execute, Needs::localBranch, {}, 0, branch, withUpstream});
  add({QStringLiteral("copySha"), QStringLiteral("Copy SHA"), {},
       [](const CommandContext& c) { CopyToClipboardCommand::execute(c, CopyToClipboardCommand::What::sha); }, Needs::revision, {}, 0, branch});
  add({QStringLiteral("copySubject"), QStringLiteral("Copy Subject"), {},
       [](const CommandContext& c) { CopyToClipboardCommand::execute(c, CopyToClipboardCommand::What::subject); }, Needs::revision, {}, 0, branch});
  add({QStringLiteral("copyBranchName"), QStringLiteral("Copy Name"), {},
       [](const CommandContext& c) { CopyToClipboardCommand::execute(c, CopyToClipboardCommand::What::referenceName); }, Needs::reference, {}, 0,
       branch});

  // Merging, rebasing and rewriting the checked-out branch.
  const QString merge = QStringLiteral("merge");
  const auto notActive = [](const CommandContext& c) {
    const auto* local = dynamic_cast<const LocalBranch*>(c.reference.get());
    return !local || !local->isActive;
  };
  add({QStringLiteral("mergeIntoCurrent"), QStringLiteral("Merge..."), {{QStringLiteral("reference"), Type::reference}},
       ShowMergeBranchSheetCommand::execute, Needs::activeBranch, QKeySequence(QStringLiteral("Ctrl+Shift+M")), menu | toolbar, merge, notActive});
  add({QStringLiteral("rebaseCurrentOnto"), QStringLiteral("Rebase..."), {{QStringLiteral("reference"), Type::reference}},
       ShowRebaseSheetCommand::execute, Needs::activeBranch, QKeySequence(QStringLiteral("Ctrl+Shift+E")), menu, merge, notActive});
  add({QStringLiteral("cherryPick"), QStringLiteral("Cherry-Pick..."), {}, ShowCherryPickSheetCommand::execute, Needs::revision,
       QKeySequence(QStringLiteral("Ctrl+Shift+C")), menu, merge});
  add({QStringLiteral("revert"), QStringLiteral("Revert..."), {}, ShowRevertSheetCommand::execute, Needs::revision,
       QKeySequence(QStringLiteral("Ctrl+Shift+R")), menu, merge,
       [](const CommandContext& c) { return c.revisions.size() == 1; }});
  using ResetMode = ShowResetBranchSheetCommand::Mode;
  add({QStringLiteral("resetSoft"), QStringLiteral("Reset Current Branch to Here (Soft)..."), {},
       [](const CommandContext& c) { ShowResetBranchSheetCommand::execute(c, ResetMode::soft); }, Needs::revision, {}, 0, merge});
  add({QStringLiteral("resetMixed"), QStringLiteral("Reset Current Branch to Here (Mixed)..."), {},
       [](const CommandContext& c) { ShowResetBranchSheetCommand::execute(c, ResetMode::mixed); }, Needs::revision,
       QKeySequence(QStringLiteral("Ctrl+Shift+Backspace")), menu, merge});
  add({QStringLiteral("resetHard"), QStringLiteral("Reset Current Branch to Here (Hard)..."), {},
       [](const CommandContext& c) { ShowResetBranchSheetCommand::execute(c, ResetMode::hard); }, Needs::revision, {}, 0, merge});
  add({QStringLiteral("showConflicts"), QStringLiteral("Resolve"), {},
       [](const CommandContext& c) { if (c.repository) c.repository->showFirstConflict(); }, Needs::repository, {}, 0, merge});
  using Action = OperationControlGitCommand::Action;
  const auto underWay = [](const CommandContext& c) { return OperationControlCommand::operationUnderWay(c).has_value(); };
  add({QStringLiteral("continueOperation"), QStringLiteral("Continue"), {},
       [](const CommandContext& c) { OperationControlCommand::execute(c, Action::continueOperation); }, Needs::repository,
       QKeySequence(QStringLiteral("Ctrl+Shift+Return")), menu,
       QStringLiteral("operation"), underWay});
  add({QStringLiteral("abortOperation"), QStringLiteral("Abort..."), {},
       [](const CommandContext& c) { OperationControlCommand::execute(c, Action::abort); }, Needs::repository,
       QKeySequence(QStringLiteral("Ctrl+Shift+X")), menu,
       QStringLiteral("operation"), underWay});
  add({QStringLiteral("skipOperation"), QStringLiteral("Skip..."), {},
       [](const CommandContext& c) { OperationControlCommand::execute(c, Action::skip); }, Needs::repository,
       QKeySequence(QStringLiteral("Ctrl+Shift+K")), menu,
       QStringLiteral("operation"), OperationControlCommand::canSkip});

  // History: blame, file history, the files of a commit.
  add({QStringLiteral("blame"), QStringLiteral("Blame..."), {{QStringLiteral("file"), Type::repositoryFile}},
       ShowBlameSheetCommand::execute, Needs::paths, {}, 0, QStringLiteral("history")});
  add({QStringLiteral("fileHistory"), QStringLiteral("File History..."), {{QStringLiteral("file"), Type::repositoryFile}},
       ShowFileHistorySheetCommand::execute, Needs::paths, {}, 0, QStringLiteral("history")});
  add({QStringLiteral("browseFiles"), QStringLiteral("Browse Files at This Commit"), {},
       BrowseFilesAtRevisionCommand::execute, Needs::revision, {}, 0, QStringLiteral("history")});
  add({QStringLiteral("openFileAtRevision"), QStringLiteral("Open File at This Commit"), {{QStringLiteral("file"), Type::repositoryFile}},
       OpenFileAtRevisionCommand::execute, Needs(int(Needs::revision) | int(Needs::paths)), {}, 0, QStringLiteral("history")});
  add({QStringLiteral("saveFileAtRevision"), QStringLiteral("Save As..."), {{QStringLiteral("file"), Type::repositoryFile}},
       SaveFileAtRevisionCommand::execute, Needs(int(Needs::revision) | int(Needs::paths)), {}, 0, QStringLiteral("history")});

  // Remote work: fetch, pull and push, each with a quick variant that asks nothing (Alt
  // added to the sheet's keys).
  add({QStringLiteral("fetch"), QStringLiteral("Fetch..."), {}, ShowFetchSheetCommand::execute, Needs::repository,
       QKeySequence(QStringLiteral("Ctrl+Shift+F")), menu | toolbar, QStringLiteral("remote")});
  add({QStringLiteral("pull"), QStringLiteral("Pull..."), {}, ShowPullSheetCommand::execute, Needs::activeBranch,
       QKeySequence(QStringLiteral("Ctrl+Shift+L")), menu | toolbar, QStringLiteral("remote")});
  add({QStringLiteral("push"), QStringLiteral("Push..."), {}, ShowPushSheetCommand::execute, Needs::repository,
       QKeySequence(QStringLiteral("Ctrl+Shift+P")), menu | toolbar, QStringLiteral("remote")});
  add({QStringLiteral("pushBranches"), QStringLiteral("Push Branches..."), {}, ShowPushMultipleBranchesSheetCommand::execute,
       Needs::repository, {}, menu, QStringLiteral("remote"),
       [](const CommandContext& c) { return !c.data()->references.localBranches.empty(); }});
  add({QStringLiteral("quickFetch"), QStringLiteral("Fetch Now"), {}, QuickFetchCommand::execute, Needs::repository,
       QKeySequence(QStringLiteral("Ctrl+Alt+Shift+F")), menu,
       QStringLiteral("remote")});
  add({QStringLiteral("quickPull"), QStringLiteral("Pull Now"), {}, QuickPullCommand::execute, Needs::activeBranch,
       QKeySequence(QStringLiteral("Ctrl+Alt+Shift+L")), menu,
       QStringLiteral("remote")});
  add({QStringLiteral("quickPush"), QStringLiteral("Push Now"), {}, QuickPushCommand::execute, Needs::activeBranch,
       QKeySequence(QStringLiteral("Ctrl+Alt+Shift+P")), menu,
       QStringLiteral("remote")});
  addReferenceOperations(add);

  // Merge conflicts.
  add({QStringLiteral("resolveConflicts"), QStringLiteral("Resolve Conflicts..."), {{QStringLiteral("paths"), Type::repositoryFile}},
       ShowResolveConflictsSheetCommand::execute, Needs::paths, {}, 0, QStringLiteral("conflicts")});

  // Interactive rebase: the commit list's entry and its quick actions, all on the
  // checked-out branch.
  {
    using Rebase = ShowRebaseInteractiveSheetCommand;
    const auto onBranch = static_cast<Needs>(static_cast<int>(Needs::revision) | static_cast<int>(Needs::activeBranch));
    const QString section = QStringLiteral("rebaseInteractive");
    // At the branch's own tip there would be nothing to rewrite.
    const auto belowTip = [](const CommandContext& c) {
      const auto branch = c.activeBranch();
      const RevisionPtr revision = c.revision();
      return branch && revision && revision->sha().toString() != branch->sha;
    };
    add({QStringLiteral("rebaseInteractive"), QStringLiteral("Rebase Interactively to Here..."), {}, Rebase::execute, onBranch, {}, 0,
         section, belowTip});
    add({QStringLiteral("rewordRevision"), QStringLiteral("Reword Message..."), {}, Rebase::reword, onBranch, {}, 0, section});
    add({QStringLiteral("editRevision"), QStringLiteral("Edit..."), {}, Rebase::edit, onBranch, {}, 0, section});
    // The first commit has no parent to fold into.
    const auto allHaveParents = [](const CommandContext& c) {
      return !c.revisions.empty() &&
             std::all_of(c.revisions.begin(), c.revisions.end(), [](const RevisionPtr& r) { return !r->parents().empty(); });
    };
    add({QStringLiteral("squashIntoParent"), QStringLiteral("Squash into Parent..."), {}, Rebase::squashIntoParent, onBranch, {}, 0,
         section, allHaveParents});
    add({QStringLiteral("fixupIntoParent"), QStringLiteral("Fixup into Parent..."), {}, Rebase::fixupIntoParent, onBranch, {}, 0,
         section, allHaveParents});
    add({QStringLiteral("dropRevision"), QStringLiteral("Drop..."), {}, Rebase::drop, onBranch, {}, 0, section});
  }

  // The repository's own custom commands (the user's own are in the preferences).
  add({QStringLiteral("repositoryCustomCommands"), QStringLiteral("Custom Commands..."), {}, ShowRepositoryCustomCommandsSheetCommand::execute,
       Needs::repository, {}, menu, QStringLiteral("customCommands")});

  // The window's own: it works in every tab, the repositories tab too.
  add({QStringLiteral("quickLaunch"), QStringLiteral("Quick Launch..."), {}, ShowQuickLaunchCommand::execute, Needs::nothing,
       QKeySequence(QStringLiteral("Ctrl+J")), 0, QStringLiteral("window")});

  return table;
}

}  // namespace

const std::vector<CommandDescriptor>& CommandTable::all() {
  static const std::vector<CommandDescriptor> table = makeTable();
  return table;
}

const CommandDescriptor* CommandTable::find(const QString& identifier) {
  for (const CommandDescriptor& descriptor : all()) {
    if (descriptor.identifier == identifier) return &descriptor;
  }
  return nullptr;
}

QString CommandTable::paletteName(const CommandDescriptor& descriptor) {
  static const QHash<QString, QString> names{
      {QStringLiteral("checkoutBranch"), QStringLiteral("Checkout Branch")},
      {QStringLiteral("checkoutRemoteBranch"), QStringLiteral("Checkout Remote Branch...")},
      {QStringLiteral("checkoutRevision"), QStringLiteral("Checkout Commit...")},
      {QStringLiteral("renameBranch"), QStringLiteral("Rename Branch...")},
      {QStringLiteral("deleteBranch"), QStringLiteral("Delete Branch...")},
      {QStringLiteral("deleteRemoteBranch"), QStringLiteral("Delete Branch on Remote...")},
      {QStringLiteral("copySha"), QStringLiteral("Copy Commit SHA")},
      {QStringLiteral("copySubject"), QStringLiteral("Copy Commit Subject")},
      {QStringLiteral("showConflicts"), QStringLiteral("Show Conflicts")},
      {QStringLiteral("editRevision"), QStringLiteral("Edit Commit...")},
      {QStringLiteral("dropRevision"), QStringLiteral("Drop Commit...")},
      {QStringLiteral("rewordRevision"), QStringLiteral("Reword Commit Message...")},
      {QStringLiteral("saveFileAtRevision"), QStringLiteral("Save File at This Commit As...")},
  };
  return names.value(descriptor.identifier, descriptor.name);
}

bool CommandTable::run(const QString& identifier, const CommandContext& context) {
  const CommandDescriptor* descriptor = find(identifier);
  if (!descriptor || !descriptor->isAvailable(context)) return false;
  descriptor->converter(context);
  return true;
}

QAction* CommandTable::action(const QString& identifier, const CommandContext& context, QObject* parent) {
  const CommandDescriptor* descriptor = find(identifier);
  if (!descriptor) return nullptr;
  auto* action = new QAction(descriptor->name, parent);
  action->setObjectName(identifier);
  action->setShortcut(descriptor->shortcut);
  action->setEnabled(descriptor->isAvailable(context));
  QObject::connect(action, &QAction::triggered, action, [identifier, context] { CommandTable::run(identifier, context); });
  return action;
}

void CommandTable::addActions(QMenu* menu, const QStringList& identifiers, const CommandContext& context) {
  QMenu* target = menu;
  for (const QString& identifier : identifiers) {
    if (identifier.isEmpty()) {
      target->addSeparator();
    } else if (identifier.startsWith(QLatin1Char('>'))) {
      target = menu->addMenu(identifier.mid(1));
    } else if (identifier == QStringLiteral("<")) {
      if (target != menu && target->isEmpty()) delete target;
      target = menu;
    } else if (QAction* action = CommandTable::action(identifier, context, target)) {
      // Inside "Reset Current Branch to Here", "...to Here (Soft)..." reads "Soft...".
      if (target != menu && action->text().startsWith(target->title())) {
        QString rest = action->text().mid(target->title().size()).trimmed();
        rest.remove(QLatin1Char('(')).remove(QLatin1Char(')'));
        action->setText(rest);
      }
      target->addAction(action);
    }
  }
}
