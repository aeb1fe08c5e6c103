#include "ration_browser/BrowserPlacement.h"

#include <gtest/gtest.h>

TEST(BrowserPlacement, OnlyAnUnreachableTitleBarIsBroughtBack) {
    const QList<QRect> screens{{0, 0, 1366, 728}, {1366, 0, 1920, 1040}};
    const QRect halfOff(-500, 600, 900, 600);
    EXPECT_EQ(broughtBack(halfOff, screens), halfOff);
    const QRect onSecond(2000, 100, 900, 600);
    EXPECT_EQ(broughtBack(onSecond, screens), onSecond);
    const QRect acrossBoth(1000, 100, 1500, 600);
    EXPECT_EQ(broughtBack(acrossBoth, screens), acrossBoth);

    for (const QRect& lost : {QRect(4000, 100, 900, 600), QRect(0, -200, 900, 600), QRect(-880, 0, 900, 600),
                              QRect(0, 720, 900, 600), QRect(-100'000, -100'000, 100'000, 100'000)}) {
        const QRect back = broughtBack(lost, screens);
        EXPECT_TRUE(screens.first().contains(back)) << lost.x() << ' ' << lost.y();
    }
    EXPECT_EQ(broughtBack(onSecond, {screens.first()}).size(), onSecond.size());
    EXPECT_EQ(broughtBack(onSecond, {}), onSecond);
}
