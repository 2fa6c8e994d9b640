#pragma once
#include <QString>

// Every test process runs with HOME and the XDG folders in a fresh temporary folder, a
// preferences file of its own, and a git identity, so nothing of the user's leaks in.
namespace TestEnvironment {
void setUp();      // call before the Qt application object exists
QString root();    // the temporary folder
void tearDown();
}  // namespace TestEnvironment
