#pragma once
// The end of a job whose git command takes no progress of its own (stage, unstage,
// discard, lines, commit): the status bar and the activity manager then say how it went
// rather than the job's bare name.
#include "Git/ResultError.h"

class JobProgress;

namespace JobOutcome {

// "done", or the first line of the failure; the state succeeded, failed or canceled.
void report(JobProgress& progress, const GitVoidResult& result);

}  // namespace JobOutcome
