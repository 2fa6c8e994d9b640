#include "Commands/DropBranchCommand.h"

#include <QMessageBox>
#include <QPushButton>

#include "Commands/CommandFlow.h"
#include "UI/JelvDocument.h"
#include "Git/Commands/Merge/MergeGitCommand.h"
#include "Git/Commands/Merge/RebaseGitCommand.h"
#include "Models/LocalBranch.h"
#include "Services/Preferences.h"

void DropBranchCommand::execute(const CommandContext& context, const QString& sourceFullReference, const QString& targetFullReference) {
  const RepositoryDataPtr data = context.data();
  if (!data) return;
  const ReferencePtr source = data->references.reference(sourceFullReference);
  const ReferencePtr target = data->references.reference(targetFullReference);
  const auto active = context.activeBranch();
  if (!source || !target) return;
  QWidget* parent = context.repository ? context.repository->window() : context.window;
  if (!active || active->fullReference != targetFullReference) {
    QMessageBox::information(parent, QStringLiteral("Merge or Rebase"),
                             QStringLiteral("Drop a branch on the checked-out branch to merge or rebase. Check out '%1' first.")
                                 .arg(target->name));
    return;
  }
  const QString from = source->fullName;
  const QString into = target->name;
  auto* box = new QMessageBox(QMessageBox::Question, QStringLiteral("Merge or Rebase"),
                              QStringLiteral("Merge '%1' into '%2', or rebase '%2' onto '%1'?").arg(from, into), QMessageBox::NoButton, parent);
  box->setObjectName(QStringLiteral("dropBranchSheet"));
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::WindowModal);
  QPushButton* merge = box->addButton(QStringLiteral("Merge '%1' into '%2'").arg(from, into), QMessageBox::AcceptRole);
  merge->setObjectName(QStringLiteral("mergeButton"));
  QPushButton* rebase = box->addButton(QStringLiteral("Rebase '%1' onto '%2'").arg(into, from), QMessageBox::AcceptRole);
  rebase->setObjectName(QStringLiteral("rebaseButton"));
  box->setDefaultButton(box->addButton(QMessageBox::Cancel));
  const GitModule module = context.module();
  const QString signingKey = context.signingKey();
  QObject::connect(box, &QMessageBox::buttonClicked, box, [=](QAbstractButton* button) {
    auto& preferences = Preferences::shared();
    if (button == merge) {
      const MergeGitCommand::Options options{false, preferences.noFastForwardOnMerge(), signingKey};
      CommandFlow::run(context, QStringLiteral("Merge '%1' into '%2'").arg(from, into), Subdomain::all(),
                       [module, from, options](JobProgress& progress) { return MergeGitCommand::execute(module, from, options, &progress); });
    } else if (button == rebase) {
      const bool autostash = preferences.rebaseSheetAutostash();
      CommandFlow::run(context, QStringLiteral("Rebase '%1' onto '%2'").arg(into, from), Subdomain::all(),
                       [module, from, autostash, signingKey](JobProgress& progress) {
                         return RebaseGitCommand::execute(module, from, autostash, signingKey, &progress);
                       });
    }
  });
  box->open();
}
