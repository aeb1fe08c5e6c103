#include "tests/controls/GridWindow.h"

#include <QVBoxLayout>

#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

GridWindow::GridWindow() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(&grid);
    layout->addWidget(&other);
    grid.setColumns({{QString(), QString(), 225},
                     {u"id"_s, u"id"_s, 900, Qt::AlignLeft, Qt::AlignLeft, false},
                     {u"Code"_s, u"编号"_s, 1590},
                     {u"Name"_s, u"清单名称"_s, 3000},
                     {u"Unit"_s, u"单位"_s, 1155, Qt::AlignCenter},
                     {u"Type"_s, u"类型"_s, 1155, Qt::AlignCenter},
                     {u"Use"_s, u"使用"_s, 800, Qt::AlignCenter, Qt::AlignCenter, true, GridColumn::Look::CheckBox}});
    grid.startEdit = [](int, const QString& key) { return key != u"Code"_s; };
    grid.validateEdit = [this](int row, const QString& key, QString& text) {
        asked << u"%1 %2 %3"_s.arg(row).arg(key, text);
        return verdict;
    };
    connect(&grid, &KeyedGrid::rowChanged, this,
            [this](int from, int to) { told << u"row %1>%2"_s.arg(from).arg(to); });
    connect(&grid, &KeyedGrid::cellChanged, this,
            [this](int row, const QString& key) { told << u"cell %1 %2"_s.arg(row).arg(key); });
    connect(&grid, &KeyedGrid::afterEdit, this,
            [this](int row, const QString& key) { told << u"edited %1 %2"_s.arg(row).arg(key); });
    connect(&grid, &KeyedGrid::cellButtonClicked, this,
            [this](int row, const QString& key) { told << u"button %1 %2"_s.arg(row).arg(key); });
    connect(&grid, &KeyedGrid::rowDoubleClicked, this, [this](int row) { told << u"double %1"_s.arg(row); });
    connect(&grid, &KeyedGrid::contextMenuWanted, this,
            [this] { told << u"menu at %1 %2"_s.arg(grid.row()).arg(grid.columnKey()); });
    resize(900, 400);
    show();
    activate();
    grid.setFocus();
}

void GridWindow::activate() {
    activateWindow();
    (void)QTest::qWaitForWindowActive(this);
}

void GridWindow::fill(int rows) {
    grid.setRedraw(false);
    for (int i = 0; i < rows; ++i)
        grid.appendRow({{"ID", QString::number(100 + i)},
                        {"code", u"01010100%1"_s.arg(i)},
                        {"NAME", u"平整场地%1"_s.arg(i)},
                        {"Unit", u"m2"_s},
                        {"Type", u"1"_s},
                        {"Use", u"2"_s}});
    grid.setRow(0);
    grid.setRedraw(true);
    told.clear();
}

QPoint GridWindow::at(int row, const QString& key) const {
    return grid.visualRect(grid.model()->index(row, key.isEmpty() ? 0 : grid.column(key))).center();
}

void GridWindow::clickOn(QWidget& widget, const QPoint& position, Qt::MouseButton button) {
    QWidget* top = widget.window();
    QTest::mouseClick(top->windowHandle(), button, {}, widget.mapTo(top, position));
}

void GridWindow::click(int row, const QString& key, Qt::MouseButton button) {
    clickOn(*grid.viewport(), at(row, key), button);
}

void GridWindow::doubleClick(int row, const QString& key) {
    QTest::mouseDClick(windowHandle(), Qt::LeftButton, {}, grid.viewport()->mapTo(this, at(row, key)));
}

void GridWindow::drag(int fromRow, int toRow, const QString& key) {
    const auto inWindow = [&](int row) { return grid.viewport()->mapTo(this, at(row, key)); };
    QTest::mousePress(windowHandle(), Qt::LeftButton, {}, inWindow(fromRow));
    QTest::mouseMove(windowHandle(), inWindow(toRow));
    QTest::mouseRelease(windowHandle(), Qt::LeftButton, {}, inWindow(toRow));
}

void GridWindow::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    activate();
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

void GridWindow::type(const QString& text) {
    for (const QChar character : text)
        typeText(QApplication::focusWidget(), character);
}
