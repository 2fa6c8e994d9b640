#pragma once
#include <QStringList>
#include <optional>

#include "Git/Commands/Revision/RevisionLogParser.h"
#include "Models/GitModule.h"

// Runs a log command and feeds its output line by line to a parser. The reader is
// closed on every way out; a git that ends with a failing status fails the read.
namespace RevisionLogStream {
std::optional<ResultError> run(const GitModule& module, const QStringList& arguments, RevisionLogParser& parser);
}
