#include <QDir>

#include "Models/RepositoryReadme.h"
#include "RegistryFixture.h"

TEST(RepositoryReadme, MarkdownIsPreferredInAnyCaseAndFoldersDoNotCount) {
  QTemporaryDir dir;
  EXPECT_EQ(RepositoryReadme::find(dir.path()), std::nullopt);
  QDir(dir.path()).mkdir("README.md");  // a folder of that name
  writeBytes(dir.path() + "/README", "plain");
  EXPECT_EQ(RepositoryReadme::find(dir.path()), std::optional<QString>(dir.path() + "/README"));
  writeBytes(dir.path() + "/ReadMe.MD", "# Title");
  EXPECT_EQ(RepositoryReadme::find(dir.path()), std::optional<QString>(dir.path() + "/ReadMe.MD"));
}

TEST(RepositoryReadme, MarkdownBecomesHtmlWithoutRawHtmlAndPlainTextIsEscaped) {
  QTemporaryDir dir;
  const QString markdown = dir.path() + "/README.md";
  writeBytes(markdown, "# Jelv\n\nA *client*.\n\n<script>alert(1)</script>\n");
  const auto html = RepositoryReadme::html(markdown);
  ASSERT_TRUE(html);
  EXPECT_TRUE(html->contains("<h1>Jelv</h1>")) << html->toStdString();
  EXPECT_TRUE(html->contains("<em>client</em>"));
  EXPECT_FALSE(html->contains("<script>"));

  const QString text = dir.path() + "/README.txt";
  writeBytes(text, "a < b & c\n# not a heading");
  EXPECT_EQ(RepositoryReadme::html(text), std::optional<QString>("<pre>a &lt; b &amp; c\n# not a heading</pre>"));
  EXPECT_EQ(RepositoryReadme::html(dir.path() + "/missing.md"), std::nullopt);
}
