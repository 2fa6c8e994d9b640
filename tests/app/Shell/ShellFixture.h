#pragma once
#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <memory>

#include "Models/AppSettings.h"
#include "Services/Preferences.h"
#include "UI/AppDelegate.h"
#include "UI/JelvDocumentController.h"
#include "UI/JelvMainWindow.h"
#include "support/TempRepository.h"
#include "support/TestEnvironment.h"

// A fresh preferences file and registry per test, and waits for the shell's opens.
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
    TestEnvironment::usePreferencesFile();
  }

  Preferences& preferences() { return Preferences::shared(); }
  AppSettings& registry() { return *registry_; }
  QString folder(const QString& name) {
    QDir(dir_.path()).mkpath(name);
    return dir_.filePath(name);
  }

  // Starts the application as main() does, with these arguments.
  std::unique_ptr<AppDelegate> launch(const QStringList& arguments = {}, AppSettings* settings = nullptr) {
    auto delegate = std::make_unique<AppDelegate>(settings ? *settings : registry(), preferences());
    delegate->applicationWillFinishLaunching();
    delegate->applicationDidFinishLaunching(arguments);
    return delegate;
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

  // The two repositories most tests open, made on first use.
  TempRepository& alpha() { return made(alpha_, QStringLiteral("alpha")); }
  TempRepository& beta() { return made(beta_, QStringLiteral("beta")); }
  static TempRepository& made(std::unique_ptr<TempRepository>& slot, const QString& name) {
    if (!slot) slot = std::make_unique<TempRepository>(true, name);
    return *slot;
  }

  QTemporaryDir dir_;
  std::unique_ptr<AppSettings> registry_;
  std::unique_ptr<TempRepository> alpha_, beta_;
};
