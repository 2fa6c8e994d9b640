#include "Models/SubjectCounter.h"

#include <QTextBoundaryFinder>

int subjectCharacterCount(const QString& subject) {
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, subject);
  int count = 0;
  while (finder.toNextBoundary() >= 0) ++count;
  return count;
}

SubjectCounter subjectCounter(const QString& subject, int lowLimit, int highLimit) {
  SubjectCounter counter;
  if (subject.isEmpty()) return counter;
  counter.hidden = false;
  counter.count = subjectCharacterCount(subject);
  if (counter.count <= lowLimit) {
    counter.color = SubjectCounterColor::normal;
  } else if (counter.count <= highLimit) {
    counter.color = SubjectCounterColor::warning;
  } else {
    counter.color = SubjectCounterColor::error;
    counter.toolTip = QStringLiteral("The recommended subject line should be %1 characters or less").arg(highLimit);
  }
  return counter;
}
