#pragma once
// A fresh preferences file and registry per test, and waits for the shell's opens.
#include <QDir>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <memory>

#include "Models/AppSettings.h"
#include "Services/Preferences.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"

class ShellTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Preferences::useStoreFile(dir_.filePath(QStringLiteral("prefs.ini")));
    registry_ = std::make_unique<AppSettings>(dir_.filePath(QStringLiteral("db.sqlite3")));
    registry_->initializeDatabase();
  }
  void TearDown() override {
    for (QWidget* widget : QApplication::topLevelWidgets()) widget->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }

  Preferences& preferences() { return Preferences::shared(); }
  AppSettings& registry() { return *registry_; }
  QString folder(const QString& name) {
    QDir(dir_.path()).mkpath(name);
    return dir_.filePath(name);
  }

  // Waits until no open is waiting for its folder check.
  static bool settle(JelvDocumentController& documents) {
    return QTest::qWaitFor([&] { return documents.pendingOpens() == 0; }, 20000);
  }

  // Opens the folders as tabs and waits for them; the window they opened in, or null
  // when the opens did not end in time.
  static JelvMainWindow* openAll(JelvDocumentController& documents, const QStringList& paths) {
    for (const QString& path : paths) documents.openRepository(path);
    if (!settle(documents) || documents.windows().isEmpty()) return nullptr;
    return documents.windows().first();
  }

  QTemporaryDir dir_;
  std::unique_ptr<AppSettings> registry_;
};
