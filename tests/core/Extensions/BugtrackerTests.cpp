#include <gtest/gtest.h>

#include "Models/Bugtracker/GetBugtrackerDefinitions.h"
#include "support/LogCapture.h"
#include "support/TempRepository.h"

namespace {

QStringList ruleNames(const std::vector<BugtrackerLinkDefinitionPtr>& rules) {
  QStringList names;
  for (const auto& rule : rules) names << rule->name + QLatin1Char('=') + BugtrackerLinkDefinition::word(rule->level);
  return names;
}

const QStringList gitHubRemote{QStringLiteral("git@github.com:owner/project.git")};

}  // namespace

TEST(Bugtracker, ParsesSectionsCommentsAndSkipsOtherSections) {
  LogCapture log;
  const auto rules = GetBugtrackerDefinitions::parseIssues(QStringLiteral(R"rules(
# a comment
[core "x"]
    regex = "(\d+)"
    url = "https://core.invalid/$1"
[issuetracker "Jira"]
    regex = "PROJ-(\d+)"
    url = "https://jira.invalid/browse/PROJ-$1"
    colour = "red"
[issuetracker "Hash"]
    regex = "GH#(\d+)"
    url = "https://gh.invalid/issues/$1"
[issuetracker "No url"]
    regex = "X-(\d+)"
[issuetracker "Broken"]
    regex = "("
    url = "https://broken.invalid"
[not a header
[issuetracker "Spaced"]
	regex="S(\d+)"
	url="https://s.invalid/$1"
)rules"),
                                                           BugtrackerLinkDefinition::Level::shared);
  // A '#' inside the quotes keeps the rule; the invalid expression and the half rule drop out.
  EXPECT_EQ(ruleNames(rules), (QStringList{QStringLiteral("Jira=shared"), QStringLiteral("Hash=shared"),
                                           QStringLiteral("Spaced=shared")}));
  EXPECT_TRUE(log.messages().contains(QStringLiteral("skip section 'x'")));
  EXPECT_TRUE(log.messages().contains(QStringLiteral("Unknown section entry: 'colour'")));
  EXPECT_TRUE(log.messages().contains(QStringLiteral("Cannot parse section in '[not a header'")));
  EXPECT_EQ(rules[0]->regexString, QStringLiteral("PROJ-(\\d+)"));
}

TEST(Bugtracker, LinksCarryTheGroupsIntoTheUrl) {
  const auto rules = GetBugtrackerDefinitions::parseIssues(QStringLiteral(
      "[issuetracker \"Multi\"]\n regex = \"(PRJ1|PRJ2)-(\\d+)\"\n url = \"https://jira.invalid/browse/$1-$2\"\n"
      "[issuetracker \"GitHub\"]\n regex = \"#(\\d+)\"\n url = \"https://github.com/o/r/issues/$1\"\n"),
      BugtrackerLinkDefinition::Level::local);
  ASSERT_EQ(rules.size(), 2u);
  const BugtrackerCollection collection{rules};
  const QString text = QStringLiteral("PRJ1-28 Fix “docs” (PRJ2-45, #12337)");
  const auto links = collection.links(text);
  ASSERT_EQ(links.size(), 3u);
  EXPECT_EQ(links[0], (BugtrackerLink{0, 7, QStringLiteral("https://jira.invalid/browse/PRJ1-28")}));
  EXPECT_EQ(links[1].url, QStringLiteral("https://jira.invalid/browse/PRJ2-45"));
  EXPECT_EQ(text.mid(links[1].start, links[1].length), QStringLiteral("PRJ2-45"));
  EXPECT_EQ(links[2].url, QStringLiteral("https://github.com/o/r/issues/12337"));
  EXPECT_EQ(text.mid(links[2].start, links[2].length), QStringLiteral("#12337"));

  // "$1" must not eat the start of "$12".
  QString many = QStringLiteral("(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)(l)");
  auto twelve = BugtrackerLinkDefinition::make(QStringLiteral("t"), BugtrackerLinkDefinition::Level::local, many,
                                               QStringLiteral("$12-$1"));
  ASSERT_TRUE(twelve);
  EXPECT_EQ(BugtrackerCollection{{twelve}}.links(QStringLiteral("abcdefghijkl"))[0].url, QStringLiteral("l-a"));
}

TEST(Bugtracker, FilesOfTheRepositoryAndTheSystemRule) {
  TempRepository repository;
  const GitModule module = repository.module();

  // No files: a GitHub remote gets the system rule, another remote nothing.
  auto collection = GetBugtrackerDefinitions::execute(module, true, gitHubRemote);
  ASSERT_EQ(ruleNames(collection.bugtrackers), QStringList{QStringLiteral("Global GitHub rule=system")});
  EXPECT_EQ(collection.links(QStringLiteral("Fix (#12337)"))[0].url, QStringLiteral("https://github.com/owner/project/issues/12337"));
  EXPECT_TRUE(GetBugtrackerDefinitions::execute(module, true, {QStringLiteral("https://git.example.org/a/b.git")}).bugtrackers.empty());

  repository.writeFile(QStringLiteral(".issuetracker"), "[issuetracker \"Team\"]\n regex = \"T-(\\d+)\"\n url = \"https://t/$1\"\n");
  repository.writeFile(QStringLiteral(".git/issuetracker"), "[issuetracker \"Mine\"]\n regex = \"M-(\\d+)\"\n url = \"https://m/$1\"\n");
  // Rules of the files come shared first, and the system rule is not added.
  collection = GetBugtrackerDefinitions::execute(module, true, gitHubRemote);
  EXPECT_EQ(ruleNames(collection.bugtrackers), (QStringList{QStringLiteral("Team=shared"), QStringLiteral("Mine=local")}));

  // The setting off: nothing at all.
  EXPECT_TRUE(GetBugtrackerDefinitions::execute(module, false, gitHubRemote).bugtrackers.empty());
}
