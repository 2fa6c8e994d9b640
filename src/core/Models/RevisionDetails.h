#pragma once
#include <QDateTime>
#include <QString>
#include <QStringList>

// The whole of one commit, read on demand: committer and full message too.
class RevisionDetails {
 public:
  QString sha;
  QString author;
  QString authorEmail;
  QDateTime authorDate;
  QString committer;
  QString committerEmail;
  QDateTime committerDate;
  QStringList parents;
  QString message;  // "%B" as it stands, trailing line feed included

  bool operator==(const RevisionDetails&) const = default;
};
