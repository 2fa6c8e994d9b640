#pragma once
// What the `jelv` tool (or a start of the application with a command) asks for: the
// repository comes up in its tab, in front, showing the local changes ("status"), the
// commit list ("log") or a file's history ("log <file>"); an `error` is shown as it is.
#include <functional>

#include "Models/CliCommand.h"

class JelvDocumentController;

struct CliRequestCommand {
  // `done` runs once the request has been acted on, a refused folder included.
  static void execute(JelvDocumentController& documents, const CliCommand& command, std::function<void()> done = {});

  // The file's path inside the repository, "" when it lies outside; a folder ends in "/".
  static QString repositoryRelativePath(const QString& repositoryPath, const QString& absoluteFile);
};
