#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include "Services/DesktopApplications.h"

namespace {
void write(const QString& path, const QByteArray& text) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(text);
}

QByteArray application(const QByteArray& name, const QByteArray& exec, const QByteArray& mimeTypes, const QByteArray& extra = {}) {
  return "[Desktop Entry]\nType=Application\nName=" + name + "\nName[de]=Anders\nExec=" + exec + "\nMimeType=" + mimeTypes +
         "\n" + extra + "\n[Desktop Action New]\nName=New Window\nExec=ignored\n";
}

QStringList ids(const std::vector<DesktopEntry>& entries) {
  QStringList list;
  for (const DesktopEntry& entry : entries) list << entry.id;
  return list;
}

// Sets an environment variable for one test.
struct ScopedEnv {
  ScopedEnv(const char* name, const QString& value) : name_(name), old_(qgetenv(name)), had_(qEnvironmentVariableIsSet(name)) {
    qputenv(name, value.toLocal8Bit());
  }
  ~ScopedEnv() {
    if (had_) qputenv(name_, old_);
    else qunsetenv(name_);
  }
  const char* name_;
  QByteArray old_;
  bool had_;
};

// A user folder and a system folder with real entry files, a cache and a mimeapps.list.
struct Desktop {
  QTemporaryDir dir;
  QString user() const { return dir.filePath("data/applications"); }
  QString system() const { return dir.filePath("share/applications"); }
  QString config() const { return dir.filePath("config"); }

  Desktop() {
    write(system() + "/editor.desktop", application("Editor", "editor %F", "text/plain;"));
    write(system() + "/kde/writer.desktop", application("Writer", "writer %U", "text/plain;text/x-csrc;"));
    write(system() + "/ide.desktop", application("IDE", "ide %f", "text/x-csrc;"));
    // Listed only in the folder's cache.
    write(system() + "/cached.desktop", application("Cached", "cached", ""));
    write(system() + "/mimeinfo.cache", "[MIME Cache]\ntext/x-csrc=cached.desktop;\n");
    write(system() + "/viewer.desktop", application("Viewer", "viewer %f", "text/x-csrc;"));
    write(system() + "/missing.desktop", application("Missing", "missing %f", "text/x-csrc;", "TryExec=/nonexistent/missing"));
    write(system() + "/link.desktop", "[Desktop Entry]\nType=Link\nName=Link\nURL=https://example.invalid\nMimeType=text/x-csrc;\n");
    // The user's folder hides the system's ide and has an own entry.
    write(user() + "/ide.desktop", "[Desktop Entry]\nType=Application\nName=IDE\nExec=ide\nHidden=true\n");
    write(user() + "/mine.desktop", application("Mine", "mine %f", "text/x-csrc;"));
    write(config() + "/mimeapps.list",
          "[Default Applications]\ntext/x-csrc=gone.desktop;kde-writer.desktop;\n"
          "[Added Associations]\ntext/x-csrc=editor.desktop;\n"
          "[Removed Associations]\ntext/x-csrc=viewer.desktop;\n");
  }
  DesktopApplications::Catalog catalog() const {
    return DesktopApplications::loadCatalog({user(), system()}, {config() + "/mimeapps.list"});
  }
};
}  // namespace

// The user's default leads (the first of its list that is installed), then what the user
// added, then the entries for the type by name, then those for the parent type. Hidden,
// removed, non-application and uninstallable entries never show.
TEST(DesktopApplications, ApplicationsForATypeFromRealFolders) {
  Desktop desktop;
  const auto catalog = desktop.catalog();
  EXPECT_EQ(ids(DesktopApplications::applicationsFor({"text/x-csrc", "text/plain"}, catalog)),
            (QStringList{"kde-writer.desktop", "editor.desktop", "cached.desktop", "mine.desktop"}));
  // Without the user's list the type's own programs come before the parent's.
  auto plain = catalog;
  plain.associations = {};
  EXPECT_EQ(ids(DesktopApplications::applicationsFor({"text/x-csrc", "text/plain"}, plain)),
            (QStringList{"cached.desktop", "mine.desktop", "viewer.desktop", "kde-writer.desktop", "editor.desktop"}));
  EXPECT_TRUE(DesktopApplications::applicationsFor({"image/png"}, catalog).empty());

  const auto writer = std::find_if(catalog.entries.begin(), catalog.entries.end(),
                                   [](const DesktopEntry& e) { return e.id == "kde-writer.desktop"; });
  ASSERT_NE(writer, catalog.entries.end());
  EXPECT_EQ(writer->name, "Writer");  // not the localised name, not an action's
  EXPECT_EQ(writer->exec, "writer %U");
  EXPECT_EQ(writer->filePath, desktop.system() + "/kde/writer.desktop");
}

// The same from the environment's folders, for a real file whose type is found by its name.
TEST(DesktopApplications, ApplicationsForAFileFollowTheEnvironment) {
  Desktop desktop;
  ScopedEnv data("XDG_DATA_HOME", desktop.dir.filePath("data"));
  // The system's folder stays after ours: the MIME database lives there too.
  ScopedEnv dirs("XDG_DATA_DIRS", desktop.dir.filePath("share") + ":/usr/share");
  ScopedEnv config("XDG_CONFIG_HOME", desktop.config());
  ScopedEnv configDirs("XDG_CONFIG_DIRS", desktop.dir.filePath("nothing"));
  ScopedEnv current("XDG_CURRENT_DESKTOP", "Test");
  EXPECT_EQ(DesktopApplications::applicationDirectories(),
            (QStringList{desktop.user(), desktop.system(), "/usr/share/applications"}));
  EXPECT_EQ(DesktopApplications::mimeAppsFiles().mid(0, 2),
            (QStringList{desktop.config() + "/test-mimeapps.list", desktop.config() + "/mimeapps.list"}));

  const QString source = desktop.dir.filePath("main file.c");
  write(source, "int main(void) { return 0; }\n");
  const QStringList chain = DesktopApplications::mimeTypeChain(source);
  ASSERT_FALSE(chain.isEmpty());
  EXPECT_EQ(chain.front(), "text/x-csrc");
  EXPECT_TRUE(chain.contains("text/plain"));
  EXPECT_FALSE(chain.contains("application/octet-stream"));
  EXPECT_EQ(ids(DesktopApplications::applicationsForFile(source)).mid(0, 2),
            (QStringList{"kde-writer.desktop", "editor.desktop"}));
}

TEST(DesktopApplications, ValuesAndExecLinesAreUnescaped) {
  const auto entry = DesktopApplications::parseEntry(QStringLiteral(
      "# comment\n[Desktop Entry]\nType = Application\nName=Two\\sWords\nIcon=two\n"
      "Exec=\"/opt/My App/run\" --title=\"say \\\\\"hi\\\\\"\" --name=%c %U\nTerminal=true\n"));
  ASSERT_TRUE(entry.has_value());
  EXPECT_EQ(entry->name, "Two Words");
  EXPECT_TRUE(entry->terminal);
  EXPECT_EQ(DesktopApplications::splitExec(entry->exec),
            (QStringList{"/opt/My App/run", "--title=say \"hi\"", "--name=%c", "%U"}));
  EXPECT_FALSE(DesktopApplications::splitExec("app \"open").has_value());
  EXPECT_FALSE(DesktopApplications::parseEntry("[Desktop Entry]\nType=Application\nName=No Exec\n"));
}

// Field codes: one launch per file for %f/%u, one for all with %F/%U, file URLs for the
// URL codes, the icon, name and entry file, and a file appended where no code asks for it.
TEST(DesktopApplications, FieldCodesExpandToCommandLines) {
  DesktopEntry entry;
  entry.name = "Ed";
  entry.icon = "ed-icon";
  entry.filePath = "/apps/ed.desktop";
  const QStringList files{"/w/a b.txt", "/w/ü.txt"};
  auto lines = [&](const QString& exec, const QStringList& given) {
    entry.exec = exec;
    return DesktopApplications::commandLines(entry, given);
  };
  using Lines = std::vector<QStringList>;
  EXPECT_EQ(lines("ed %f", files), (Lines{{"ed", "/w/a b.txt"}, {"ed", "/w/ü.txt"}}));
  EXPECT_EQ(lines("ed --files %F", files), (Lines{{"ed", "--files", "/w/a b.txt", "/w/ü.txt"}}));
  EXPECT_EQ(lines("ed %U", files), (Lines{{"ed", "file:///w/a%20b.txt", "file:///w/%C3%BC.txt"}}));
  EXPECT_EQ(lines("ed --open=%u", {files.front()}), (Lines{{"ed", "--open=file:///w/a%20b.txt"}}));
  EXPECT_EQ(lines("ed %i --class=%c %k 100%% %d %D %m %f", {files.front()}),
            (Lines{{"ed", "--icon", "ed-icon", "--class=Ed", "/apps/ed.desktop", "100%", "/w/a b.txt"}}));
  EXPECT_EQ(lines("ed --new-window", files), (Lines{{"ed", "--new-window", "/w/a b.txt", "/w/ü.txt"}}));
  EXPECT_FALSE(lines("\"ed", files).has_value());
  EXPECT_FALSE(lines("%f", {}).has_value());  // nothing left to run
}

TEST(DesktopApplications, MimeAppsListsKeepTheMoreImportantFirst) {
  MimeAssociations associations;
  DesktopApplications::parseMimeApps("[Default Applications]\ntext/plain=a.desktop;\n", associations);
  DesktopApplications::parseMimeApps(
      "[Default Applications]\ntext/plain=b.desktop;a.desktop\n[Added Associations]\ntext/plain=c.desktop;\n", associations);
  EXPECT_EQ(associations.defaults.value("text/plain"), (QStringList{"a.desktop", "b.desktop"}));
  EXPECT_EQ(associations.added.value("text/plain"), QStringList{"c.desktop"});
  EXPECT_TRUE(associations.removed.isEmpty());
}

// A folder opens with the desktop's file manager; without one the caller learns why
// instead of the request vanishing.
TEST(DesktopApplications, AFolderOpensWithTheFileManagerOrSaysWhyNot) {
  QTemporaryDir dir;
  const QString folder = dir.filePath("my r\u00e9po");
  QDir().mkpath(folder);
  const QString seen = dir.filePath("seen");
  ScopedEnv data("XDG_DATA_HOME", dir.filePath("data"));
  ScopedEnv dirs("XDG_DATA_DIRS", dir.filePath("share"));
  ScopedEnv config("XDG_CONFIG_HOME", dir.filePath("config"));
  ScopedEnv configDirs("XDG_CONFIG_DIRS", dir.filePath("nothing"));

  const auto none = DesktopApplications::openFolder(folder);
  ASSERT_TRUE(none.has_value());
  EXPECT_TRUE(none->contains("No file manager")) << none->toStdString();
  EXPECT_TRUE(DesktopApplications::openFolder(dir.filePath("gone")).has_value());

  // A file manager that writes down the folder it was given.
  const QString program = dir.filePath("files.sh");
  write(program, "#!/bin/sh\nprintf '%s' \"$1\" > '" + seen.toUtf8() + "'\n");
  QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  write(dir.filePath("share/applications/files.desktop"), application("Files", program.toUtf8() + " %f", "inode/directory;"));
  EXPECT_EQ(DesktopApplications::openFolder(folder), std::nullopt);
  QFile written(seen);
  for (int i = 0; i < 100 && written.size() == 0; ++i) QThread::msleep(20);
  ASSERT_TRUE(written.open(QIODevice::ReadOnly));
  EXPECT_EQ(QString::fromUtf8(written.readAll()), folder);
}
