#include "app/shell/WindowArrangement.h"

#include <gtest/gtest.h>

#include <QMdiArea>
#include <QMdiSubWindow>

namespace {

/// An area with `count` windows and a minimised one; the third window is the active one.
class WindowArrangement : public ::testing::TestWithParam<int> {
protected:
    WindowArrangement() {
        area.resize(1200, 800);
        area.show();
        for (int i = 0; i < GetParam(); ++i)
            area.addSubWindow(new QWidget)->show();
        minimised = area.addSubWindow(new QWidget);
        minimised->showMinimized();
        area.setActiveSubWindow(area.subWindowList().at(2));
    }
    /// The places of all windows but the minimised one, which are checked to be inside the area; the active stays so.
    QList<QRect> places() {
        EXPECT_EQ(area.currentSubWindow(), area.subWindowList().at(2));
        EXPECT_TRUE(minimised->isMinimized());
        QList<QRect> all;
        for (const QMdiSubWindow* window : area.subWindowList()) {
            EXPECT_TRUE(window == minimised || area.viewport()->rect().contains(window->geometry()));
            if (window != minimised)
                all << window->geometry();
        }
        return all;
    }

    QMdiArea area;
    QMdiSubWindow* minimised;
};

}  // namespace

TEST_P(WindowArrangement, TilesCoverTheAreaInStripsThatStayWideEnoughToWorkIn) {
    for (const Qt::Orientation orientation : {Qt::Horizontal, Qt::Vertical}) {
        tileSubWindows(&area, orientation);
        const QSize whole = area.viewport()->size();
        const QList<QRect> all = places();
        EXPECT_EQ(all.at(2).topLeft(), QPoint(0, 0)) << "the active one comes first";
        int covered = 0;
        for (const QRect& place : all) {
            EXPECT_EQ(std::count_if(all.begin(), all.end(), [&](const QRect& r) { return r.intersects(place); }), 1);
            EXPECT_GE(place.height(), 220);
            EXPECT_TRUE(GetParam() > 3 || (orientation == Qt::Horizontal ? place.width() == whole.width()
                                                                         : place.height() == whole.height()));
            covered += place.width() * place.height();
        }
        EXPECT_EQ(covered, whole.width() * whole.height());
    }
}

TEST_P(WindowArrangement, ACascadeAndANewWindowLeaveRoomToWorkIn) {
    tileSubWindows(&area, Qt::Vertical);
    placeSubWindow(&area, area.currentSubWindow());
    QList<QRect> all{places().at(2)};
    cascadeSubWindows(&area);
    EXPECT_EQ(area.subWindowList(QMdiArea::StackingOrder).constLast(), area.currentSubWindow());
    all << places();
    EXPECT_NE(all.at(1), all.at(2));
    for (const QRect& place : all)
        EXPECT_TRUE(place.width() > 800 && place.height() > 500);
}

INSTANTIATE_TEST_SUITE_P(Of, WindowArrangement, ::testing::Values(3, 11));
