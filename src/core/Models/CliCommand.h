#pragma once
// What the `jelv` command line tool asks the running application to do, and the text it
// sends. The request is one string: the working directory, "workingDirectorySeparator",
// then the arguments joined by "argumentSeparator". Parsing is pure so that the
// application's own start and the tool's requests read arguments the same way.
#include <QString>
#include <QStringList>
#include <optional>
#include <variant>

namespace JelvCliRequestCommand {
inline QString workingDirectorySeparator() { return QStringLiteral("workingDirectorySeparator"); }
inline QString argumentSeparator() { return QStringLiteral("argumentSeparator"); }
inline QString requestHandled() { return QStringLiteral("requestHandled"); }
}  // namespace JelvCliRequestCommand

struct CliLog {
  std::optional<QString> filepath;  // absolute; the history of this file instead of the commit list
  bool operator==(const CliLog&) const = default;
};
struct CliError {
  QString error;
  bool operator==(const CliError&) const = default;
};
struct CliOpen {
  bool operator==(const CliOpen&) const = default;
};
struct CliStatus {
  bool operator==(const CliStatus&) const = default;
};
using CliCommandType = std::variant<CliLog, CliError, CliOpen, CliStatus>;

struct CliCommand {
  CliCommandType type = CliOpen{};
  QString workingDirectory;
  bool verbose = false;
  QString repositoryPath;  // absolute and clean; the folder to open (or any folder inside it)

  bool operator==(const CliCommand&) const = default;

  static QString requestText(const QString& workingDirectory, const QStringList& arguments);
  // A request without a working directory, or whose options lack their value, gives `error`.
  static CliCommand fromRequest(const QString& text);
  static CliCommand fromArguments(const QString& workingDirectory, const QStringList& params);

  // The command word decides: "open", "status" or "commit", "log [--] [file]"; any other
  // word is a path to open. Without one the command is `open`.
  static CliCommandType parseCommandType(const QStringList& params);
  // Whether the arguments say more than a list of folders: a command word or an option.
  static bool isCommandLine(const QStringList& params);
};
