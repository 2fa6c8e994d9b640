#pragma once
// Helpers of the reference tests: captured log lines, fixed commit dates, readable references.
#include <QByteArray>
#include <ostream>

#include "Models/Reference.h"
#include "support/LogCapture.h"
#include "support/TempRepository.h"

inline QDateTime utc(qint64 seconds) { return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC); }

// A reference equals another of the same class and fields; on failure show the common ones.
inline void PrintTo(const Reference& ref, std::ostream* out) {
  *out << int(ref.kind()) << ' ' << ref.fullReference.toStdString() << " '" << ref.name.toStdString() << "' '"
       << ref.fullName.toStdString() << "' " << ref.sha.toStdString() << ' ' << ref.committerDate.toSecsSinceEpoch();
}

// Sets author and committer dates for the git commands run while it lives.
class FixedDates {
 public:
  FixedDates(const QByteArray& author, const QByteArray& committer) {
    qputenv("GIT_AUTHOR_DATE", author);
    qputenv("GIT_COMMITTER_DATE", committer);
  }
  ~FixedDates() {
    qunsetenv("GIT_AUTHOR_DATE");
    qunsetenv("GIT_COMMITTER_DATE");
  }
};

// Commits a file with this author and committer date ("1500000000 +0000").
inline QString commitAt(const QByteArray& date, const TempRepository& repo, const QString& path, const QByteArray& content,
                        const QString& message) {
  FixedDates dates(date, date);
  return repo.commitFile(path, content, message);
}
