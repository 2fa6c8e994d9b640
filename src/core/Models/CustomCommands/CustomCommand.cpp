#include "Models/CustomCommands/CustomCommand.h"

#include <algorithm>

bool CustomCommand::operator==(const CustomCommand& other) const {
  const bool sameUi = (!ui && !other.ui) || (ui && other.ui && *ui == *other.ui);
  return target == other.target && referenceTargets == other.referenceTargets && name == other.name &&
         sameAction(action, other.action) && sameUi && shared == other.shared;
}

bool CustomCommand::appliesTo(ReferenceTarget kind) const {
  if (!referenceTargets) return true;
  return std::find(referenceTargets->begin(), referenceTargets->end(), kind) != referenceTargets->end();
}

QString CustomCommand::jsonValue(Target target) {
  switch (target) {
    case Target::repository: return QStringLiteral("repository");
    case Target::revision: return QStringLiteral("revision");
    case Target::file: return QStringLiteral("file");
    case Target::reference: return QStringLiteral("reference");
  }
  return {};
}

std::optional<CustomCommand::Target> CustomCommand::targetFromJson(const QString& value) {
  for (Target t : {Target::repository, Target::revision, Target::file, Target::reference}) {
    if (jsonValue(t) == value) return t;
  }
  return std::nullopt;
}

QString CustomCommand::label(Target target) {
  switch (target) {
    case Target::repository: return QStringLiteral("Repository");
    case Target::revision: return QStringLiteral("Commit");
    case Target::file: return QStringLiteral("File");
    case Target::reference: return QStringLiteral("Branch");
  }
  return {};
}

QString CustomCommand::jsonValue(ReferenceTarget target) {
  switch (target) {
    case ReferenceTarget::localBranch: return QStringLiteral("localBranch");
    case ReferenceTarget::remoteBranch: return QStringLiteral("remoteBranch");
    case ReferenceTarget::tag: return QStringLiteral("tag");
  }
  return {};
}

std::optional<CustomCommand::ReferenceTarget> CustomCommand::referenceTargetFromJson(const QString& value) {
  for (ReferenceTarget t : {ReferenceTarget::localBranch, ReferenceTarget::remoteBranch, ReferenceTarget::tag}) {
    if (jsonValue(t) == value) return t;
  }
  return std::nullopt;
}
