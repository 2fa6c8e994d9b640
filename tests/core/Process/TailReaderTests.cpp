#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <mutex>
#include <thread>

#include "Git/Process/TailReader.h"
#include "Jobs/CancelationToken.h"

TEST(TailReader, DeliversTheFirstBurstOfLinesOnlyAndStopsOnCancel) {
  QTemporaryDir dir;
  const QString path = dir.path() + QStringLiteral("/progress.log");
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Unbuffered));

  std::mutex m;
  QStringList seen;
  auto token = std::make_shared<CancelationToken>();
  TailReader reader(path);
  reader.tail(token, [&](const QString& line) {
    std::lock_guard lock(m);
    seen << line;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(250));
  file.write("one\ntwo\n");
  std::this_thread::sleep_for(std::chrono::milliseconds(400));
  file.write("three\n");  // after the reader met the end: never delivered
  std::this_thread::sleep_for(std::chrono::milliseconds(400));
  token->cancel();
  reader.wait();
  std::lock_guard lock(m);
  EXPECT_EQ(seen, (QStringList{"one", "two"}));
}

TEST(TailReader, MissingFileEndsAtOnce) {
  auto token = std::make_shared<CancelationToken>();
  TailReader reader(QStringLiteral("/nonexistent/dir/file"));
  bool called = false;
  reader.tail(token, [&](const QString&) { called = true; });
  reader.wait();  // returns without a cancel: the loop never started
  EXPECT_FALSE(called);
}
