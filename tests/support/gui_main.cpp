#include <QApplication>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include "support/TestEnvironment.h"

namespace {

// A shortcut that closes its window takes the key release with it: the application would
// go on taking the modifier as held, and the next test's selections as Ctrl-clicks.
class ReleaseHeldModifiers : public ::testing::EmptyTestEventListener {
  void OnTestEnd(const ::testing::TestInfo&) override {
    const Qt::KeyboardModifiers held = QGuiApplication::keyboardModifiers();
    if (held == Qt::NoModifier) return;
    QWidget target;
    target.show();
    for (const auto& [modifier, key] : {std::pair{Qt::ControlModifier, Qt::Key_Control}, std::pair{Qt::ShiftModifier, Qt::Key_Shift},
                                        std::pair{Qt::AltModifier, Qt::Key_Alt}, std::pair{Qt::MetaModifier, Qt::Key_Meta}}) {
      if (held & modifier) QTest::keyRelease(&target, key);
    }
  }
};

}  // namespace

int main(int argc, char** argv) {
  TestEnvironment::setUp();
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  ::testing::InitGoogleTest(&argc, argv);
  ::testing::UnitTest::GetInstance()->listeners().Append(new ReleaseHeldModifiers);
  const int result = RUN_ALL_TESTS();
  TestEnvironment::tearDown();
  return result;
}
