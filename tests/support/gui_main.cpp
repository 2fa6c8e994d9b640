#include <QApplication>
#include <gtest/gtest.h>

#include "support/TestEnvironment.h"

int main(int argc, char** argv) {
  TestEnvironment::setUp();
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  TestEnvironment::tearDown();
  return result;
}
