#include "Git/ResultError.h"

#include "Extensions/Overloaded.h"

QString describe(const ResultError& error) {
  return std::visit(
      Overloaded{
          [](const Error::GitWorkingDirectoryNotExists& e) { return QStringLiteral("Working directory '%1' doesn't exist.").arg(e.directory); },
          [](const Error::GitUnknownError& e) { return e.error.trimmed().isEmpty() ? e.output.trimmed() : e.error.trimmed(); },
          [](const Error::TagMismatch& e) { return e.error.trimmed(); },
          [](const Error::GitCommitFailed& e) { return e.error.trimmed(); },
          [](const Error::LaunchPathIsNotExecutable& e) { return QStringLiteral("'%1' is not executable.").arg(e.path); },
          [](const Error::ConnectionError& e) { return e.error; },
          [](const Error::CannotParse& e) { return QStringLiteral("Cannot parse: %1").arg(e.error); },
          [](const Error::BranchNotFullyMerged& e) { return e.error; },
          [](const Error::RepositoryIsLocked& e) { return e.error; },
          [](const Error::Generic& e) { return e.text; },
          [](const Error::CannotReachHere& e) { return e.error; },
          [](const Error::UnknownException& e) { return e.error; },
          [](const Error::GitCannotEncodeOutput&) { return QStringLiteral("Cannot decode the output of git."); },
          [](const Error::NotFound&) { return QStringLiteral("Not found."); },
          [](const Error::Canceled&) { return QStringLiteral("Canceled."); },
          [](const Error::NoChanges&) { return QStringLiteral("No changes."); },
          [](const Error::Unknown&) { return QStringLiteral("Unknown error."); },
      },
      error);
}
