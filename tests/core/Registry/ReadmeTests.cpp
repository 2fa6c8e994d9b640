#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "Models/RepositoryReadme.h"

namespace {
void write(const QString& path, const QByteArray& content) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}
}  // namespace

TEST(RepositoryReadme, MarkdownIsPreferredInAnyCaseAndFoldersDoNotCount) {
  QTemporaryDir dir;
  EXPECT_EQ(RepositoryReadme::find(dir.path()), std::nullopt);
  QDir(dir.path()).mkdir(QStringLiteral("README.md"));  // a folder of that name
  write(dir.path() + QStringLiteral("/README"), "plain");
  EXPECT_EQ(RepositoryReadme::find(dir.path()), std::optional<QString>(dir.path() + QStringLiteral("/README")));
  write(dir.path() + QStringLiteral("/ReadMe.MD"), "# Title");
  EXPECT_EQ(RepositoryReadme::find(dir.path()), std::optional<QString>(dir.path() + QStringLiteral("/ReadMe.MD")));
}

TEST(RepositoryReadme, MarkdownBecomesHtmlWithoutRawHtmlAndPlainTextIsEscaped) {
  QTemporaryDir dir;
  const QString markdown = dir.path() + QStringLiteral("/README.md");
  write(markdown, "# Jelv\n\nA *client*.\n\n<script>alert(1)</script>\n");
  const auto html = RepositoryReadme::html(markdown);
  ASSERT_TRUE(html);
  EXPECT_TRUE(html->contains(QStringLiteral("<h1>Jelv</h1>"))) << html->toStdString();
  EXPECT_TRUE(html->contains(QStringLiteral("<em>client</em>")));
  EXPECT_FALSE(html->contains(QStringLiteral("<script>")));

  const QString text = dir.path() + QStringLiteral("/README.txt");
  write(text, "a < b & c\n# not a heading");
  EXPECT_EQ(RepositoryReadme::html(text), std::optional<QString>(QStringLiteral("<pre>a &lt; b &amp; c\n# not a heading</pre>")));
  EXPECT_EQ(RepositoryReadme::html(dir.path() + QStringLiteral("/missing.md")), std::nullopt);
}
