#include <QDateTime>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "Git/Commands/Repository/GetReferencesGitCommand.h"
#include "Models/AppSettings.h"
#include "Models/RepositoryReferences.h"
#include "QuickLaunch/DefaultCommandProvider.h"
#include "QuickLaunch/ReferenceCommandProvider.h"
#include "QuickLaunch/RepositoryFileCommandProvider.h"
#include "support/TempRepository.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace {

// The rows as text: "# Header" for a header, "title" for a row.
QStringList rows(const CommandProvider& provider) {
  QStringList out;
  for (const CommandProviderItem& item : provider.items()) {
    out << (CommandProviderItems::isHeader(item) ? QStringLiteral("# ") : QString()) + CommandProviderItems::title(item);
  }
  return out;
}

class DefaultCommandProviderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    registry = std::make_unique<AppSettings>(dir.path() + QStringLiteral("/db.sqlite3"));
    registry->setClock([this] { return clock; });
    registry->initializeDatabase();
    ASSERT_TRUE(registry->isConnected());
    // Six opened a minute apart ("six" last); a scan then finds two more, never opened.
    QStringList paths;
    for (const char* name : {"one", "two", "three", "four", "five", "six", "jelv-never", "never-b"}) paths << dir.path() + QLatin1Char('/') + QString::fromUtf8(name);
    for (const QString& path : paths.mid(0, 6)) {
      ASSERT_TRUE(registry->addRepository(path));
      clock = clock.addSecs(60);
    }
    registry->replaceAllRepositories(paths, dir.path());
  }
  DefaultCommandProvider provider() {
    return DefaultCommandProvider(registry->getRecentRepositories(),
                                  {{"createBranch", "New Branch...", "Ctrl+Shift+B", true}, {"fetch", "Fetch...", "Ctrl+Shift+F", true},
                                   {"blame", "Blame...", "", false}},
                                  {{"custom:0", "Open in Terminal", "Global", true}});
  }

  QTemporaryDir dir;
  std::unique_ptr<AppSettings> registry;
  QDateTime clock = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);
};

}  // namespace

TEST_F(DefaultCommandProviderTest, WithoutTextOffersTheRecentRepositoriesAndEveryCommand) {
  DefaultCommandProvider commands = provider();
  commands.refresh({});
  EXPECT_EQ(rows(commands), (QStringList{"# Recent Repositories", "six", "five", "four", "three", "two", "# Commands", "New Branch...",
                                         "Fetch...", "Blame...", "# Custom Commands", "Open in Terminal"}));
}

TEST_F(DefaultCommandProviderTest, TextRanksEachSectionAndLeavesOutEmptyOnes) {
  struct Row {
    const char* text;
    QStringList rows;
  };
  const Row table[] = {
      // Never-opened repositories are found by name; the registry's order breaks ties.
      {"ne", {"# Repositories", "never-b", "jelv-never", "one", "# Commands", "New Branch...", "# Custom Commands", "Open in Terminal"}},
      {"f", {"# Repositories", "five", "four", "# Commands", "Fetch..."}},
      {"term", {"# Custom Commands", "Open in Terminal"}},
      {"BRANCH", {}},  // an upper-case letter matches only itself
      {"zzz", {}},
  };
  for (const Row& row : table) {
    DefaultCommandProvider commands = provider();
    commands.refresh(QString::fromUtf8(row.text));
    EXPECT_EQ(rows(commands), row.rows) << row.text;
  }
}

// Files come from git's index: untracked and ignored files are no candidates, names keep
// their blanks and letters, and a conflicted file is one row.
TEST(RepositoryFileCommandProvider, ListsTheTrackedFilesUnderOneHeader) {
  TempRepository repo;
  repo.commitFile(QStringLiteral(".gitignore"), "*.o\n", QStringLiteral("ignore"));
  repo.writeFile(QStringLiteral("src/main.cpp"), "int main() {}\n");
  repo.writeFile(QStringLiteral("src/domain.cpp"), "\n");
  repo.writeFile(QStringLiteral("docs/read me ö.md"), "a\n");
  repo.writeFile(QStringLiteral("conflict.txt"), "base\n");
  repo.commit(QStringLiteral("files"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("-b"), QStringLiteral("other")});
  repo.commitFile(QStringLiteral("conflict.txt"), "other\n", QStringLiteral("other"));
  repo.git({QStringLiteral("checkout"), QStringLiteral("-q"), QStringLiteral("main")});
  repo.commitFile(QStringLiteral("conflict.txt"), "main\n", QStringLiteral("main"));
  repo.git({QStringLiteral("merge"), QStringLiteral("other")}, true);
  repo.writeFile(QStringLiteral("untracked.txt"), "u\n");
  repo.writeFile(QStringLiteral("src/main.o"), "ignored\n");

  const auto files = RepositoryFileCommandProvider::load(repo.module());
  ASSERT_TRUE(files.isSuccess()) << describe(files.error()).toStdString();
  RepositoryFileCommandProvider provider(files.value(), repo.module());
  provider.refresh({});
  EXPECT_EQ(rows(provider), (QStringList{"# Repository Files", ".gitignore", "conflict.txt", "read me ö.md", "domain.cpp", "main.cpp"}));

  provider.refresh(QStringLiteral("main"));
  EXPECT_EQ(rows(provider), (QStringList{"# Repository Files", "main.cpp", "domain.cpp"}));
  EXPECT_EQ(CommandProviderItems::secondaryText(provider.items()[1]), QStringLiteral("src"));
  provider.refresh(QStringLiteral("doc ö"));
  EXPECT_EQ(rows(provider), (QStringList{"# Repository Files", "read me ö.md"}));
  provider.refresh(QStringLiteral("untracked"));
  EXPECT_TRUE(provider.items().empty());

  TempRepository notARepository(false);
  EXPECT_TRUE(RepositoryFileCommandProvider::load(notARepository.module()).isFailure());
}

TEST(ReferenceCommandProvider, ChoosesTheKindsAnArgumentTakesAndRanksThem) {
  TempRepository upstream(true, QStringLiteral("upstream"));
  upstream.commitFile(QStringLiteral("a.txt"), "a\n", QStringLiteral("first"));
  upstream.git({QStringLiteral("branch"), QStringLiteral("feature/login")});
  TempRepository clone(false, QStringLiteral("clone"));
  clone.git({QStringLiteral("clone"), QStringLiteral("-q"), upstream.path(), QStringLiteral(".")});
  clone.git({QStringLiteral("branch"), QStringLiteral("fix-layout")});
  clone.git({QStringLiteral("tag"), QStringLiteral("v1.0")});
  const auto all = GetReferencesGitCommand::execute(clone.module(), Subdomain::all());
  ASSERT_TRUE(all.isSuccess());
  const RepositoryReferences references = RepositoryReferences::make(std::nullopt, std::nullopt, all.value());

  struct Row {
    ReferenceCommandProvider::Kinds kinds;
    QStringList titles;
  };
  using Kinds = ReferenceCommandProvider::Kinds;
  const Row table[] = {
      {Kinds::all, {"fix-layout", "main", "origin/feature/login", "origin/main", "v1.0"}},
      {Kinds::branches, {"fix-layout", "main", "origin/feature/login", "origin/main"}},
      {Kinds::localBranches, {"fix-layout", "main"}},
      {Kinds::remoteBranches, {"origin/feature/login", "origin/main"}},
      {Kinds::tags, {"v1.0"}},
  };
  for (const Row& row : table) {
    QStringList titles;
    for (const ReferencePtr& reference : ReferenceCommandProvider::references(references, row.kinds)) titles << CommandProviderItems::title(reference);
    EXPECT_EQ(titles, row.titles) << int(row.kinds);
  }

  ReferenceCommandProvider provider(ReferenceCommandProvider::references(references, Kinds::branches), QStringLiteral("Branches"));
  provider.refresh(QStringLiteral("fl"));
  EXPECT_EQ(rows(provider), (QStringList{"# Branches", "origin/feature/login", "fix-layout"}));
  provider.refresh(QStringLiteral("v1"));
  EXPECT_TRUE(provider.items().empty());
}
