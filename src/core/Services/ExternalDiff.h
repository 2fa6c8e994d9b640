#pragma once
// A changed file shown in the outside diff tool. The older side (the index for an
// unstaged file, HEAD for a staged one) and a staged newer side are written to files of
// our own, named after the file and the side so that the tool's titles make sense; an
// unstaged file's newer side is the working file itself, so edits in the tool land there.
#include <QString>
#include <optional>

#include "Git/ResultError.h"
#include "Models/ChangedFile.h"
#include "Models/GitModule.h"

class Preferences;

struct ExternalDiffFiles {
  QString local;   // the older side
  QString remote;  // the newer side
  QString localTitle;
  QString remoteTitle;
};

struct ExternalDiff {
  // The folder of this process's side files; it goes when the process ends.
  static QString temporaryRoot();
  // A fresh folder under the root for one comparison. Folders of comparisons more than
  // an hour old are removed first: their tools have read them long ago.
  static QString newFolder();
  // "name (side).ext": the extension stays last so that tools still recognise the type.
  static QString sideFileName(const QString& path, const QString& side);

  // Writes the sides into the folder. A side the file does not have (a new file's older
  // side, a deleted file's newer one) is an empty file. Runs git: off the main thread.
  static GitResult<ExternalDiffFiles> prepareFiles(const GitModule& module, const ChangedFile& file, bool amend,
                                                   const QString& folder);
  // Finds the chosen tool, writes the sides and starts the tool. Gives the text to tell the
  // user when that failed. Runs git: off the main thread.
  static std::optional<QString> run(const GitModule& module, const ChangedFile& file, bool amend,
                                    const Preferences& preferences);
  // A file as one commit changed it: its version at `parent` (none for a root commit)
  // against its version at `sha`, both written to side files.
  static GitResult<ExternalDiffFiles> prepareRevisionFiles(const GitModule& module, const QString& sha,
                                                           const std::optional<QString>& parent, const ChangedFile& file,
                                                           const QString& folder);
  static std::optional<QString> runForRevision(const GitModule& module, const QString& sha, const std::optional<QString>& parent,
                                               const ChangedFile& file, const Preferences& preferences);
};
