#include "Commands/BranchOperationCommands.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include "Commands/CommandFlow.h"
#include "Controllers/Sheets/OperationSheetController.h"
#include "Git/Commands/Merge/MergeGitCommand.h"
#include "Git/Commands/Merge/RebaseGitCommand.h"
#include "Git/Commands/Repository/BranchGitCommand.h"
#include "Git/Commands/Repository/CheckoutGitCommand.h"
#include "Git/Commands/Repository/RenameBranchGitCommand.h"
#include "Git/Commands/Revision/CherryPickGitCommand.h"
#include "Git/Commands/Revision/ResetGitCommand.h"
#include "Git/Commands/Revision/RevertGitCommand.h"
#include "Models/LocalBranch.h"
#include "Models/ReferenceNameCheck.h"
#include "Models/RemoteBranch.h"
#include "Models/Tag.h"
#include "Services/Preferences.h"

namespace {

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

const Subdomain everything = Subdomain::all();

// Parent choices of a merge commit ("1: 1a2b3c4"); empty for an ordinary commit.
QStringList parentChoices(const RevisionPtr& revision) {
  QStringList choices;
  if (!revision || revision->parents().size() < 2) return choices;
  int number = 1;
  for (const Sha& parent : revision->parents()) choices << QStringLiteral("%1: %2").arg(number++).arg(shortSha(parent.toString()));
  return choices;
}

}  // namespace

namespace {

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

}  // namespace

void ShowMergeBranchSheetCommand::execute(const CommandContext& context) {
  const auto active = context.activeBranch();
  if (!active) return;
  auto* sheet = new OperationSheetController(QStringLiteral("mergeSheet"), QStringLiteral("Merge"),
                                             QStringLiteral("Merge into '%1'").arg(active->name), QStringLiteral("Merge"));
  addTargetChoice(sheet, QStringLiteral("Merge:"), context);
  sheet->addOption(QStringLiteral("Create a merge commit even when a fast-forward is possible"), true, QStringLiteral("noFastForwardOnMerge"));
  sheet->addOption(QStringLiteral("Squash the commits into staged changes, without committing"), false);
  const GitModule module = context.module();
  const QString signingKey = context.signingKey();
  const QString into = active->name;
  sheet->setValidator(needsTarget);
  sheet->setOperation(QStringLiteral("Merge into '%1'").arg(into), QStringLiteral("Merging…"),
                      [module, signingKey](const OperationSheetController& s) {
                        MergeGitCommand::Options options;
                        options.noFastForward = s.option(0)->isChecked();
                        options.squash = s.option(1)->isChecked();
                        options.signingKey = signingKey;
                        const QString reference = chosenTarget(s.choice(0));
                        return [module, reference, options](JobProgress& progress) {
                          return MergeGitCommand::execute(module, reference, options, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}

void ShowRebaseSheetCommand::execute(const CommandContext& context) {
  const auto active = context.activeBranch();
  if (!active) return;
  auto* sheet = new OperationSheetController(QStringLiteral("rebaseSheet"), QStringLiteral("Rebase"),
                                             QStringLiteral("Rebase '%1'").arg(active->name), QStringLiteral("Rebase"));
  sheet->setInformativeText(QStringLiteral("The commits of '%1' that the target lacks are replayed on top of it and get new "
                                           "identities. Do not rebase commits that others already have.")
                                .arg(active->name));
  addTargetChoice(sheet, QStringLiteral("Onto:"), context);
  sheet->addOption(QStringLiteral("Stash local changes before and apply them after"), false, QStringLiteral("rebaseSheetAutostash"));
  const GitModule module = context.module();
  const QString signingKey = context.signingKey();
  const QString branch = active->name;
  sheet->setValidator(needsTarget);
  sheet->setOperation(QStringLiteral("Rebase '%1'").arg(branch), QStringLiteral("Rebasing…"),
                      [module, signingKey](const OperationSheetController& s) {
                        const QString onto = chosenTarget(s.choice(0));
                        const bool autostash = s.option(0)->isChecked();
                        return [module, onto, autostash, signingKey](JobProgress& progress) {
                          return RebaseGitCommand::execute(module, onto, autostash, signingKey, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}

void ShowCherryPickSheetCommand::execute(const CommandContext& context) {
  if (context.revisions.empty()) return;
  // The list shows newest first; picks go oldest first so they apply in history order.
  QStringList shas;
  for (auto it = context.revisions.rbegin(); it != context.revisions.rend(); ++it) shas << (*it)->sha().toString();
  const bool single = shas.size() == 1;
  auto* sheet = new OperationSheetController(
      QStringLiteral("cherryPickSheet"), QStringLiteral("Cherry-Pick"),
      single ? QStringLiteral("Cherry-pick %1").arg(targetTitle(context)) : QStringLiteral("Cherry-pick %1 commits").arg(shas.size()),
      QStringLiteral("Cherry-Pick"));
  sheet->setInformativeText(QStringLiteral("The changes are applied on top of the checked-out commit."));
  sheet->addOption(QStringLiteral("Commit the changes at once"), true);
  const QStringList parents = single ? parentChoices(context.revision()) : QStringList{};
  if (!parents.isEmpty()) sheet->addChoice(QStringLiteral("Mainline parent:"), parents);
  const GitModule module = context.module();
  const QString signingKey = context.signingKey();
  const bool merge = !parents.isEmpty();
  sheet->setOperation(single ? QStringLiteral("Cherry-pick '%1'").arg(shortSha(shas.first())) : QStringLiteral("Cherry-pick %1 commits").arg(shas.size()),
                      QStringLiteral("Cherry-picking…"), [module, shas, signingKey, merge](const OperationSheetController& s) {
                        CherryPickGitCommand::Options options;
                        options.commit = s.option(0)->isChecked();
                        options.signingKey = signingKey;
                        if (merge) options.parentNumber = s.choice(0)->currentIndex() + 1;
                        return [module, shas, options](JobProgress& progress) {
                          return CherryPickGitCommand::execute(module, shas, options, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}

void ShowRevertSheetCommand::execute(const CommandContext& context) {
  const RevisionPtr revision = context.revision();
  if (!revision) return;
  const QString sha = revision->sha().toString();
  auto* sheet = new OperationSheetController(QStringLiteral("revertSheet"), QStringLiteral("Revert"),
                                             QStringLiteral("Revert %1").arg(targetTitle(context)), QStringLiteral("Revert"));
  sheet->setInformativeText(QStringLiteral("A new commit undoes the changes of this one; history is kept."));
  sheet->addOption(QStringLiteral("Commit the reverting changes at once"), true);
  const QStringList parents = parentChoices(revision);
  if (!parents.isEmpty()) sheet->addChoice(QStringLiteral("Mainline parent:"), parents);
  const GitModule module = context.module();
  const QString signingKey = context.signingKey();
  const bool merge = !parents.isEmpty();
  sheet->setOperation(QStringLiteral("Revert '%1'").arg(shortSha(sha)), QStringLiteral("Reverting…"),
                      [module, sha, signingKey, merge](const OperationSheetController& s) {
                        RevertGitCommand::Options options;
                        options.commit = s.option(0)->isChecked();
                        options.signingKey = signingKey;
                        if (merge) options.parentNumber = s.choice(0)->currentIndex() + 1;
                        return [module, sha, options](JobProgress& progress) { return RevertGitCommand::execute(module, sha, options, &progress); };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}

void ShowResetBranchSheetCommand::execute(const CommandContext& context, Mode mode) {
  const RevisionPtr revision = context.revision();
  const auto active = context.activeBranch();
  if (!revision) return;
  const QString sha = revision->sha().toString();
  const QString branch = active ? QStringLiteral("'%1'").arg(active->name) : QStringLiteral("HEAD");
  auto* sheet = new OperationSheetController(QStringLiteral("resetSheet"), QStringLiteral("Reset"),
                                             QStringLiteral("Reset %1 to %2").arg(branch, targetTitle(context)), QStringLiteral("Reset"));
  sheet->addChoice(QStringLiteral("Mode:"),
                   {QStringLiteral("Soft: keep the index and the working tree"), QStringLiteral("Mixed: keep the working tree, reset the index"),
                    QStringLiteral("Hard: discard all local changes")},
                   static_cast<int>(mode));
  const auto warn = [sheet] {
    const bool hard = sheet->choice(0)->currentIndex() == 2;
    sheet->setPermanentWarning(hard ? QStringLiteral("Every uncommitted change in the index and the working tree is lost for good.")
                                    : QString());
    sheet->submitButton()->setText(hard ? QStringLiteral("Reset and Discard Changes") : QStringLiteral("Reset"));
    // Return must not discard anything.
    sheet->submitButton()->setDefault(!hard);
    sheet->cancelButton()->setDefault(hard);
  };
  QObject::connect(sheet->choice(0), &QComboBox::currentIndexChanged, sheet, warn);
  const GitModule module = context.module();
  sheet->setOperation(QStringLiteral("Reset %1 to '%2'").arg(branch, shortSha(sha)), QStringLiteral("Resetting…"),
                      [module, sha](const OperationSheetController& s) {
                        const auto resetMode = static_cast<ResetGitCommand::Mode>(s.choice(0)->currentIndex());
                        return [module, sha, resetMode](JobProgress& progress) { return ResetGitCommand::execute(module, sha, resetMode, &progress); };
                      });
  warn();
  CommandFlow::showSheet(context, sheet, everything);
}

void ShowCheckoutRevisionSheetCommand::execute(const CommandContext& context) {
  const QString target = context.reference ? context.reference->name : targetArgument(context);
  if (target.isEmpty()) return;
  auto* sheet = new OperationSheetController(QStringLiteral("checkoutRevisionSheet"), QStringLiteral("Checkout"),
                                             QStringLiteral("Check out %1").arg(targetTitle(context)), QStringLiteral("Checkout"));
  sheet->setInformativeText(QStringLiteral("No branch will be checked out (a detached HEAD). Commits made there belong to no "
                                           "branch; create a branch to keep them."));
  const GitModule module = context.module();
  sheet->setOperation(QStringLiteral("Checkout '%1'").arg(target.left(40)), QStringLiteral("Checking out…"),
                      [module, target](const OperationSheetController&) {
                        return [module, target](JobProgress& progress) { return CheckoutGitCommand::checkout(module, target, &progress); };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}

void ShowTrackRemoteBranchSheetCommand::execute(const CommandContext& context) {
  const auto* remoteBranch = dynamic_cast<const RemoteBranch*>(context.reference.get());
  if (!remoteBranch) return;
  const QString remoteName = remoteBranch->fullName;  // "origin/topic"
  const QString localName = remoteBranch->name;
  const QStringList locals = context.localBranchNames();
  const bool twin = locals.contains(localName);
  auto* sheet = new OperationSheetController(QStringLiteral("trackRemoteBranchSheet"), QStringLiteral("Checkout"),
                                             QStringLiteral("Check out '%1'").arg(remoteName), QStringLiteral("Checkout"));
  if (twin) {
    sheet->setInformativeText(QStringLiteral("The local branch '%1' exists. It is checked out and fast-forwarded to '%2'; if it "
                                             "has commits of its own, git refuses and nothing changes.")
                                  .arg(localName, remoteName));
  } else {
    sheet->setInformativeText(QStringLiteral("A local branch is made that tracks '%1'.").arg(remoteName));
    sheet->addField(QStringLiteral("Local name:"), localName);
    sheet->setValidator([locals](const OperationSheetController& s) -> std::optional<QString> {
      const QString name = s.field(0)->text().trimmed();
      if (auto problem = ReferenceNameCheck::problem(name)) return problem;
      return ReferenceNameCheck::clash(name, locals);
    });
  }
  const GitModule module = context.module();
  sheet->setOperation(QStringLiteral("Checkout '%1'").arg(remoteName), QStringLiteral("Checking out…"),
                      [module, twin, localName, remoteName](const OperationSheetController& s) -> OperationSheetController::Work {
                        if (twin) {
                          return [module, localName, remoteName](JobProgress& progress) {
                            return CheckoutGitCommand::checkoutAndFastForward(module, localName, remoteName, &progress);
                          };
                        }
                        const QString name = s.field(0)->text().trimmed();
                        return [module, name, remoteName](JobProgress& progress) {
                          return CheckoutGitCommand::track(module, name, remoteName, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, everything);
}

void ShowRenameLocalBranchSheetCommand::execute(const CommandContext& context) {
  const auto* branch = dynamic_cast<const LocalBranch*>(context.reference.get());
  if (!branch) return;
  const QString oldName = branch->name;
  QStringList others = context.localBranchNames();
  others.removeAll(oldName);
  const std::optional<QString> remote = branch->remoteName();
  auto* sheet = new OperationSheetController(QStringLiteral("renameBranchSheet"), QStringLiteral("Rename Branch"),
                                             QStringLiteral("Rename branch '%1'").arg(oldName), QStringLiteral("Rename"));
  sheet->addField(QStringLiteral("New name:"), oldName);
  if (remote) sheet->addOption(QStringLiteral("Also rename the branch on '%1'").arg(*remote), false);
  sheet->setValidator([others, oldName, remote](const OperationSheetController& s) -> std::optional<QString> {
    const QString name = s.field(0)->text().trimmed();
    if (auto problem = ReferenceNameCheck::problem(name)) return problem;
    if (name == oldName) return QStringLiteral("Enter a new name");
    return ReferenceNameCheck::clash(name, others);
  });
  if (remote) {
    // A warning that does not stop the rename.
    QObject::connect(sheet->option(0), &QCheckBox::toggled, sheet, [sheet](bool on) {
      sheet->setPermanentWarning(on ? QStringLiteral("Renaming can break tracking references for other users") : QString());
    });
  }
  const GitModule module = context.module();
  sheet->setOperation(QStringLiteral("Rename branch '%1'").arg(oldName), QStringLiteral("Renaming…"),
                      [module, oldName, remote](const OperationSheetController& s) {
                        const QString newName = s.field(0)->text().trimmed();
                        const std::optional<QString> onRemote = remote && s.option(0)->isChecked() ? remote : std::nullopt;
                        return [module, oldName, newName, onRemote](JobProgress& progress) {
                          return RenameBranchGitCommand::execute(module, oldName, newName, onRemote, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, Subdomain::head() | Subdomain::references() | Subdomain::referenceSettings());
}

void ShowRemoveLocalBranchSheetCommand::execute(const CommandContext& context) {
  const auto* branch = dynamic_cast<const LocalBranch*>(context.reference.get());
  if (!branch || branch->isActive) return;
  const QString name = branch->name;
  const GitModule module = context.module();
  const Subdomain changed = Subdomain::head() | Subdomain::references() | Subdomain::revisions();
  CommandFlow::confirm(context, QStringLiteral("Delete Branch"),
                       QStringLiteral("Delete the branch '%1'? Its commits stay where other branches or tags hold them.").arg(name),
                       QStringLiteral("Delete"), [context, module, name, changed] {
                         CommandFlow::run(
                             context, QStringLiteral("Delete branch '%1'").arg(name), changed,
                             [module, name](JobProgress& progress) { return BranchGitCommand::remove(module, name, false, &progress); },
                             {}, [context, module, name, changed](const ResultError& error) {
                               // Not merged: say what is lost, then force if the user agrees.
                               if (!std::holds_alternative<Error::BranchNotFullyMerged>(error)) return false;
                               CommandFlow::confirm(context, QStringLiteral("Delete Unmerged Branch"),
                                                    QStringLiteral("The branch '%1' is not fully merged. Commits that only this branch "
                                                                   "holds will be lost.")
                                                        .arg(name),
                                                    QStringLiteral("Delete Anyway"), [context, module, name, changed] {
                                                      CommandFlow::run(context, QStringLiteral("Delete branch '%1'").arg(name), changed,
                                                                       [module, name](JobProgress& progress) {
                                                                         return BranchGitCommand::remove(module, name, true, &progress);
                                                                       });
                                                    });
                               return true;
                             });
                       });
}

void ShowSetUpstreamSheetCommand::execute(const CommandContext& context) {
  const auto* branch = dynamic_cast<const LocalBranch*>(context.reference.get());
  const RepositoryDataPtr data = context.data();
  if (!branch || !data) return;
  QStringList upstreams;
  for (const auto& remoteBranch : data->references.remoteBranches) upstreams << remoteBranch->fullName;
  const QString name = branch->name;
  const int current = branch->upstreamName() ? std::max(0, int(upstreams.indexOf(*branch->upstreamName()))) : 0;
  auto* sheet = new OperationSheetController(QStringLiteral("setUpstreamSheet"), QStringLiteral("Set Upstream"),
                                             QStringLiteral("Set the upstream of '%1'").arg(name), QStringLiteral("Set Upstream"));
  sheet->addChoice(QStringLiteral("Upstream:"), upstreams, current);
  sheet->setValidator([](const OperationSheetController& s) -> std::optional<QString> {
    if (s.choice(0)->count() == 0) return QStringLiteral("There is no remote branch to track");
    return std::nullopt;
  });
  const GitModule module = context.module();
  sheet->setOperation(QStringLiteral("Set upstream of '%1'").arg(name), QStringLiteral("Setting upstream…"),
                      [module, name](const OperationSheetController& s) {
                        const QString upstream = s.choice(0)->currentText();
                        return [module, name, upstream](JobProgress& progress) {
                          return BranchGitCommand::setUpstream(module, name, upstream, &progress);
                        };
                      });
  CommandFlow::showSheet(context, sheet, Subdomain::references());
}

void UnsetUpstreamCommand::execute(const CommandContext& context) {
  const auto* branch = dynamic_cast<const LocalBranch*>(context.reference.get());
  if (!branch) return;
  const GitModule module = context.module();
  const QString name = branch->name;
  CommandFlow::run(context, QStringLiteral("Unset upstream of '%1'").arg(name), Subdomain::references(),
                   [module, name](JobProgress& progress) { return BranchGitCommand::setUpstream(module, name, {}, &progress); });
}

void CopyToClipboardCommand::execute(const CommandContext& context, What what) {
  QString text;
  if (what == What::referenceName) {
    if (context.reference) text = context.reference->name;
  } else {
    QStringList parts;
    for (const RevisionPtr& revision : context.revisions) parts << (what == What::sha ? revision->sha().toString() : subjectOf(revision));
    text = parts.join(QLatin1Char('\n'));
  }
  if (!text.isEmpty()) QApplication::clipboard()->setText(text);
}
