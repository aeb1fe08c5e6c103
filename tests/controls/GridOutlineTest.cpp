#include <gtest/gtest.h>

#include "tests/controls/GridWindow.h"

namespace {

const QString name = QStringLiteral("Name");

/// 0 A / 1 A1 / 2 a / 3 a / 4 A2 / 5 B / 6 B1
class GridOutline : public ::testing::Test {
protected:
    GridOutline() {
        window.grid.setOutlineColumn(QStringLiteral("Code"));
        for (const int level : {0, 1, 2, 2, 1, 0, 1})
            window.grid.appendRow({{"Code", QStringLiteral("level")}, {"Name", QStringLiteral("文")}}, level);
        window.grid.setCell(0, QStringLiteral("Code"));
        window.takeTold();
    }

    QString shown() const {
        QString rows;
        for (int row = 0; row < window.grid.rowCount(); ++row)
            rows += window.grid.isRowHidden(row) ? QLatin1Char('-') : QLatin1Char('x');
        return rows;
    }

    GridWindow window;
    KeyedGrid& grid = window.grid;
};

}  // namespace

TEST_F(GridOutline, KnowsItsNodes) {
    EXPECT_EQ(grid.level(2), 2);
    EXPECT_EQ(grid.nodeEnd(0), 5);
    EXPECT_EQ(grid.nodeEnd(1), 4);
    EXPECT_EQ(grid.nodeEnd(5), 7);
    EXPECT_EQ(grid.nextSibling(0), 5);
    EXPECT_EQ(grid.nextSibling(1), 4);
    EXPECT_EQ(grid.nextSibling(3), -1);
    EXPECT_EQ(grid.nextSibling(4), -1);
    EXPECT_EQ(grid.nextSibling(5), -1);
}

TEST_F(GridOutline, ClosedNodesHideWhatIsBelowThemAndOpenAsTheyWere) {
    grid.setCollapsed(1, true);
    EXPECT_EQ(shown(), QStringLiteral("xx--xxx"));
    grid.setCollapsed(0, true);
    EXPECT_EQ(shown(), QStringLiteral("x----xx"));
    grid.setCollapsed(0, false);
    EXPECT_EQ(shown(), QStringLiteral("xx--xxx"));
    grid.setCollapsed(2, true);
    EXPECT_FALSE(grid.isCollapsed(2));
    // The keyboard passes over what is hidden.
    grid.setRow(1);
    window.key(Qt::Key_Down);
    EXPECT_EQ(grid.row(), 4);
}

TEST_F(GridOutline, ClosingANodeAroundTheCurrentRowMakesTheNodeCurrent) {
    grid.setRow(3);
    window.takeTold();
    grid.setCollapsed(0, true);
    EXPECT_EQ(window.takeTold(), (QStringList{QStringLiteral("row 3>0"), QStringLiteral("cell 0 Code")}));
    grid.setRow(2);
    EXPECT_EQ(shown(), QStringLiteral("xxxxxxx"));
}

TEST_F(GridOutline, InsertingIntoAClosedNodeOpensIt) {
    for (const bool redraw : {true, false}) {
        SCOPED_TRACE(redraw);
        grid.setRow(0);
        grid.setCollapsed(1, true);
        grid.setCollapsed(0, true);
        grid.setCollapsed(5, true);
        grid.setRedraw(redraw);
        grid.insertRow(2, {{"Name", QStringLiteral("新")}}, 2);
        grid.setRedraw(true);
        EXPECT_EQ(shown(), QStringLiteral("xxxxxxx-"));
        EXPECT_FALSE(grid.isCollapsed(1));
        EXPECT_TRUE(grid.isCollapsed(6));
        grid.removeRows(2);
        EXPECT_EQ(shown(), QStringLiteral("xxxxxx-"));
        grid.setCollapsed(5, false);
    }
}

TEST_F(GridOutline, RemovingMovesNoClosedStates) {
    grid.setCollapsed(5, true);
    grid.removeRows(1, 4);
    EXPECT_EQ(shown(), QStringLiteral("xx-"));
    grid.removeRows(2);
    EXPECT_FALSE(grid.isCollapsed(1));
    grid.appendRow({}, 1);
    EXPECT_EQ(shown(), QStringLiteral("xxx"));

    grid.setCollapsed(1, true);
    grid.setRedraw(false);
    grid.clearRows();
    for (int i = 0; i < 4; ++i)
        grid.appendRow({}, 0);
    grid.setRedraw(true);
    EXPECT_EQ(shown(), QStringLiteral("xxxx"));
}

TEST_F(GridOutline, TheArrowTogglesAndMakesNothingCurrent) {
    const QRect cell = grid.visualRect(grid.model()->index(1, grid.column(QStringLiteral("Code"))));
    const QPoint arrow(cell.left() + 2 + 18 + 9, cell.center().y());
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, arrow);
    EXPECT_EQ(shown(), QStringLiteral("xx--xxx"));
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, arrow);
    EXPECT_EQ(shown(), QStringLiteral("xxxxxxx"));
    EXPECT_EQ(window.takeTold(), QStringList());
    EXPECT_FALSE(grid.isEditing());
}

TEST_F(GridOutline, KeysToggleInTheOutlineColumnOnly) {
    window.key(Qt::Key_Left);
    EXPECT_EQ(shown(), QStringLiteral("x----xx"));
    window.key(Qt::Key_Right);
    EXPECT_EQ(shown(), QStringLiteral("xxxxxxx"));
    EXPECT_EQ(window.takeTold(), QStringList());
    window.key(Qt::Key_Right);
    EXPECT_EQ(grid.columnKey(), name);
    QTest::keyClick(&grid, '-');
    EXPECT_TRUE(grid.isEditing());
    window.key(Qt::Key_Escape);
    grid.setCell(0, QStringLiteral("Code"));
    QTest::keyClick(&grid, '-');
    EXPECT_EQ(shown(), QStringLiteral("x----xx"));
    QTest::keyClick(&grid, '+');
    EXPECT_EQ(shown(), QStringLiteral("xxxxxxx"));
    EXPECT_FALSE(grid.isEditing());
}
