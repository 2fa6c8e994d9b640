#include "Models/FileContent/DiffSettings.h"

#include "Services/Preferences.h"

DiffSettings DiffSettings::fromPreferences() {
  const Preferences& preferences = Preferences::shared();
  return {preferences.contextSize(), preferences.diffIgnoreWhitespaces(), preferences.diffShowEntireFile()};
}
