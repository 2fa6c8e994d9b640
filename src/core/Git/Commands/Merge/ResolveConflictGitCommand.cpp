#include "Git/Commands/Merge/ResolveConflictGitCommand.h"

#include "Git/Process/GitRequest.h"
#include "Logging/AdvancedLogger.h"

namespace {

const std::optional<UnmergedFileVersion>& side(const UnmergedFile& file, UnmergedFileVersionType version) {
  switch (version) {
    case UnmergedFileVersionType::local: return file.localVersion;
    case UnmergedFileVersionType::remote: return file.remoteVersion;
    case UnmergedFileVersionType::base: break;
  }
  return file.baseVersion;
}

QString sideName(UnmergedFileVersionType version) {
  switch (version) {
    case UnmergedFileVersionType::local: return QStringLiteral("local");
    case UnmergedFileVersionType::remote: return QStringLiteral("remote");
    case UnmergedFileVersionType::base: break;
  }
  return QStringLiteral("base");
}

}  // namespace

std::vector<QStringList> ResolveConflictGitCommand::argumentLists(const UnmergedFile& file, UnmergedFileVersionType version) {
  const std::optional<UnmergedFileVersion>& chosen = side(file, version);
  if (!chosen) return {{QStringLiteral("rm"), QStringLiteral("--"), file.path}};
  return {{QStringLiteral("checkout-index"), QStringLiteral("-f"), QStringLiteral("--stage=%1").arg(chosen->stage()), QStringLiteral("--"),
           file.path},
          {QStringLiteral("add"), QStringLiteral("--"), file.path}};
}

GitVoidResult ResolveConflictGitCommand::execute(const GitModule& module, const UnmergedFile& file, UnmergedFileVersionType version) {
  LOG_INFO(QStringLiteral("Resolve conflict in '%1' using the %2 version").arg(file.path, sideName(version)));
  for (const QStringList& arguments : argumentLists(file, version)) {
    const GitResponse response = GitRequest(module, arguments).execute();
    if (!response.isSuccess()) return failureResult<Unit>(response);
  }
  return Unit{};
}
