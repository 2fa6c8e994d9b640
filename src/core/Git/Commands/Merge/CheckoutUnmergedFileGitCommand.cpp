#include "Git/Commands/Merge/CheckoutUnmergedFileGitCommand.h"

#include <QDir>
#include <QFile>

#include "Git/Commands/RunGitCommand.h"
#include "Logging/AdvancedLogger.h"

QStringList CheckoutUnmergedFileGitCommand::arguments(const QString& path, UnmergedFileVersionType version) {
  const int stage = int(version) + 1;
  return {QStringLiteral("checkout-index"), QStringLiteral("--temp"), QStringLiteral("--stage=%1").arg(stage), QStringLiteral("--"),
          path};
}

QString CheckoutUnmergedFileGitCommand::suffix(UnmergedFileVersionType version) {
  switch (version) {
    case UnmergedFileVersionType::base: return QStringLiteral(".~BASE");
    case UnmergedFileVersionType::local: return QStringLiteral(".~LOCAL");
    case UnmergedFileVersionType::remote: return QStringLiteral(".~REMOTE");
  }
  return {};
}

std::optional<QString> CheckoutUnmergedFileGitCommand::parseTemporaryName(const QString& output) {
  const qsizetype tab = output.indexOf(u'\t');
  if (tab < 0) return std::nullopt;
  return output.left(tab);
}

GitResult<QString> CheckoutUnmergedFileGitCommand::execute(const GitModule& module, const UnmergedFile& file,
                                                           UnmergedFileVersionType version) {
  auto response = runGitCommandWithResponse(module, arguments(file.path, version));
  if (response.isFailure()) return response.error();
  const auto temporary = parseTemporaryName(response.value().output);
  if (!temporary) {
    LOG_ERROR(QStringLiteral("Cannot find tab symbol in the checkout response"));
    return Error::CannotParse{QStringLiteral("Cannot find tab symbol in the checkout response")};
  }
  const QDir root(module.repositoryPath);
  const QString target = file.path + suffix(version);
  QFile::remove(root.filePath(target));
  if (!QFile::rename(root.filePath(*temporary), root.filePath(target))) {
    QFile::remove(root.filePath(*temporary));
    return Error::Generic{QStringLiteral("Cannot write '%1'").arg(target)};
  }
  return target;
}
