#include "Commands/BisectCommand.h"

#include <QMessageBox>

#include "Commands/CommandFlow.h"
#include "Controllers/CommitList/CommitListView.h"
#include "UI/JelvDocument.h"

QString BisectCommand::title(BisectGitCommand::Step step) {
  switch (step) {
    case BisectGitCommand::Step::start: return QStringLiteral("Bisect: Start");
    case BisectGitCommand::Step::reset: return QStringLiteral("Bisect: Reset");
    case BisectGitCommand::Step::good: return QStringLiteral("Bisect: Good");
    case BisectGitCommand::Step::bad: return QStringLiteral("Bisect: Bad");
  }
  return {};
}

void BisectCommand::execute(const CommandContext& context, BisectGitCommand::Step step) {
  const bool marks = step == BisectGitCommand::Step::good || step == BisectGitCommand::Step::bad;
  const GitModule module = context.module();
  const RevisionPtr chosen = marks ? context.revision() : nullptr;
  const QString revision = chosen ? chosen->sha().toString() : QString();
  // Filled on the job's thread, read after it has reported.
  auto firstBad = std::make_shared<std::optional<QString>>();
  CommandFlow::run(
      context, title(step), Subdomain::all(),
      [module, step, revision, firstBad](JobProgress& progress) -> GitVoidResult {
        const auto outcome = BisectGitCommand::execute(module, step, revision, &progress);
        if (!outcome) return outcome.error();
        *firstBad = outcome.value().firstBadCommit;
        return Unit{};
      },
      [context, firstBad](const GitVoidResult& result) {
        if (!result || !*firstBad || !context.repository) return;
        const QString sha = **firstBad;
        if (const auto parsed = Sha::fromHex(sha)) context.repository->commitList()->selectSha(*parsed);
        auto* box = new QMessageBox(QMessageBox::Information, QStringLiteral("Bisect"),
                                    QStringLiteral("%1 is the first bad commit.").arg(sha.left(10)), QMessageBox::Ok,
                                    context.repository->window());
        box->setObjectName(QStringLiteral("bisectResult"));
        box->setInformativeText(QStringLiteral("Bisect: Reset ends the search and checks out where it started."));
        box->setAttribute(Qt::WA_DeleteOnClose);
        box->setWindowModality(Qt::WindowModal);
        box->open();
      });
}
