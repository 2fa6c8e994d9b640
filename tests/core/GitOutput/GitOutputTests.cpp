#include <gtest/gtest.h>

#include "Models/GitOutput.h"

namespace {
QString spanText(const GitOutput& out, const GitOutput::Span& span) { return out.text.mid(span.start, span.length); }

std::vector<QString> textsOf(const GitOutput& out, GitOutput::Style style) {
  std::vector<QString> texts;
  for (const auto& span : out.spans) {
    if (span.style == style) texts.push_back(spanText(out, span));
  }
  return texts;
}
}  // namespace

TEST(GitOutput, StylesARealPushTranscript) {
  const QString push = QStringLiteral(
      "Counting objects: 100% (5/5), done.\n"
      "Writing objects: 100% (3/3), 290 bytes | 290.00 KiB/s, done.\n"
      "remote: Create a pull request for 'topic' on the server:\n"
      "remote:      https://example.com/team/repo/pull/new/topic\n"
      "To example.com:team/repo.git\n"
      " * [new branch]      topic -> topic\n"
      " ! [rejected]        main -> main (fetch first)\n"
      "error: failed to push some refs to 'example.com:team/repo.git'\n"
      "hint: Updates were rejected because the remote contains work that you do\n");
  const GitOutput out = GitOutput::style(push);
  EXPECT_TRUE(out.text.contains("topic → topic"));
  EXPECT_FALSE(out.text.contains("->"));
  EXPECT_EQ(textsOf(out, GitOutput::Style::dimmed),
            (std::vector<QString>{"Counting objects: 100% (5/5), done.", "Writing objects: 100% (3/3), 290 bytes | 290.00 KiB/s, done."}));
  EXPECT_EQ(textsOf(out, GitOutput::Style::error),
            (std::vector<QString>{"error: failed to push some refs to 'example.com:team/repo.git'", " ! [rejected]        main → main (fetch first)",
                                  " * [new branch]      topic → topic"}));
  EXPECT_EQ(textsOf(out, GitOutput::Style::hint),
            std::vector<QString>{"hint: Updates were rejected because the remote contains work that you do"});
  const auto links = textsOf(out, GitOutput::Style::link);
  ASSERT_EQ(links.size(), 1u);
  EXPECT_EQ(links[0], "https://example.com/team/repo/pull/new/topic");
}

TEST(GitOutput, LinksEndBeforeTrailingPunctuationAndKeepBalancedParentheses) {
  const GitOutput out = GitOutput::style("see www.example.org/a_(b). or FTP://host/x, then.");
  EXPECT_EQ(textsOf(out, GitOutput::Style::link), (std::vector<QString>{"www.example.org/a_(b)", "FTP://host/x"}));
}

TEST(GitOutput, EveryOccurrenceAndMarkerAtTheEndWithoutLineFeed) {
  const GitOutput out = GitOutput::style("fatal: one\nok\nfatal: two");
  EXPECT_EQ(textsOf(out, GitOutput::Style::error), (std::vector<QString>{"fatal: one", "fatal: two"}));
  EXPECT_TRUE(GitOutput::style(QString()).spans.empty());
}
