#pragma once
// The menu of a file in a commit's file list: blame and history of the file, the file
// as the commit has it (opened or saved), and the commit's change of it in the outside
// diff tool.
#include <QPoint>

#include "Models/ChangedFile.h"
#include "Models/Revision.h"

class JelvDocument;
class QMenu;

struct RevisionFilesMenu {
  // Filled for `file` of `revision`; owned by the caller.
  static QMenu* make(JelvDocument* repository, const RevisionPtr& revision, const ChangedFilePtr& file);
};
