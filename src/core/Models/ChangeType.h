#pragma once
#include <QChar>

// How a file changed; the order is the order of the file lists' sorting.
enum class ChangeType { modified, added, deleted, ignored, renamed, copied, unmerged, typeChanged, unknown };

// The letter of "--name-status" and of the porcelain status ("M", "R100" -> 'R').
inline ChangeType changeTypeFromStatusLetter(QChar letter) {
  switch (letter.unicode()) {
    case u'M': return ChangeType::modified;
    case u'A': return ChangeType::added;
    case u'D': return ChangeType::deleted;
    case u'!': return ChangeType::ignored;
    case u'R': return ChangeType::renamed;
    case u'C': return ChangeType::copied;
    case u'U': return ChangeType::unmerged;
    case u'T': return ChangeType::typeChanged;
    default: return ChangeType::unknown;
  }
}
