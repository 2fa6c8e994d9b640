#pragma once
// The common road of a user action: ask when it destroys something, run the operation
// as a job on the tab's queue (directly or through a sheet), read again what it changed,
// and show a failure in the error sheet. Commands call these instead of wiring widgets.
#include <QString>
#include <functional>

#include "Commands/CommandContext.h"
#include "Controllers/Sheets/JelvSheetResult.h"
#include "Git/ResultError.h"
#include "Models/Subdomain.h"

class JelvSheetController;
class JobProgress;

namespace CommandFlow {

// Opens `sheet` window-modal on the tab with its queue. When it has ended the repository
// reads `changed` again (after an error too: a failed merge leaves a state to show), a
// failure opens the error sheet, and `after` runs with the result.
void showSheet(const CommandContext& context, JelvSheetController* sheet, Subdomain changed,
               std::function<void(const JelvSheetResult&)> after = {});

// Runs `work` as the job `name` without a sheet, then as showSheet does. `handle` may
// take a failure over (return true) instead of the error sheet, to offer another road.
void run(const CommandContext& context, const QString& name, Subdomain changed, std::function<GitVoidResult(JobProgress&)> work,
         std::function<void(const GitVoidResult&)> after = {}, std::function<bool(const ResultError&)> handle = {});

// Asks before a destructive action. `text` says what is lost; `action` titles the button
// that goes ahead. `confirmed` runs only when the user agrees. Does not block.
void confirm(const CommandContext& context, const QString& title, const QString& text, const QString& action,
             std::function<void()> confirmed);

// Opens the error sheet on the tab; a repair made there reads the repository again.
// `heading` replaces the sheet's own first line (a custom command names itself).
void showError(const CommandContext& context, const ResultError& error, const QString& heading = {});

}  // namespace CommandFlow
