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
  const QString after = UrlSchemeHandlerRegistry::withDefaultHandler(before, "github-mac",
                                                                      "org.jelv.Jelv.desktop");
  EXPECT_EQ(after, QStringLiteral("[Default Applications]\n"
                                  "text/html=firefox.desktop\n"
                                  "x-scheme-handler/github-mac=org.jelv.Jelv.desktop\n"
                                  "\n"
                                  "[Added Associations]\n"
                                  "x-scheme-handler/github-mac=org.jelv.Jelv.desktop;other.desktop;\n"
                                  "image/png=viewer.desktop;\n"));
  EXPECT_EQ(UrlSchemeHandlerRegistry::defaultHandler(after, "github-mac"), "org.jelv.Jelv.desktop");
  // Setting it again changes nothing.
  EXPECT_EQ(UrlSchemeHandlerRegistry::withDefaultHandler(after, "github-mac", "org.jelv.Jelv.desktop"),
            after);
}

TEST(UrlSchemeHandlerRegistry, MissingSectionsAreAddedAndOnlyTheDefaultSectionCounts) {
  const QString onlyAdded = "[Added Associations]\nx-scheme-handler/sourcetree=org.jelv.Jelv.desktop;\n";
  EXPECT_EQ(UrlSchemeHandlerRegistry::defaultHandler(onlyAdded, "sourcetree"), QString());
  EXPECT_EQ(UrlSchemeHandlerRegistry::defaultHandler(QString(), "sourcetree"), QString());

  const QString after = UrlSchemeHandlerRegistry::withDefaultHandler(QString(), "sourcetree", "a.desktop");
  EXPECT_EQ(after, QStringLiteral("[Default Applications]\nx-scheme-handler/sourcetree=a.desktop\n\n"
                                  "[Added Associations]\nx-scheme-handler/sourcetree=a.desktop;\n"));
}

TEST(UrlSchemeHandlerRegistry, TheUsersFileIsWrittenAndReadBack) {
  QFile::remove(UrlSchemeHandlerRegistry::mimeAppsPath());
  EXPECT_FALSE(UrlSchemeHandlerRegistry::isDefaultHandler("github-mac"));
  ASSERT_TRUE(UrlSchemeHandlerRegistry::setDefaultHandler("github-mac"));
  EXPECT_TRUE(UrlSchemeHandlerRegistry::isDefaultHandler("github-mac"));
  EXPECT_FALSE(UrlSchemeHandlerRegistry::isDefaultHandler("sourcetree"));
  EXPECT_TRUE(UrlSchemeHandlerRegistry::mimeAppsPath().startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")));
}
