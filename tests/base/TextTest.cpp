#include "app/base/Text.h"

#include <gtest/gtest.h>

TEST(Text, TrimsBlanksOnly) {
    EXPECT_EQ(trimBlanks(QStringLiteral("  a b  ")), QStringLiteral("a b"));
    EXPECT_EQ(trimBlanks(QStringLiteral("\u3000a\t")), QStringLiteral("\u3000a\t"));
    EXPECT_EQ(trimBlanks(QStringLiteral("   ")), QString());
}

TEST(Text, ReadsTheNumberATextBeginsWith) {
    EXPECT_EQ(numericValue(QStringLiteral(" 12abc")), 12);
    EXPECT_EQ(numericValue(QStringLiteral("-7")), -7);
    EXPECT_EQ(numericValue(QStringLiteral("abc")), 0);
    EXPECT_EQ(numericValue(QString()), 0);
    EXPECT_EQ(numericValue(QStringLiteral("99999999999999999999")), std::numeric_limits<qint64>::max());
}

TEST(Text, PadsCodesWithoutCuttingThem) {
    EXPECT_EQ(zeroPadded(7, 3), QStringLiteral("007"));
    EXPECT_EQ(zeroPadded(1000, 3), QStringLiteral("1000"));
}
