#include "Commands/ShowAskPassSheetCommand.h"

#include <QApplication>
#include <QPointer>

#include "Controllers/Sheets/AskPassController.h"
#include "UI/JelvMainWindow.h"

QWidget* ShowAskPassSheetCommand::frontWindow() {
  if (auto* active = qobject_cast<JelvMainWindow*>(QApplication::activeWindow())) return active;
  QWidget* any = nullptr;
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (!widget->isVisible() || widget->isWindowType() == false) continue;
    if (qobject_cast<JelvMainWindow*>(widget)) return widget;
    if (!any && widget->isWindow() && !qobject_cast<QDialog*>(widget)) any = widget;
  }
  return any;
}

void ShowAskPassSheetCommand::install() {
  bridge_.setPromptHandler([this](const AskPassRequestArgs& args, const AskPassRequest& request) { execute(frontWindow(), args, request); });
}

void ShowAskPassSheetCommand::execute(QWidget* window, const AskPassRequestArgs& args, const AskPassRequest& request) {
  if (!window) {
    bridge_.respond(AskPassResponse::Kind::cancel, args.askPassProcessId, QString());
    return;
  }
  auto* sheet = new AskPassController(args.arguments, request);
  QPointer<AskPassController> guard(sheet);
  AskPassBridge* bridge = &bridge_;
  const qint64 helper = args.askPassProcessId;
  JelvSheetController::showSheet(window, sheet, [bridge, guard, helper, request](const JelvSheetResult& result) {
    if (!guard || !result.isSuccess()) {
      bridge->answer(request, helper, std::nullopt, false);
      return;
    }
    bridge->answer(request, helper, guard->value(), guard->remember());
  });
}
