#include <QCoreApplication>
#include <gtest/gtest.h>

#include "support/TestEnvironment.h"

int main(int argc, char** argv) {
  TestEnvironment::setUp();
  QCoreApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  const int result = RUN_ALL_TESTS();
  TestEnvironment::tearDown();
  return result;
}
