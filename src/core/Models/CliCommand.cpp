#include "Models/CliCommand.h"

#include <QDir>

namespace {

const QString changeDirectoryOption = QStringLiteral("-C");
const QString gitDirOption = QStringLiteral("--git-dir=");

bool isOption(const QString& param) { return param.startsWith(QLatin1Char('-')); }

bool isCommandWord(const QString& word) {
  return word == QStringLiteral("open") || word == QStringLiteral("status") || word == QStringLiteral("commit") ||
         word == QStringLiteral("log");
}

QString absoluteFrom(const QString& directory, const QString& path) {
  return QDir::cleanPath(QDir(directory).absoluteFilePath(path));
}

// The index of the first parameter that is no option; "-C" takes its value with it.
qsizetype commandWordIndex(const QStringList& params) {
  for (qsizetype i = 0; i < params.size(); ++i) {
    if (params.at(i) == changeDirectoryOption) {
      ++i;
    } else if (!isOption(params.at(i))) {
      return i;
    }
  }
  return -1;
}

}  // namespace

QString CliCommand::requestText(const QString& workingDirectory, const QStringList& arguments) {
  return workingDirectory + JelvCliRequestCommand::workingDirectorySeparator() +
         arguments.join(JelvCliRequestCommand::argumentSeparator());
}

CliCommand CliCommand::fromRequest(const QString& text) {
  const qsizetype separator = text.indexOf(JelvCliRequestCommand::workingDirectorySeparator());
  if (separator < 0) {
    return {CliError{QStringLiteral("The request names no working directory.")}, {}, false, {}};
  }
  const QString workingDirectory = text.left(separator);
  const QString rest = text.mid(separator + JelvCliRequestCommand::workingDirectorySeparator().size());
  // Zero arguments and one empty argument join to the same text; an empty one means nothing.
  QStringList params = rest.split(JelvCliRequestCommand::argumentSeparator());
  params.removeAll(QString());
  return fromArguments(workingDirectory, params);
}

CliCommandType CliCommand::parseCommandType(const QStringList& params) {
  const qsizetype index = commandWordIndex(params);
  if (index < 0) return CliOpen{};
  const QString& word = params.at(index);
  if (word == QStringLiteral("open")) return CliOpen{};
  if (word == QStringLiteral("status") || word == QStringLiteral("commit")) return CliStatus{};
  if (word != QStringLiteral("log")) return CliOpen{};

  // "log [options] [--] <file>": options such as "--verbose" may stand between.
  CliLog log;
  for (qsizetype i = index + 1; i < params.size(); ++i) {
    const QString& param = params.at(i);
    if (param == QStringLiteral("--")) {
      if (i + 1 < params.size()) log.filepath = params.at(i + 1);
      break;
    }
    if (param == changeDirectoryOption) {
      ++i;
    } else if (!isOption(param)) {
      log.filepath = param;
      break;
    }
  }
  return log;
}

bool CliCommand::isCommandLine(const QStringList& params) {
  for (const QString& param : params) {
    if (isOption(param) || isCommandWord(param)) return true;
  }
  return false;
}

CliCommand CliCommand::fromArguments(const QString& workingDirectory, const QStringList& params) {
  CliCommand command;
  command.workingDirectory = workingDirectory;
  command.verbose = params.contains(QStringLiteral("--verbose"));
  if (!QDir::isAbsolutePath(workingDirectory)) {
    command.type = CliError{QStringLiteral("The working directory '%1' is not an absolute path.").arg(workingDirectory)};
    return command;
  }

  std::optional<QString> gitDir;
  std::optional<QString> changeDirectory;
  for (qsizetype i = 0; i < params.size(); ++i) {
    const QString& param = params.at(i);
    if (param.startsWith(gitDirOption) && !gitDir) {
      gitDir = param.mid(gitDirOption.size());
    } else if (param == changeDirectoryOption) {
      if (i + 1 >= params.size() || params.at(i + 1).isEmpty()) {
        command.type = CliError{QStringLiteral("Option -C needs a directory.")};
        return command;
      }
      if (!changeDirectory) changeDirectory = params.at(i + 1);
      ++i;
    }
  }
  if (gitDir && gitDir->isEmpty()) {
    command.type = CliError{QStringLiteral("Option --git-dir= needs a directory.")};
    return command;
  }

  command.type = parseCommandType(params);
  const qsizetype index = commandWordIndex(params);
  const bool wordIsPath = index >= 0 && !isCommandWord(params.at(index));
  if (gitDir) {
    command.repositoryPath = absoluteFrom(workingDirectory, *gitDir);
    // The repository of a ".git" folder is the folder that holds it.
    if (QDir(command.repositoryPath).dirName() == QStringLiteral(".git")) {
      command.repositoryPath = QDir::cleanPath(command.repositoryPath + QStringLiteral("/.."));
    }
  } else if (changeDirectory) {
    command.repositoryPath = absoluteFrom(workingDirectory, *changeDirectory);
  } else if (wordIsPath) {
    command.repositoryPath = absoluteFrom(workingDirectory, params.at(index));
  } else {
    command.repositoryPath = QDir::cleanPath(workingDirectory);
  }

  // A file named to "log" is relative to where the command runs, which "-C" moves, as in git.
  if (auto* log = std::get_if<CliLog>(&command.type); log && log->filepath) {
    log->filepath = absoluteFrom(changeDirectory ? absoluteFrom(workingDirectory, *changeDirectory) : workingDirectory,
                                 *log->filepath);
  }
  return command;
}
