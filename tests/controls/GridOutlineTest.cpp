#include <gtest/gtest.h>

#include "tests/controls/GridWindow.h"

using namespace Qt::StringLiterals;

namespace {

/// 0 A / 1 A1 / 2 a / 3 a / 4 A2 / 5 B / 6 B1
class GridOutline : public ::testing::Test {
protected:
    GridOutline() {
        grid.setOutlineColumn(u"Code"_s);
        for (const int level : {0, 1, 2, 2, 1, 0, 1})
            grid.appendRow({{"Code", u"level"_s}, {"Name", u"文"_s}}, level);
        grid.setCell(0, u"Code"_s);
        window.takeTold();
    }

    QString shown() const {
        QString rows;
        for (int row = 0; row < grid.rowCount(); ++row)
            rows += grid.isRowHidden(row) ? u'-' : u'x';
        return rows;
    }

    GridWindow window;
    KeyedGrid& grid = window.grid;
};

}  // namespace

TEST_F(GridOutline, ClosedNodesHideWhatIsBelowThemAndOpenAsTheyWere) {
    const std::vector<int> ends = {5, 4, 3, 4, 5, 7, 7}, siblings = {5, 4, 3, -1, -1, -1, -1};
    for (int row = 0; row < 7; ++row)
        EXPECT_TRUE(grid.nodeEnd(row) == ends[row] && grid.nextSibling(row) == siblings[row]) << row;
    grid.setCollapsed(1, true);
    grid.setCollapsed(0, true);
    EXPECT_EQ(shown(), u"x----xx"_s);
    grid.setCollapsed(0, false);
    EXPECT_EQ(shown(), u"xx--xxx"_s);
    grid.setCollapsed(2, true);
    EXPECT_FALSE(grid.isCollapsed(2));
    // The keyboard passes over what is hidden.
    grid.setRow(1);
    window.key(Qt::Key_Down);
    EXPECT_EQ(grid.row(), 4);
    // A node that closes around the current row becomes current; making a hidden row current opens its nodes.
    window.takeTold();
    grid.setCollapsed(0, true);
    EXPECT_EQ(window.takeTold(), u"row 4>0, cell 0 Code"_s);
    grid.setRow(2);
    EXPECT_EQ(shown(), u"xxxxxxx"_s);
}

TEST_F(GridOutline, InsertingIntoAClosedNodeOpensItAndRemovingMovesNoClosedStates) {
    for (const int row : {1, 0, 5})
        grid.setCollapsed(row, true);
    grid.insertRow(2, {{"Name", u"新"_s}}, 2);
    EXPECT_EQ(shown(), u"xxxxxxx-"_s);
    grid.removeRows(2);
    EXPECT_EQ(shown(), u"xxxxxx-"_s);
    grid.setCollapsed(5, true);
    grid.removeRows(1, 4);
    EXPECT_EQ(shown(), u"xx-"_s);
    grid.removeRows(2);
    EXPECT_FALSE(grid.isCollapsed(1));
}

TEST_F(GridOutline, TheArrowAndKeysToggleAndMakeNothingCurrent) {
    const QRect cell = grid.visualRect(grid.model()->index(1, grid.column(u"Code"_s)));
    const QPoint arrow(cell.left() + 2 + 18 + 9, cell.center().y());
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, arrow);
    EXPECT_EQ(shown(), u"xx--xxx"_s);
    // The second of two quick clicks counts like the first.
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, arrow);
    EXPECT_EQ(shown(), u"xx--xxx"_s);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, arrow);
    EXPECT_EQ(shown(), u"xxxxxxx"_s);
    window.key(Qt::Key_Left);
    EXPECT_EQ(shown(), u"x----xx"_s);
    window.key(Qt::Key_Right);
    EXPECT_EQ(shown(), u"xxxxxxx"_s);
    EXPECT_EQ(window.takeTold(), QString());
    EXPECT_FALSE(grid.isEditing());
    // What is closed is told to those who do not see it.
    grid.setPending(0, u"Code"_s, true);
    EXPECT_EQ(grid.currentIndex().data(Qt::AccessibleDescriptionRole).toString(), u"第 1 级，已展开，未写入文件"_s);
    // In other columns they are what they are anywhere. Signs are typed text in any column.
    window.key(Qt::Key_Right);
    EXPECT_EQ(grid.columnKey(), u"Name"_s);
    window.key(Qt::Key_Left);
    grid.startEdit = [](int, const QString&) { return true; };
    window.type(u"-"_s);
    ASSERT_TRUE(window.lineEditor());
    EXPECT_EQ(window.lineEditor()->text(), u"-"_s);
}
