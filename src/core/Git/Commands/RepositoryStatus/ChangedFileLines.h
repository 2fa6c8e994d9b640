#pragma once
// Shared by the reads that list a diff's files line by line.
#include <QString>
#include <QStringList>
#include <optional>

#include "Git/Process/GitResponse.h"
#include "Models/ChangedFile.h"
#include "Models/Submodule.h"

namespace ChangedFileLines {

// Every non-empty line through ChangedFile::fromDiffLine; submodule paths become
// SubmoduleChangedFile entries.
ChangedFileList read(const QString& output, bool staged, const std::optional<QString>& treeIsh,
                     const SubmoduleList& submodules);

// git's answer when `name` (such as "HEAD^") names no commit, as for a root's parent.
bool isUnknownRevision(const GitResponse& response, const QString& name);

// The warning a failing run would have logged itself; for runs made with logging off
// because one failure was expected.
void logFailure(const QStringList& arguments, const GitResponse& response);

}  // namespace ChangedFileLines
