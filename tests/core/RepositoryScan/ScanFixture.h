#pragma once
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "Models/AppSettings.h"
#include "support/TempRepository.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

// A folder tree on disk in which repositories are made with the system git.
class ScanTest : public ::testing::Test {
 protected:
  void SetUp() override {
    root = QFileInfo(tree.path()).canonicalFilePath() + "/src";
    QDir().mkpath(root);
    settings = std::make_unique<AppSettings>(dbDir.path() + "/db.sqlite3");
    settings->initializeDatabase();
  }

  QString at(const QString& relative) const { return root + QLatin1Char('/') + relative; }

  // git init (and one commit) in root/relative.
  QString makeRepository(const QString& relative) const {
    const QString path = at(relative);
    QDir().mkpath(path);
    runProgram("git", {"init", "-q", "-b", "main"}, path);
    runProgram("git", {"commit", "-q", "--allow-empty", "-m", "init"}, path);
    return path;
  }
  void makeFolder(const QString& relative) const { QDir().mkpath(at(relative)); }
  void makeFile(const QString& relative) const {
    QFile file(at(relative));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("x");
  }
  void makeLink(const QString& target, const QString& relativeLink) const {
    ASSERT_TRUE(QFile::link(target, at(relativeLink)));
  }
  QStringList relativeNames(const QStringList& paths) const {
    QStringList names;
    for (const QString& path : paths) names << QDir(root).relativeFilePath(path);
    return names;
  }

  QTemporaryDir tree;
  QTemporaryDir dbDir;
  QString root;
  std::unique_ptr<AppSettings> settings;
};
