#include "tests/rooms/GridWindow.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QVBoxLayout>

#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

GridWindow::GridWindow() {
    auto* layout = new QVBoxLayout(this);
    for (QWidget* widget : std::initializer_list<QWidget*>{&grid, &other, &button})
        layout->addWidget(widget);
    grid.setColumns({{QString(), QString(), 225},
                     {u"id"_s, u"id"_s, 900, Qt::AlignLeft, Qt::AlignLeft, false},
                     {u"Code"_s, u"编号"_s, 1590},
                     {u"Name"_s, u"清单名称"_s, 3000},
                     {u"Unit"_s, u"单位"_s, 1155, Qt::AlignCenter},
                     {u"Type"_s, u"类型"_s, 1155, Qt::AlignCenter},
                     {u"Use"_s, u"使用"_s, 800, Qt::AlignCenter, Qt::AlignCenter, true, GridColumn::Look::CheckBox}});
    grid.startEdit = [](int, const QString& key) { return key != u"Code"_s; };
    grid.validateEdit = [this](int row, const QString& key, QString& text) {
        told << u"asked %1 %2 %3"_s.arg(row).arg(key, text);
        return EditVerdict::Accept;
    };
    const auto tell = [this](const char* what) {
        return [this, what](int row, const QString& key) {
            told << u"%1 %2 %3"_s.arg(QLatin1String(what)).arg(row).arg(key);
        };
    };
    connect(&grid, &KeyedGrid::cellChanged, this, tell("cell"));
    connect(&grid, &KeyedGrid::afterEdit, this, tell("edited"));
    connect(&grid, &KeyedGrid::cellButtonClicked, this, tell("ellipsis"));
    connect(&grid, &KeyedGrid::contextMenuWanted, this, [=, this] { tell("menu at")(grid.row(), grid.columnKey()); });
    connect(&grid, &KeyedGrid::rowChanged, this, [this](int a, int b) { told << u"row %1>%2"_s.arg(a).arg(b); });
    connect(&grid, &KeyedGrid::rowDoubleClicked, this, [this](int row) { told << u"double %1"_s.arg(row); });
    connect(&button, &QPushButton::clicked, this, [this] { told << u"button"_s; });
    connect(&otherWindow, &QPushButton::clicked, this, [this] { told << u"window"_s; });
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
        grid.appendRow({{"NAME", u"平整场地%1"_s.arg(i)}, {"Unit", u"m2"_s}, {"Type", u"1"_s}, {"Use", u"2"_s}});
    grid.setRow(0);
    grid.setRedraw(true);
    told.clear();
}

QRect GridWindow::cell(int row, const QString& key) const {
    return grid.visualRect(grid.model()->index(row, key.isEmpty() ? 0 : grid.column(key)));
}

void GridWindow::clickOn(QWidget& widget, const QPoint& position, Qt::MouseButton button) {
    QWidget* top = widget.window();
    QTest::mouseClick(top->windowHandle(), button, {}, widget.mapTo(top, position));
}

QString GridWindow::texts(const QString& key) const {
    QStringList all;
    for (int row = 0; row < grid.rowCount(); ++row)
        all << grid.text(row, key);
    return all.join(u' ');
}

QString GridWindow::does(const QString& gestures) {
    using namespace QTest;
    for (const QString& gesture : gestures.split(u"; "_s)) {
        const QString what = gesture.section(u' ', 0, 0), text = gesture.section(u' ', 1);
        const int row = text.section(u' ', 0, 0).toInt();
        const QString key = text.section(u' ', -1);
        const QPoint middle = cell(row, key).center(), end(cell(row, key).right() - 8, middle.y());
        QWidget* view = grid.viewport();
        const auto inWindow = [&](int of) { return view->mapTo(this, cell(of, key).center()); };
        QInputMethodEvent composing(what == u"compose"_s ? text : QString(), {});
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
        if (what == u"committed"_s)
            composing.setCommitString(text);
        const std::map<QString, std::function<void()>> all{
            {u"key"_s,
             [&] {
                 activate();
                 const QKeyCombination pressed = QKeySequence(text)[0];
                 keyClick(QApplication::focusWidget(), pressed.key(), pressed.keyboardModifiers());
             }},
            {u"type"_s,
             [&] {
                 // The first character may open an editor, which takes the rest.
                 for (const QChar character : text)
                     typeText(QApplication::focusWidget(), character);
             }},
            {u"click"_s, [&] { clickOn(*view, middle); }},
            {u"right"_s, [&] { clickOn(*view, middle, Qt::RightButton); }},
            {u"end"_s, [&] { clickOn(*view, end); }},
            {u"double"_s, [&] { mouseDClick(windowHandle(), Qt::LeftButton, {}, inWindow(row)); }},
            {u"drag"_s,
             [&] {
                 const QPoint to = inWindow(text.section(u' ', 1, 1).toInt());
                 mousePress(windowHandle(), Qt::LeftButton, {}, inWindow(row));
                 mouseMove(windowHandle(), to);
                 mouseRelease(windowHandle(), Qt::LeftButton, {}, to);
             }},
            {u"compose"_s, [&] { QApplication::sendEvent(QApplication::focusWidget(), &composing); }},
            {u"committed"_s, [&] { QApplication::sendEvent(QApplication::focusWidget(), &composing); }},
            {u"menukey"_s, [&] { QApplication::sendEvent(view, &menuKey); }},
            {u"button"_s, [&] { clickOn(button, button.rect().center()); }},
            {u"window"_s, [&] { clickOn(otherWindow, otherWindow.rect().center()); }},
            {u"leave"_s, [&] { other.setFocus(Qt::OtherFocusReason); }},
            {u"focus"_s, [&] { grid.setFocus(); }},
            {u"row"_s, [&] { grid.setRow(row); }},
            {u"cell"_s, [&] { grid.setCell(row, key); }},
            {u"commit"_s, [&] { told << (grid.commitEdit() ? u"done"_s : u"refused"_s); }},
        };
        all.at(what)();
    }
    return std::exchange(told, {}).join(u", "_s);
}

QString GridWindow::state() const {
    const QString at = u"%1 %2"_s.arg(grid.row()).arg(grid.columnKey());
    return at + (lineEditor() ? u" [%1]"_s.arg(lineEditor()->text()) : grid.isEditing() ? u" []"_s : QString());
}

void GridWindow::expect(std::initializer_list<Step> steps) {
    for (const auto& [gestures, expected, after] : steps) {
        EXPECT_EQ(does(QString::fromUtf8(gestures)), QString::fromUtf8(expected)) << gestures;
        if (after) {
            EXPECT_EQ(state(), QString::fromUtf8(after)) << gestures;
        }
    }
}
