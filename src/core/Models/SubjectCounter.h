#pragma once
// The character counter beside the subject field, as a pure function of the subject and
// the two limits (preferences commitSubjectLimitLow / commitSubjectLimitHigh).
#include <QString>
#include <optional>

enum class SubjectCounterColor { normal, warning, error };

struct SubjectCounter {
  bool hidden = true;  // nothing to count
  int count = 0;       // user-perceived characters
  SubjectCounterColor color = SubjectCounterColor::normal;
  std::optional<QString> toolTip;

  bool operator==(const SubjectCounter&) const = default;
};

// Characters as the user sees them: a base letter with its combining accent is one.
int subjectCharacterCount(const QString& subject);
SubjectCounter subjectCounter(const QString& subject, int lowLimit, int highLimit);
