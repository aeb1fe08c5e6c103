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
                              QRect(0, 750, 900, 600), QRect(-100'000, -100'000, 100'000, 100'000)}) {
        const QRect back = broughtBack(lost, screens);
        EXPECT_TRUE(screens.first().contains(back)) << lost.x() << ' ' << lost.y();
    }
    EXPECT_EQ(broughtBack(onSecond, {screens.first()}).size(), onSecond.size());
    EXPECT_EQ(broughtBack(onSecond, {}), onSecond);
}

// Above, below or beside the row, whichever leaves the window largest, and never over it.
TEST(BrowserPlacement, StandsBesideTheRowThatItServes) {
    const QRect screen(100, 50, 1366, 728);
    const QSize wanted(880, 600), smallest(640, 360);
    for (const QRect& row : {QRect(500, 600, 900, 28), QRect(500, 80, 900, 28), QRect(100, 400, 500, 28),
                             QRect(1000, 400, 460, 28), QRect(100, 740, 1366, 28)}) {
        const QRect placed = besideRow(row, wanted, smallest, screen);
        EXPECT_TRUE(screen.contains(placed)) << row.x() << ' ' << row.y();
        EXPECT_FALSE(placed.adjusted(-8, -38, 8, 8).intersects(row.adjusted(0, -28, 0, 28)));
        EXPECT_TRUE(placed.width() >= 640 && placed.height() >= 360 && placed.height() <= 600);
    }
    EXPECT_EQ(besideRow({500, 740, 800, 28}, wanted, smallest, screen).size(), wanted);
    EXPECT_TRUE(besideRow({100, 400, 1366, 28}, wanted, smallest, screen).isNull()) << "no room";
}
