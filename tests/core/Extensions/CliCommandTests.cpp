#include <gtest/gtest.h>

#include "Models/CliCommand.h"

namespace {

struct Row {
  const char* name;
  QStringList params;
  CliCommandType type;
  QString repositoryPath;
  bool verbose = false;
};

const QString home = QStringLiteral("/home/ada/src/my repo");

}  // namespace

// Every row goes through the wire text, as the tool sends it, and back.
TEST(CliCommand, ParsesCommandRepositoryAndVerbose) {
  const std::vector<Row> rows{
      {"no parameters open the working directory", {}, CliOpen{}, home},
      {"open", {"open"}, CliOpen{}, home},
      {"commit behaves as status", {"commit"}, CliStatus{}, home},
      {"status after -C takes the directory", {"-C", "../other", "status"}, CliStatus{}, "/home/ada/src/other"},
      {"-C value is no command word", {"-C", "log"}, CliOpen{}, home + "/log"},
      {"verbose alone is no command word", {"--verbose"}, CliOpen{}, home, true},
      {"log without a file", {"log"}, CliLog{}, home},
      {"log with -- and a path", {"log", "--", "dir with blank/ä.txt"}, CliLog{home + "/dir with blank/ä.txt"}, home},
      {"log -- with nothing after it", {"log", "--"}, CliLog{}, home},
      {"log skips options before the file", {"log", "--verbose", "a.c"}, CliLog{home + "/a.c"}, home, true},
      {"log file is relative to -C", {"-C", "/srv/r", "log", "src/a.c"}, CliLog{"/srv/r/src/a.c"}, "/srv/r"},
      {"an unknown word is a relative path", {"sub dir/ünï"}, CliOpen{}, home + "/sub dir/ünï"},
      {"an absolute path stands for itself", {"/srv/x/../y"}, CliOpen{}, "/srv/y"},
      {"git-dir relative, its .git folder dropped", {"--git-dir=../r/.git", "status"}, CliStatus{}, "/home/ada/src/r"},
      {"git-dir wins over -C and a word", {"-C", "/a", "--git-dir=/b", "/c"}, CliOpen{}, "/b"},
      {"-C wins over a word", {"-C", "/a", "/c"}, CliOpen{}, "/a"},
      {"-C without a value", {"status", "-C"}, CliError{"Option -C needs a directory."}, {}},
      {"git-dir without a value", {"--git-dir="}, CliError{"Option --git-dir= needs a directory."}, {}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const CliCommand command = CliCommand::fromRequest(CliCommand::requestText(home, row.params));
    EXPECT_EQ(command.type, row.type);
    EXPECT_EQ(command.repositoryPath, row.repositoryPath);
    EXPECT_EQ(command.verbose, row.verbose);
    EXPECT_EQ(command.workingDirectory, home);
  }
  const QString noDirectory = QStringLiteral("relative") + JelvCliRequestCommand::workingDirectorySeparator();
  for (const QString& malformed : {QStringLiteral("/tmp status"), noDirectory}) {
    EXPECT_TRUE(std::holds_alternative<CliError>(CliCommand::fromRequest(malformed).type)) << malformed.toStdString();
  }
}

// The application's start reads its arguments as a command only when they are more
// than folders, so that "jelv-app a b" keeps opening two tabs.
TEST(CliCommand, OnlyCommandWordsAndOptionsMakeACommandLine) {
  EXPECT_FALSE(CliCommand::isCommandLine({}));
  EXPECT_FALSE(CliCommand::isCommandLine({"/srv/a", "b c", "jelv://openRepo/x"}));
  EXPECT_TRUE(CliCommand::isCommandLine({"/srv/a", "status"}));
  EXPECT_TRUE(CliCommand::isCommandLine({"-C", "/srv/a"}));
  EXPECT_TRUE(CliCommand::isCommandLine({"log"}));
}
