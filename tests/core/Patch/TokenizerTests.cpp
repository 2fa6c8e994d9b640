#include <gtest/gtest.h>

#include "Models/PatchTokenizer.h"
#include "support/LogCapture.h"

namespace {

std::optional<std::vector<Token>> tokenize(const QString& text) {
  return PatchTokenizer::tokenize(text, PatchTokenizer::hunkHeaderExpression());
}

// What each token of the text is, or nothing when the text is refused.
std::optional<std::vector<TokenType::Value>> values(const QString& text) {
  const auto tokens = tokenize(text);
  if (!tokens) return std::nullopt;
  std::vector<TokenType::Value> result;
  for (const Token& token : *tokens) result.push_back(token.type);
  return result;
}

}  // namespace

TEST(PatchTokenizer, LineTokensKeepTheirTextAndCoverTheWholeText) {
  // "--- a/f" is a removal by its first character; the parser tells headers apart.
  const QString text = QStringLiteral(
      "--- a/f\n"
      "+++ b/f\n"
      "@@ -1,3 +1,3 @@\n"
      " k\u00e4se\r\n"
      "-old\r\n"
      "+new \U0001F600\r\n"
      "\\ No newline at end of file\n"
      "\\\n"
      "+last");
  namespace T = TokenType;
  EXPECT_EQ(values(text),
            (std::vector<T::Value>{T::Delete{"-- a/f\n"}, T::Insert{"++ b/f\n"}, T::ChunkHeader{1, 3, 1, 3, ""},
                                   T::Context{"k\u00e4se\r\n"}, T::Delete{"old\r\n"}, T::Insert{"new \U0001F600\r\n"},
                                   T::Pragma{"No newline at end of file\n"}, T::Pragma{""}, T::Insert{"last"}}));
  const auto tokens = tokenize(text);

  qsizetype expectedStart = 0;
  for (const Token& token : *tokens) {
    EXPECT_EQ(token.location, expectedStart);
    const QStringView source = QStringView(text).mid(token.location, token.length);
    EXPECT_TRUE(source.endsWith(u'\n') || token.location + token.length == text.size());
    expectedStart += token.length;
  }
  EXPECT_EQ(expectedStart, text.size());

  EXPECT_EQ(values(QString()), std::vector<T::Value>{});
  EXPECT_EQ(values("\n\n"), (std::vector<T::Value>{T::Other{}, T::Other{}}));
}

TEST(PatchTokenizer, RejectsTheWholeTextOnABrokenHeaderLine) {
  const QString valid = "diff --git a/f b/f\nindex 1..2 100644\n--- a/f\n+++ b/f\n@@ -1 +1 @@\n-a\n+b\n";
  ASSERT_TRUE(tokenize(valid).has_value());
  struct Row {
    const char* name;
    QString appended;
  };
  const Row rows[] = {
      {"hunk header without numbers", "@@ -a +b @@\n"},
      {"start beyond 64 bits", "@@ -99999999999999999999,1 +1,1 @@\n"},
      {"lone backslash at the end", "\\"},
      {"index line of non-hex names", "index xyz..abc\n"},
      {"mode line without digits", "old mode rwxr-xr-x\n"},
      {"similarity without percent", "similarity index 90\n"},
      {"similarity beyond 64 bits", "similarity index 123456789012345678901234%\n"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_FALSE(tokenize(valid + row.appended).has_value());
  }
  // In front of more text the backslash has a second character and is a pragma.
  EXPECT_TRUE(tokenize("\\" + valid).has_value());
  EXPECT_FALSE(tokenize("@@ -a +b @@\n" + valid).has_value());

  LogCapture log;
  EXPECT_FALSE(tokenize("new file mode 10064x\n").has_value());
  EXPECT_EQ(log.messages(AdvancedLogger::Level::error),
            QStringList{"Cannot parse filemode patch header in 'new file mode 10064x'"});
}
