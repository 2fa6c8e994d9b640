#pragma once
#include <QString>

// The numbers of one "@@ -a,b +c,d @@ context" line.
struct ChunkHeader {
  struct FileRange {
    qint64 location = 0;
    qint64 length = 0;
    bool operator==(const FileRange&) const = default;
  };

  FileRange fromFileRange;
  FileRange toFileRange;
  QString contextString;

  bool operator==(const ChunkHeader&) const = default;
};
