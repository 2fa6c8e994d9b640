// The background fetch: one job per remote that takes part, nothing when switched off.
#include <QCoreApplication>
#include <QTest>
#include <gtest/gtest.h>

#include "Jobs/JobQueue.h"
#include "Repository/RepositoryController.h"
#include "Services/AutomaticBackgroundFetchManager.h"
#include "Services/Preferences.h"
#include "support/GitHttpServer.h"
#include "support/TempRepository.h"

TEST(AutomaticFetch, FetchesRemotesThatTakePartAndOnlyWhenSwitchedOn) {
  GitHttpServer server;
  QString why;
  ASSERT_TRUE(server.start(&why)) << why.toStdString();
  server.createBareRepository(QStringLiteral("project.git"));
  server.createBareRepository(QStringLiteral("other.git"));
  TempRepository upstream;
  const QString sha = upstream.commitFile(QStringLiteral("a.txt"), "one\n", QStringLiteral("first"));
  for (const char* name : {"project.git", "other.git"}) {
    upstream.git({QStringLiteral("push"), QStringLiteral("-q"), server.url(QString::fromLatin1(name), true), QStringLiteral("main")});
  }
  TempRepository local;
  local.git({QStringLiteral("remote"), QStringLiteral("add"), QStringLiteral("origin"), server.url(QStringLiteral("project.git"), true)});
  local.git({QStringLiteral("remote"), QStringLiteral("add"), QStringLiteral("quiet"), server.url(QStringLiteral("other.git"), true)});
  local.git({QStringLiteral("config"), QStringLiteral("remote.quiet.disableimplicitfetch"), QStringLiteral("true")});

  auto queue = std::make_shared<JobQueue>();
  RepositoryController controller(local.module(), queue);
  AutomaticBackgroundFetchManager manager([&] {
    return std::vector<AutomaticBackgroundFetchManager::Target>{{&controller, queue, [] { return true; }}};
  });
  auto fetchJobs = [&] {
    QStringList names;
    for (const auto& job : queue->userJobs()) {
      if (job->name().startsWith(QStringLiteral("Fetch "))) names << job->name();
    }
    return names;
  };

  Preferences::shared().setFetchRemotesAutomatically(false);
  manager.updateTimerTick();
  QTest::qWait(500);
  EXPECT_TRUE(fetchJobs().isEmpty());

  Preferences::shared().setFetchRemotesAutomatically(true);
  manager.updateTimerTick();
  ASSERT_TRUE(QTest::qWaitFor([&] { return local.git({QStringLiteral("rev-parse"), QStringLiteral("-q"), QStringLiteral("--verify"),
                                                      QStringLiteral("origin/main")}, true).trimmed() == sha; }, 20000));
  ASSERT_TRUE(QTest::qWaitFor([&] { return queue->activeJobsCount() == 0; }, 20000));
  EXPECT_EQ(fetchJobs(), QStringList{QStringLiteral("Fetch origin")});
  int status = 0;
  local.git({QStringLiteral("rev-parse"), QStringLiteral("-q"), QStringLiteral("--verify"), QStringLiteral("quiet/main")}, true, &status);
  EXPECT_NE(status, 0);
  manager.start(0.05);
  EXPECT_TRUE(manager.isActive());
}
