#pragma once
// Short readable forms of file lists, so that a failing test shows the whole list.
#include <QString>
#include <QStringList>
#include <ostream>

#include "Models/ChangedFile.h"

inline QString describe(const ChangedFile& file) {
  QString text = (file.staged ? QStringLiteral("staged ") : "unstaged ") + ChangedFile::changeTypeName(file.changeType) + " '" +
                 file.path + QLatin1Char('\'');
  if (file.oldPath) text += " from '" + *file.oldPath + QLatin1Char('\'');
  if (!file.tracked) text += " untracked";
  if (file.isNew) text += " new";
  if (file.isDirectory) text += " directory";
  if (const Submodule* submodule = file.changedSubmodule()) text += " submodule=" + submodule->name;
  return text;
}

inline QStringList describe(const ChangedFileList& files) {
  QStringList lines;
  for (const auto& file : files) lines << describe(*file);
  return lines;
}

inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList& list, std::ostream* os) {
  *os << "{\n";
  for (const QString& line : list) *os << "  " << line.toStdString() << "\n";
  *os << "}";
}
