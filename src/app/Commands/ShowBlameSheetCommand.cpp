#include "Commands/ShowBlameSheetCommand.h"

#include "Controllers/CommitList/CommitListView.h"
#include "Controllers/History/BlameWindowController.h"
#include "UI/JelvDocument.h"

void ShowBlameSheetCommand::execute(const CommandContext& context) {
  if (context.paths.isEmpty()) return;
  open(context, context.revision() ? context.revision()->sha().toString() : QStringLiteral("HEAD"), context.paths.front());
}

void ShowBlameSheetCommand::open(const CommandContext& context, const QString& sha, const QString& path) {
  if (!context.repository) return;
  QPointer<JelvDocument> repository = context.repository;
  auto* window = new BlameWindowController(
      context.module(), context.queue(),
      [repository](const QString& selected) {
        if (!repository) return;
        repository->showHistory();
        if (const auto parsed = Sha::fromHex(selected)) repository->commitList()->selectSha(*parsed);
      },
      context.repository);
  window->load({sha, path});
  window->show();
}
