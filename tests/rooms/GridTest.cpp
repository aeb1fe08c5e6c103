#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMimeData>

#include "tests/rooms/GridWindow.h"

namespace {

using GridRows = GridWindow;

/// 0 A / 1 A1 / 2 a / 3 a / 4 A2 / 5 B / 6 B1
class GridOutline : public GridWindow {
protected:
    GridOutline() {
        grid.clearRows();
        grid.setOutlineColumn(u"Code"_s);
        for (const int level : {0, 1, 2, 2, 1, 0, 1})
            grid.appendRow({{"Code", u"level"_s}, {"Name", u"文"_s}}, level);
        does(u"cell 0 Code"_s);
    }

    QString shown() const {
        QString rows;
        for (int row = 0; row < grid.rowCount(); ++row)
            rows += grid.isRowHidden(row) ? u'-' : u'x';
        return rows;
    }
};

}  // namespace

TEST_F(GridRows, ChangesOfTheCurrentCellAreToldOnceAndOnlyWhenTheyAreChanges) {
    expect({
        {"row 1", ""},
        {"cell 3 Unit; row 1; row -1", "row 1>3, cell 3 Unit, row 3>1, cell 1 Unit, row 1>-1, cell -1 Unit"},
        {"cell 0 Code; key Down; key Right; key Left; key Left",
         "row -1>0, cell 0 Code, row 0>1, cell 1 Code, cell 1 Name, cell 1 Code"},
        // Typing where nothing can be edited moves nowhere, and Tab leaves.
        {"type 010101002; key Tab", "", "1 Code"},
        {"row -1; focus; key Down", "row 1>-1, cell -1 Code, row -1>0, cell 0 Code", "0 Code"},
        {"click 2 Name; click 1 ", "row 0>2, cell 2 Name, row 2>1, cell 1 Name", "1 Name"},
        {"drag 3 0 Unit", "row 1>3, cell 3 Unit", "3 Unit"},
        // A right click makes its cell current before the menu.
        {"right 2 Unit; menukey", "row 3>2, cell 2 Unit, menu at 2 Unit, menu at 2 Unit"},
    });
    // Below the last row and on the header the menu comes all the same, and from the mouse once.
    clickOn(*grid.viewport(), QPoint(100, grid.viewport()->height() - 5), Qt::RightButton);
    clickOn(*grid.horizontalHeader()->viewport(), QPoint(100, 5), Qt::RightButton);
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(1, 1), QPoint(1, 1));
    QApplication::sendEvent(grid.viewport(), &event);
    expect({{"focus", "menu at 2 Unit, menu at 2 Unit"}});
}

TEST_F(GridRows, TheGrowingColumnKeepsTheWidthThatAUserChose) {
    grid.setObjectName(u"grdWidths"_s);
    grid.setGrowingColumn(name);
    const auto widthIn = [&](int of) {
        window.resize(of, 400);
        return grid.columnWidth(grid.column(name));
    };
    EXPECT_GT(widthIn(1100), widthIn(120));
    const int before = widthIn(480);
    // The user drags the line behind the column.
    const QPoint line(grid.columnViewportPosition(grid.column(unit)) - 1, 5);
    drag(*grid.horizontalHeader()->viewport(), line, line + QPoint(30, 0));
    EXPECT_TRUE(widthIn(1100) == before + 30 && widthIn(300) == before + 30);
    KeyedGrid later;
    later.setObjectName(u"grdWidths"_s);
    later.setColumns({{name, name, 3000}, {unit, unit, 1155}});
    EXPECT_TRUE(later.columnWidth(0) == before + 30 && later.columnWidth(1) == 1155 / 15);
}

TEST_F(GridRows, MarkedRowsAreCopiedAsTextsAndAllElseCopiesOneCell) {
    grid.setText(1, u"Code"_s, u"010101001"_s);
    grid.setText(1, name, u"<a>\t\"b\"\r\nc"_s);
    grid.setText(1, u"Use"_s, u"1"_s);
    grid.setComboList(u"Type"_s, u"#1;数值"_s);
    const QStringList lines{u"\t平整场地0\tm2\t数值\t\n"_s, u"010101001\t\"<a>\t\"\"b\"\"\r\nc\"\tm2\t数值\t√\n"_s,
                            u"\t平整场地2\tm2\t数值\t\n"_s, u"\t平整场地3\tm2\t数值\t\n"_s};
    for (const auto& [marking, first, count, current, copied] :
         {std::tuple("cell 2 Name; key Shift+Up", 1, 2, "1 Name", "<a> \"b\" c"),
          {"key Shift+Down; key Shift+Down; key Shift+Down", 0, 4, "3 Name", "平整场地3"},
          {"click 3 Unit; shift 1 Use; shift 2 Unit", 2, 2, "2 Unit", "m2"},
          {"click 0 Name; shift 1 ", 0, 2, "1 Name", "<a> \"b\" c"},
          {"cell 2 Unit; key Ctrl+A", 0, 4, "2 Unit", "m2"}}) {
        SCOPED_TRACE(marking);
        does(u"click 3 Name; click 0 Name; "_s + QString::fromUtf8(marking) + u"; key Ctrl+C"_s);
        EXPECT_EQ(state(), QString::fromUtf8(current));
        EXPECT_EQ(QApplication::clipboard()->text(), lines.mid(first, count).join(QString()));
        does(u"key Down; key Up; click %1; key Ctrl+C"_s.arg(QString::fromUtf8(current)));
        EXPECT_EQ(QApplication::clipboard()->text(), QString::fromUtf8(copied));
    }
    does(u"cell 0 Name; key Shift+Down; key Ctrl+C"_s);
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->html().contains(
        u"sdnum=\"0;0;@\">010101001</td><td style='mso-number-format:\"\\@\"' sdnum=\"0;0;@\">"
        u"&lt;a&gt;\t&quot;b&quot;<br style=\"mso-data-placement:same-cell\">c</td>"_s));
}

TEST_F(GridOutline, ClosedNodesHideWhatIsBelowThemAndOpenAsTheyWere) {
    const auto close = [this](int row, bool on = true) {
        grid.setCollapsed(row, on);
        return shown();
    };
    close(1);
    EXPECT_EQ(close(0), u"x----xx"_s);
    EXPECT_EQ(close(0, false), u"xx--xxx"_s);
    EXPECT_EQ(close(2), u"xx--xxx"_s) << "a leaf";
    // The keyboard passes over what is hidden; a node that closes around the current row becomes current.
    expect({{"row 1; key Down", "row 0>1, cell 1 Code, row 1>4, cell 4 Code", "4 Code"}});
    close(0);
    expect({{"key Ctrl+A; key Ctrl+C", "row 4>0, cell 0 Code", "0 Code"}});
    EXPECT_EQ(QApplication::clipboard()->text(), u"level\t文\t\t\t\n"_s.repeated(3));
    // Making a hidden row current opens its nodes, and so does inserting; removing moves no closed states.
    grid.setRow(2);
    EXPECT_EQ(shown(), u"xxxxxxx"_s);
    for (const int row : {1, 0, 5})
        close(row);
    grid.insertRow(2, {{"Name", u"新"_s}}, 2);
    EXPECT_EQ(shown(), u"xxxxxxx-"_s);
    grid.removeRows(1, 5);
    EXPECT_EQ(shown(), u"xx-"_s);
}

TEST_F(GridOutline, TheArrowAndKeysToggleAndMakeNothingCurrent) {
    const QRect place = cell(1, u"Code"_s);
    const QPoint arrow(place.left() + 2 + 18 + 9, place.center().y());
    // The second of two quick clicks counts like the first.
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, arrow);
    EXPECT_EQ(shown(), u"xx--xxx"_s);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, arrow);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, arrow);
    EXPECT_EQ(shown(), u"xxxxxxx"_s);
    expect({{"key Left", "", "0 Code"}});
    EXPECT_EQ(shown(), u"x----xx"_s);
    expect({{"key Right", "", "0 Code"}});
    EXPECT_EQ(shown(), u"xxxxxxx"_s);
    // What only the eye sees is told to those who do not see it.
    grid.setPending(0, u"Code"_s, true);
    EXPECT_EQ(grid.currentIndex().data(Qt::AccessibleDescriptionRole).toString(), u"第 1 级，已展开，未写入文件"_s);
}
