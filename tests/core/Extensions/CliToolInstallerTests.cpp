#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "Services/CliToolInstaller.h"

namespace {

// A tool to link to and a bin folder, with the change run under this process's rights.
class CliToolInstall : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(QDir(dir_.path()).mkpath(QStringLiteral("build ä")));
    QFile tool(toolPath());
    ASSERT_TRUE(tool.open(QIODevice::WriteOnly));
    tool.write("#!/bin/sh\n");
    tool.close();
    tool.setPermissions(tool.permissions() | QFileDevice::ExeOwner);
    ASSERT_TRUE(QDir(dir_.path()).mkpath(QStringLiteral("bin dir")));
  }
  QString toolPath() const { return dir_.filePath(QStringLiteral("build ä/jelv")); }
  QString linkPath() const { return dir_.filePath(QStringLiteral("bin dir/jelv")); }
  QTemporaryDir dir_;
};

}  // namespace

TEST_F(CliToolInstall, InstallsAndRemovesTheLinkAndReplacesAnotherFile) {
  const CliToolInstaller installer(toolPath(), linkPath(), QString());
  EXPECT_EQ(installer.state(), CliToolInstaller::State::notInstalled);

  const auto installed = installer.install();
  EXPECT_TRUE(installed.success);
  EXPECT_EQ(installed.message, QStringLiteral("Cli tool installed successfully."));
  EXPECT_EQ(QFileInfo(linkPath()).symLinkTarget(), toolPath());
  EXPECT_EQ(installer.state(), CliToolInstaller::State::installed);

  const auto removed = installer.uninstall();
  EXPECT_TRUE(removed.success);
  EXPECT_EQ(removed.message, QStringLiteral("Cli tool uninstalled successfully."));
  EXPECT_FALSE(QFileInfo::exists(linkPath()));
  EXPECT_TRUE(QFileInfo::exists(toolPath()));

  QFile other(linkPath());
  ASSERT_TRUE(other.open(QIODevice::WriteOnly));
  other.close();
  EXPECT_EQ(installer.state(), CliToolInstaller::State::otherFile);
  EXPECT_TRUE(installer.install().success);
  EXPECT_EQ(installer.state(), CliToolInstaller::State::installed);
}

TEST_F(CliToolInstall, AFailureTellsWhatWentWrong) {
  const CliToolInstaller noFolder(toolPath(), dir_.filePath(QStringLiteral("missing/jelv")), QString());
  const auto failed = noFolder.install();
  EXPECT_FALSE(failed.success);
  EXPECT_TRUE(failed.message.startsWith(QStringLiteral("Can't install cli tool with elevated rights. Error Dictionary: 'exit status 1: ")))
      << failed.message.toStdString();

  const CliToolInstaller noElevation(toolPath(), linkPath(), QStringLiteral("no-such-elevation-program"));
  const auto refused = noElevation.uninstall();
  EXPECT_EQ(refused.message,
            QStringLiteral("Can't uninstall cli tool with elevated rights. Error Dictionary: 'no-such-elevation-program is not installed'"));
  EXPECT_FALSE(CliToolInstaller(dir_.filePath(QStringLiteral("nothing")), linkPath(), QString()).install().success);
}
