#pragma once
class QApplication;

namespace JelvApplication {
// Sets up the log and preferences, opens the main window and runs the event loop.
int run(QApplication& app);
}
