#include "Services/DesktopApplications.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QSet>
#include <QStandardPaths>
#include <QUrl>
#include <algorithm>

#include "Logging/AdvancedLogger.h"
#include "Services/MergeTool.h"

namespace {
QString readText(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll());
}

// Calls back with (group, key, value) for every "key=value" line of an ini-like file.
template <typename Handler>
void forEachValue(const QString& text, Handler handler) {
  QString group;
  for (QStringView line : QStringView(text).split(u'\n')) {
    line = line.trimmed();
    if (line.isEmpty() || line.startsWith(u'#')) continue;
    if (line.startsWith(u'[') && line.endsWith(u']')) {
      group = line.mid(1, line.size() - 2).toString();
      continue;
    }
    const qsizetype equals = line.indexOf(u'=');
    if (equals <= 0) continue;
    handler(group, line.left(equals).trimmed().toString(), line.mid(equals + 1).trimmed().toString());
  }
}

QStringList splitList(const QString& value) {
  QStringList items;
  for (const QString& item : value.split(u';')) {
    if (!item.trimmed().isEmpty()) items << item.trimmed();
  }
  return items;
}

void appendNew(QStringList& list, const QStringList& items) {
  for (const QString& item : items) {
    if (!list.contains(item)) list << item;
  }
}

QString env(const char* name) { return qEnvironmentVariable(name); }

QStringList pathList(const char* name, const QString& fallback) {
  const QString value = env(name);
  QStringList folders;
  for (const QString& folder : (value.isEmpty() ? fallback : value).split(u':', Qt::SkipEmptyParts)) {
    folders << QDir::cleanPath(folder);
  }
  return folders;
}

QString dataHome() {
  const QString value = env("XDG_DATA_HOME");
  return QDir::cleanPath(value.isEmpty() ? QDir::homePath() + QStringLiteral("/.local/share") : value);
}

QString configHome() {
  const QString value = env("XDG_CONFIG_HOME");
  return QDir::cleanPath(value.isEmpty() ? QDir::homePath() + QStringLiteral("/.config") : value);
}

bool canRun(const DesktopEntry& entry) {
  if (entry.tryExec.isEmpty()) return true;
  return MergeTool::findExecutable(entry.tryExec).index() == 0;
}

// One argument with its field codes expanded; nothing when it was only a code that
// expands to nothing.
std::optional<QString> expandArgument(const QString& argument, const DesktopEntry& entry, const QString& file,
                                      const QString& url) {
  QString result;
  bool onlyCodes = true;
  for (qsizetype i = 0; i < argument.size(); ++i) {
    const QChar c = argument.at(i);
    if (c != u'%' || i + 1 >= argument.size()) {
      result += c;
      onlyCodes = false;
      continue;
    }
    const QChar code = argument.at(++i);
    switch (code.unicode()) {
      case u'f':
      case u'F': result += file; break;
      case u'u':
      case u'U': result += url; break;
      case u'c': result += entry.name; break;
      case u'k': result += entry.filePath; break;
      case u'%':
        result += u'%';
        onlyCodes = false;
        break;
      default: break;  // deprecated and unknown codes are dropped
    }
  }
  if (onlyCodes && result.isEmpty()) return std::nullopt;
  return result;
}

QString fileUrl(const QString& path) { return QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()); }
}  // namespace

std::optional<DesktopEntry> DesktopApplications::parseEntry(const QString& text, const QString& id, const QString& filePath) {
  DesktopEntry entry;
  entry.id = id;
  entry.filePath = filePath;
  QString type;
  bool hidden = false;
  forEachValue(text, [&](const QString& group, const QString& key, const QString& value) {
    if (group != QStringLiteral("Desktop Entry")) return;
    if (key == QStringLiteral("Type")) type = value;
    else if (key == QStringLiteral("Name")) entry.name = unescapeValue(value);
    else if (key == QStringLiteral("Exec")) entry.exec = unescapeValue(value);
    else if (key == QStringLiteral("Icon")) entry.icon = unescapeValue(value);
    else if (key == QStringLiteral("TryExec")) entry.tryExec = unescapeValue(value);
    else if (key == QStringLiteral("MimeType")) entry.mimeTypes = splitList(value);
    else if (key == QStringLiteral("Terminal")) entry.terminal = value == QStringLiteral("true");
    else if (key == QStringLiteral("NoDisplay")) entry.noDisplay = value == QStringLiteral("true");
    else if (key == QStringLiteral("Hidden")) hidden = value == QStringLiteral("true");
  });
  if (type != QStringLiteral("Application") || hidden || entry.name.isEmpty() || entry.exec.isEmpty()) return std::nullopt;
  return entry;
}

QString DesktopApplications::unescapeValue(const QString& value) {
  QString result;
  result.reserve(value.size());
  for (qsizetype i = 0; i < value.size(); ++i) {
    const QChar c = value.at(i);
    if (c != u'\\' || i + 1 >= value.size()) {
      result += c;
      continue;
    }
    const QChar next = value.at(++i);
    switch (next.unicode()) {
      case u's': result += u' '; break;
      case u'n': result += u'\n'; break;
      case u't': result += u'\t'; break;
      case u'r': result += u'\r'; break;
      case u'\\': result += u'\\'; break;
      // Any other escape is the Exec line's own quoting; it stays for splitExec.
      default:
        result += c;
        result += next;
    }
  }
  return result;
}

std::optional<QStringList> DesktopApplications::splitExec(const QString& exec) {
  QStringList arguments;
  QString current;
  bool inArgument = false;
  bool quoted = false;
  for (qsizetype i = 0; i < exec.size(); ++i) {
    const QChar c = exec.at(i);
    if (quoted) {
      if (c == u'\\' && i + 1 < exec.size()) current += exec.at(++i);
      else if (c == u'"') quoted = false;
      else current += c;
    } else if (c == u'"') {
      quoted = true;
      inArgument = true;
    } else if (c == u' ' || c == u'\t' || c == u'\n') {
      if (inArgument) arguments << current;
      current.clear();
      inArgument = false;
    } else if (c == u'\\' && i + 1 < exec.size()) {
      current += exec.at(++i);
      inArgument = true;
    } else {
      current += c;
      inArgument = true;
    }
  }
  if (quoted) return std::nullopt;
  if (inArgument) arguments << current;
  return arguments;
}

std::optional<std::vector<QStringList>> DesktopApplications::commandLines(const DesktopEntry& entry, const QStringList& files) {
  const std::optional<QStringList> arguments = splitExec(entry.exec);
  if (!arguments || arguments->isEmpty()) return std::nullopt;
  bool takesList = false;
  bool takesOne = false;
  for (const QString& argument : *arguments) {
    takesList = takesList || argument.contains(QStringLiteral("%F")) || argument.contains(QStringLiteral("%U"));
    takesOne = takesOne || argument.contains(QStringLiteral("%f")) || argument.contains(QStringLiteral("%u"));
  }
  // One command line for the given files (all of them, or the one of a per-file launch).
  auto expand = [&](const QStringList& chosen) {
    QStringList line;
    for (const QString& argument : *arguments) {
      if (argument == QStringLiteral("%F")) {
        line << chosen;
      } else if (argument == QStringLiteral("%U")) {
        for (const QString& file : chosen) line << fileUrl(file);
      } else if (argument == QStringLiteral("%i")) {
        if (!entry.icon.isEmpty()) line << QStringLiteral("--icon") << entry.icon;
      } else {
        const QString file = chosen.isEmpty() ? QString() : chosen.front();
        if (auto expanded = expandArgument(argument, entry, file, file.isEmpty() ? QString() : fileUrl(file))) line << *expanded;
      }
    }
    if (!takesList && !takesOne) line << chosen;
    return line;
  };
  std::vector<QStringList> lines;
  if (takesOne && !takesList && files.size() > 1) {
    for (const QString& file : files) lines.push_back(expand({file}));
  } else {
    lines.push_back(expand(files));
  }
  if (std::any_of(lines.begin(), lines.end(), [](const QStringList& line) { return line.isEmpty(); })) return std::nullopt;
  return lines;
}

QHash<QString, QStringList> DesktopApplications::parseMimeInfoCache(const QString& text) {
  QHash<QString, QStringList> cache;
  forEachValue(text, [&](const QString& group, const QString& key, const QString& value) {
    if (group == QStringLiteral("MIME Cache")) appendNew(cache[key], splitList(value));
  });
  return cache;
}

void DesktopApplications::parseMimeApps(const QString& text, MimeAssociations& into) {
  forEachValue(text, [&](const QString& group, const QString& key, const QString& value) {
    if (group == QStringLiteral("Default Applications")) appendNew(into.defaults[key], splitList(value));
    else if (group == QStringLiteral("Added Associations")) appendNew(into.added[key], splitList(value));
    else if (group == QStringLiteral("Removed Associations")) appendNew(into.removed[key], splitList(value));
  });
}

QStringList DesktopApplications::applicationDirectories() {
  QStringList folders{dataHome() + QStringLiteral("/applications")};
  for (const QString& folder : pathList("XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share"))) {
    folders << folder + QStringLiteral("/applications");
  }
  folders.removeDuplicates();
  return folders;
}

QStringList DesktopApplications::mimeAppsFiles() {
  QStringList desktops;
  for (const QString& desktop : env("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts)) desktops << desktop.toLower();
  QStringList folders{configHome()};
  folders << pathList("XDG_CONFIG_DIRS", QStringLiteral("/etc/xdg"));
  folders << dataHome() + QStringLiteral("/applications");
  for (const QString& folder : pathList("XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share"))) {
    folders << folder + QStringLiteral("/applications");
  }
  QStringList files;
  for (const QString& folder : folders) {
    for (const QString& desktop : desktops) files << folder + QLatin1Char('/') + desktop + QStringLiteral("-mimeapps.list");
    files << folder + QStringLiteral("/mimeapps.list");
  }
  files.removeDuplicates();
  return files;
}

DesktopApplications::Catalog DesktopApplications::loadCatalog(const QStringList& applicationDirectories,
                                                              const QStringList& mimeAppsFiles) {
  Catalog catalog;
  QSet<QString> seen;
  for (const QString& folder : applicationDirectories) {
    const QDir root(folder);
    if (!root.exists()) continue;
    const auto cache = parseMimeInfoCache(readText(root.filePath(QStringLiteral("mimeinfo.cache"))));
    for (auto it = cache.begin(); it != cache.end(); ++it) appendNew(catalog.cache[it.key()], it.value());
    // Sorted, so that the same folders always give the same list.
    QStringList found;
    QDirIterator walk(folder, {QStringLiteral("*.desktop")}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) found << walk.next();
    found.sort();
    for (const QString& path : found) {
      const QString id = root.relativeFilePath(path).replace(u'/', u'-');
      // A more important folder's entry of the same id hides this one, even a hidden one.
      if (seen.contains(id)) continue;
      seen.insert(id);
      if (auto entry = parseEntry(readText(path), id, path)) catalog.entries.push_back(std::move(*entry));
    }
  }
  for (const QString& file : mimeAppsFiles) {
    if (QFileInfo::exists(file)) parseMimeApps(readText(file), catalog.associations);
  }
  return catalog;
}

std::vector<DesktopEntry> DesktopApplications::applicationsFor(const QStringList& mimeTypes, const Catalog& catalog) {
  QHash<QString, const DesktopEntry*> byId;
  for (const DesktopEntry& entry : catalog.entries) byId.insert(entry.id, &entry);
  QSet<QString> removed;
  for (const QString& type : mimeTypes) {
    for (const QString& id : catalog.associations.removed.value(type)) removed.insert(id);
  }
  std::vector<DesktopEntry> result;
  QSet<QString> taken;
  auto add = [&](const QString& id) {
    const DesktopEntry* entry = byId.value(id);
    if (!entry || taken.contains(id) || !canRun(*entry)) return false;
    taken.insert(id);
    result.push_back(*entry);
    return true;
  };
  // The default: the first installed one, for the nearest type that names one.
  bool haveDefault = false;
  for (const QString& type : mimeTypes) {
    for (const QString& id : catalog.associations.defaults.value(type)) {
      if (add(id)) {
        haveDefault = true;
        break;
      }
    }
    if (haveDefault) break;
  }
  for (const QString& type : mimeTypes) {
    for (const QString& id : catalog.associations.added.value(type)) {
      if (!removed.contains(id)) add(id);
    }
  }
  for (const QString& type : mimeTypes) {
    std::vector<const DesktopEntry*> declaring;
    const QStringList cached = catalog.cache.value(type);
    for (const DesktopEntry& entry : catalog.entries) {
      if (removed.contains(entry.id) || taken.contains(entry.id)) continue;
      if (entry.mimeTypes.contains(type) || cached.contains(entry.id)) declaring.push_back(&entry);
    }
    std::stable_sort(declaring.begin(), declaring.end(), [](const DesktopEntry* a, const DesktopEntry* b) {
      return a->name.compare(b->name, Qt::CaseInsensitive) < 0;
    });
    for (const DesktopEntry* entry : declaring) add(entry->id);
  }
  return result;
}

QStringList DesktopApplications::mimeTypeChain(const QString& filePath) {
  const QMimeType type = QMimeDatabase().mimeTypeForFile(filePath);
  if (!type.isValid()) return {};
  QStringList chain{type.name()};
  chain << type.aliases();
  // Everything is a byte stream; the programs for that are no help with a known type.
  for (const QString& parent : type.allAncestors()) {
    if (parent != QStringLiteral("application/octet-stream")) chain << parent;
  }
  chain.removeDuplicates();
  return chain;
}

std::vector<DesktopEntry> DesktopApplications::applicationsForFile(const QString& filePath) {
  return applicationsFor(mimeTypeChain(filePath), loadCatalog(applicationDirectories(), mimeAppsFiles()));
}

std::optional<QString> DesktopApplications::launch(const DesktopEntry& entry, const QStringList& files,
                                                   const QString& workingDirectory) {
  const auto lines = commandLines(entry, files);
  if (!lines) {
    const QString text = QStringLiteral("Cannot read the command '") + entry.exec + QStringLiteral("' of ") + entry.name;
    LOG_ERROR(text);
    return text;
  }
  for (QStringList line : *lines) {
    // A terminal program needs a terminal to show in.
    if (entry.terminal) line = QStringList{QStringLiteral("x-terminal-emulator"), QStringLiteral("-e")} + line;
    const auto program = MergeTool::findExecutable(line.front());
    if (program.index() == 1) return std::get<1>(program);
    LOG_INFO(QStringLiteral("Open with '") + entry.name + QStringLiteral("': ") + line.join(u' '));
    if (auto failure = MergeTool::startDetached(std::get<0>(program), line.mid(1), workingDirectory)) return failure;
  }
  return std::nullopt;
}

std::optional<QString> DesktopApplications::openFolder(const QString& path) {
  if (!QFileInfo(path).isDir()) return QStringLiteral("The folder \"%1\" does not exist.").arg(path);
  const std::vector<DesktopEntry> managers = applicationsFor({QStringLiteral("inode/directory")}, loadCatalog(applicationDirectories(), mimeAppsFiles()));
  if (managers.empty()) return QStringLiteral("No file manager is installed: no application of the desktop opens folders.");
  return launch(managers.front(), {path}, path);
}
