#include "Controllers/Sheets/ErrorWindowController.h"

#include <QCoreApplication>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include "Controls/GitOutputView.h"
#include "Git/Commands/Remotes/FetchGitCommand.h"
#include "Git/Commands/WorkingDirectory/CommitGitCommand.h"
#include "Jobs/Job.h"
#include "Jobs/JobProgress.h"
#include "Jobs/JobQueue.h"
#include "Logging/AdvancedLogger.h"
#include "Models/GitModuleSettings.h"

ErrorWindowController::ErrorWindowController(GitModule module, std::optional<ResultError> errorResult, QWidget* parent)
    : JelvSheetController(parent), module_(std::move(module)), errorResult_(std::move(errorResult)) {
  setObjectName(QStringLiteral("errorSheet"));
  setWindowTitle(QStringLiteral("Error"));
  messageLabel()->setText(QStringLiteral("Git operation failed"));
  content_ = ErrorSheetContent::make(errorResult_);

  errorTextView_ = new GitOutputView(this);
  if (content_.styled) {
    errorTextView_->setGitOutput(content_.text);
  } else {
    errorTextView_->setPlainText(content_.text);
  }
  errorTextView_->setMinimumSize(520, 180);
  contentLayout()->addWidget(errorTextView_);

  // The error sheet only closes: its submit is "OK", and the repair sits left of it.
  submitButton()->setText(QStringLiteral("OK"));
  cancelButton()->hide();
  firstButton_ = new QPushButton(content_.buttonTitle, this);
  firstButton_->setAutoDefault(false);
  firstButton_->setVisible(content_.repair != ErrorSheetContent::Repair::none);
  if (auto* row = qobject_cast<QHBoxLayout*>(static_cast<QVBoxLayout*>(layout())->itemAt(layout()->count() - 1)->layout())) {
    row->insertWidget(row->indexOf(cancelButton()), firstButton_);
  }
  connect(firstButton_, &QPushButton::clicked, this, &ErrorWindowController::runRepair);
}

ErrorWindowController* ErrorWindowController::present(QWidget* parent, const GitModule& module, const ResultError& error,
                                                      std::shared_ptr<JobQueue> queue,
                                                      std::function<void(ErrorWindowController*)> wire) {
  auto* sheet = new ErrorWindowController(module, error, parent ? parent->window() : nullptr);
  sheet->setJobQueue(queue);
  if (wire) wire(sheet);
  QPointer<QWidget> opener(parent);
  // A repair that fails (a retried commit) ends in an error of its own, shown in turn; a
  // repair that works there changes the repository as much as on the first sheet.
  showSheet(parent, sheet, [opener, module, queue, wire](const JelvSheetResult& result) {
    if (const ResultError* failure = result.error(); failure && opener) present(opener, module, *failure, queue, wire);
  });
  return sheet;
}

void ErrorWindowController::runRepair() {
  switch (content_.repair) {
    case ErrorSheetContent::Repair::none: return;
    case ErrorSheetContent::Repair::forceFetch: forceFetch(); return;
    case ErrorSheetContent::Repair::removeIndexLock: removeIndexLock(); return;
    case ErrorSheetContent::Repair::skipHooksAndCommit: commitWithoutHooks(); return;
    case ErrorSheetContent::Repair::setupIdentity:
      endWithSuccess();
      Q_EMIT identitySetupRequested();
      return;
  }
}

void ErrorWindowController::removeIndexLock() {
  QFile lock(module_.gitDirectoryPath(QStringLiteral("index.lock")));
  // Gone meanwhile is fine: the repair's aim is reached either way.
  if (!lock.remove()) LOG_ERROR(QStringLiteral("Cannot remove '%1': %2").arg(lock.fileName(), lock.errorString()));
  Q_EMIT repositoryChanged();
  endWithSuccess();
}

void ErrorWindowController::commitWithoutHooks() {
  const auto* failed = errorResult_ ? std::get_if<Error::GitCommitFailed>(&*errorResult_) : nullptr;
  if (!failed || !jobQueue()) return;
  const CommitOptions options = CommitOptions::fromSettings(GitModuleSettings::load(failed->gitModule), failed->amend, true);
  const GitModule module = failed->gitModule;
  const QString message = failed->message;
  // The sheet ends with the retry's own result; a failure opens a sheet of its own
  // (present's completion), so that no error goes unsaid.
  connect(this, &QDialog::finished, this, [this] {
    if (result().isSuccess()) Q_EMIT committed();
    Q_EMIT repositoryChanged();
  });
  runSheetJob(failed->amend ? QStringLiteral("Amend") : QStringLiteral("Commit"),
              failed->amend ? QStringLiteral("Amending…") : QStringLiteral("Committing…"),
              [module, message, options](JobProgress& progress) { return CommitGitCommand::execute(module, message, options, &progress); });
}

void ErrorWindowController::forceFetch() {
  const auto* mismatch = errorResult_ ? std::get_if<Error::TagMismatch>(&*errorResult_) : nullptr;
  const std::shared_ptr<JobQueue> queue = jobQueue();
  if (!mismatch || !queue) return;
  setControlsEnabled(false);
  setStatus(Status::busy, QStringLiteral("Fetching…"));
  const GitModule module = mismatch->gitModule;
  const QString remote = mismatch->remote;
  QPointer<ErrorWindowController> self(this);
  // Moved tags are taken from the remote: tags and force on, prune off.
  queue->schedule(Job::make(QStringLiteral("Force fetch"), Job::Show{3}, Job::ProgressType::infinite, [self, module, remote](JobProgress& progress) {
    FetchOptions options;
    options.tags = true;
    options.force = true;
    const GitVoidResult result = FetchGitCommand::execute(module, FetchTarget::ofRemote(remote), options, progress);
    QMetaObject::invokeMethod(qApp, [self, result] {
      if (!self) return;
      Q_EMIT self->repositoryChanged();
      if (result.isSuccess() || result.isError<Error::Canceled>()) {
        self->endWithSuccess();
      } else {
        self->endWithError(result.error());
      }
    });
  }));
}
