#pragma once
// What the system remembers about one repository, kept in "jelv-settings" inside its Git
// directory so that it moves and disappears with the repository. There is no cache:
// every user loads the file, and a writer loads, changes a copy and saves it.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <optional>

#include "Models/GitModule.h"

struct GitModuleSettings {
  static inline const QString fileName = QStringLiteral("jelv-settings");

  QString draftMessage;
  std::optional<QString> signingKey;
  bool signOff = false;
  QStringList starredReferences;  // full names of references pinned in the sidebar
  QStringList filterReferences;   // references the revision list is narrowed to
  int tabWidth = 4;
  bool hideTags = false;
  bool hideRemoteBranches = false;
  bool hideStashes = false;
  bool showBugtrackerLinks = true;
  bool trustSharedCommands = false;

  bool operator==(const GitModuleSettings&) const = default;

  // Never fails: a missing or broken file gives the defaults, a bad key its default.
  static GitModuleSettings load(const GitModule& module);
  static GitModuleSettings decode(const QByteArray& json);
  // Replaces the file; failures reach the log only.
  void save(const GitModule& module) const;
  // One compact JSON object with the keys in a fixed order; no "signingKey" without a key.
  std::optional<QByteArray> encode() const;

  static QString filePath(const GitModule& module) { return module.gitDirectoryPath(fileName); }
};
