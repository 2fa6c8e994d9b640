#pragma once
// What Help > About tells: the program's version, the git it runs and the libraries it
// is built on, each with its licence.
#include <QString>
#include <vector>

struct AboutInformation {
  struct Library {
    QString name;
    QString licence;
    bool operator==(const Library&) const = default;
  };

  static QString applicationVersion();
  // The libraries linked into the program, in the order shown.
  static std::vector<Library> libraries();
  // "git version 2.39.5 (/usr/bin/git)" for the instance the preferences choose, or why
  // it cannot be read. Runs git: call it off the main thread.
  static QString gitVersionLine();
};
