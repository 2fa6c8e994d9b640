#pragma once
// Parsing for the history reads that hold their output as lines: a file's history and
// the revision search. Records are the seven lines of the commit list's format, each
// optionally followed by "--name-status" lines up to an empty line.
#include <QString>
#include <QStringList>
#include <vector>

#include "Models/ChangedFile.h"
#include "Models/IdentityInterner.h"
#include "Models/Revision.h"

class RevisionParser {
 public:
  // Consumes one seven-line record from `index` and leaves `index` on the line after
  // it. Gives nothing (and logs) for a record it can't read, or when lines run out.
  RevisionPtr parseRevision(const QStringList& lines, qsizetype& index);

  // "M\tpath", "R100\told\tnew": one changed file; nothing (and a log line) with fewer
  // than two fields.
  static ChangedFilePtr readChangedFile(const QString& line);

 private:
  IdentityInterner interner_;  // shared by all revisions this parser makes
};
