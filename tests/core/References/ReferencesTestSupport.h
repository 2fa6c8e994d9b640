#pragma once
// Helpers of the reference tests: captured log lines and fixed commit dates.
#include <QByteArray>

#include "support/LogCapture.h"

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
