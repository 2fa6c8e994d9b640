// The background fetch: one job per remote that takes part, nothing when switched off.
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
  server.createBareRepository("project.git");
  server.createBareRepository("other.git");
  TempRepository upstream;
  const QString sha = upstream.commitFile("a.txt", "one\n", "first");
  for (const char* name : {"project.git", "other.git"}) {
    upstream.git({"push", "-q", server.url(QString::fromLatin1(name), true), "main"});
  }
  TempRepository local;
  local.git({"remote", "add", "origin", server.url("project.git", true)});
  local.git({"remote", "add", "quiet", server.url("other.git", true)});
  local.git({"config", "remote.quiet.disableimplicitfetch", "true"});

  auto queue = std::make_shared<JobQueue>();
  RepositoryController controller(local.module(), queue);
  AutomaticBackgroundFetchManager manager([&] {
    return std::vector<AutomaticBackgroundFetchManager::Target>{{&controller, queue, [] { return true; }}};
  });
  auto fetchJobs = [&] {
    QStringList names;
    for (const auto& job : queue->userJobs()) {
      if (job->name().startsWith("Fetch ")) names << job->name();
    }
    return names;
  };

  Preferences::shared().setFetchRemotesAutomatically(false);
  manager.updateTimerTick();
  QTest::qWait(500);
  EXPECT_TRUE(fetchJobs().isEmpty());

  Preferences::shared().setFetchRemotesAutomatically(true);
  manager.updateTimerTick();
  ASSERT_TRUE(QTest::qWaitFor(
      [&] {
        return local.git({"rev-parse", "-q", "--verify", "origin/main"}, true).trimmed() == sha;
      },
      20000));
  ASSERT_TRUE(QTest::qWaitFor([&] { return queue->activeJobsCount() == 0; }, 20000));
  EXPECT_EQ(fetchJobs(), QStringList{"Fetch origin"});
  int status = 0;
  local.git({"rev-parse", "-q", "--verify", "quiet/main"}, true, &status);
  EXPECT_NE(status, 0);
  manager.start(0.05);
  EXPECT_TRUE(manager.isActive());
}
