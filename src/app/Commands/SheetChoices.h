#pragma once
// What the branch and revision sheets share: how they name the chosen object and the
// choices they offer.
#include <QComboBox>
#include <QString>
#include <QStringList>
#include <optional>

#include "Commands/CommandContext.h"

class OperationSheetController;

namespace SheetChoices {
QString shortSha(const QString& sha);
QString subjectOf(const RevisionPtr& revision);
// A reference's full name, else "1a2b3c4 subject".
QString targetTitle(const CommandContext& context);
// What git is given for the chosen object: a reference's full name, else the sha.
QString targetArgument(const CommandContext& context);
// Every branch and tag a merge or rebase could take, but the checked-out branch.
QStringList referenceChoices(const CommandContext& context);
// Parent choices of a merge commit ("1: 1a2b3c4"); empty for an ordinary commit.
QStringList parentChoices(const RevisionPtr& revision);
// The combo of a merge or rebase: the chosen commit (when no reference was chosen), then
// every branch and tag; the context's object is selected.
QComboBox* addTargetChoice(OperationSheetController* sheet, const QString& label, const CommandContext& context);
// The argument git gets for the combo's choice: the sha for a commit, else the name.
QString chosenTarget(const QComboBox* combo);
std::optional<QString> needsTarget(const OperationSheetController& sheet);
}  // namespace SheetChoices
