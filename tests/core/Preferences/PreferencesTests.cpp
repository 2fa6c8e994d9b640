#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSettings>
#include <QTemporaryDir>
#include <QThread>

#include "Consts.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "support/LogCapture.h"
#include "support/TestEnvironment.h"

namespace {

// Each test gets a store file of its own; the process-wide default file comes back after.
class PreferencesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    path = dir.filePath("prefs.ini");
    Preferences::useStoreFile(path);
  }
  void TearDown() override { TestEnvironment::usePreferencesFile(); }
  // What the file holds after a write, as another run would read it.
  QVariant storedInFile(const QString& key) {
    Preferences::shared().sync();
    return QSettings(path, QSettings::IniFormat).value(key);
  }

  QTemporaryDir dir;
  QString path;
  Preferences& prefs = Preferences::shared();
};

}  // namespace

// Values of every type come back from the text file as they were written.
TEST_F(PreferencesTest, UserValuesWinAndSurviveAReopen) {
  // Registered defaults are read but never written into the store.
  EXPECT_EQ(prefs.maxCommitCount(), 50000);
  EXPECT_FALSE(prefs.contains("maxCommitCount"));
  EXPECT_FALSE(prefs.diffFontSize());
  prefs.setMaxCommitCount(1200);
  prefs.setUseTopologicalCommitOrder(false);
  prefs.setPushAutomacicallyOnCommit(true);
  prefs.setDiffWordWrap(true);
  prefs.setDiffFont("DejaVu Sans Mono", 12.5);
  prefs.setEnableRemoteServiceNotifications(false);
  prefs.setRecentCloneDirectories({"/a", "/b"});
  const QDateTime updated = QDateTime::fromString("2024-05-01T10:00:00Z", Qt::ISODate);
  prefs.setGitServiceNotificationUpdatedAt(updated);
  // The stored keys keep their historical spelling.
  EXPECT_EQ(storedInFile("pushAutomacicallyOnCommit").toString(), "true");
  EXPECT_EQ(storedInFile("diffWordWrapKey").toString(), "true");

  // A new run reads the file back, where every value is text.
  Preferences::useStoreFile(path);
  EXPECT_EQ(prefs.maxCommitCount(), 1200);
  EXPECT_FALSE(prefs.useTopologicalCommitOrder());
  EXPECT_TRUE(prefs.pushAutomacicallyOnCommit());
  EXPECT_TRUE(prefs.diffWordWrap());
  EXPECT_EQ(prefs.diffFontName(), "DejaVu Sans Mono");
  EXPECT_EQ(prefs.diffFontSize(), 12.5);
  EXPECT_EQ(prefs.enableRemoteServiceNotifications(), false);
  EXPECT_EQ(prefs.recentCloneDirectories(), (QStringList{"/a", "/b"}));
  EXPECT_EQ(prefs.gitServiceNotificationUpdatedAt(), updated);

  prefs.remove("maxCommitCount");
  EXPECT_EQ(prefs.maxCommitCount(), 50000);
}

TEST_F(PreferencesTest, RepositorySessionsReadTolerantly) {
  prefs.setRepositorySessions({{"/src/one", false}, {"/src/two", true}});
  Preferences::useStoreFile(path);
  EXPECT_EQ(prefs.repositorySessions(), (std::vector<RepositorySession>{{"/src/one", false}, {"/src/two", true}}));

  // An older run may have left entries of another shape: they drop out, the rest stays.
  prefs.setValue("repositorySessions",
                 QVariantList{QVariantMap{{"selected", true}}, "garbage", QVariantMap{{"repositoryPath", "/src/three"}}});
  EXPECT_EQ(prefs.repositorySessions(), (std::vector<RepositorySession>{{"/src/three", false}}));
}

TEST_F(PreferencesTest, GitInstanceTypeIsReadTolerantlyAndAVanishedCustomGitFallsBackToTheInternalOne) {
  const QString gone = dir.filePath("gone/git");
  prefs.setValue("gitInstanceType", 2);
  prefs.setValue("customGitInstancePath", gone);
  LogCapture log;
  EXPECT_EQ(prefs.gitInstance(), GitInstanceType::local());
  EXPECT_EQ(log.messages(), (QStringList{QStringLiteral("Can't find '%1'. Fall back to internal git instance.").arg(gone),
                                 QStringLiteral("Git instance changed to 'local' at '%1'").arg(Consts::Git::localGitPath())}));
  // The type is mended for good; the path the user gave stays for the preferences window.
  EXPECT_EQ(storedInFile("gitInstanceType").toInt(), 1);
  EXPECT_EQ(storedInFile("customGitInstancePath").toString(), gone);

  const std::pair<int, GitInstanceType> types[] = {
      {0, GitInstanceType::system()}, {7, GitInstanceType::system()}, {-1, GitInstanceType::system()},
      {3, GitInstanceType::brew()},   {2, GitInstanceType::local()},  // custom without a path
  };
  prefs.setValue("customGitInstancePath", QString());
  for (const auto& [stored, expected] : types) {
    prefs.setValue("gitInstanceType", stored);
    EXPECT_EQ(prefs.gitInstance(), expected) << stored;
  }
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

  EXPECT_EQ(keys, QStringList{"contextSize"});
  ASSERT_EQ(threads.size(), 1u);
  EXPECT_EQ(threads.front(), QThread::currentThread());
  EXPECT_EQ(contextChanged, 1);
  EXPECT_EQ(names, QStringList{"diffContextSizeChanged"});
  EXPECT_EQ(prefs.contextSize(), 5);
}
