#include <gtest/gtest.h>

#include <QFile>

#include "Services/UrlSchemeHandlerRegistry.h"

TEST(UrlSchemeHandlerRegistry, BecomingTheDefaultKeepsEveryOtherChoice) {
  const QString before = QStringLiteral(
      "[Default Applications]\n"
      "text/html=firefox.desktop\n"
      "x-scheme-handler/github-mac=other.desktop\n"
      "\n"
      "[Added Associations]\n"
      "x-scheme-handler/github-mac=other.desktop;\n"
      "image/png=viewer.desktop;\n");
  const QString after = UrlSchemeHandlerRegistry::withDefaultHandler(before, QStringLiteral("github-mac"),
                                                                      QStringLiteral("org.jelv.Jelv.desktop"));
  EXPECT_EQ(after, QStringLiteral("[Default Applications]\n"
                                  "text/html=firefox.desktop\n"
                                  "x-scheme-handler/github-mac=org.jelv.Jelv.desktop\n"
                                  "\n"
                                  "[Added Associations]\n"
                                  "x-scheme-handler/github-mac=org.jelv.Jelv.desktop;other.desktop;\n"
                                  "image/png=viewer.desktop;\n"));
  EXPECT_EQ(UrlSchemeHandlerRegistry::defaultHandler(after, QStringLiteral("github-mac")), QStringLiteral("org.jelv.Jelv.desktop"));
  // Setting it again changes nothing.
  EXPECT_EQ(UrlSchemeHandlerRegistry::withDefaultHandler(after, QStringLiteral("github-mac"), QStringLiteral("org.jelv.Jelv.desktop")),
            after);
}

TEST(UrlSchemeHandlerRegistry, MissingSectionsAreAddedAndOnlyTheDefaultSectionCounts) {
  const QString onlyAdded = QStringLiteral("[Added Associations]\nx-scheme-handler/sourcetree=org.jelv.Jelv.desktop;\n");
  EXPECT_EQ(UrlSchemeHandlerRegistry::defaultHandler(onlyAdded, QStringLiteral("sourcetree")), QString());
  EXPECT_EQ(UrlSchemeHandlerRegistry::defaultHandler(QString(), QStringLiteral("sourcetree")), QString());

  const QString after = UrlSchemeHandlerRegistry::withDefaultHandler(QString(), QStringLiteral("sourcetree"), QStringLiteral("a.desktop"));
  EXPECT_EQ(after, QStringLiteral("[Default Applications]\nx-scheme-handler/sourcetree=a.desktop\n\n"
                                  "[Added Associations]\nx-scheme-handler/sourcetree=a.desktop;\n"));
}

TEST(UrlSchemeHandlerRegistry, TheUsersFileIsWrittenAndReadBack) {
  QFile::remove(UrlSchemeHandlerRegistry::mimeAppsPath());
  EXPECT_FALSE(UrlSchemeHandlerRegistry::isDefaultHandler(QStringLiteral("github-mac")));
  ASSERT_TRUE(UrlSchemeHandlerRegistry::setDefaultHandler(QStringLiteral("github-mac")));
  EXPECT_TRUE(UrlSchemeHandlerRegistry::isDefaultHandler(QStringLiteral("github-mac")));
  EXPECT_FALSE(UrlSchemeHandlerRegistry::isDefaultHandler(QStringLiteral("sourcetree")));
  EXPECT_TRUE(UrlSchemeHandlerRegistry::mimeAppsPath().startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")));
}
