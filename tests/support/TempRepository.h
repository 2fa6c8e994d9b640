#pragma once
// A real repository in a temporary folder, driven by the system git, for tests.
#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include "Models/GitModule.h"

class TempRepository {
 public:
  // Creates the folder; with init, runs "git init" there (branch "main").
  explicit TempRepository(bool init = true, const QString& folderName = QStringLiteral("repo"));

  QString path() const { return path_; }
  QString gitDir() const { return path_ + QStringLiteral("/.git"); }
  GitModule module() const;

  // Runs the system git in the repository; fails the current test on a non-zero exit
  // unless allowFailure is set.
  QString git(const QStringList& args, bool allowFailure = false, int* status = nullptr) const;
  QByteArray gitBytes(const QStringList& args, const QByteArray& input = {}) const;

  void writeFile(const QString& relativePath, const QByteArray& content) const;
  // Writes the file and makes it executable for its owner (scripts, hooks).
  void writeExecutable(const QString& relativePath, const QByteArray& content) const;
  QByteArray readFile(const QString& relativePath) const;
  void removeFile(const QString& relativePath) const;
  void stageAll() const;
  // Stages everything and commits; gives the new sha.
  QString commit(const QString& message) const;
  // Writes a file, stages it and commits.
  QString commitFile(const QString& relativePath, const QByteArray& content, const QString& message) const;
  QString headSha() const;

 private:
  QTemporaryDir dir_;
  QString path_;
};

// Runs a program to its end; for test set-up only.
QByteArray runProgram(const QString& program, const QStringList& args, const QString& workingDirectory = {},
                      int* status = nullptr, const QByteArray& input = {});
