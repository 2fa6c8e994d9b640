#pragma once
#include <QDateTime>
#include <QString>
#include <optional>

// Sha, author, date and message of one commit, as the single-revision query reads it.
struct RevisionInfo {
  QString sha;
  QString author;
  QDateTime authorDate;
  QString message;

  // Fields of a record: "%H", "%an", "%at" and "%B", joined by this.
  static QString fieldSeparator() { return QStringLiteral("#!_"); }

  // "sha#!_author#!_1700000000#!_message"; gives nothing (and logs) for a bad record.
  static std::optional<RevisionInfo> parse(const QString& record);

  bool operator==(const RevisionInfo&) const = default;
};
