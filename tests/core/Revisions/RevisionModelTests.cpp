#include <gtest/gtest.h>

#include "Extensions/DecimalInteger.h"
#include "Models/IdentityInterner.h"
#include "Models/Revision.h"
#include "Models/StashRevision.h"

namespace {

const QString kA = "0123456789abcdef0123456789abcdef01234567";
const QString kB = "89abcdef0123456789abcdef0123456789abcdef";
const QString kC = "fedcba9876543210fedcba9876543210fedcba98";

Sha sha(const QString& hex) { return *Sha::fromHex(QStringView(hex)); }

TEST(ShaTest, RoundTripsAndRejectsAnythingButFortyHexDigits) {
  const auto parsed = Sha::fromHex(QStringView(QStringLiteral("0123456789ABCDEF0123456789abcdef01234567")));
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->toString(), kA);  // printed in lower case
  EXPECT_EQ(Sha::fromHex(QByteArrayView(kA.toLatin1())), parsed);
  EXPECT_EQ(parsed->abbreviated(), "0123456");
  EXPECT_FALSE(parsed->isNull());
  EXPECT_TRUE(Sha().isNull());

  for (const char* bad : {"", "0123", "0123456789abcdef0123456789abcdef0123456",    // 39
                          "0123456789abcdef0123456789abcdef012345678",              // 41
                          "0123456789abcdef0123456789abcdef0123456g",               // not hex
                          " 123456789abcdef0123456789abcdef01234567"}) {
    EXPECT_FALSE(Sha::fromHex(QByteArrayView(bad))) << bad;
    EXPECT_FALSE(Sha::fromHex(QStringView(QString::fromLatin1(bad)))) << bad;
  }
  // A non-Latin character whose low byte is a hex digit must not pass.
  QString sneaky = kA;
  sneaky[0] = QChar(0x0130);
  EXPECT_FALSE(Sha::fromHex(QStringView(sneaky)));
}

TEST(ParentShasTest, KeepsOrderForNoneOneAndMany) {
  const ParentShas none;
  EXPECT_TRUE(none.empty());
  const ParentShas one(sha(kA));
  ASSERT_EQ(one.size(), 1u);
  EXPECT_EQ(one[0], sha(kA));
  const ParentShas three{sha(kC), sha(kA), sha(kB)};
  ASSERT_EQ(three.size(), 3u);
  EXPECT_EQ(three[0], sha(kC));
  EXPECT_EQ(three[2], sha(kB));
  ParentShas copy = three;  // deep copy, independent of the source's lifetime
  EXPECT_EQ(copy, three);
  EXPECT_NE(copy, ParentShas({sha(kC), sha(kB), sha(kA)}));
  copy = one;
  EXPECT_EQ(copy, one);
}

TEST(RevisionTest, HoldsItsFieldsAndComparesByValue) {
  IdentityInterner interner;
  auto ada = interner.intern(QByteArrayView("Ada Lovelace"), QByteArrayView("ada@example.org"));
  EXPECT_EQ(interner.intern(QByteArrayView("Ada Lovelace"), QByteArrayView("ada@example.org")), ada);  // shared
  EXPECT_NE(interner.intern(QByteArrayView("Ada Lovelace"), QByteArrayView("ada@other.org")), ada);
  EXPECT_EQ(interner.size(), 2);

  const Revision merge(sha(kA), sha(kB), ParentShas{sha(kB), sha(kC)}, CompactText::fromText("Merge ‘x’ — ✓"), ada, 1700000000);
  EXPECT_EQ(merge.message(), "Merge ‘x’ — ✓");
  EXPECT_EQ(merge.authorEmail(), "ada@example.org");
  EXPECT_TRUE(Revision(sha(kA), sha(kB), {}, {}, nullptr, 0).author().isEmpty());

  auto same = Revision::create(kA, kB, {kB, kC}, "Merge ‘x’ — ✓", "Ada Lovelace", "ada@example.org", 1700000000);
  ASSERT_TRUE(same);
  EXPECT_TRUE(*same == merge);
  auto otherMessage = Revision::create(kA, kB, {kB, kC}, "Merge", "Ada Lovelace", "ada@example.org", 1700000000);
  EXPECT_FALSE(*otherMessage == merge);

  // A stash never equals a plain revision with the same data, and compares its name.
  const StashRevision stash0(sha(kA), sha(kB), ParentShas(sha(kB)), CompactText::fromText("WIP"), ada, 5, "stash@{0}");
  const StashRevision stash1(sha(kA), sha(kB), ParentShas(sha(kB)), CompactText::fromText("WIP"), ada, 5, "stash@{1}");
  const Revision plain(sha(kA), sha(kB), ParentShas(sha(kB)), CompactText::fromText("WIP"), ada, 5);
  EXPECT_TRUE(stash0.isStash());
  EXPECT_FALSE(stash0 == plain);
  EXPECT_FALSE(plain == stash0);
  EXPECT_FALSE(stash0 == stash1);
}

TEST(DecimalIntegerTest, AcceptsOnlyStrictDecimals) {
  EXPECT_EQ(DecimalInteger::parse(QByteArrayView("1700000000")), 1700000000);
  EXPECT_EQ(DecimalInteger::parse(QByteArrayView("-42")), -42);
  EXPECT_EQ(DecimalInteger::parse(QStringView(u"+7")), 7);
  EXPECT_EQ(DecimalInteger::parse(QByteArrayView("9223372036854775807")), INT64_MAX);
  EXPECT_EQ(DecimalInteger::parse(QByteArrayView("-9223372036854775808")), INT64_MIN);
  for (const char* bad : {"", "-", "+", " 1", "1 ", "1.5", "0x10", "12a", "9223372036854775808", "１"}) {
    EXPECT_FALSE(DecimalInteger::parse(QByteArrayView(bad))) << bad;
    EXPECT_FALSE(DecimalInteger::parse(QStringView(QString::fromUtf8(bad)))) << bad;
  }
}

}  // namespace
