#include "Models/RepositoryStateNotification.h"

namespace {

// "1 conflict", "2 conflicts", "0 conflicts".
QString counted(qsizetype count, const QString& word) {
  return QString::number(count) + QLatin1Char(' ') + word + (count == 1 ? QString() : QStringLiteral("s"));
}

QString nameOf(const ReferencePtr& reference) { return reference ? reference->name : QString(); }
QString shaOf(const ReferencePtr& reference) { return reference ? reference->sha : QString(); }

std::optional<QString> resolveWhenConflicted(qsizetype conflicts) {
  if (conflicts > 0) return QStringLiteral("Resolve");
  return std::nullopt;
}

}  // namespace

std::optional<RepositoryStateNotification> RepositoryStateNotification::make(const RepositoryState& state) {
  using S = RepositoryState;
  if (const auto* merge = state.as<S::MergeInProgress>()) {
    const qsizetype conflicts = merge->unmergedFiles.size();
    QString message = QStringLiteral("Merging branch '%1' into '%2'. ").arg(nameOf(merge->their), nameOf(merge->our));
    if (conflicts > 0) {
      message += QStringLiteral("Fix %1 and then continue.").arg(counted(conflicts, QStringLiteral("conflict")));
    } else {
      message += QStringLiteral("All conflicts fixed.");
    }
    return RepositoryStateNotification{message, resolveWhenConflicted(conflicts)};
  }
  if (const auto* rebase = state.as<S::RebaseInProgress>()) {
    const qsizetype conflicts = rebase->unmergedFiles.size();
    QString message = QStringLiteral("Rebasing branch '%1'.").arg(nameOf(rebase->our));
    message += QStringLiteral(" Rebased %1 of %2").arg(rebase->done).arg(counted(rebase->total, QStringLiteral("commit")));
    if (rebase->amend) {
      message += QStringLiteral(". Amending '%1'").arg(*rebase->amend);
    } else if (conflicts > 0) {
      message += QStringLiteral(". Fix ") + counted(conflicts, QStringLiteral("conflict"));
    }
    return RepositoryStateNotification{message, resolveWhenConflicted(conflicts)};
  }
  if (const auto* pick = state.as<S::CherryPickInProgress>()) {
    const qsizetype conflicts = pick->unmergedFiles.size();
    QString message = QStringLiteral("Cherry-picking commit ") + shaOf(pick->cherryPickHead);
    if (conflicts > 0) message += QStringLiteral(". Fix ") + counted(conflicts, QStringLiteral("conflict"));
    // Resolve whatever the count: it leads on to continuing or aborting the pick.
    return RepositoryStateNotification{message, QStringLiteral("Resolve")};
  }
  if (state.is<S::SequencerInProgress>()) {
    return RepositoryStateNotification{QStringLiteral("Cherry-pick in progress"), QStringLiteral("Resolve")};
  }
  if (const auto* revert = state.as<S::RevertInProgress>()) {
    const qsizetype conflicts = revert->unmergedFiles.size();
    QString message = QStringLiteral("Reverting commit ") + revert->revertHead;
    if (conflicts > 0) message += QStringLiteral(". Fix ") + counted(conflicts, QStringLiteral("conflict"));
    return RepositoryStateNotification{message, QStringLiteral("Resolve")};
  }
  if (state.is<S::SquashInProgress>()) return RepositoryStateNotification{QStringLiteral("Squashing commits"), {}};
  if (const auto* unmerged = state.as<S::UnmergedFiles>()) {
    const qsizetype count = unmerged->unmergedFiles.size();
    return RepositoryStateNotification{
        QStringLiteral("Index contains %1").arg(counted(count, QStringLiteral("unmerged file"))), resolveWhenConflicted(count)};
  }
  if (const auto* bisect = state.as<S::BisectInProgress>()) {
    const QString started = QStringLiteral("Bisecting, started from '%1'. ").arg(nameOf(bisect->start));
    if (bisect->current) {
      return RepositoryStateNotification{started + QStringLiteral("Is '%1' good or bad?").arg(*bisect->current),
                                         QStringLiteral("Good")};
    }
    return RepositoryStateNotification{
        started + QStringLiteral("Mark current commit as good or bad and checkout another one"), {}};
  }
  return std::nullopt;
}
