#pragma once
// Running the program of a custom command: its path and parameters with the variables
// replaced, run in the work tree on the caller's (job) thread, its output lines written
// to the job's output as they come.
#include <QString>
#include <QStringList>

#include "Git/Process/GitResponse.h"
#include "Git/ResultError.h"
#include "Models/CustomCommands/CustomCommandAction.h"
#include "Models/CustomCommands/CustomCommandEnvironment.h"

class JobProgress;

namespace CustomCommandRunner {

struct Invocation {
  QString path;            // as written, variables replaced: the job's title
  QString program;         // the file that runs: `path`, or found on PATH when it names no folder
  QStringList arguments;
  QString workingDirectory;
  bool operator==(const Invocation&) const = default;
};

// The parameters are split on single blanks before their variables are replaced, so a
// value with blanks stays one argument and two blanks give an empty argument between.
Invocation invocation(const ProcessCustomCommandAction& action, const CustomCommandEnvironment& env);

// Blocks until the program ends; cancelling the progress interrupts it. A program that
// cannot start, or ends with a failing status, gives an error that says so.
GitResult<ShellStringResponse> run(const Invocation& invocation, JobProgress& progress);

}  // namespace CustomCommandRunner
