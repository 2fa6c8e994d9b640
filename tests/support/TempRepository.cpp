#include "support/TempRepository.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <gtest/gtest.h>

QByteArray runProgram(const QString& program, const QStringList& args, const QString& workingDirectory, int* status,
                      const QByteArray& input) {
  QProcess process;
  if (!workingDirectory.isEmpty()) process.setWorkingDirectory(workingDirectory);
  process.start(program, args);
  if (!input.isEmpty()) process.write(input);
  process.closeWriteChannel();
  process.waitForFinished(120000);
  if (status) *status = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
  QByteArray out = process.readAllStandardOutput();
  if (process.exitCode() != 0 && !status) {
    ADD_FAILURE() << program.toStdString() << " " << args.join(QLatin1Char(' ')).toStdString() << " failed: "
                  << process.readAllStandardError().toStdString();
  }
  return out;
}

TempRepository::TempRepository(bool init, const QString& folderName) {
  path_ = QFileInfo(dir_.path()).canonicalFilePath() + QLatin1Char('/') + folderName;
  QDir().mkpath(path_);
  if (init) git({QStringLiteral("init"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("main")});
}

GitModule TempRepository::module() const { return GitModule{path_, gitDir(), std::nullopt}; }

QString TempRepository::git(const QStringList& args, bool allowFailure, int* status) const {
  int code = 0;
  const QByteArray out = runProgram(QStringLiteral("git"), args, path_, &code);
  if (status) *status = code;
  if (code != 0 && !allowFailure) ADD_FAILURE() << "git " << args.join(QLatin1Char(' ')).toStdString() << " exited " << code;
  return QString::fromUtf8(out);
}

QByteArray TempRepository::gitBytes(const QStringList& args, const QByteArray& input) const {
  int code = 0;
  QByteArray out = runProgram(QStringLiteral("git"), args, path_, &code, input);
  if (code != 0) ADD_FAILURE() << "git " << args.join(QLatin1Char(' ')).toStdString() << " exited " << code;
  return out;
}

void TempRepository::writeFile(const QString& relativePath, const QByteArray& content) const {
  const QString full = path_ + QLatin1Char('/') + relativePath;
  QDir().mkpath(QFileInfo(full).absolutePath());
  QFile file(full);
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
    ADD_FAILURE() << "cannot write " << full.toStdString();
    return;
  }
  file.write(content);
}

void TempRepository::writeExecutable(const QString& relativePath, const QByteArray& content) const {
  writeFile(relativePath, content);
  const QString full = path_ + QLatin1Char('/') + relativePath;
  QFile::setPermissions(full, QFile::permissions(full) | QFileDevice::ExeOwner);
}

QByteArray TempRepository::readFile(const QString& relativePath) const {
  QFile file(path_ + QLatin1Char('/') + relativePath);
  if (!file.open(QIODevice::ReadOnly)) return {};
  return file.readAll();
}

void TempRepository::removeFile(const QString& relativePath) const { QFile::remove(path_ + QLatin1Char('/') + relativePath); }

void TempRepository::stageAll() const { git({QStringLiteral("add"), QStringLiteral("-A")}); }

QString TempRepository::commit(const QString& message) const {
  stageAll();
  git({QStringLiteral("commit"), QStringLiteral("-q"), QStringLiteral("--allow-empty"), QStringLiteral("-m"), message});
  return headSha();
}

QString TempRepository::commitFile(const QString& relativePath, const QByteArray& content, const QString& message) const {
  writeFile(relativePath, content);
  return commit(message);
}

QString TempRepository::headSha() const { return git({QStringLiteral("rev-parse"), QStringLiteral("HEAD")}).trimmed(); }
