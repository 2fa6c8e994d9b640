#include "Commands/ShowRebaseInteractiveSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Models/LocalBranch.h"

namespace {

using Action = RebaseInteractiveController::Action;

// The first parent of `sha` as the loaded history knows it; "<sha>~1" lets git find it
// when the commit is not loaded.
std::optional<QString> firstParent(const CommandContext& context, const QString& sha) {
  if (const RepositoryDataPtr data = context.data(); data && data->revisions) {
    for (const RevisionPtr& revision : *data->revisions) {
      if (revision->sha().toString() != sha) continue;
      if (revision->parents().empty()) return std::nullopt;
      return revision->parents().front().toString();
    }
  }
  return sha + QStringLiteral("~1");
}

// The quick actions work on the chosen commit, so it must be in the list: the rebase
// starts below it, or below its parent when it folds into that parent.
void quickAction(const CommandContext& context, Action::Kind kind, bool intoParent) {
  if (context.revisions.empty()) return;
  // Drop and squash take every chosen commit, so the rebase starts below the oldest.
  const bool several = kind == Action::Kind::drop || kind == Action::Kind::squash;
  const RevisionPtr revision = several ? context.revisions.back() : context.revisions.front();
  std::optional<QString> destination;
  if (revision->parents().empty()) {
    if (intoParent) {
      CommandFlow::showError(context, Error::Generic{QStringLiteral("The first commit has no parent to fold into.")});
      return;
    }
  } else {
    destination = revision->parents().front().toString();
    if (intoParent) destination = firstParent(context, *destination);
  }
  QStringList shas{revision->sha().toString()};
  if (several) {
    shas.clear();
    for (const RevisionPtr& chosen : context.revisions) shas.append(chosen->sha().toString());
  }
  ShowRebaseInteractiveSheetCommand::open(context, destination, Action{kind, shas});
}

}  // namespace

void ShowRebaseInteractiveSheetCommand::open(const CommandContext& context, std::optional<QString> destination,
                                             std::optional<Action> action) {
  const auto branch = context.activeBranch();
  const bool root = !destination.has_value();
  auto* sheet = new RebaseInteractiveController(context.module(), branch ? branch->name : QString(), std::move(destination), root,
                                                std::move(action), context.signingKey());
  CommandFlow::showSheet(context, sheet, Subdomain::all());
}

void ShowRebaseInteractiveSheetCommand::execute(const CommandContext& context) {
  const RevisionPtr revision = context.revision();
  if (!revision) return;
  open(context, revision->sha().toString(), Action{Action::Kind::selectFirst, {}});
}

void ShowRebaseInteractiveSheetCommand::reword(const CommandContext& context) { quickAction(context, Action::Kind::reword, false); }
void ShowRebaseInteractiveSheetCommand::edit(const CommandContext& context) { quickAction(context, Action::Kind::edit, false); }
void ShowRebaseInteractiveSheetCommand::squashIntoParent(const CommandContext& context) {
  quickAction(context, Action::Kind::squash, true);
}
void ShowRebaseInteractiveSheetCommand::fixupIntoParent(const CommandContext& context) {
  quickAction(context, Action::Kind::fixup, true);
}
void ShowRebaseInteractiveSheetCommand::drop(const CommandContext& context) { quickAction(context, Action::Kind::drop, false); }
