#pragma once
#include <QString>

// Every test process runs with HOME and the XDG folders in a fresh temporary folder, a
// preferences file of its own, and a git identity, so nothing of the user's leaks in.
namespace TestEnvironment {
void setUp();      // call before the Qt application object exists
QString root();    // the temporary folder
// Points the preferences back at the process's own file; a test that gave them a file in
// a folder of its own calls it before that folder goes, or the next write brings it back.
void usePreferencesFile();
void tearDown();
}  // namespace TestEnvironment
