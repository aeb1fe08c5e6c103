#include "tests/rooms/GridWindow.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QVBoxLayout>

GridWindow::GridWindow() {
    auto* layout = new QVBoxLayout(&window);
    layout->addWidget(&grid);
    layout->addWidget(&other);
    grid.setColumns({{QString(), QString(), 225},
                     {u"id"_s, u"id"_s, 900, Qt::AlignLeft, Qt::AlignLeft, false},
                     {u"Code"_s, u"编号"_s, 1590},
                     {name, u"清单名称"_s, 3000},
                     {unit, u"单位"_s, 1155, Qt::AlignCenter},
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
    QObject::connect(&grid, &KeyedGrid::cellChanged, tell("cell"));
    QObject::connect(&grid, &KeyedGrid::afterEdit, tell("edited"));
    QObject::connect(&grid, &KeyedGrid::cellButtonClicked, tell("ellipsis"));
    QObject::connect(&grid, &KeyedGrid::contextMenuWanted,
                     [=, this] { tell("menu at")(grid.row(), grid.columnKey()); });
    QObject::connect(&grid, &KeyedGrid::rowChanged, [this](int a, int b) { told << u"row %1>%2"_s.arg(a).arg(b); });
    QObject::connect(&grid, &KeyedGrid::rowDoubleClicked, [this](int row) { told << u"double %1"_s.arg(row); });
    QObject::connect(&otherWindow, &QPushButton::clicked, [this] { told << u"window"_s; });
    window.resize(900, 400);
    window.show();
    activate();
    grid.setFocus();
    fill(4);
    does(u"cell 1 Name"_s);
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

void GridWindow::clickOn(QWidget& widget, const QPoint& position, Qt::MouseButton button, Qt::KeyboardModifiers keys) {
    QWidget* top = widget.window();
    QTest::mouseClick(top->windowHandle(), button, keys, widget.mapTo(top, position));
}

void GridWindow::drag(QWidget& widget, const QPoint& from, const QPoint& to) {
    QTest::mousePress(&widget, Qt::LeftButton, {}, from);
    QTest::mouseMove(&widget, to);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, to);
}

QString GridWindow::texts(const QString& key) const {
    QStringList all;
    for (int row = 0; row < grid.rowCount(); ++row)
        all << grid.text(row, key);
    return all.join(u' ');
}

QString GridWindow::does(const QString& gestures) {
    QWidget* view = grid.viewport();
    for (const QString& gesture : gestures.split(u"; "_s)) {
        const QStringList words = gesture.split(u' ');
        const QString text = gesture.section(u' ', 1), key = words.last();
        const int row = words.value(1).toInt();
        const QRect place = cell(row, key);
        const auto press = [this](QKeyCombination keys) {
            activate();
            QTest::keyClick(QApplication::focusWidget(), keys.key(), keys.keyboardModifiers());
        };
        // The first character may open an editor, which takes the rest.
        const auto type = [&] {
            for (const QChar character : text)
                typeText(QApplication::focusWidget(), character);
        };
        QContextMenuEvent menuKey(QContextMenuEvent::Keyboard, QPoint(1, 1), QPoint(1, 1));
        const auto compose = [&](const QString& preedit, const QString& committed) {
            QInputMethodEvent event(preedit, {});
            event.setCommitString(committed);
            QApplication::sendEvent(QApplication::focusWidget(), &event);
        };
        const std::map<QString, std::function<void()>> all{
            {u"key"_s, [&] { press(QKeySequence(text)[0]); }},
            {u"type"_s, type},
            {u"click"_s, [&] { clickOn(*view, place.center()); }},
            {u"shift"_s, [&] { clickOn(*view, place.center(), Qt::LeftButton, Qt::ShiftModifier); }},
            {u"right"_s, [&] { clickOn(*view, place.center(), Qt::RightButton); }},
            {u"end"_s, [&] { clickOn(*view, QPoint(place.right() - 8, place.center().y())); }},
            {u"double"_s, [&] { QTest::mouseDClick(view, Qt::LeftButton, {}, place.center()); }},
            {u"drag"_s, [&] { drag(*view, place.center(), cell(words[2].toInt(), key).center()); }},
            {u"compose"_s, [&] { compose(text, {}); }},
            {u"committed"_s, [&] { compose({}, text); }},
            {u"menukey"_s, [&] { QApplication::sendEvent(view, &menuKey); }},
            {u"window"_s, [&] { clickOn(otherWindow, otherWindow.rect().center()); }},
            {u"leave"_s, [&] { other.setFocus(Qt::OtherFocusReason); }},
            {u"focus"_s, [&] { grid.setFocus(); }},
            {u"row"_s, [&] { grid.setRow(row); }},
            {u"cell"_s, [&] { grid.setCell(row, key); }},
            {u"commit"_s, [&] { told << (grid.commitEdit() ? u"done"_s : u"refused"_s); }},
        };
        all.at(words.first())();
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
