#include "Commands/ShowResolveConflictsSheetCommand.h"

#include "Commands/CommandFlow.h"
#include "Controllers/MergeConflicts/MergeConflictSheetController.h"
#include "Controllers/MergeConflicts/MergeConflictViewController.h"
#include "UI/JelvDocument.h"

void ShowResolveConflictsSheetCommand::execute(const CommandContext& context) {
  if (context.paths.isEmpty()) return;
  const QString path = context.paths.front();
  auto* sheet = new MergeConflictViewController(context.module(), path);
  sheet->openEditor = [context, path] { showEditor(context, path); };
  CommandFlow::showSheet(context, sheet, Subdomain::repositoryStatus());
}

void ShowResolveConflictsSheetCommand::showEditor(const CommandContext& context, const QString& path) {
  if (!context.repository) return;
  auto* sheet = new MergeConflictSheetController(context.module(), path);
  CommandFlow::showSheet(context, sheet, Subdomain::repositoryStatus());
}
