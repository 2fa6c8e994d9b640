#include "Services/MergeTool.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include "Logging/AdvancedLogger.h"
#include "Services/Preferences.h"

namespace {
const QString devNull = QStringLiteral("/dev/null");
}

std::vector<MergeTool::Kind> MergeTool::allKinds() {
  return {Kind::meld, Kind::bc, Kind::kdiff3, Kind::p4Merge, Kind::diffMerge, Kind::vsCode, Kind::custom};
}

QString MergeTool::name(Kind kind) {
  switch (kind) {
    case Kind::meld: return QStringLiteral("Meld");
    case Kind::bc: return QStringLiteral("Beyond Compare");
    case Kind::kdiff3: return QStringLiteral("KDiff3");
    case Kind::p4Merge: return QStringLiteral("P4Merge");
    case Kind::diffMerge: return QStringLiteral("DiffMerge");
    case Kind::vsCode: return QStringLiteral("Visual Studio Code");
    case Kind::custom: return QStringLiteral("Custom");
  }
  return {};
}

QString MergeTool::executableName(Kind kind) {
  switch (kind) {
    case Kind::meld: return QStringLiteral("meld");
    case Kind::bc: return QStringLiteral("bcompare");
    case Kind::kdiff3: return QStringLiteral("kdiff3");
    case Kind::p4Merge: return QStringLiteral("p4merge");
    case Kind::diffMerge: return QStringLiteral("diffmerge");
    case Kind::vsCode: return QStringLiteral("code");
    case Kind::custom: return {};
  }
  return {};
}

std::optional<MergeTool::Kind> MergeTool::kindFromIndex(int index) {
  const auto kinds = allKinds();
  if (index < 0 || index >= int(kinds.size())) return std::nullopt;
  return kinds[size_t(index)];
}

QStringList MergeTool::diffArguments(const QString& local, const QString& remote, const QString& firstTitle,
                                     const QString& secondTitle) const {
  switch (kind) {
    // Meld shows a label in place of the temporary file's name.
    case Kind::meld:
      return {QStringLiteral("--label=") + firstTitle, QStringLiteral("--label=") + secondTitle, local, remote};
    case Kind::kdiff3:
    case Kind::p4Merge: return {local, remote};
    case Kind::bc:
      return {QStringLiteral("-ro1"), QStringLiteral("-title1=") + firstTitle, QStringLiteral("-title2=") + secondTitle,
              local, remote};
    case Kind::vsCode: return {QStringLiteral("--diff"), local, remote};
    case Kind::diffMerge:
      return {QStringLiteral("-nosplash"), QStringLiteral("-t1=") + firstTitle, QStringLiteral("-t2=") + secondTitle,
              local, remote};
    case Kind::custom: return replacePlaceholders(arguments, local, remote, QString(), QString());
  }
  return {};
}

QStringList MergeTool::mergeArguments(const QString& local, const QString& remote, const std::optional<QString>& base,
                                      const QString& output) const {
  switch (kind) {
    // Without a base the middle pane is the conflicted file itself.
    case Kind::meld:
      return {QStringLiteral("--output=") + output, local, base.value_or(output), remote};
    case Kind::bc:
      if (base) {
        return {QStringLiteral("-ro1"), QStringLiteral("-ro2"), QStringLiteral("-title1=Local"), QStringLiteral("-title2=Remote"),
                QStringLiteral("-title3=Base"), local, remote, *base, output};
      }
      return {QStringLiteral("-ro1"), QStringLiteral("-title1=Local"), QStringLiteral("-title2=Remote"), local, remote, QString(),
              output};
    case Kind::kdiff3: return {base.value_or(devNull), local, remote, QStringLiteral("-o"), output};
    case Kind::p4Merge:
      if (base) return {*base, local, remote, output};
      return {local, remote, output};
    case Kind::diffMerge:
      return {QStringLiteral("-nosplash"), QStringLiteral("-merge"), QStringLiteral("-result=") + output,
              QStringLiteral("-t1=Local"), QStringLiteral("-t2=Result"), QStringLiteral("-t3=Remote"), local,
              base.value_or(devNull), remote};
    case Kind::vsCode: return {output};
    case Kind::custom: return replacePlaceholders(arguments, local, remote, base.value_or(QString()), output);
  }
  return {};
}

QStringList MergeTool::replacePlaceholders(const QStringList& arguments, const QString& local, const QString& remote,
                                           const QString& base, const QString& merged) {
  QStringList result;
  result.reserve(arguments.size());
  for (QString argument : arguments) {
    argument.replace(QStringLiteral("$LOCAL"), local);
    argument.replace(QStringLiteral("$REMOTE"), remote);
    argument.replace(QStringLiteral("$BASE"), base);
    argument.replace(QStringLiteral("$MERGED"), merged);
    result << argument;
  }
  return result;
}

QStringList MergeTool::splitArguments(const QString& text) {
  QStringList result;
  QString current;
  bool inArgument = false;
  QChar quote;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text.at(i);
    if (c == u'\\' && i + 1 < text.size() && quote != u'\'') {
      current += text.at(++i);
      inArgument = true;
    } else if (!quote.isNull()) {
      if (c == quote) quote = QChar();
      else current += c;
    } else if (c == u'"' || c == u'\'') {
      quote = c;
      inArgument = true;  // "" is an empty argument
    } else if (c.isSpace()) {
      if (inArgument) result << current;
      current.clear();
      inArgument = false;
    } else {
      current += c;
      inArgument = true;
    }
  }
  if (inArgument) result << current;
  return result;
}

std::variant<QString, QString> MergeTool::findExecutable(const QString& program, const QStringList& searchFolders) {
  using Result = std::variant<QString, QString>;
  if (program.contains(u'/')) {
    const QFileInfo info(program);
    if (!info.exists()) return Result(std::in_place_index<1>, program + QStringLiteral(" does not exist"));
    if (!info.isFile() || !info.isExecutable()) {
      return Result(std::in_place_index<1>, program + QStringLiteral(" is not an executable file"));
    }
    return Result(std::in_place_index<0>, info.absoluteFilePath());
  }
  const QString found = QStandardPaths::findExecutable(program, searchFolders);
  if (found.isEmpty()) return Result(std::in_place_index<1>, QStringLiteral("Cannot find '") + program + QStringLiteral("' on PATH"));
  return Result(std::in_place_index<0>, found);
}

std::vector<MergeTool::Kind> MergeTool::installedKinds(const QStringList& searchFolders) {
  std::vector<Kind> kinds;
  for (Kind kind : allKinds()) {
    if (kind == Kind::custom) continue;
    if (!QStandardPaths::findExecutable(executableName(kind), searchFolders).isEmpty()) kinds.push_back(kind);
  }
  return kinds;
}

std::variant<MergeTool::Launch, QString> MergeTool::activeTool(bool merge, const Preferences& preferences,
                                                               const QStringList& searchFolders) {
  using Result = std::variant<Launch, QString>;
  const int index = merge ? preferences.mergeTool() : preferences.externalDiffTool();
  const std::optional<Kind> kind = kindFromIndex(index);
  if (!kind) {
    const QString text = QStringLiteral("Unknown ") + (merge ? QStringLiteral("merge") : QStringLiteral("diff")) +
                         QStringLiteral(" tool: ") + QString::number(index);
    LOG_ERROR(text);
    return Result(std::in_place_index<1>, text);
  }
  MergeTool tool;
  tool.kind = *kind;
  LOG_INFO((merge ? QStringLiteral("Looking for a merge tool: '") : QStringLiteral("Looking for a diff tool: '")) + tool.name() +
           QStringLiteral("'"));
  QString program = executableName(*kind);
  if (*kind == Kind::custom) {
    tool.path = (merge ? preferences.externalMergeToolCustomPath() : preferences.externalDiffToolCustomPath()).trimmed();
    const QString stored =
        merge ? preferences.externalMergeToolCustomArguments() : preferences.externalDiffToolCustomArguments();
    const QString defaults = merge ? QStringLiteral("$LOCAL $REMOTE $BASE $MERGED") : QStringLiteral("$LOCAL $REMOTE");
    tool.arguments = splitArguments(stored.trimmed().isEmpty() ? defaults : stored);
    if (tool.path.isEmpty()) {
      const QString text = merge ? QStringLiteral("No custom merge tool is set. Choose its program in the preferences.")
                                 : QStringLiteral("No custom diff tool is set. Choose its program in the preferences.");
      LOG_WARNING(text);
      return Result(std::in_place_index<1>, text);
    }
    program = tool.path;
  }
  auto found = findExecutable(program, searchFolders);
  if (found.index() == 1) {
    LOG_WARNING(std::get<1>(found));
    return Result(std::in_place_index<1>, std::get<1>(found));
  }
  return Result(std::in_place_index<0>, Launch{tool, std::get<0>(found)});
}

std::optional<QString> MergeTool::startDetached(const QString& launchPath, const QStringList& arguments,
                                                const QString& workingDirectory) {
  QProcess process;
  process.setProgram(launchPath);
  process.setArguments(arguments);
  if (!workingDirectory.isEmpty()) process.setWorkingDirectory(workingDirectory);
  // Nothing of ours stays attached to the tool's terminal output.
  process.setStandardInputFile(QProcess::nullDevice());
  if (!process.startDetached()) {
    const QString text = QStringLiteral("Cannot start '") + launchPath + QStringLiteral("': ") + process.errorString();
    LOG_ERROR(text);
    return text;
  }
  return std::nullopt;
}

std::optional<QString> MergeTool::diff(const Launch& launch, const QString& remote, const QString& local,
                                       const QString& firstTitle, const QString& secondTitle,
                                       const QString& workingDirectory) {
  LOG_INFO(QStringLiteral("Diff using '") + launch.tool.name() + QStringLiteral("'"));
  return startDetached(launch.launchPath, launch.tool.diffArguments(local, remote, firstTitle, secondTitle), workingDirectory);
}
