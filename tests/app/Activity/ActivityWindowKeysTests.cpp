#include <gtest/gtest.h>

#include <QTest>

#include "Controllers/ActivityManagerWindow.h"
#include "Jobs/JobQueue.h"

TEST(ActivityManagerWindow, EscapeAndCtrlWCloseIt) {
  auto queue = std::make_shared<JobQueue>();
  for (const QKeySequence& keys : {QKeySequence(Qt::Key_Escape), QKeySequence(QKeySequence::Close)}) {
    ActivityManagerWindow window(queue);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keySequence(&window, keys);
    EXPECT_FALSE(window.isVisible()) << keys.toString().toStdString();
  }
}
