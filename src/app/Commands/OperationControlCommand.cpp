#include "Commands/OperationControlCommand.h"

#include "Commands/CommandFlow.h"
#include "Models/RepositoryState.h"

using Operation = OperationControlGitCommand::Operation;
using Action = OperationControlGitCommand::Action;

std::optional<Operation> OperationControlCommand::operationUnderWay(const CommandContext& context) {
  const RepositoryStatusPtr status = context.status();
  if (!status) return std::nullopt;
  const RepositoryState& state = status->repositoryState;
  if (state.is<RepositoryState::MergeInProgress>()) return Operation::merge;
  if (state.is<RepositoryState::RebaseInProgress>()) return Operation::rebase;
  if (state.is<RepositoryState::CherryPickInProgress>() || state.is<RepositoryState::SequencerInProgress>()) return Operation::cherryPick;
  if (state.is<RepositoryState::RevertInProgress>()) return Operation::revert;
  return std::nullopt;
}

bool OperationControlCommand::canSkip(const CommandContext& context) {
  const auto operation = operationUnderWay(context);
  return operation && *operation != Operation::merge;
}

namespace {

QString nameOf(Operation operation) {
  switch (operation) {
    case Operation::merge: return QStringLiteral("merge");
    case Operation::rebase: return QStringLiteral("rebase");
    case Operation::cherryPick: return QStringLiteral("cherry-pick");
    case Operation::revert: return QStringLiteral("revert");
  }
  return {};
}

}  // namespace

void OperationControlCommand::execute(const CommandContext& context, Action action) {
  const auto operation = operationUnderWay(context);
  if (!operation) return;
  const GitModule module = context.module();
  const QString name = nameOf(*operation);
  const QString verb = action == Action::continueOperation ? QStringLiteral("Continue") : action == Action::abort ? QStringLiteral("Abort") : QStringLiteral("Skip");
  const auto start = [context, module, operation, action, name, verb] {
    CommandFlow::run(context, QStringLiteral("%1 %2").arg(verb, name), Subdomain::all(), [module, operation, action](JobProgress& progress) {
      return OperationControlGitCommand::execute(module, *operation, action, &progress);
    });
  };
  if (action == Action::abort) {
    CommandFlow::confirm(context, QStringLiteral("Abort"),
                         QStringLiteral("Abort the %1? The branch returns to where it was before it began; conflict resolutions "
                                        "and other changes made during the %1 are lost.")
                             .arg(name),
                         QStringLiteral("Abort %1").arg(name.at(0).toUpper() + name.mid(1)), start);
  } else if (action == Action::skip) {
    CommandFlow::confirm(context, QStringLiteral("Skip"),
                         QStringLiteral("Skip the commit the %1 stopped at? Its changes are left out, and what was done to "
                                        "resolve it is lost.")
                             .arg(name),
                         QStringLiteral("Skip Commit"), start);
  } else {
    start();
  }
}
