#include "app/controls/UiHelpers.h"

#include <gtest/gtest.h>

TEST(UiHelpers, ValiTextLetsListedCharactersPass) {
    const QString listed = QStringLiteral("0aB土");
    for (const int passes : {int('0'), int('A'), int('b'), int(u'土')})
        EXPECT_EQ(ValiText(passes, listed, false), passes);
    for (const int refused : {int('c'), int(u'石'), 8, 0})
        EXPECT_EQ(ValiText(refused, listed, false), 0);
    EXPECT_EQ(ValiText(8, listed, true), 8);
    EXPECT_EQ(ValiText(0, listed, true), 0);
}
