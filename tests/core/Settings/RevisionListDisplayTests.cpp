#include <gtest/gtest.h>

#include "Graph/RevisionGraph.h"
#include "Graph/RevisionListDisplay.h"
#include "Models/LocalBranch.h"
#include "support/TempRepository.h"

TEST(RevisionListDisplay, StarringAnOlderFileKeepsItsPinsAndTheOtherKeys) {
  TempRepository repo;
  repo.writeFile(".git/jelv-settings", R"({"pinnedReferences":["refs/heads/old"],"tabWidth":8})");

  const GitModuleSettings saved = RevisionListDisplay::update(repo.module(), [](GitModuleSettings& settings) {
    settings.starredReferences = RevisionListDisplay::withReference(settings.starredReferences, "refs/tags/v1", true);
    // Starring twice keeps one entry.
    settings.starredReferences = RevisionListDisplay::withReference(settings.starredReferences, "refs/tags/v1", true);
  });
  EXPECT_EQ(saved.starredReferences, QStringList({"refs/heads/old", "refs/tags/v1"}));
  EXPECT_EQ(GitModuleSettings::load(repo.module()), saved);
  EXPECT_EQ(saved.tabWidth, 8);

  RevisionListDisplay::update(repo.module(), [](GitModuleSettings& settings) {
    settings.starredReferences = RevisionListDisplay::withReference(settings.starredReferences, "refs/heads/old", false);
  });
  EXPECT_EQ(GitModuleSettings::load(repo.module()).starredReferences, QStringList({"refs/tags/v1"}));
}

TEST(RevisionListDisplay, ReshapingAppliesTheSettingsToTheSharedHistory) {
  // b2 on top of a1; "topic" at a1, "main" at b2.
  const QString a1 = QStringLiteral("a1").leftJustified(40, QLatin1Char('0'));
  const QString b2 = QStringLiteral("b2").leftJustified(40, QLatin1Char('0'));
  auto revisions = std::make_shared<RevisionList>();
  revisions->push_back(Revision::create(b2, a1, {a1}, "b2", "A", "a@x", 2));
  revisions->push_back(Revision::create(a1, a1, {}, "a1", "A", "a@x", 1));
  ReferenceList all;
  all.push_back(std::make_shared<LocalBranch>(b2, "refs/heads/main", "main", "main", QDateTime(), true, std::nullopt));
  all.push_back(std::make_shared<LocalBranch>(a1, "refs/heads/topic", "topic", "topic", QDateTime(), false, std::nullopt));
  RevisionGraphSource source;
  source.revisions = revisions;
  source.references = RepositoryReferences::make(b2, std::nullopt, all, {"refs/heads/main"}, {});

  GitModuleSettings settings;
  settings.filterReferences = {"refs/heads/topic"};
  settings.starredReferences = {"refs/heads/main"};
  settings.hideTags = true;
  const auto shaped = RevisionListDisplay::reshaped(source, settings, true);
  EXPECT_EQ(shaped->revisions, source.revisions);
  EXPECT_EQ(shaped->references.filtered, QSet<QString>({"refs/heads/topic"}));
  EXPECT_EQ(shaped->references.starred, QSet<QString>({"refs/heads/main"}));
  EXPECT_TRUE(shaped->options.hideTags);
  EXPECT_TRUE(shaped->options.showFirstParent);
  EXPECT_FALSE(shaped->options.hideRemoteBranches);

  RevisionGraph graph;
  graph.update(shaped);
  ASSERT_EQ(graph.count(), 1);
  EXPECT_EQ(graph.revision(0)->message(), "a1");
}
