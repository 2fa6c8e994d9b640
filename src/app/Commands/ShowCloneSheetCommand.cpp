#include "Commands/ShowCloneSheetCommand.h"

#include <QPointer>

#include "Controllers/Sheets/CloneController.h"
#include "Controllers/Sheets/ErrorWindowController.h"
#include "Jobs/JobQueue.h"

void ShowCloneSheetCommand::execute(QWidget* window, std::shared_ptr<JobQueue> queue, const QString& url,
                                    std::function<void(const QString& path)> opened) {
  auto* sheet = new CloneController(url);
  sheet->setJobQueue(queue);
  QPointer<CloneController> guard(sheet);
  QPointer<QWidget> parent(window);
  JelvSheetController::showSheet(window, sheet, [guard, parent, queue, opened](const JelvSheetResult& result) {
    if (result.isSuccess() && guard && opened) opened(guard->clonedPath());
    if (const ResultError* error = result.error(); error && parent) ErrorWindowController::present(parent, {}, *error, queue);
  });
}
