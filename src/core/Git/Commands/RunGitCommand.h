#pragma once
// The run of an operation that prints nothing worth parsing: its argument list through
// git, with the job's progress when there is one (command line and output go to the
// job's log), a canceled run as `canceled`, and a failure classified as usual.
#include <QStringList>

#include "Git/Process/GitResponse.h"
#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

GitVoidResult runGitCommand(const GitModule& module, const QStringList& arguments, JobProgress* progress = nullptr);
// The same, keeping the response for commands whose output says what happened.
GitResult<GitResponse> runGitCommandWithResponse(const GitModule& module, const QStringList& arguments,
                                                 JobProgress* progress = nullptr);
