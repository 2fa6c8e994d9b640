#include "Services/CliToolInstaller.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

CliToolInstaller::CliToolInstaller(QString toolPath, QString linkPath, QString elevationProgram)
    : toolPath_(std::move(toolPath)), linkPath_(std::move(linkPath)), elevationProgram_(std::move(elevationProgram)) {}

bool CliToolInstaller::toolExists() const { return QFileInfo(toolPath_).isExecutable(); }

CliToolInstaller::State CliToolInstaller::state() const {
  const QFileInfo link(linkPath_);
  if (!link.exists() && !link.isSymLink()) return State::notInstalled;
  if (link.isSymLink() && QDir::cleanPath(link.symLinkTarget()) == QDir::cleanPath(QFileInfo(toolPath_).absoluteFilePath())) {
    return State::installed;
  }
  return State::otherFile;
}

std::optional<QString> CliToolInstaller::run(const QString& program, const QStringList& arguments) const {
  const QString programPath = QStandardPaths::findExecutable(program);
  if (programPath.isEmpty()) return QStringLiteral("%1 is not installed").arg(program);
  ShellRequest request;
  if (elevationProgram_.isEmpty()) {
    request.launchPath = programPath;
    request.arguments = arguments;
  } else {
    request.launchPath = QStandardPaths::findExecutable(elevationProgram_);
    if (request.launchPath.isEmpty()) return QStringLiteral("%1 is not installed").arg(elevationProgram_);
    request.arguments = QStringList{programPath} + arguments;
  }
  const ShellStringResponse response = request.execute();
  if (response.isSuccess()) return std::nullopt;
  const ShellResponseError& failure = *response.failure;
  const QString words = failure.error.trimmed();
  if (failure.kind != ShellResponseError::Kind::unknownError) return words.isEmpty() ? failure.path : words;
  // pkexec: 126 when the user refused, 127 when nobody could ask.
  return QStringLiteral("exit status %1%2").arg(failure.status).arg(words.isEmpty() ? QString() : QStringLiteral(": ") + words);
}

CliToolInstaller::Outcome CliToolInstaller::install() const {
  if (!toolExists()) return {false, QStringLiteral("The tool '%1' is missing.").arg(toolPath_)};
  // -n: a link to a folder is replaced, not entered.
  if (const auto failure = run(QStringLiteral("ln"), {QStringLiteral("-sfn"), toolPath_, linkPath_})) {
    LOG_ERROR(QStringLiteral("Cannot install the command line tool: ") + *failure);
    return {false, QStringLiteral("Can't install cli tool with elevated rights. Error Dictionary: '%1'").arg(*failure)};
  }
  return {true, QStringLiteral("Cli tool installed successfully.")};
}

CliToolInstaller::Outcome CliToolInstaller::uninstall() const {
  if (const auto failure = run(QStringLiteral("rm"), {QStringLiteral("-f"), QStringLiteral("--"), linkPath_})) {
    LOG_ERROR(QStringLiteral("Cannot uninstall the command line tool: ") + *failure);
    return {false, QStringLiteral("Can't uninstall cli tool with elevated rights. Error Dictionary: '%1'").arg(*failure)};
  }
  return {true, QStringLiteral("Cli tool uninstalled successfully.")};
}
