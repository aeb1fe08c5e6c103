#include "app/base/Text.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Text, TrimsBlanksAloneReadsNumbersAndPadsCodes) {
    for (const auto& [text, trimmed] :
         {std::pair(u"  a b  "_s, u"a b"_s), {u"\u3000a\t"_s, u"\u3000a\t"_s}, {u"   "_s, QString()}})
        EXPECT_EQ(trimBlanks(text), trimmed);
    for (const auto& [text, number] : {std::pair(u" 12abc"_s, 12LL),
                                       {u"-7"_s, -7LL},
                                       {u"abc"_s, 0LL},
                                       {QString(), 0LL},
                                       {u"99999999999999999999"_s, std::numeric_limits<qint64>::max()}})
        EXPECT_EQ(numericValue(text), number) << qPrintable(text);
    EXPECT_EQ(zeroPadded(7, 3) + zeroPadded(1000, 3), u"0071000"_s);
}
