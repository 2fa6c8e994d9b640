#include "Models/ErrorSheetContent.h"

#include <QFileInfo>

#include "Extensions/Overloaded.h"
#include "Logging/AdvancedLogger.h"

namespace {

ErrorSheetContent plain(const QString& text) { return {text, false, ErrorSheetContent::Repair::none, {}}; }

ErrorSheetContent withRepair(QString text, bool styled, ErrorSheetContent::Repair repair) {
  return {std::move(text), styled, repair, ErrorSheetContent::repairTitle(repair)};
}
}  // namespace

QString ErrorSheetContent::joined(const QString& output, const QString& error) {
  if (!output.isEmpty() && !error.isEmpty()) return output + QLatin1Char('\n') + error;
  return output.isEmpty() ? error : output;
}

bool ErrorSheetContent::hasCommitHook(const GitModule& module) {
  for (const char* name : {"pre-commit", "commit-msg", "post-commit"}) {
    if (QFileInfo::exists(module.gitDirectoryPath(QStringLiteral("hooks/") + QLatin1String(name)))) return true;
  }
  return false;
}

QString ErrorSheetContent::repairTitle(Repair repair) {
  switch (repair) {
    case Repair::none: return {};
    case Repair::forceFetch: return QStringLiteral("Force Fetch");
    case Repair::setupIdentity: return QStringLiteral("Setup identity for this repository");
    case Repair::skipHooksAndCommit: return QStringLiteral("Skip pre-commit hooks and commit");
    case Repair::removeIndexLock: return QStringLiteral("Remove .git/index.lock");
  }
  return {};
}

ErrorSheetContent ErrorSheetContent::make(const std::optional<ResultError>& error) {
  if (!error) {
    LOG_ERROR(QStringLiteral("This should never be reached"));
    return plain(QStringLiteral("Unknown error"));
  }
  return std::visit(
      Overloaded{
          [](const Error::GitUnknownError& e) { return ErrorSheetContent{joined(e.output, e.error), true, Repair::none, {}}; },
          [](const Error::TagMismatch& e) { return withRepair(joined(e.output, e.error), true, Repair::forceFetch); },
          [](const Error::GitCommitFailed& e) {
            // A missing identity is the real cause even when hooks exist.
            if (e.error.contains(u"*** Please tell me who you are")) return withRepair(e.error, true, Repair::setupIdentity);
            if (hasCommitHook(e.gitModule)) return withRepair(e.error, true, Repair::skipHooksAndCommit);
            return ErrorSheetContent{e.error, true, Repair::none, {}};
          },
          [](const Error::LaunchPathIsNotExecutable& e) {
            return plain(QStringLiteral("Launch path is not executable '%1'").arg(e.path));
          },
          [](const Error::ConnectionError& e) {
            return plain(e.error + QStringLiteral("\n\nIn a case you entered incorrect password, please\n"
                                                  "update it in Keychain Access application."));
          },
          [](const Error::RepositoryIsLocked& e) { return withRepair(e.error, true, Repair::removeIndexLock); },
          [](const Error::Generic& e) { return plain(e.text); },
          [](const Error::UnknownException& e) { return plain(QStringLiteral("Unhandled error '%1'").arg(e.error)); },
          [](const auto&) { return plain(QStringLiteral("unknown error")); },
      },
      *error);
}
