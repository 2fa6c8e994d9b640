#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "Services/MergeTool.h"
#include "Services/Preferences.h"

namespace {
MergeTool tool(MergeTool::Kind kind) {
  MergeTool result;
  result.kind = kind;
  return result;
}

QString writeExecutable(const QDir& folder, const QString& name) {
  const QString path = folder.filePath(name);
  QFile file(path);
  file.open(QIODevice::WriteOnly);
  file.write("#!/bin/sh\nexit 0\n");
  file.close();
  file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  return path;
}

// Restores the diff tool keys a test changes.
struct DiffToolPreferences {
  ~DiffToolPreferences() {
    Preferences& preferences = Preferences::shared();
    preferences.remove("externalDiffTool");
    preferences.remove("externalDiffToolCustomPath");
    preferences.remove("externalDiffToolCustomArguments");
  }
};
}  // namespace

// Each tool gets the older file before the newer one, with the titles where it shows
// them; the tools that need a base in a fixed place get "/dev/null" or an empty argument.
TEST(MergeTool, ArgumentOrderOfTheTools) {
  const QString l = "/t/a (index).txt";
  const QString r = "/w/a.txt";
  using K = MergeTool::Kind;
  EXPECT_EQ(tool(K::kdiff3).diffArguments(l, r, "A", "B"), (QStringList{l, r}));
  EXPECT_EQ(tool(K::vsCode).diffArguments(l, r, "A", "B"), (QStringList{"--diff", l, r}));
  EXPECT_EQ(tool(K::bc).diffArguments(l, r, "A", "B"), (QStringList{"-ro1", "-title1=A", "-title2=B", l, r}));
  EXPECT_EQ(tool(K::diffMerge).diffArguments(l, r, "A", "B"), (QStringList{"-nosplash", "-t1=A", "-t2=B", l, r}));
  EXPECT_EQ(tool(K::meld).diffArguments(l, r, "A", "B"), (QStringList{"--label=A", "--label=B", l, r}));

  const QString b = "/t/base";
  const QString o = "/w/out";
  EXPECT_EQ(tool(K::kdiff3).mergeArguments(l, r, b, o), (QStringList{b, l, r, "-o", o}));
  EXPECT_EQ(tool(K::kdiff3).mergeArguments(l, r, std::nullopt, o), (QStringList{"/dev/null", l, r, "-o", o}));
  EXPECT_EQ(tool(K::p4Merge).mergeArguments(l, r, b, o), (QStringList{b, l, r, o}));
  EXPECT_EQ(tool(K::p4Merge).mergeArguments(l, r, std::nullopt, o), (QStringList{l, r, o}));
  EXPECT_EQ(tool(K::bc).mergeArguments(l, r, std::nullopt, o),
            (QStringList{"-ro1", "-title1=Local", "-title2=Remote", l, r, QString(), o}));
  EXPECT_EQ(tool(K::diffMerge).mergeArguments(l, r, std::nullopt, o).at(7), "/dev/null");
  EXPECT_EQ(tool(K::meld).mergeArguments(l, r, b, o), (QStringList{"--output=" + o, l, b, r}));
  EXPECT_EQ(tool(K::vsCode).mergeArguments(l, r, b, o), (QStringList{o}));
}

// The placeholders are replaced one after the other: a path brought in by an earlier
// one is seen by the later ones, a path brought in by a later one is not looked at again.
TEST(MergeTool, CustomPlaceholdersAreReplacedInOrder) {
  MergeTool custom = tool(MergeTool::Kind::custom);
  custom.arguments = {"--left=$LOCAL", "$REMOTE", "$BASE$MERGED", "$UNKNOWN", "plain"};
  EXPECT_EQ(custom.mergeArguments("/l", "/r", "/b", "/m"), (QStringList{"--left=/l", "/r", "/b/m", "$UNKNOWN", "plain"}));
  EXPECT_EQ(MergeTool::replacePlaceholders({"$LOCAL"}, "/x/$REMOTE", "/r", "", ""), (QStringList{"/x//r"}));
  EXPECT_EQ(MergeTool::replacePlaceholders({"$MERGED"}, "", "", "", "/m/$LOCAL"), (QStringList{"/m/$LOCAL"}));
  // A diff has no base and no result: those stand for nothing.
  custom.arguments = {"$LOCAL", "$REMOTE", "$BASE"};
  EXPECT_EQ(custom.diffArguments("/l", "/r", "A", "B"), (QStringList{"/l", "/r", ""}));
}

TEST(MergeTool, CustomArgumentsSplitLikeAShell) {
  EXPECT_EQ(MergeTool::splitArguments("  $LOCAL   $REMOTE "), (QStringList{"$LOCAL", "$REMOTE"}));
  EXPECT_EQ(MergeTool::splitArguments("--title \"Old side\" '$LOCAL' a\\ b \"\""),
            (QStringList{"--title", "Old side", "$LOCAL", "a b", ""}));
  EXPECT_EQ(MergeTool::splitArguments("x=\"1 2\"'3'"), (QStringList{"x=1 23"}));
  EXPECT_TRUE(MergeTool::splitArguments("   ").isEmpty());
}

// The chosen tool is found by its program on PATH; a missing program, a missing custom
// program and an unset custom program each give a text for the user, never a launch.
TEST(MergeTool, ActiveToolIsLookedUpOrExplained) {
  DiffToolPreferences restore;
  QTemporaryDir bin;
  const QDir folder(bin.path());
  Preferences& preferences = Preferences::shared();

  preferences.setExternalDiffTool(int(MergeTool::Kind::kdiff3));
  auto missing = MergeTool::activeTool(false, preferences, {folder.path()});
  ASSERT_EQ(missing.index(), 1u);
  EXPECT_EQ(std::get<QString>(missing), "Cannot find 'kdiff3' on PATH");
  const QString kdiff3 = writeExecutable(folder, "kdiff3");
  auto found = MergeTool::activeTool(false, preferences, {folder.path()});
  ASSERT_EQ(found.index(), 0u);
  EXPECT_EQ(std::get<MergeTool::Launch>(found).launchPath, kdiff3);
  EXPECT_EQ(std::get<MergeTool::Launch>(found).tool.kind, MergeTool::Kind::kdiff3);
  EXPECT_EQ(MergeTool::installedKinds({folder.path()}), std::vector<MergeTool::Kind>{MergeTool::Kind::kdiff3});

  preferences.setExternalDiffTool(int(MergeTool::Kind::custom));
  auto unset = MergeTool::activeTool(false, preferences, {folder.path()});
  ASSERT_EQ(unset.index(), 1u);
  EXPECT_TRUE(std::get<QString>(unset).startsWith("No custom diff tool is set"));

  preferences.setExternalDiffToolCustomPath(folder.filePath("gone"));
  auto gone = MergeTool::activeTool(false, preferences, {folder.path()});
  ASSERT_EQ(gone.index(), 1u);
  EXPECT_EQ(std::get<QString>(gone), folder.filePath("gone") + " does not exist");

  // A custom program by name is found on PATH too; without arguments both sides are given.
  writeExecutable(folder, "my-diff");
  preferences.setExternalDiffToolCustomPath("my-diff");
  auto custom = MergeTool::activeTool(false, preferences, {folder.path()});
  ASSERT_EQ(custom.index(), 0u);
  const MergeTool::Launch& launch = std::get<MergeTool::Launch>(custom);
  EXPECT_EQ(launch.launchPath, folder.filePath("my-diff"));
  EXPECT_EQ(launch.tool.diffArguments("/l", "/r", "A", "B"), (QStringList{"/l", "/r"}));
  preferences.setExternalDiffToolCustomArguments("-o \"$REMOTE\" $LOCAL");
  custom = MergeTool::activeTool(false, preferences, {folder.path()});
  EXPECT_EQ(std::get<MergeTool::Launch>(custom).tool.diffArguments("/l", "/r", "A", "B"), (QStringList{"-o", "/r", "/l"}));

  preferences.setExternalDiffTool(42);
  EXPECT_EQ(MergeTool::activeTool(false, preferences, {folder.path()}).index(), 1u);
}
