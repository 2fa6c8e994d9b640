#include "Commands/SheetChoices.h"

#include "Controllers/Sheets/OperationSheetController.h"
#include "Models/LocalBranch.h"
#include "Models/RemoteBranch.h"
#include "Models/Tag.h"

namespace SheetChoices {
QString shortSha(const QString& sha) { return sha.left(7); }

QString subjectOf(const RevisionPtr& revision) { return revision->message().section(QLatin1Char('\n'), 0, 0); }

// What a sheet names the chosen object by: a reference's name, else "1a2b3c4 subject".
QString targetTitle(const CommandContext& context) {
  if (context.reference) return context.reference->fullName;
  if (const RevisionPtr revision = context.revision()) return shortSha(revision->sha().toString()) + QLatin1Char(' ') + subjectOf(revision);
  return {};
}

// What git is given for the chosen object: a reference's full name, else the sha.
QString targetArgument(const CommandContext& context) {
  if (context.reference) return context.reference->fullName;
  if (const RevisionPtr revision = context.revision()) return revision->sha().toString();
  return {};
}

// Every branch and tag a merge or rebase could take, for the sheets opened without one.
QStringList referenceChoices(const CommandContext& context) {
  QStringList names;
  const RepositoryDataPtr data = context.data();
  if (!data) return names;
  for (const auto& branch : data->references.localBranches) {
    if (!branch->isActive) names << branch->name;
  }
  for (const auto& branch : data->references.remoteBranches) names << branch->fullName;
  for (const auto& tag : data->references.tags) names << tag->name;
  return names;
}


// Parent choices of a merge commit ("1: 1a2b3c4"); empty for an ordinary commit.
QStringList parentChoices(const RevisionPtr& revision) {
  QStringList choices;
  if (!revision || revision->parents().size() < 2) return choices;
  int number = 1;
  for (const Sha& parent : revision->parents()) choices << QStringLiteral("%1: %2").arg(number++).arg(shortSha(parent.toString()));
  return choices;
}



// The combo of a merge or rebase: the chosen commit (if no reference was chosen), then
// every branch and tag but the checked-out branch; the context's object is selected.
QComboBox* addTargetChoice(OperationSheetController* sheet, const QString& label, const CommandContext& context) {
  QStringList items = referenceChoices(context);
  int current = 0;
  if (context.reference) {
    current = std::max(0, int(items.indexOf(context.reference->kind() == Reference::Kind::localBranch ? context.reference->name
                                                                                                        : context.reference->fullName)));
  } else if (const RevisionPtr revision = context.revision()) {
    items.prepend(targetTitle(context));
  }
  QComboBox* combo = sheet->addChoice(label, items, current);
  if (!context.reference && context.revision()) combo->setItemData(0, context.revision()->sha().toString());
  combo->setEditable(false);
  return combo;
}

// The argument git gets for the combo's choice: the sha for a commit, else the name.
QString chosenTarget(const QComboBox* combo) {
  const QVariant sha = combo->currentData();
  return sha.isValid() ? sha.toString() : combo->currentText();
}

std::optional<QString> needsTarget(const OperationSheetController& sheet) {
  if (sheet.choice(0)->currentText().isEmpty()) return QStringLiteral("There is no other branch");
  return std::nullopt;
}

}  // namespace SheetChoices
