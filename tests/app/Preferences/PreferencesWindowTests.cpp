#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFontComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSettings>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include "Controllers/Preferences/PreferencesWindowController.h"
#include "Git/Commands/Config/GetGitVersionGitCommand.h"
#include "Models/AppSettings.h"
#include "Services/MergeTool.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "Services/RepositoryRescanner.h"
#include "Services/UrlSchemeHandlerRegistry.h"
#include "UI/Appearance.h"
#include "support/TempRepository.h"
#include "support/TestEnvironment.h"
#include "support/Widgets.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace {
using Notification = PreferencesNotifier::Notification;

// Every notification posted while it lives.
struct NotificationLog {
  NotificationLog() : spy(&PreferencesNotifier::shared(), &PreferencesNotifier::notified) {}
  QList<Notification> all() const {
    QList<Notification> list;
    for (const auto& arguments : spy) list << arguments.at(0).value<Notification>();
    return list;
  }
  QSignalSpy spy;
};

const QStringList keysOfTheWindow{
    "appearance", "useTopologicalCommitOrder", "maxCommitCount", "contextSize", "diffShowEntireFile", "diffIgnoreWhitespaces",
    "diffWordWrapKey", "diffShowHiddenSymbols", "disableAutomaticStatusUpdate", "automaticStatusUpdateInterval", "defaultSourceFolder",
    "diffFontName", "diffFontSize", "gitInstanceType", "customGitInstancePath", "externalDiffTool", "externalDiffToolCustomPath",
    "externalDiffToolCustomArguments"};
}  // namespace

class PreferencesWindowTest : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const QString& key : keysOfTheWindow) Preferences::shared().remove(key);
    settings = std::make_unique<AppSettings>(dbDir.path() + QStringLiteral("/db.sqlite3"));
    settings->initializeDatabase();
    window = std::make_unique<PreferencesWindowController>(*settings);
  }
  void TearDown() override {
    if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance())) Appearance::apply(*app, 0);
  }
  template <typename T>
  T* control(const QString& key) const {
    T* found = window->findChild<T*>(key);
    EXPECT_TRUE(found) << key.toStdString();
    return found;
  }
  // What a fresh reader of the store file finds, as the next start of the program would.
  QVariant storedOnDisk(const QString& key) const {
    Preferences::shared().sync();
    QSettings file(TestEnvironment::root() + QStringLiteral("/config/jelv-test.ini"), QSettings::IniFormat);
    return file.value(key);
  }

  QTemporaryDir dbDir;
  std::unique_ptr<AppSettings> settings;
  std::unique_ptr<PreferencesWindowController> window;
};

TEST_F(PreferencesWindowTest, ControlsWriteTheirKeysWithTheirNotification) {
  EXPECT_TRUE(control<QCheckBox>("disableAutomaticStatusUpdate")->isChecked());  // shown as "update automatically"

  struct Row {
    const char* key;
    std::function<void()> change;
    QVariant stored;
    Notification notification;
  };
  const std::vector<Row> rows{
      {"useTopologicalCommitOrder", [&] { control<QComboBox>("useTopologicalCommitOrder")->setCurrentIndex(1); }, false,
       Notification::revisionOrderingChanged},
      {"maxCommitCount", [&] { control<QSpinBox>("maxCommitCount")->setValue(120000); }, 120000, Notification::revisionOrderingChanged},
      {"contextSize", [&] { control<QSpinBox>("contextSize")->setValue(8); }, 8, Notification::diffContextSizeChanged},
      {"diffShowEntireFile", [&] { control<QCheckBox>("diffShowEntireFile")->setChecked(true); }, true,
       Notification::diffContextSizeChanged},
      {"diffIgnoreWhitespaces", [&] { control<QCheckBox>("diffIgnoreWhitespaces")->setChecked(true); }, true,
       Notification::diffIgnoreWhitespacesChanged},
      {"diffWordWrapKey", [&] { control<QCheckBox>("diffWordWrapKey")->setChecked(true); }, true,
       Notification::diffTextViewWordWrapChanged},
      {"diffShowHiddenSymbols", [&] { control<QCheckBox>("diffShowHiddenSymbols")->setChecked(true); }, true,
       Notification::diffShowHiddenSymbolsChanged},
      {"disableAutomaticStatusUpdate", [&] { control<QCheckBox>("disableAutomaticStatusUpdate")->setChecked(false); }, true,
       Notification::updateRepoStatusAutomaticallyChanged},
      {"automaticStatusUpdateInterval", [&] { control<QSpinBox>("automaticStatusUpdateInterval")->setValue(300); }, 300,
       Notification::updateRepoStatusAutomaticallyChanged},
  };
  for (const Row& row : rows) {
    NotificationLog log;
    row.change();
    EXPECT_EQ(Preferences::shared().value(QString::fromLatin1(row.key)), row.stored) << row.key;
    EXPECT_EQ(storedOnDisk(QString::fromLatin1(row.key)).toString(), row.stored.toString()) << row.key;
    EXPECT_EQ(log.all(), QList<Notification>{row.notification}) << row.key;
  }
  // The interval follows the switch it belongs to.
  EXPECT_FALSE(control<QSpinBox>("automaticStatusUpdateInterval")->isEnabled());
  EXPECT_FALSE(control<QSpinBox>("contextSize")->isEnabled());
}

TEST_F(PreferencesWindowTest, ReloadShowsWhatAnotherWindowWroteWithoutPostingAnything) {
  Preferences::shared().setValue(QStringLiteral("contextSize"), 12);
  Preferences::shared().setValue(QStringLiteral("useTopologicalCommitOrder"), false);
  Preferences::shared().setValue(QStringLiteral("diffIgnoreWhitespaces"), true);
  NotificationLog log;
  window->reload();
  EXPECT_EQ(control<QSpinBox>("contextSize")->value(), 12);
  EXPECT_EQ(control<QComboBox>("useTopologicalCommitOrder")->currentIndex(), 1);
  EXPECT_TRUE(control<QCheckBox>("diffIgnoreWhitespaces")->isChecked());
  EXPECT_TRUE(log.all().isEmpty());
  EXPECT_EQ(Preferences::shared().integer(QStringLiteral("contextSize")), 12);
}

TEST_F(PreferencesWindowTest, AppearanceAppliesAtOnceAndTheFontIsStoredByNameAndSize) {
  auto* app = qobject_cast<QApplication*>(QCoreApplication::instance());
  ASSERT_TRUE(app);
  control<QComboBox>("appearance")->setCurrentIndex(2);
  EXPECT_EQ(Preferences::shared().integer(QStringLiteral("appearance")), 2);
  EXPECT_TRUE(Appearance::isDark(*app));
  control<QComboBox>("appearance")->setCurrentIndex(1);
  EXPECT_FALSE(Appearance::isDark(*app));

  NotificationLog log;
  auto* size = control<QSpinBox>("diffFontSize");
  size->setValue(size->value() == 17 ? 18 : 17);
  EXPECT_EQ(Preferences::shared().diffFontSize(), std::optional<double>(size->value()));
  EXPECT_EQ(Preferences::shared().diffFontName(), control<QFontComboBox>("diffFontName")->currentFont().family());
  EXPECT_EQ(log.all(), QList<Notification>{Notification::diffTextViewFontChanged});
}

TEST_F(PreferencesWindowTest, GitInstancesAreListedWithTheirVersionsAndTheChoiceIsStored) {
  // A custom "git" that is not git at all must be left out of the list.
  TempRepository bin(false, QStringLiteral("bin"));
  bin.writeExecutable(QStringLiteral("not-git"), "#!/bin/sh\necho hello\n");
  const QString fake = bin.path() + QStringLiteral("/not-git");
  Preferences::shared().setGitInstance(GitInstanceType::custom(fake));

  QSignalSpy loaded(window.get(), &PreferencesWindowController::gitInstancesLoaded);
  window->reload();
  ASSERT_TRUE(loaded.wait(20000));
  auto* combo = control<QComboBox>("gitInstanceType");

  const QString systemVersion = QString::fromUtf8(runProgram(QStringLiteral("/usr/bin/git"), {QStringLiteral("version")}))
                                    .section(QStringLiteral("version"), 1)
                                    .trimmed();
  QStringList titles;
  for (int i = 0; i < combo->count(); ++i) titles << combo->itemText(i);
  EXPECT_TRUE(titles.contains(QStringLiteral("system — %1 (/usr/bin/git)").arg(systemVersion))) << titles.join(" | ").toStdString();
  EXPECT_EQ(titles.last(), QStringLiteral("Other…"));
  for (const QString& title : titles) EXPECT_FALSE(title.contains(fake)) << title.toStdString();
  // The stored choice answers nothing, so no entry is selected and the window says so.
  EXPECT_EQ(combo->currentIndex(), -1);

  const int systemIndex = int(titles.indexOf(QStringLiteral("system — %1 (/usr/bin/git)").arg(systemVersion)));
  combo->setCurrentIndex(systemIndex);
  Q_EMIT combo->activated(systemIndex);
  EXPECT_EQ(Preferences::shared().gitInstance(), GitInstanceType::system());
  EXPECT_EQ(Preferences::shared().integer(QStringLiteral("gitInstanceType")), 0);

  // A git of the user's own joins the list, chosen.
  const QString own = bin.path() + QStringLiteral("/my-git");
  ASSERT_TRUE(QFile::link(QStringLiteral("/usr/bin/git"), own));
  window->useCustomGitInstance(own);
  ASSERT_TRUE(loaded.wait(20000));
  EXPECT_EQ(Preferences::shared().string(QStringLiteral("customGitInstancePath")), own);
  EXPECT_EQ(Preferences::shared().integer(QStringLiteral("gitInstanceType")), 2);
  EXPECT_EQ(combo->currentText(), QStringLiteral("%1 (%2)").arg(systemVersion, own));
}

TEST_F(PreferencesWindowTest, TheSourceFolderIsStoredAndItsRescanFillsTheRegistry) {
  QTemporaryDir source;
  auto makeRepository = [&](const QString& relative) {
    const QString path = source.path() + QLatin1Char('/') + relative;
    QDir().mkpath(path);
    runProgram(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("-q"), path});
  };
  makeRepository(QStringLiteral("clients/web"));
  makeRepository(QStringLiteral("tools"));

  auto* rescan = window->findChild<QPushButton*>(QStringLiteral("rescan"));
  ASSERT_TRUE(rescan);
  EXPECT_FALSE(rescan->isEnabled());  // nothing to rescan yet
  window->setSourceFolder(source.path() + QStringLiteral("/"));
  EXPECT_EQ(Preferences::shared().defaultSourceFolder(), std::optional<QString>(QDir::cleanPath(source.path())));
  ASSERT_TRUE(rescan->isEnabled());

  QSignalSpy finished(&RepositoryRescanner::shared(), &RepositoryRescanner::finished);
  QSignalSpy progress(&RepositoryRescanner::shared(), &RepositoryRescanner::progressChanged);
  QSignalSpy dataUpdated(&PreferencesNotifier::shared(), &PreferencesNotifier::repositoryManagerDataUpdated);
  rescan->click();
  EXPECT_FALSE(rescan->isEnabled());
  ASSERT_TRUE(finished.wait(20000));
  EXPECT_EQ(finished.at(0).at(0).toInt(), 2);
  EXPECT_EQ(dataUpdated.count(), 1);
  ASSERT_FALSE(progress.isEmpty());
  EXPECT_EQ(progress.last().at(0).toInt(), 2);  // both checked, out of two
  EXPECT_EQ(progress.last().at(1).toInt(), 2);
  EXPECT_TRUE(rescan->isEnabled());
  EXPECT_EQ(settings->getRepositories().size(), 2u);
}

TEST_F(PreferencesWindowTest, IntegrationMakesJelvTheHandlerOfOneSchemeAndKeepsOtherDefaults) {
  const QString path = UrlSchemeHandlerRegistry::mimeAppsPath();
  QDir().mkpath(QFileInfo(path).path());
  {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write("[Default Applications]\ntext/plain=editor.desktop\nx-scheme-handler/github-mac=other.desktop\n");
  }
  window->reload();
  auto* button = control<QPushButton>(QStringLiteral("github-macDefaultButton"));
  ASSERT_TRUE(button->isEnabled());
  button->click();
  EXPECT_FALSE(button->isEnabled());
  EXPECT_TRUE(UrlSchemeHandlerRegistry::isDefaultHandler(QStringLiteral("github-mac")));
  EXPECT_FALSE(UrlSchemeHandlerRegistry::isDefaultHandler(QStringLiteral("sourcetree")));
  EXPECT_TRUE(control<QPushButton>(QStringLiteral("sourcetreeDefaultButton"))->isEnabled());
  if (qEnvironmentVariableIsSet("JELV_SCREENSHOT_DIR")) {
    window->findChild<QTabWidget*>()->setCurrentIndex(window->findChild<QTabWidget*>()->count() - 1);
    window->show();
    screenshot(window.get(), QStringLiteral("preferences-integration"));
  }
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray text = file.readAll();
  EXPECT_TRUE(text.contains("text/plain=editor.desktop"));
  EXPECT_FALSE(text.contains("github-mac=other.desktop"));
  QFile::remove(path);
}

// The diff tool choice lists the tools found on PATH (and a stored one that has gone,
// marked), then Custom; the stored value is the tool, not the row. The custom program
// and its arguments are editable only for Custom.
TEST_F(PreferencesWindowTest, ExternalDiffToolOffersInstalledToolsAndACustomProgram) {
  QTemporaryDir bin;
  for (const char* name : {"kdiff3", "code"}) {
    QFile tool(bin.filePath(QString::fromLatin1(name)));
    ASSERT_TRUE(tool.open(QIODevice::WriteOnly));
    tool.write("#!/bin/sh\n");
    tool.close();
    tool.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
  struct PathGuard {
    QByteArray old = qgetenv("PATH");
    ~PathGuard() { qputenv("PATH", old); }
  } guard;
  qputenv("PATH", bin.path().toLocal8Bit() + ':' + guard.old);
  Preferences::shared().setExternalDiffTool(int(MergeTool::Kind::meld));
  window->reload();

  auto* combo = control<QComboBox>("externalDiffTool");
  auto* program = control<QLineEdit>("externalDiffToolCustomPath");
  auto* arguments = control<QLineEdit>("externalDiffToolCustomArguments");
  QStringList items;
  for (int i = 0; i < combo->count(); ++i) items << combo->itemText(i);
  // Whatever else this machine has installed comes before; ours are there in order.
  ASSERT_GE(items.size(), 4);
  EXPECT_EQ(items.mid(items.size() - 4), (QStringList{"KDiff3", "Visual Studio Code", "Meld (not found)", "Custom"}));
  EXPECT_EQ(combo->currentText(), QStringLiteral("Meld (not found)"));
  EXPECT_FALSE(program->isEnabled());

  combo->setCurrentIndex(combo->count() - 1);
  Q_EMIT combo->activated(combo->count() - 1);
  EXPECT_EQ(Preferences::shared().externalDiffTool(), int(MergeTool::Kind::custom));
  ASSERT_TRUE(program->isEnabled());
  EXPECT_TRUE(arguments->isEnabled());
  QTest::keyClicks(program, QStringLiteral("/opt/diff tool"));
  QTest::keyClicks(arguments, QStringLiteral("$REMOTE $LOCAL"));
  EXPECT_EQ(storedOnDisk(QStringLiteral("externalDiffToolCustomPath")).toString(), QStringLiteral("/opt/diff tool"));
  EXPECT_EQ(storedOnDisk(QStringLiteral("externalDiffToolCustomArguments")).toString(), QStringLiteral("$REMOTE $LOCAL"));
  bool hint = false;
  for (QLabel* label : window->findChildren<QLabel*>()) hint = hint || label->text() == QStringLiteral("Available variables: $LOCAL, $REMOTE");
  EXPECT_TRUE(hint);

  const int kdiff3 = combo->findText(QStringLiteral("KDiff3"));
  combo->setCurrentIndex(kdiff3);
  Q_EMIT combo->activated(kdiff3);
  EXPECT_EQ(Preferences::shared().externalDiffTool(), int(MergeTool::Kind::kdiff3));
  EXPECT_FALSE(program->isEnabled());
  EXPECT_EQ(program->text(), QStringLiteral("/opt/diff tool"));  // kept for a later switch back
}
