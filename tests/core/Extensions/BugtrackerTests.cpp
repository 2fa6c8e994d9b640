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

const QStringList gitHubRemote{"git@github.com:owner/project.git"};

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
  EXPECT_EQ(ruleNames(rules), (QStringList{"Jira=shared", "Hash=shared", "Spaced=shared"}));
  EXPECT_TRUE(log.messages().contains("skip section 'x'"));
  EXPECT_TRUE(log.messages().contains("Unknown section entry: 'colour'"));
  EXPECT_TRUE(log.messages().contains("Cannot parse section in '[not a header'"));
  EXPECT_EQ(rules[0]->regexString, "PROJ-(\\d+)");
}

TEST(Bugtracker, LinksCarryTheGroupsIntoTheUrl) {
  const auto rules = GetBugtrackerDefinitions::parseIssues(QStringLiteral(
      "[issuetracker \"Multi\"]\n regex = \"(PRJ1|PRJ2)-(\\d+)\"\n url = \"https://jira.invalid/browse/$1-$2\"\n"
      "[issuetracker \"GitHub\"]\n regex = \"#(\\d+)\"\n url = \"https://github.com/o/r/issues/$1\"\n"),
      BugtrackerLinkDefinition::Level::local);
  ASSERT_EQ(rules.size(), 2u);
  const BugtrackerCollection collection{rules};
  const QString text = "PRJ1-28 Fix “docs” (PRJ2-45, #12337)";
  const auto links = collection.links(text);
  ASSERT_EQ(links.size(), 3u);
  EXPECT_EQ(links[0], (BugtrackerLink{0, 7, "https://jira.invalid/browse/PRJ1-28"}));
  EXPECT_EQ(links[1].url, "https://jira.invalid/browse/PRJ2-45");
  EXPECT_EQ(text.mid(links[1].start, links[1].length), "PRJ2-45");
  EXPECT_EQ(links[2].url, "https://github.com/o/r/issues/12337");
  EXPECT_EQ(text.mid(links[2].start, links[2].length), "#12337");

  // "$1" must not eat the start of "$12".
  QString many = "(a)(b)(c)(d)(e)(f)(g)(h)(i)(j)(k)(l)";
  auto twelve = BugtrackerLinkDefinition::make("t", BugtrackerLinkDefinition::Level::local, many, "$12-$1");
  ASSERT_TRUE(twelve);
  EXPECT_EQ(BugtrackerCollection{{twelve}}.links("abcdefghijkl")[0].url, "l-a");
}

TEST(Bugtracker, FilesOfTheRepositoryAndTheSystemRule) {
  TempRepository repository;
  const GitModule module = repository.module();

  // No files: a GitHub remote gets the system rule, another remote nothing.
  auto collection = GetBugtrackerDefinitions::execute(module, true, gitHubRemote);
  ASSERT_EQ(ruleNames(collection.bugtrackers), QStringList{"Global GitHub rule=system"});
  EXPECT_EQ(collection.links("Fix (#12337)")[0].url, "https://github.com/owner/project/issues/12337");
  EXPECT_TRUE(GetBugtrackerDefinitions::execute(module, true, {"https://git.example.org/a/b.git"}).bugtrackers.empty());

  repository.writeFile(".issuetracker", "[issuetracker \"Team\"]\n regex = \"T-(\\d+)\"\n url = \"https://t/$1\"\n");
  repository.writeFile(".git/issuetracker", "[issuetracker \"Mine\"]\n regex = \"M-(\\d+)\"\n url = \"https://m/$1\"\n");
  // Rules of the files come shared first, and the system rule is not added.
  collection = GetBugtrackerDefinitions::execute(module, true, gitHubRemote);
  EXPECT_EQ(ruleNames(collection.bugtrackers), (QStringList{"Team=shared", "Mine=local"}));

  // The setting off: nothing at all.
  EXPECT_TRUE(GetBugtrackerDefinitions::execute(module, false, gitHubRemote).bugtrackers.empty());
}
