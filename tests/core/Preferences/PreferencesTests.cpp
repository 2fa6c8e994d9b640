#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <QThread>

#include "Logging/AdvancedLogger.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "support/TestEnvironment.h"

namespace {

// Each test gets a store file of its own; the process-wide default file comes back after.
class PreferencesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    path = dir.filePath(QStringLiteral("prefs.ini"));
    Preferences::useStoreFile(path);
  }
  void TearDown() override { Preferences::useStoreFile(TestEnvironment::root() + QStringLiteral("/config/jelv-test.ini")); }
  // What the file holds after a write, as another run would read it.
  QVariant storedInFile(const QString& key) {
    Preferences::shared().sync();
    return QSettings(path, QSettings::IniFormat).value(key);
  }

  QTemporaryDir dir;
  QString path;
  Preferences& prefs = Preferences::shared();
};

QStringList logged;
void captureLog(AdvancedLogger::Level, const QString& message) { logged << message; }

}  // namespace

TEST_F(PreferencesTest, EmptyStoreReadsTheRegisteredDefaults) {
  EXPECT_EQ(prefs.commitSubjectLimitLow(), 50);
  EXPECT_EQ(prefs.commitSubjectLimitHigh(), 70);
  EXPECT_EQ(prefs.maxCommitCount(), 50000);
  EXPECT_TRUE(prefs.useTopologicalCommitOrder());
  EXPECT_EQ(prefs.popupDiffLayoutMode(), 1);
  EXPECT_EQ(prefs.applicationUpdateChannel(), 2);
  EXPECT_FALSE(prefs.pushAutomacicallyOnCommit());
  // Registered defaults are not written into the store.
  EXPECT_FALSE(prefs.contains(QStringLiteral("maxCommitCount")));
  EXPECT_FALSE(QFile::exists(path) && QSettings(path, QSettings::IniFormat).contains(QStringLiteral("maxCommitCount")));

  const auto defaults = Preferences::applicationDefaults();
  ASSERT_EQ(defaults.size(), 50);
  EXPECT_EQ(defaults.front().first, QStringLiteral("OldTabs"));
  EXPECT_EQ(defaults.back().first, QStringLiteral("maxCommitCount"));
}

TEST_F(PreferencesTest, UserValuesWinAndSurviveAReopen) {
  prefs.setMaxCommitCount(1200);
  prefs.setUseTopologicalCommitOrder(false);
  prefs.setPushAutomacicallyOnCommit(true);
  prefs.setDiffWordWrap(true);
  // The stored keys keep their historical spelling.
  EXPECT_EQ(storedInFile(QStringLiteral("pushAutomacicallyOnCommit")).toString(), QStringLiteral("true"));
  EXPECT_EQ(storedInFile(QStringLiteral("diffWordWrapKey")).toString(), QStringLiteral("true"));

  // A new run reads the file back, where every value is text.
  Preferences::useStoreFile(path);
  EXPECT_EQ(prefs.maxCommitCount(), 1200);
  EXPECT_FALSE(prefs.useTopologicalCommitOrder());
  EXPECT_TRUE(prefs.pushAutomacicallyOnCommit());
  EXPECT_TRUE(prefs.diffWordWrap());

  prefs.remove(QStringLiteral("maxCommitCount"));
  EXPECT_EQ(prefs.maxCommitCount(), 50000);
}

TEST_F(PreferencesTest, KeysWithoutDefaultsBeginUnset) {
  EXPECT_EQ(prefs.diffFontName(), QStringLiteral("Menlo"));
  EXPECT_FALSE(prefs.diffFontSize());
  EXPECT_FALSE(prefs.defaultSourceFolder());
  EXPECT_FALSE(prefs.recentPatchDirectory());
  EXPECT_FALSE(prefs.enableRemoteServiceNotifications());
  EXPECT_FALSE(prefs.gitServiceNotificationUpdatedAt());
  EXPECT_TRUE(prefs.recentCloneDirectories().isEmpty());
  EXPECT_TRUE(prefs.repositorySessions().empty());

  prefs.setDiffFont(QStringLiteral("DejaVu Sans Mono"), 12.5);
  prefs.setEnableRemoteServiceNotifications(false);
  prefs.setRecentCloneDirectories({QStringLiteral("/a"), QStringLiteral("/b")});
  const QDateTime updated = QDateTime::fromString(QStringLiteral("2024-05-01T10:00:00Z"), Qt::ISODate);
  prefs.setGitServiceNotificationUpdatedAt(updated);
  Preferences::useStoreFile(path);
  EXPECT_EQ(prefs.diffFontName(), QStringLiteral("DejaVu Sans Mono"));
  EXPECT_EQ(prefs.diffFontSize(), 12.5);
  EXPECT_EQ(prefs.enableRemoteServiceNotifications(), false);
  EXPECT_EQ(prefs.recentCloneDirectories(), (QStringList{QStringLiteral("/a"), QStringLiteral("/b")}));
  EXPECT_EQ(prefs.gitServiceNotificationUpdatedAt(), updated);
}

TEST_F(PreferencesTest, RepositorySessionsReadTolerantly) {
  prefs.setRepositorySessions({{QStringLiteral("/src/one"), false}, {QStringLiteral("/src/two"), true}});
  Preferences::useStoreFile(path);
  EXPECT_EQ(prefs.repositorySessions(),
            (std::vector<RepositorySession>{{QStringLiteral("/src/one"), false}, {QStringLiteral("/src/two"), true}}));

  // An older run may have left entries of another shape: they drop out, the rest stays.
  prefs.setValue(QStringLiteral("repositorySessions"),
                 QVariantList{QVariantMap{{QStringLiteral("selected"), true}}, QStringLiteral("garbage"),
                              QVariantMap{{QStringLiteral("repositoryPath"), QStringLiteral("/src/three")}}});
  EXPECT_EQ(prefs.repositorySessions(), (std::vector<RepositorySession>{{QStringLiteral("/src/three"), false}}));
}

TEST_F(PreferencesTest, VanishedCustomGitFallsBackToTheInternalOne) {
  prefs.setValue(QStringLiteral("gitInstanceType"), 2);
  prefs.setValue(QStringLiteral("customGitInstancePath"), dir.filePath(QStringLiteral("gone/git")));
  logged.clear();
  AdvancedLogger::setCaptureHook(&captureLog);
  const GitInstanceType instance = prefs.gitInstance();
  AdvancedLogger::setCaptureHook(nullptr);
  EXPECT_EQ(instance, GitInstanceType::local());
  EXPECT_TRUE(logged.contains(QStringLiteral("Can't find '%1'. Fall back to internal git instance.")
                                  .arg(dir.filePath(QStringLiteral("gone/git")))));
  // The type is mended for good; the path the user gave stays for the preferences window.
  EXPECT_EQ(storedInFile(QStringLiteral("gitInstanceType")).toInt(), 1);
  EXPECT_EQ(storedInFile(QStringLiteral("customGitInstancePath")).toString(), dir.filePath(QStringLiteral("gone/git")));
}

TEST_F(PreferencesTest, WritesAndNotificationsReachTheMainThread) {
  PreferencesNotifier& notifier = PreferencesNotifier::shared();
  QStringList keys;
  std::vector<QThread*> threads;
  QObject receiver;
  QObject::connect(&notifier, &PreferencesNotifier::valueChanged, &receiver, [&](const QString& key) {
    keys << key;
    threads.push_back(QThread::currentThread());
  });
  int contextChanged = 0;
  QStringList names;
  QObject::connect(&notifier, &PreferencesNotifier::diffContextSizeChanged, &receiver, [&] { ++contextChanged; });
  QObject::connect(&notifier, &PreferencesNotifier::notified, &receiver,
                   [&](PreferencesNotifier::Notification n) { names << PreferencesNotifier::name(n); });

  std::unique_ptr<QThread> worker(QThread::create([&] {
    Preferences::shared().setContextSize(5);
    PreferencesNotifier::shared().post(PreferencesNotifier::Notification::diffContextSizeChanged);
  }));
  worker->start();
  worker->wait();
  EXPECT_TRUE(keys.isEmpty());  // nothing runs on the worker's side
  QElapsedTimer timer;
  timer.start();
  while (keys.isEmpty() && timer.elapsed() < 2000) QCoreApplication::processEvents();

  EXPECT_EQ(keys, QStringList{QStringLiteral("contextSize")});
  ASSERT_EQ(threads.size(), 1u);
  EXPECT_EQ(threads.front(), QThread::currentThread());
  EXPECT_EQ(contextChanged, 1);
  EXPECT_EQ(names, QStringList{QStringLiteral("diffContextSizeChanged")});
  EXPECT_EQ(prefs.contextSize(), 5);
}
