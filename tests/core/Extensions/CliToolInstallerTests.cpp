#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "Services/CliToolInstaller.h"

// The change runs under this process's own rights, in folders with a blank and an umlaut.
TEST(CliToolInstall, LinksRemovesReplacesAndTellsWhatWentWrong) {
  QTemporaryDir dir;
  ASSERT_TRUE(QDir(dir.path()).mkpath(QStringLiteral("build ä")) && QDir(dir.path()).mkpath(QStringLiteral("bin dir")));
  const QString tool = dir.filePath(QStringLiteral("build ä/jelv"));
  const QString link = dir.filePath(QStringLiteral("bin dir/jelv"));
  QFile file(tool);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.close();
  file.setPermissions(file.permissions() | QFileDevice::ExeOwner);

  const CliToolInstaller installer(tool, link, QString());
  EXPECT_EQ(installer.state(), CliToolInstaller::State::notInstalled);
  EXPECT_EQ(installer.install().message, QStringLiteral("Cli tool installed successfully."));
  EXPECT_EQ(QFileInfo(link).symLinkTarget(), tool);
  EXPECT_EQ(installer.state(), CliToolInstaller::State::installed);
  EXPECT_EQ(installer.uninstall().message, QStringLiteral("Cli tool uninstalled successfully."));
  EXPECT_FALSE(QFileInfo::exists(link));
  EXPECT_TRUE(QFileInfo::exists(tool));

  // Another program's file there is replaced (the preferences confirm this first).
  QFile other(link);
  ASSERT_TRUE(other.open(QIODevice::WriteOnly));
  other.close();
  EXPECT_EQ(installer.state(), CliToolInstaller::State::otherFile);
  EXPECT_TRUE(installer.install().success);
  EXPECT_EQ(installer.state(), CliToolInstaller::State::installed);

  const auto noFolder = CliToolInstaller(tool, dir.filePath(QStringLiteral("missing/jelv")), QString()).install();
  EXPECT_FALSE(noFolder.success);
  EXPECT_TRUE(noFolder.message.startsWith(QStringLiteral("Can't install cli tool with elevated rights. Error Dictionary: 'exit status 1: ")))
      << noFolder.message.toStdString();
  EXPECT_EQ(CliToolInstaller(tool, link, QStringLiteral("no-such-elevation-program")).uninstall().message,
            QStringLiteral("Can't uninstall cli tool with elevated rights. Error Dictionary: 'no-such-elevation-program is not installed'"));
}
