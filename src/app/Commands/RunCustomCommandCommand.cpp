#include "Commands/RunCustomCommandCommand.h"

#include <QCheckBox>
#include <QDesktopServices>
#include <QFileInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

#include "Commands/CommandFlow.h"
#include "Logging/AdvancedLogger.h"
#include "Models/GitModuleSettings.h"
#include "Services/CustomCommandManager.h"
#include "Services/CustomCommandRunner.h"
#include "Services/Preferences.h"
#include "UI/CustomCommands/CustomCommandResultController.h"
#include "UI/CustomCommands/CustomCommandUIWindowController.h"
#include "UI/JelvDocument.h"

namespace {

std::optional<CustomCommand::ReferenceTarget> referenceKind(const ReferencePtr& reference) {
  if (!reference) return std::nullopt;
  switch (reference->kind()) {
    case Reference::Kind::localBranch: return CustomCommand::ReferenceTarget::localBranch;
    case Reference::Kind::remoteBranch: return CustomCommand::ReferenceTarget::remoteBranch;
    case Reference::Kind::tag: return CustomCommand::ReferenceTarget::tag;
    default: return std::nullopt;
  }
}

QString repositoryName(const GitModule& module) { return QFileInfo(module.repositoryPath).fileName(); }

// Asks whether a command that came with the repository may run. `accepted` runs after a
// yes; the check box decides whether the repository is trusted from now on.
void askTrust(const CommandContext& context, std::function<void()> accepted) {
  const GitModule module = context.module();
  const QString name = repositoryName(module);
  QWidget* parent = context.repository ? context.repository->window() : context.window;
  auto* box = new QMessageBox(QMessageBox::Warning, QObject::tr("Custom Command"),
                              QStringLiteral("The custom command has come from the '%1' repository").arg(name), QMessageBox::NoButton, parent);
  box->setObjectName(QStringLiteral("runSharedCustomCommandConfirmation"));
  box->setInformativeText(QStringLiteral("You should only run custom commands from trustworthy repositories. Do you really want to run it?"));
  box->setCheckBox(new QCheckBox(QStringLiteral("Trust custom commands in '%1'").arg(name), box));
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setWindowModality(Qt::WindowModal);
  QPushButton* run = box->addButton(QObject::tr("Run"), QMessageBox::AcceptRole);
  run->setObjectName(QStringLiteral("confirmButton"));
  box->setDefaultButton(box->addButton(QMessageBox::Cancel));
  QObject::connect(box, &QMessageBox::buttonClicked, box, [box, run, module, accepted = std::move(accepted)](QAbstractButton* button) {
    if (button != run) return;
    GitModuleSettings settings = GitModuleSettings::load(module);
    settings.trustSharedCommands = box->checkBox()->isChecked();
    settings.save(module);
    accepted();
  });
  box->open();
}

void runProcess(const CommandContext& context, const ProcessCustomCommandAction& action, const CustomCommandEnvironmentPtr& env,
                const QString& customCommandName) {
  const CustomCommandRunner::Invocation invocation = CustomCommandRunner::invocation(action, *env);
  // The job's report, kept for the output window once it has ended.
  auto response = std::make_shared<ShellStringResponse>();
  const bool showOutput = action.showOutput;
  QPointer<QWidget> window = context.repository ? context.repository->window() : context.window;
  CommandFlow::run(
      context, invocation.path, Subdomain::all(),
      [invocation, response](JobProgress& progress) -> GitVoidResult {
        auto result = CustomCommandRunner::run(invocation, progress);
        if (!result) return result.error();
        *response = std::move(result).value();
        return Unit{};
      },
      [response, showOutput, window, customCommandName, path = invocation.path](const GitVoidResult& result) {
        if (result && showOutput && window) CustomCommandResultController::present(window, customCommandName, path, *response);
      },
      // The error sheet names the command: the program need not be git at all.
      [context, customCommandName](const ResultError& error) {
        if (!context.repository) return false;
        CommandFlow::showError(context, error, customCommandName + QStringLiteral(" failed"));
        return true;
      });
}

}  // namespace

CustomCommandList RunCustomCommandCommand::commands(const CommandContext& context) {
  CustomCommandList all = CustomCommandManager::shared().customCommands();
  if (const RepositoryDataPtr data = context.data()) all.insert(all.end(), data->customCommands.begin(), data->customCommands.end());
  return all;
}

CustomCommandList RunCustomCommandCommand::commands(const CommandContext& context, CustomCommand::Target target) {
  if (!context.repository || !environment(context, target)) return {};
  const RepositoryDataPtr data = context.data();
  return CustomCommandManager::shared().commands(target, data ? data->customCommands : CustomCommandList{}, referenceKind(context.reference));
}

CustomCommandEnvironmentPtr RunCustomCommandCommand::environment(const CommandContext& context, CustomCommand::Target target) {
  if (!context.repository) return nullptr;
  const GitModule module = context.module();
  const QString git = Preferences::shared().gitInstance().launchPath();
  switch (target) {
    case CustomCommand::Target::repository: return std::make_shared<const CustomCommandEnvironment>(module, git);
    case CustomCommand::Target::revision:
      if (!context.revision()) return nullptr;
      return std::make_shared<const RevisionCustomCommandEnvironment>(module, git, context.revision()->sha().toString());
    case CustomCommand::Target::file: {
      if (context.paths.isEmpty()) return nullptr;
      const QString path = context.paths.front();
      std::optional<QString> sha;
      if (context.revision()) sha = context.revision()->sha().toString();
      return std::make_shared<const FileCustomCommandEnvironment>(module, git, path, QFileInfo(path).fileName(), sha);
    }
    case CustomCommand::Target::reference:
      if (!referenceKind(context.reference)) return nullptr;
      return std::make_shared<const RefCustomCommandEnvironment>(module, git, context.reference);
  }
  return nullptr;
}

void RunCustomCommandCommand::execute(const CommandContext& context, const CustomCommandPtr& command) {
  if (!command) return;
  if (CustomCommandEnvironmentPtr env = environment(context, command->target)) executeCustomCommand(context, command, env);
}

void RunCustomCommandCommand::executeCustomCommand(const CommandContext& context, const CustomCommandPtr& command,
                                                   const CustomCommandEnvironmentPtr& env) {
  const auto go = [context, command, env] {
    if (!context.repository) return;
    if (command->ui) {
      QWidget* parent = context.repository->window();
      CustomCommandUIWindowController::present(parent, command->name, command->ui, env,
                                               [context, env, name = command->name](const CustomCommandActionPtr& action) {
                                                 executeAction(context, action, env, name);
                                               });
    } else if (command->action) {
      executeAction(context, command->action, env, command->name);
    } else {
      LOG_WARNING(QStringLiteral("Cannot execute '%1'. Either 'UI' or 'Action' field must be defined").arg(command->name));
    }
  };
  if (command->shared && !GitModuleSettings::load(context.module()).trustSharedCommands) {
    askTrust(context, go);
  } else {
    go();
  }
}

void RunCustomCommandCommand::executeAction(const CommandContext& context, const CustomCommandActionPtr& action,
                                            const CustomCommandEnvironmentPtr& env, const QString& customCommandName) {
  if (!action || !env) return;
  if (const auto* process = dynamic_cast<const ProcessCustomCommandAction*>(action.get())) {
    LOG_INFO(QStringLiteral("Run process custom action for '%1'").arg(customCommandName));
    runProcess(context, *process, env, customCommandName);
  } else if (const auto* url = dynamic_cast<const UrlCustomCommandAction*>(action.get())) {
    LOG_INFO(QStringLiteral("Run url custom action for '%1'").arg(customCommandName));
    const QUrl target(env->replace(url->url, true), QUrl::StrictMode);
    if (target.isValid() && !target.scheme().isEmpty()) QDesktopServices::openUrl(target);
  }
}
