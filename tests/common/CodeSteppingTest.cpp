#include "editor/common/Codes.h"

#include <gtest/gtest.h>

TEST(GetCodePreNext, StepsThePrefixAsOneNumber) {
    struct {
        const char* code;
        bool forward;
        int length;
        const char* stepped;
    } const cases[] = {
        {"0105", true, 4, "0106"},
        {"0105", false, 4, "0104"},
        {"00", false, 2, "00"},
        {"99", true, 2, "100"},
        {"0200", false, 4, "0199"},
        {"019999", true, 6, "020000"},
        {"010305001", true, 6, "010306001"},
        {"01", true, 4, "0002"},
        {"0a", true, 2, "01"},
        {"010203", true, 8, ""},
        {"010", true, 3, ""},
        {"", true, 0, ""},
        {"01", true, -2, ""},
        {"010305999", true, 9, "010306000"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(GetCodePreNext(QString::fromLatin1(c.code), c.forward, c.length), QString::fromLatin1(c.stepped))
            << c.code << (c.forward ? " forward, " : " backward, ") << c.length;
}
