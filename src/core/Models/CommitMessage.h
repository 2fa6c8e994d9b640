#pragma once
// The two message fields of the commit box and the text git gets from them.
#include <QString>

struct CommitMessage {
  QString subject;
  QString description;

  // The first line is the subject; the blank lines that separate the body are dropped,
  // so that text() of the result gives the same message back.
  static CommitMessage fromText(const QString& text);
  // Subject and description with one empty line between them when there is a description.
  QString text() const;
  bool isEmpty() const { return subject.isEmpty() && description.isEmpty(); }

  bool operator==(const CommitMessage&) const = default;
};
