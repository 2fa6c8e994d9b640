#include "Git/Merge/ExternalMerge.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include "Git/Commands/Merge/CheckoutUnmergedFileGitCommand.h"
#include "Logging/AdvancedLogger.h"

GitVoidResult ExternalMerge::runTool(const MergeTool::Launch& launch, const QStringList& arguments, const QString& workingDirectory) {
  QProcess process;
  process.setProgram(launch.launchPath);
  process.setArguments(arguments);
  process.setWorkingDirectory(workingDirectory);
  process.setStandardInputFile(QProcess::nullDevice());
  process.start();
  if (!process.waitForStarted(-1)) {
    return Error::Generic{QStringLiteral("Cannot start '%1': %2").arg(launch.launchPath, process.errorString())};
  }
  process.waitForFinished(-1);
  LOG_INFO(QStringLiteral("'%1' ended with status %2").arg(launch.tool.name()).arg(process.exitCode()));
  return Unit{};
}

void ExternalMerge::removeTemporaryFiles(const GitModule& module, const QStringList& files) {
  LOG_INFO(QStringLiteral("Remove temporary merge files."));
  const QDir root(module.repositoryPath);
  for (const QString& name : files) {
    QFile file(root.filePath(name));
    if (file.exists() && !file.remove()) {
      LOG_ERROR(QStringLiteral("Cannot remove temporary file '") + name + QStringLiteral("'. Error: '") + file.errorString() +
                QStringLiteral("'"));
    }
  }
}

GitVoidResult ExternalMerge::merge(const GitModule& module, const UnmergedFile& file, const MergeTool::Launch& launch) {
  if (!file.localVersion || !file.remoteVersion) {
    LOG_WARNING(QStringLiteral("Cannot merge conflict when one of files is deleted."));
    return Error::Generic{QStringLiteral("Cannot merge conflict when one of files is deleted.")};
  }
  QStringList written;
  const auto checkout = [&](UnmergedFileVersionType version) -> GitResult<QString> {
    auto result = CheckoutUnmergedFileGitCommand::execute(module, file, version);
    if (result.isSuccess()) written << result.value();
    return result;
  };
  GitVoidResult outcome = Unit{};
  const auto local = checkout(UnmergedFileVersionType::local);
  const auto remote = local.isSuccess() ? checkout(UnmergedFileVersionType::remote) : local;
  std::optional<GitResult<QString>> base;
  if (remote.isSuccess() && file.baseVersion) base = checkout(UnmergedFileVersionType::base);
  if (local.isFailure()) outcome = local.error();
  else if (remote.isFailure()) outcome = remote.error();
  else if (base && base->isFailure()) outcome = base->error();
  if (outcome.isSuccess()) {
    LOG_INFO(QStringLiteral("Merge conflict in '") + file.path + QStringLiteral("' using merge tool"));
    const QDir root(module.repositoryPath);
    const std::optional<QString> basePath = base ? std::optional<QString>(root.filePath(base->value())) : std::nullopt;
    const QStringList arguments =
        launch.tool.mergeArguments(root.filePath(local.value()), root.filePath(remote.value()), basePath, root.filePath(file.path));
    outcome = runTool(launch, arguments, module.repositoryPath);
  }
  removeTemporaryFiles(module, written);
  return outcome;
}
