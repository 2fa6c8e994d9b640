#pragma once
// Lines of a file that one commit last changed, as blame tells them.
#include <QDateTime>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

// What a blame view reads: the file at one revision.
struct BlameArgs {
  QString sha;
  QString filepath;

  bool operator==(const BlameArgs&) const = default;
};

struct BlameChunk {
  // One per commit, shared by all of its chunks.
  struct RevisionInfo {
    QString sha;
    QString author;
    QString authorMail;
    QDateTime authorDate;
    QString message;  // the subject
    // The commit before this one and the file's path there; none for the commit that
    // added the file. Blaming the file before a change must follow a rename through it.
    std::optional<BlameArgs> previous;
  };

  int lineNumber = 0;  // of the first line, in the file as it is at the blamed revision (1-based)
  int lineCount = 0;
  std::shared_ptr<const RevisionInfo> revisionInfo;
};

using BlameChunkList = std::vector<BlameChunk>;

