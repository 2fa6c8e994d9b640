#pragma once
// Lines of a file that one commit last changed, as blame tells them.
#include <QDateTime>
#include <QString>
#include <memory>
#include <vector>

struct BlameChunk {
  // One per commit, shared by all of its chunks.
  struct RevisionInfo {
    QString sha;
    QString author;
    QString authorMail;
    QDateTime authorDate;
    QString message;  // the subject
  };

  int lineNumber = 0;  // of the first line, in the file as it is at the blamed revision (1-based)
  int lineCount = 0;
  std::shared_ptr<const RevisionInfo> revisionInfo;
};

using BlameChunkList = std::vector<BlameChunk>;

// What a blame view reads: the file at one revision.
struct BlameArgs {
  QString sha;
  QString filepath;

  bool operator==(const BlameArgs&) const = default;
};
