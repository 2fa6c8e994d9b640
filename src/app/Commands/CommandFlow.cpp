#include "Commands/CommandFlow.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include "UI/JelvDocument.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Controllers/Sheets/JelvSheetController.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Jobs/QueuedCall.h"
#include "Repository/RepositoryController.h"

namespace CommandFlow {

namespace {

void refresh(const CommandContext& context, Subdomain changed) {
  if (RepositoryController* controller = context.controller(); controller && !changed.isEmpty()) controller->invalidate(changed);
}

}  // namespace

void showError(const CommandContext& context, const ResultError& error, const QString& heading) {
  if (std::holds_alternative<Error::Canceled>(error)) return;
  QWidget* parent = context.repository ? static_cast<QWidget*>(context.repository.data()) : context.window;
  if (!parent) return;
  // A repair (a forced fetch, a removed lock) changed the repository behind the view.
  QPointer<JelvDocument> repository = context.repository;
  ErrorWindowController* sheet =
      ErrorWindowController::present(parent, context.module(), error, context.queue(), [repository](ErrorWindowController* shown) {
        QObject::connect(shown, &ErrorWindowController::repositoryChanged, shown, [repository] {
          if (repository && repository->controller()) repository->controller()->invalidate(Subdomain::all());
        });
      });
  if (!heading.isEmpty()) sheet->messageLabel()->setText(heading);
}

void showSheet(const CommandContext& context, JelvSheetController* sheet, Subdomain changed,
               std::function<void(const JelvSheetResult&)> after) {
  sheet->setJobQueue(context.queue());
  QWidget* parent = context.repository ? static_cast<QWidget*>(context.repository.data()) : context.window;
  JelvSheetController::showSheet(parent, sheet, [context, changed, after = std::move(after)](const JelvSheetResult& result) {
    if (!context.repository) return;
    if (!result.isCancel()) refresh(context, changed);
    if (const ResultError* error = result.error()) showError(context, *error);
    if (after) after(result);
  });
}

void run(const CommandContext& context, const QString& name, Subdomain changed, std::function<GitVoidResult(JobProgress&)> work,
         std::function<void(const GitVoidResult&)> after, std::function<bool(const ResultError&)> handle) {
  const std::shared_ptr<JobQueue> queue = context.queue();
  if (!queue) return;
  QPointer<JelvDocument> guard = context.repository;
  queue->schedule(Job::make(name, Job::Show{3}, Job::ProgressType::infinite,
                            [context, guard, changed, work = std::move(work), after = std::move(after), handle = std::move(handle)](JobProgress& progress) {
                              GitVoidResult result = work(progress);
                              if (progress.isCanceled()) result = Error::Canceled{};
                              postQueuedCall(qApp, [context, guard, changed, after, handle, result = std::move(result)] {
                                if (!guard) return;
                                refresh(context, changed);
                                if (!result && !(handle && handle(result.error()))) showError(context, result.error());
                                if (after) after(result);
                              });
                            }));
}

void confirm(const CommandContext& context, const QString& title, const QString& text, const QString& action,
             std::function<void()> confirmed) {
  QWidget* parent = context.repository ? context.repository->window() : context.window;
  auto* box = new QMessageBox(QMessageBox::Warning, title, text, QMessageBox::NoButton, parent);
  box->setObjectName(QStringLiteral("confirmationSheet"));
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::WindowModal);
  QPushButton* go = box->addButton(action, QMessageBox::DestructiveRole);
  go->setObjectName(QStringLiteral("confirmButton"));
  QPushButton* cancel = box->addButton(QMessageBox::Cancel);
  box->setDefaultButton(cancel);  // Return must not destroy anything
  QObject::connect(box, &QMessageBox::buttonClicked, box, [go, confirmed = std::move(confirmed)](QAbstractButton* button) {
    if (button == go && confirmed) confirmed();
  });
  box->open();
}

}  // namespace CommandFlow
