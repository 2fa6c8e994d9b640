#pragma once
// Outside diff and merge programs. A tool is found by its executable on PATH; each has
// its own argument order. A custom tool is the user's executable with arguments in which
// "$LOCAL", "$REMOTE", "$BASE" and "$MERGED" stand for the paths.
#include <QString>
#include <QStringList>
#include <optional>
#include <variant>
#include <vector>

class Preferences;
struct MergeToolLaunch;

struct MergeTool {
  // The stored value of "externalDiffTool" and "mergeTool": keep the order.
  enum class Kind { meld, bc, kdiff3, p4Merge, diffMerge, vsCode, custom };

  Kind kind = Kind::meld;
  QString path;           // custom: the executable, absolute or a name on PATH
  QStringList arguments;  // custom: the arguments before the placeholder step

  static std::vector<Kind> allKinds();
  static QString name(Kind kind);
  // The program looked up on PATH; empty for custom.
  static QString executableName(Kind kind);
  QString name() const { return name(kind); }
  // The kind of a stored index; out of range gives nothing.
  static std::optional<Kind> kindFromIndex(int index);

  // LOCAL is the first (older) side, REMOTE the second; the titles name them for tools
  // that show titles.
  QStringList diffArguments(const QString& local, const QString& remote, const QString& firstTitle,
                            const QString& secondTitle) const;
  // Without a base some tools get "/dev/null" or an empty argument in its place.
  QStringList mergeArguments(const QString& local, const QString& remote, const std::optional<QString>& base,
                             const QString& output) const;

  // In each argument "$LOCAL", "$REMOTE", "$BASE" and "$MERGED" are replaced, in this
  // order, by the paths. The replacement is literal: a path holding "$BASE" stays as it is
  // only if it came after that step.
  static QStringList replacePlaceholders(const QStringList& arguments, const QString& local, const QString& remote,
                                         const QString& base, const QString& merged);
  // The custom arguments as the user typed them: split at blanks, quotes group, a
  // backslash escapes the next character.
  static QStringList splitArguments(const QString& text);

  // The executable of a tool: a name is looked up in the given folders (PATH when none
  // are given); an absolute path must be an executable file. Gives the failure text
  // otherwise.
  static std::variant<QString, QString> findExecutable(const QString& program, const QStringList& searchFolders = {});
  // The kinds whose executable is on PATH (custom not included).
  static std::vector<Kind> installedKinds(const QStringList& searchFolders = {});

  using Launch = MergeToolLaunch;
  // The tool chosen in the preferences, with its executable; or the text to tell the
  // user why there is none. Logs the lookup.
  static std::variant<Launch, QString> activeTool(bool merge, const Preferences& preferences,
                                                  const QStringList& searchFolders = {});

  // Starts the program on its own: it outlives this process and nobody waits for it.
  // Gives the failure text when it could not start.
  static std::optional<QString> startDetached(const QString& launchPath, const QStringList& arguments,
                                              const QString& workingDirectory = {});
  // Logs "Diff using '<name>'" and starts the tool on the two files.
  static std::optional<QString> diff(const Launch& launch, const QString& remote, const QString& local,
                                     const QString& firstTitle, const QString& secondTitle,
                                     const QString& workingDirectory = {});
};

// A tool with the executable that runs it.
struct MergeToolLaunch {
  MergeTool tool;
  QString launchPath;
};
