#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QWheelEvent>

#include "app/base/Guarded.h"
#include "app/controls/UiHelpers.h"
#include "tests/controls/GridWindow.h"

using namespace Qt::StringLiterals;

namespace {

const QString name = u"Name"_s;
const QString unit = u"Unit"_s;

class GridRows : public ::testing::Test {
protected:
    GridRows() { window.fill(5); }

    GridWindow window;
    KeyedGrid& grid = window.grid;
};

}  // namespace

TEST_F(GridRows, RowChangesAreToldOnceAndOnlyWhenTheyAreChanges) {
    grid.setRow(0);
    EXPECT_EQ(window.takeTold(), QString());
    grid.setCell(3, unit);
    grid.setRow(1);
    grid.setRow(-1);
    EXPECT_EQ(window.takeTold(), u"row 0>3, cell 3 Unit, row 3>1, cell 1 Unit, row 1>-1, cell -1 Unit"_s);
    EXPECT_FALSE(grid.currentIndex().isValid());
    // A refill tells its first row again.
    grid.setRow(4);
    window.takeTold();
    grid.clearRows();
    EXPECT_EQ(grid.row(), -1);
    grid.appendRow({{"Name", u"一"_s}});
    EXPECT_EQ(window.takeTold(), QString());
    grid.setRow(0);
    EXPECT_EQ(window.takeTold(), u"row -1>0, cell 0 Unit"_s);
}

TEST_F(GridRows, AFillThatFailedHalfWayLeavesAWorkingGrid) {
    guarded({"tests", "fill"}, [&] {
        grid.setRedraw(false);
        grid.appendRow({{"Name", u"一"_s}});
    });
    EXPECT_FALSE(grid.updatesEnabled());
    QApplication::processEvents();
    EXPECT_TRUE(grid.updatesEnabled());
}

TEST_F(GridRows, TheCurrentRowStaysItselfAmongInsertionsAndRemovals) {
    grid.setRow(3);
    window.takeTold();
    grid.insertRow(3, {{"Name", u"前"_s}});
    grid.insertRow(5, {{"Name", u"后"_s}});
    grid.removeRows(0, 2);
    EXPECT_EQ(grid.text(2, name), u"平整场地3"_s);
    EXPECT_EQ(grid.row(), 2);
    grid.removeRows(1, 2);
    EXPECT_TRUE(grid.row() == -1 && !grid.currentIndex().isValid());
    EXPECT_TRUE(grid.selectionModel()->selectedRows().isEmpty());
    EXPECT_EQ(window.takeTold(), QString());
}

TEST_F(GridRows, KeysAndClicksMakeCellsCurrentButNeitherFocusNorDrags) {
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Left, Qt::Key_Left})
        window.key(key);
    EXPECT_EQ(window.takeTold(), u"row 0>1, cell 1 Code, cell 1 Name, cell 1 Code"_s);
    // Typing where nothing can be edited moves nowhere.
    window.type(u"010101002"_s);
    EXPECT_EQ(grid.row(), 1);
    window.key(Qt::Key_Tab);
    EXPECT_TRUE(window.other.hasFocus());
    grid.setRow(-1);
    window.takeTold();
    grid.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(grid.row(), -1);
    window.key(Qt::Key_Down);
    EXPECT_EQ(window.takeTold(), u"row -1>0, cell 0 Code"_s);

    window.click(2, name);
    window.click(1, QString());
    window.drag(3, 0, unit);
    EXPECT_EQ(window.takeTold(), u"row 0>2, cell 2 Name, row 2>1, cell 1 Name, row 1>3, cell 3 Unit"_s);
    EXPECT_EQ(grid.selectionModel()->selectedRows().size(), 1);

    // A right click makes its cell current before the menu; below the last row the menu comes all the same.
    window.click(2, unit, Qt::RightButton);
    window.clickOn(*grid.viewport(), QPoint(100, grid.viewport()->height() - 5), Qt::RightButton);
    window.clickOn(*grid.horizontalHeader()->viewport(), QPoint(100, 5), Qt::RightButton);
    EXPECT_EQ(window.takeTold(), u"row 3>2, cell 2 Unit, menu at 2 Unit, menu at 2 Unit, menu at 2 Unit"_s);
    for (const auto& [reason, told] :
         {std::pair(QContextMenuEvent::Keyboard, u"menu at 2 Unit"_s), {QContextMenuEvent::Mouse, QString()}}) {
        QContextMenuEvent event(reason, QPoint(1, 1), QPoint(1, 1));
        QApplication::sendEvent(grid.viewport(), &event);
        EXPECT_EQ(window.takeTold(), told);
    }
}

TEST_F(GridRows, TheGrowingColumnGivesWayButKeepsTheWidthThatAUserChose) {
    grid.setObjectName(u"grdWidths"_s);
    grid.setGrowingColumn(name);
    const int width = 3000 / 15;
    window.resize(1100, 400);
    EXPECT_GT(grid.columnWidth(grid.column(name)), width);
    window.resize(480, 400);
    EXPECT_LT(grid.columnWidth(grid.column(name)), width);
    EXPECT_FALSE(grid.horizontalScrollBar()->isVisible());
    // It gives way no further than its caption.
    window.resize(120, 400);
    EXPECT_GE(grid.columnWidth(grid.column(name)), grid.fontMetrics().horizontalAdvance(u"清单名称"_s));
    window.resize(480, 400);

    // The user drags the line behind the column.
    QWidget* header = grid.horizontalHeader()->viewport();
    const QPoint line(grid.columnViewportPosition(grid.column(unit)) - 1, 5);
    const int before = grid.columnWidth(grid.column(name));
    QTest::mousePress(header, Qt::LeftButton, {}, line);
    QMouseEvent move(QEvent::MouseMove, line + QPoint(30, 0), header->mapToGlobal(line + QPoint(30, 0)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(header, &move);
    QTest::mouseRelease(header, Qt::LeftButton, {}, line + QPoint(30, 0));
    for (const int size : {1100, 300}) {
        window.resize(size, 400);
        EXPECT_EQ(grid.columnWidth(grid.column(name)), before + 30);
    }
    KeyedGrid later;
    later.setObjectName(u"grdWidths"_s);
    later.setColumns({{name, name, 3000}, {unit, unit, 1155}});
    EXPECT_EQ(later.columnWidth(0), before + 30);
    EXPECT_EQ(later.columnWidth(1), 1155 / 15);
}

TEST(GridHeader, EqualNeighbouringCaptionsMerge) {
    KeyedGrid grid;
    const QString caption = u"特征值"_s;
    grid.setColumns({{u"isUse"_s, caption, 1500},
                     {u"hidden"_s, caption, 1500, Qt::AlignLeft, Qt::AlignLeft, false},
                     {u"eigenValue"_s, caption, 1500}});
    grid.resize(400, 100);
    // The line between the two is where the caption stands once they are one.
    const auto line = [&] {
        const QImage picture = grid.horizontalHeader()->grab().toImage();
        return picture.pixelColor(grid.columnWidth(0) - 1, 2);
    };
    const QColor separate = line();
    Grid_MergeFix(&grid);
    EXPECT_GT(line().lightness(), separate.lightness());
}

TEST(UiHelpers, TheWheelTurnsABoxOnlyWithTheFocus) {
    QWidget window;
    QComboBox box(&window), other(&window);
    box.addItems({u"建筑"_s, u"装饰"_s});
    turnByWheelOnlyWithFocus(&box);
    window.show();
    window.activateWindow();
    (void)QTest::qWaitForWindowActive(&window);
    for (QComboBox* focused : {&other, &box}) {
        focused->setFocus();
        QWheelEvent wheel({1, 1}, box.mapToGlobal(QPointF(1, 1)), {}, {0, -120}, {}, {}, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&box, &wheel);
        EXPECT_EQ(box.currentIndex(), focused == &box ? 1 : 0);
    }
}
