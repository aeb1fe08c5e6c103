#include "tests/controls/GridWindow.h"

#include <QVBoxLayout>

GridWindow::GridWindow() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(&grid);
    layout->addWidget(&other);
    grid.setColumns({{QString(), QString(), 225},
                     {QStringLiteral("id"), QStringLiteral("id"), 900, Qt::AlignLeft, Qt::AlignLeft, false},
                     {QStringLiteral("Code"), QStringLiteral("编号"), 1590},
                     {QStringLiteral("Name"), QStringLiteral("清单名称"), 3000},
                     {QStringLiteral("Unit"), QStringLiteral("单位"), 1155, Qt::AlignCenter},
                     {QStringLiteral("Type"), QStringLiteral("类型"), 1155, Qt::AlignCenter},
                     {QStringLiteral("Use"), QStringLiteral("使用"), 800, Qt::AlignCenter, Qt::AlignCenter, true,
                      GridColumn::Look::CheckBox}});
    grid.startEdit = [](int, const QString& key) { return key != QLatin1String("Code"); };
    grid.validateEdit = [this](int row, const QString& key, QString& text) {
        asked << QStringLiteral("%1 %2 %3").arg(row).arg(key, text);
        return verdict;
    };
    connect(&grid, &KeyedGrid::rowChanged, this,
            [this](int from, int to) { told << QStringLiteral("row %1>%2").arg(from).arg(to); });
    connect(&grid, &KeyedGrid::cellChanged, this,
            [this](int row, const QString& key) { told << QStringLiteral("cell %1 %2").arg(row).arg(key); });
    connect(&grid, &KeyedGrid::afterEdit, this,
            [this](int row, const QString& key) { told << QStringLiteral("edited %1 %2").arg(row).arg(key); });
    connect(&grid, &KeyedGrid::cellButtonClicked, this,
            [this](int row, const QString& key) { told << QStringLiteral("button %1 %2").arg(row).arg(key); });
    connect(&grid, &KeyedGrid::rowDoubleClicked, this,
            [this](int row) { told << QStringLiteral("double %1").arg(row); });
    connect(&grid, &KeyedGrid::contextMenuWanted, this,
            [this] { told << QStringLiteral("menu at %1 %2").arg(grid.row()).arg(grid.columnKey()); });
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
                        {"code", QStringLiteral("01010100%1").arg(i)},
                        {"NAME", QStringLiteral("平整场地%1").arg(i)},
                        {"Unit", QStringLiteral("m2")},
                        {"Type", QStringLiteral("1")},
                        {"Use", QStringLiteral("2")}});
    grid.setRow(0);
    grid.setRedraw(true);
    told.clear();
}

QPoint GridWindow::at(int row, const QString& key) const {
    return grid.visualRect(grid.model()->index(row, key.isEmpty() ? 0 : grid.column(key))).center();
}

void GridWindow::click(int row, const QString& key, Qt::MouseButton button) {
    QTest::mouseClick(grid.viewport(), button, {}, at(row, key));
}

void GridWindow::doubleClick(int row, const QString& key) {
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, at(row, key));
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, at(row, key));
}

void GridWindow::key(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    activate();
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
}

void GridWindow::type(const QString& text) {
    for (const QChar character : text)
        QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, QString(character), {});
}
