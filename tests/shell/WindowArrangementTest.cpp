#include "app/shell/WindowArrangement.h"

#include <gtest/gtest.h>

#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

class WindowArrangement : public ::testing::Test {
protected:
    WindowArrangement() {
        area.resize(1200, 800);
        area.show();
    }

    QList<QRect> tiled(int count, Qt::Orientation orientation) {
        for (int i = 0; i < count; ++i)
            area.addSubWindow(new QWidget)->show();
        QMdiSubWindow* active = area.currentSubWindow();
        tileSubWindows(&area, orientation);
        EXPECT_EQ(area.currentSubWindow(), active);
        QList<QRect> places;
        int covered = 0;
        for (const QMdiSubWindow* window : area.subWindowList()) {
            for (const QRect& other : places)
                EXPECT_FALSE(other.intersects(window->geometry()));
            places << window->geometry();
            covered += window->width() * window->height();
        }
        EXPECT_EQ(covered, area.viewport()->width() * area.viewport()->height());
        return places;
    }

    QMdiArea area;
};

}  // namespace

TEST_F(WindowArrangement, HorizontalStripsSpanTheWidth) {
    for (const QRect& place : tiled(3, Qt::Horizontal))
        EXPECT_EQ(place.width(), area.viewport()->width());
}

TEST_F(WindowArrangement, VerticalStripsSpanTheHeight) {
    for (const QRect& place : tiled(3, Qt::Vertical))
        EXPECT_EQ(place.height(), area.viewport()->height());
}

TEST_F(WindowArrangement, ManyWindowsStayWideEnoughToWorkIn) {
    for (const QRect& place : tiled(11, Qt::Horizontal))
        EXPECT_GE(place.height(), 220);
}

TEST_F(WindowArrangement, MinimisedWindowsStayWhereTheyAre) {
    QMdiSubWindow* minimised = area.addSubWindow(new QWidget);
    minimised->showMinimized();
    area.addSubWindow(new QWidget)->show();
    tileSubWindows(&area, Qt::Vertical);
    EXPECT_TRUE(minimised->isMinimized());
    EXPECT_EQ(area.currentSubWindow()->geometry(), area.viewport()->rect());
}
