#include "app/shell/WindowArrangement.h"

#include <gtest/gtest.h>

#include <QMdiArea>
#include <QMdiSubWindow>

TEST(WindowArrangement, ACascadeAndANewWindowStandWhollyInsideTheAreaWithRoomToWorkIn) {
    QMdiArea area;
    area.resize(1200, 800);
    area.show();
    for (int i = 0; i < 20; ++i)
        area.addSubWindow(new QWidget)->show();
    QMdiSubWindow* active = area.subWindowList().at(7);
    area.setActiveSubWindow(active);
    tileSubWindows(&area, Qt::Vertical);
    placeSubWindow(&area, active);
    const QRect alone = active->geometry();
    cascadeSubWindows(&area);
    EXPECT_EQ(area.currentSubWindow(), active);
    EXPECT_EQ(area.subWindowList(QMdiArea::StackingOrder).constLast(), active);
    for (const QMdiSubWindow* window : area.subWindowList()) {
        for (const QRect& place : {window->geometry(), alone}) {
            EXPECT_TRUE(area.viewport()->rect().contains(place));
            EXPECT_TRUE(place.width() > 800 && place.height() > 500);
        }
    }
    EXPECT_NE(area.subWindowList().at(0)->pos(), area.subWindowList().at(1)->pos());
}

TEST(WindowArrangement, TilesCoverTheAreaInStripsThatStayWideEnoughToWorkIn) {
    for (const auto& [count, orientation] :
         {std::pair(3, Qt::Horizontal), {3, Qt::Vertical}, {11, Qt::Horizontal}, {11, Qt::Vertical}}) {
        SCOPED_TRACE(testing::Message() << count << " windows, " << orientation);
        QMdiArea area;
        area.resize(1200, 800);
        area.show();
        QMdiSubWindow* minimised = area.addSubWindow(new QWidget);
        minimised->showMinimized();
        for (int i = 0; i < count; ++i)
            area.addSubWindow(new QWidget)->show();
        const QMdiSubWindow* active = area.currentSubWindow();
        tileSubWindows(&area, orientation);
        EXPECT_EQ(area.currentSubWindow(), active);
        EXPECT_EQ(active->pos(), QPoint(0, 0));
        EXPECT_TRUE(minimised->isMinimized());
        const QSize whole = area.viewport()->size();
        QList<QRect> places;
        int covered = 0;
        for (const QMdiSubWindow* window : area.subWindowList()) {
            if (window == minimised)
                continue;
            for (const QRect& other : places)
                EXPECT_FALSE(other.intersects(window->geometry()));
            places << window->geometry();
            covered += window->width() * window->height();
            EXPECT_GE(window->height(), 220);
            if (count == 3) {
                EXPECT_EQ(orientation == Qt::Horizontal ? window->width() : window->height(),
                          orientation == Qt::Horizontal ? whole.width() : whole.height());
            }
        }
        EXPECT_EQ(covered, whole.width() * whole.height());
    }
}
