#pragma once
// The applications of the desktop that can open a file: their ".desktop" entries in the
// "applications" folders of XDG_DATA_HOME and XDG_DATA_DIRS, the types each declares
// (its MimeType= line, or a folder's mimeinfo.cache), and the user's choices in
// mimeapps.list, whose default comes first. Launching expands the entry's Exec line.
#include <QHash>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

struct DesktopEntry {
  QString id;        // the desktop file id: the path below "applications/", '/' as '-'
  QString filePath;  // where it was read
  QString name;
  QString exec;
  QString icon;
  QString tryExec;
  QStringList mimeTypes;
  bool terminal = false;
  bool noDisplay = false;

  bool operator==(const DesktopEntry&) const = default;
};

struct MimeAssociations {
  QHash<QString, QStringList> defaults;  // type -> ids, the first installed one wins
  QHash<QString, QStringList> added;
  QHash<QString, QStringList> removed;
};

struct DesktopApplications {
  // The "[Desktop Entry]" group of an application. Nothing for another type, a hidden
  // (deleted) entry, or one without Name or Exec. Values are unescaped; a localised key
  // ("Name[de]") does not replace the plain one.
  static std::optional<DesktopEntry> parseEntry(const QString& text, const QString& id = {}, const QString& filePath = {});
  // "\s", "\n", "\t", "\r" and "\\" of a value.
  static QString unescapeValue(const QString& value);
  // An unescaped Exec value split into arguments: blanks separate them, double quotes
  // group, and inside quotes a backslash escapes '"', '`', '$' and '\'. Nothing for an
  // unterminated quote.
  static std::optional<QStringList> splitExec(const QString& exec);
  // The command lines that open the files: "%f" and "%u" launch once per file, "%F" and
  // "%U" once with all of them ("%u"/"%U" as file URLs); "%i" becomes "--icon" and the
  // icon, "%c" the name, "%k" the entry's file, "%%" a percent sign; other codes go.
  // An Exec line without a file code gets the files appended. Nothing when the line is
  // malformed.
  static std::optional<std::vector<QStringList>> commandLines(const DesktopEntry& entry, const QStringList& files);

  // "[MIME Cache]" of mimeinfo.cache: type -> ids.
  static QHash<QString, QStringList> parseMimeInfoCache(const QString& text);
  // Adds one mimeapps.list; files are read from the most important to the least, so what
  // is already there keeps its place in front.
  static void parseMimeApps(const QString& text, MimeAssociations& into);

  // The "applications" folders, the most important first.
  static QStringList applicationDirectories();
  // The mimeapps.list files, the most important first (desktop-specific ones before the
  // plain ones of the same folder).
  static QStringList mimeAppsFiles();

  struct Catalog {
    std::vector<DesktopEntry> entries;    // one per id, from the most important folder
    QHash<QString, QStringList> cache;    // the folders' mimeinfo.cache files together
    MimeAssociations associations;
  };
  // Reads every entry below the folders (sub-folders too) and their mimeinfo.cache.
  static Catalog loadCatalog(const QStringList& applicationDirectories, const QStringList& mimeAppsFiles);

  // The entries able to open the types, the first type the file's own and the others its
  // parents: the user's default first, then the added associations, then the entries
  // declaring the file's own type by name, then those for a parent type. Removed
  // associations and entries whose TryExec program is missing drop out; each entry once.
  static std::vector<DesktopEntry> applicationsFor(const QStringList& mimeTypes, const Catalog& catalog);
  // The file's type and its parents, from the shared MIME database.
  static QStringList mimeTypeChain(const QString& filePath);
  // All of the above from the disk, for one file.
  static std::vector<DesktopEntry> applicationsForFile(const QString& filePath);

  // Starts each command line on its own. Gives the failure text of the first that could
  // not start.
  static std::optional<QString> launch(const DesktopEntry& entry, const QStringList& files, const QString& workingDirectory = {});
  // Opens a folder with the desktop's file manager (the first application for folders).
  // The reason when none is installed or it cannot start: a desktop without a file
  // manager would otherwise swallow the request without a word.
  static std::optional<QString> openFolder(const QString& path);
};
