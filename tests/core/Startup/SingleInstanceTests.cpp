#include <gtest/gtest.h>

#include <QSignalSpy>
#include <thread>

#include "Services/SingleInstance.h"

// Needs a session bus: the suite runs inside dbus-run-session.
TEST(SingleInstance, ASecondLaunchHandsItsArgumentsToTheFirst) {
  if (!QDBusConnection::sessionBus().isConnected()) GTEST_SKIP() << "no session bus";
  SingleInstance first;
  ASSERT_EQ(first.claim(), SingleInstance::Role::primary);

  // The second launch has a bus connection of its own.
  QDBusConnection other = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "second-launch");
  {
    SingleInstance second(other);
    EXPECT_EQ(second.claim(), SingleInstance::Role::secondary);

    QSignalSpy received(&first, &SingleInstance::argumentsReceived);
    const QStringList arguments{"/src/a", "github-mac://openRepo//src/b"};
    bool answered = false;
    // The call blocks until the first answers, which needs this thread's event loop.
    std::thread launch([&] { answered = SingleInstance::forward(other, arguments); });
    const bool arrived = received.wait(10000);
    launch.join();
    ASSERT_TRUE(arrived);
    EXPECT_TRUE(answered);
    EXPECT_EQ(received.at(0).at(0).toStringList(), arguments);
  }
  QDBusConnection::disconnectFromBus("second-launch");
}

TEST(SingleInstance, ForwardingWithoutARunningInstanceFails) {
  if (!QDBusConnection::sessionBus().isConnected()) GTEST_SKIP() << "no session bus";
  EXPECT_FALSE(SingleInstance::forward(QDBusConnection::sessionBus(), {"/src/a"}, 2000));
}
