#include "Commands/ShowFileHistorySheetCommand.h"

#include "Commands/ShowBlameSheetCommand.h"
#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/History/FileHistoryWindowController.h"
#include "UI/JelvDocument.h"

void ShowFileHistorySheetCommand::execute(const CommandContext& context) {
  if (!context.repository || context.paths.isEmpty()) return;
  QPointer<JelvDocument> repository = context.repository;
  FileHistoryWindowController::Actions actions;
  actions.selectRevision = [repository](const QString& sha) {
    if (!repository) return;
    repository->showHistory();
    if (const auto parsed = Sha::fromHex(sha)) repository->commitList()->selectSha(*parsed);
  };
  actions.blame = [context](const QString& sha, const QString& path) { ShowBlameSheetCommand::open(context, sha, path); };
  auto* window = new FileHistoryWindowController(context.module(), context.queue(), context.paths.front(), std::move(actions),
                                                 context.repository);
  window->load();
  window->show();
}
