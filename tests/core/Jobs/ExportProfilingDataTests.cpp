#include <gtest/gtest.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QTemporaryDir>

#include "Jobs/ExportProfilingDataCommand.h"
#include "Jobs/JobQueue.h"

namespace {
std::shared_ptr<Job> profiledJob(JobQueue& queue, const QString& name) {
  auto job = Job::make(name, Job::Show::everywhere(), Job::ProgressType::progress, [](JobProgress& p) {
    p.startGroup("load");
    p.start("status");
    p.end("status");
    p.endGroup("load");
  });
  queue.schedule(job);
  return job;
}
QStringList field(const QJsonArray& events, const char* key) {
  QStringList values;
  for (const auto& e : events) {
    const QJsonValue v = e.toObject().value(QLatin1String(key));
    values << (v.isString() ? v.toString() : QString::number(v.toDouble(), 'f', 0));
  }
  return values;
}
}  // namespace

TEST(ExportProfilingData, TraceHoldsEachFinishedJobWithItsEvents) {
  JobQueue first, second;
  auto a = profiledJob(first, "Refresh");
  auto b = profiledJob(second, "Fetch");
  ASSERT_TRUE(first.waitForDone(5000) && second.waitForDone(5000));
  auto unfinished = Job::make("Never run", Job::Show::everywhere(), Job::ProgressType::progress, {});

  const QJsonDocument trace = ExportProfilingDataCommand::traceDocument(
      {{"/work/one/repo", {a, unfinished}}, {"/elsewhere/other", first.userJobs()}, {"/x/third", second.userJobs()}});
  const QJsonArray events = trace.object().value("events").toArray();
  ASSERT_EQ(events.size(), 18);
  EXPECT_EQ(field(events, "ph").mid(0, 6), (QStringList{"b", "b", "B", "E", "e", "e"}));
  EXPECT_EQ(field(events, "name").mid(0, 6), (QStringList{"Refresh", "load", "status", "status", "load", "Refresh"}));
  EXPECT_EQ(field(events, "id").mid(0, 6), QStringList(6, QString::number(a->id())));
  EXPECT_EQ(field(events, "name")[12], "Fetch");
  EXPECT_EQ(events[0].toObject().value("cat").toString(), QString());

  // One process per repository folder; the timestamps are whole milliseconds in microseconds.
  const QStringList pids = field(events, "pid");
  EXPECT_EQ(pids[0], pids[5]);
  EXPECT_NE(pids[0], pids[6]);
  EXPECT_EQ(ExportProfilingDataCommand::processId("/other/place/repo"), ExportProfilingDataCommand::processId("/work/one/repo"));
  EXPECT_EQ(static_cast<qint64>(events[0].toObject().value("ts").toDouble()), a->startTime()->toMSecsSinceEpoch() * 1000);
  EXPECT_EQ(static_cast<qint64>(events[5].toObject().value("ts").toDouble()), a->finishTime()->toMSecsSinceEpoch() * 1000);
  EXPECT_LE(*a->startTime(), *a->finishTime());
}

TEST(ExportProfilingData, WritesTheFileAndRevealsIt) {
  JobQueue queue;
  profiledJob(queue, "Refresh");
  ASSERT_TRUE(queue.waitForDone(5000));
  QTemporaryDir directory;
  QString revealed;
  const auto path = ExportProfilingDataCommand::execute({{"/r/repo", queue.userJobs()}}, directory.path(),
                                                        [&](const QString& p) { revealed = p; });
  ASSERT_TRUE(path.has_value());
  EXPECT_EQ(revealed, *path);
  const QString name = QFileInfo(*path).fileName();
  EXPECT_TRUE(name.startsWith("jelv-") && name.endsWith(".trace")) << name.toStdString();
  EXPECT_FALSE(name.contains(QLatin1Char(':')));
  QFile file(*path);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QJsonDocument written = QJsonDocument::fromJson(file.readAll());
  EXPECT_EQ(written.object().value("events").toArray().size(), 6);

  // An unwritable place gives no path and reveals nothing.
  revealed.clear();
  EXPECT_FALSE(
      ExportProfilingDataCommand::execute({}, directory.path() + "/missing/dir", [&](const QString& p) { revealed = p; }));
  EXPECT_TRUE(revealed.isEmpty());
}
