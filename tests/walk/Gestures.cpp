// What the user does, and how often: clicks, keys and commands, in all parts of the window.

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTextDocumentFragment>
#include <array>

#include "ration_browser/frmDekBrowser.h"
#include "tests/walk/RandomUser.h"

using namespace Qt::StringLiterals;

void RandomUser::act() {
    using User = RandomUser;
    struct Gesture {
        void (User::*act)();
        std::array<int, 4> often;  ///< in each room
    };
    static const std::vector<Gesture> gestures{
        {&User::clickChapter, {22, 0, 0, 0}},    {&User::pressInTree, {8, 0, 0, 0}},
        {&User::chapterCommand, {36, 0, 0, 0}},  {&User::reopen, {1, 0, 0, 0}},
        {&User::clickRow, {0, 12, 8, 8}},        {&User::pressInGrid, {0, 6, 0, 8}},
        {&User::editCell, {0, 10, 18, 27}},      {&User::commandHere, {0, 24, 23, 26}},
        {&User::goOnWhileTyping, {0, 12, 6, 6}}, {&User::query, {0, 4, 0, 0}},
        {&User::listWhileLocked, {0, 2, 0, 0}},  {&User::typeIntoBox, {0, 7, 0, 0}},
        {&User::chooseEntry, {0, 0, 8, 5}},      {&User::tickValue, {0, 0, 10, 0}},
        {&User::pressOnly, {0, 0, 2, 0}},        {&User::changeProfession, {0, 0, 0, 2}},
        {&User::useBrowser, {0, 0, 0, 9}},       {&User::goBackOrForth, {6, 6, 6, 6}},
    };
    using enum Room;
    if (chance(4))
        m_room = oneOf({Chapters, Bills, Features, Contents, Contents});
    // An empty list is soon left.
    if (!m_driver.bills()->hasRows() && chance(40))
        return clickChapter();
    // Now and then the hand goes elsewhere, and is at work there meanwhile.
    const Room room = std::exchange(m_room, chance(36) ? oneOf({Chapters, Bills, Features, Contents}) : m_room);
    const auto often = [this](const Gesture& gesture) { return gesture.often[static_cast<std::size_t>(m_room)]; };
    int drawn = 0;
    for (const Gesture& gesture : gestures)
        drawn += often(gesture);
    drawn = upTo(drawn);
    auto gesture = gestures.begin();
    while (drawn >= often(*gesture))
        drawn -= often(*gesture++);
    (this->*gesture->act)();
    m_room = room;
}

/// Takes steps back or does them again, by keys or by the link in the status bar.
void RandomUser::goBackOrForth() {
    auto* status = m_driver.window()->findChild<QLabel*>(u"statusLine"_s);
    bool back = chance(60);
    for (int steps = 1 + upTo(4); steps > 0; --steps) {
        const qsizetype link = status->text().indexOf(u"<a "_s);
        const bool byMouse = link >= 0 && chance(30);
        if (byMouse)
            back = status->text().contains(u"撤消 ("_s);
        begin(back ? Deed::Kind::Undone : Deed::Kind::Redone);
        if (byMouse) {
            const QString before = QTextDocumentFragment::fromHtml(status->text().left(link)).toPlainText();
            const QPoint onLink(status->fontMetrics().horizontalAdvance(before) + 8, status->height() / 2);
            QTest::mouseMove(status, onLink);
            QTest::mouseClick(status, Qt::LeftButton, {}, onLink);
        } else if (back || chance(50)) {
            m_driver.key(m_driver.tree(), back ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier);
        } else {
            m_driver.key(m_driver.bills(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        }
        m_deed.text = status->text();
        done();
        EditorDriver::settle();
    }
}

/// The grid where the user is at work.
KeyedGrid* RandomUser::grid() {
    if (m_room == Room::Contents)
        return m_driver.contents();
    if (m_room != Room::Features)
        return m_driver.bills();
    return chance(50) ? m_driver.features() : m_driver.values();
}

/// A row that is not hidden, of an outline level or deeper; -1 when there is none.
int RandomUser::shownRow(const KeyedGrid* grid, int level) {
    QList<int> rows;
    for (int row = 0; row < grid->rowCount(); ++row)
        if (!grid->isRowHidden(row) && grid->level(row) >= level)
            rows << row;
    return rows.isEmpty() ? -1 : oneOf(rows);
}

/// A row of a ration; -1 when there is none.
int RandomUser::rationRow() {
    const KeyedGrid* contents = m_driver.contents();
    const int row = contents->row();
    return row >= 0 && contents->level(row) == 2 ? row : shownRow(contents, 2);
}

EditorDriver::Closing RandomUser::closing() {
    using enum EditorDriver::Closing;
    return oneOf({Command, Key, Child, m_driver.ownsWindow() ? Main : Child});
}

void RandomUser::look(QWidget* place, int row, const std::function<void()>& act) {
    begin(Deed::Kind::Look, place->objectName(), row);
    act();
    done();
}

void RandomUser::press(QWidget* view, std::initializer_list<QKeyCombination> keys) {
    m_driver.showPage(view);
    view->setFocus();
    const QKeyCombination key = oneOf(keys);
    look(view, -1, [&] { m_driver.key(view, key.key(), key.keyboardModifiers()); });
}

void RandomUser::run(int command, bool byMouse) const {
    if (byMouse && m_driver.isEnabled(command / 1000, command % 1000))
        m_driver.runByMouse(command / 1000, command % 1000);
    else
        m_driver.run(command / 1000, command % 1000);
}

void RandomUser::command(int id, const QString& searched) {
    const int row = m_driver.contents()->row();
    const QString level = row < 0 ? QString() : QString::number(m_driver.contents()->level(row));
    begin(Deed::Kind::Command, {}, row, level, searched);
    m_deed.command = id;
    if (id == 2202 && chance(50))
        m_driver.key(m_driver.search(), Qt::Key_Return);
    else
        run(id, chance(50));
    done();
}

/// Runs a command where the user is, or on another row.
void RandomUser::commandHere() {
    const int id = m_room == Room::Bills      ? oneOf({2200, 2200, 2200, 2201, 2201, 2104, 2105, 2105})
                   : m_room == Room::Contents ? oneOf({2400, 2401, 2402, 2402, 2403, 2403})
                                              : oneOf({3300, 3300, 3301, 4300, 4300, 4301});
    if (chance(40))
        clickRow();
    command(id);
}

void RandomUser::pressInTree() {
    press(m_driver.tree(),
          {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown});
}

void RandomUser::pressInGrid() {
    press(grid(), {Qt::Key_Up, Qt::Key_Down, Qt::SHIFT | Qt::Key_Down, Qt::Key_PageDown, Qt::CTRL | Qt::Key_Home,
                   Qt::CTRL | Qt::Key_End, Qt::Key_Left, Qt::Key_Right, Qt::CTRL | Qt::Key_C});
}

void RandomUser::clickChapter() {
    const QList<KeyedTree::Node*> nodes = m_driver.tree()->nodes();
    if (nodes.isEmpty())
        return;
    int row = upTo(nodes.size());
    // Most often one that has bills.
    for (int tries = 0; tries < 4 && KeyedTree::tag(nodes[row]).size() != 6; ++tries)
        row = upTo(nodes.size());
    look(m_driver.tree(), row, [&] { m_driver.click(nodes[row]); });
}

void RandomUser::chapterCommand() {
    const KeyedTree* tree = m_driver.tree();
    const KeyedTree::Node* selected = tree->selectedNode();
    const int id = oneOf({1100, 1100, 1101, 1101, 1102, 1102, 1103, 1104, 1105, 1105, 1106, 1107, 1108, 1109});
    // Behind a code that has overflowed there is no next one.
    const KeyedTree::Node* last = selected && id == 1100 ? tree->lastSibling(selected) : nullptr;
    if (id == 1101 && selected && selected->childCount() > 0)
        last = selected->child(selected->childCount() - 1);
    if (KeyedTree::tag(last).size() % 2 == 0)
        command(id);
}

void RandomUser::reopen() {
    if (!m_habits.reopens)
        return;
    const bool unknown = m_halfDone;
    begin(Deed::Kind::Reopened, {}, -1, {}, unknown ? u"unknown"_s : QString());
    if (!m_driver.close(closing()) && !(unknown && m_driver.close()))
        return escape();
    // Codes that have overflowed cut every tree short from now on; somebody puts that right.
    if (!m_disturbed && chance(50)) {
        OtherProgram(m_driver.path()).run("DELETE FROM tblSYB WHERE length(Code)%2=1 OR length(Code)>6");
        m_deed.text = u"unknown"_s;
    }
    m_driver.open();
    done();
}

void RandomUser::clickRow() {
    KeyedGrid* view = grid();
    const int row = shownRow(view);
    if (row < 0)
        return;
    const bool right = chance(15);
    const QString key = anyColumn(view);
    look(view, row, [&] {
        m_driver.click(view, row, key, right ? Qt::RightButton : Qt::LeftButton);
        m_driver.closeMenu();
    });
    // A click on the current cell of a column with a list opens the list.
    escape();
}

/// Presses the mouse on a check box and releases it elsewhere, where nothing happens.
void RandomUser::pressOnly() {
    KeyedGrid* values = m_driver.values();
    m_driver.showPage(values);
    QWidget* area = values->viewport();
    const QModelIndex box = values->model()->index(values->rowCount() - 1, values->column(u"isUse"_s));
    const QPoint at = values->visualRect(box).center();
    const QPoint elsewhere(at.x(), area->height() + 3);
    look(area, -1, [&] {
        QTest::mousePress(area, Qt::LeftButton, {}, at);
        QTest::mouseMove(area, elsewhere);
        QTest::mouseRelease(area, Qt::LeftButton, {}, elsewhere);
    });
}

void RandomUser::query() {
    const QString text = oneOf({u""_s, u"0101"_s, u"01"_s, u"1"_s, u"002"_s, u"0_0%1"_s, u"'"_s, u"zz"_s});
    m_driver.typeQuery(text);
    command(2202, text);
}

/// What could not be listed is not there for any command, until it has been listed.
void RandomUser::listWhileLocked() {
    if (m_disturbed || !m_habits.disturbed)
        return;
    const bool asks = m_driver.chapter().size() != 6 || chance(50);
    if (asks)
        m_driver.typeQuery(u"0"_s);
    begin(Deed::Kind::Refused, {}, -1, {}, asks ? u"0"_s : QString());
    {
        const Disturbance locked(m_driver.path(), Disturbance::Kind::Locked);
        m_driver.pragma("PRAGMA busy_timeout=0");
        if (asks)
            run(2202, false);
        else
            m_driver.click(m_driver.tree()->selectedNode());
        EditorDriver::settle();
    }
    m_deed.possible = !m_driver.bills()->hasRows();
    // Adding lists first; a query is asked again.
    run(asks ? 2202 : 2200, false);
    done();
}

void RandomUser::changeProfession() {
    QComboBox* combo = m_driver.profession();
    m_driver.showPage(combo);
    combo->setFocus();
    look(combo, -1, [&] { m_driver.key(combo, chance(35) ? Qt::Key_Home : oneOf({Qt::Key_Up, Qt::Key_Down})); });
}

void RandomUser::useBrowser() {
    auto* browser = frmDekBrowser::shared(m_driver.window());
    KeyedGrid* contents = m_driver.contents();
    const auto shown = [browser] { return browser->cboDek()->currentData().toString(); };
    if (const int row = rationRow(); row >= 0 && chance(60)) {
        m_driver.showPage(contents);
        contents->setFocus();
        contents->setCell(row, u"cont"_s);
        begin(Deed::Kind::Look, u"browser"_s);
        m_driver.key(contents, Qt::Key_F4);
        m_deed.possible = browser->isVisible();
        m_deed.dekID = shown();
        done();
    }
    if (!browser->isVisible())
        return;
    EditorDriver::activate(browser);
    if (chance(30)) {
        const QString before = shown();
        begin(Deed::Kind::Look, u"cboDek"_s);
        m_driver.key(browser->cboDek(), oneOf({Qt::Key_Up, Qt::Key_Down}));
        if (shown() != before)
            m_deed.dekID = shown();
        done();
    }
    if (const QList<KeyedTree::Node*> nodes = browser->tvRationContent()->nodes(); !nodes.isEmpty())
        EditorDriver::click(browser->tvRationContent(), oneOf(nodes));
    takeRation(*browser);
    m_driver.activate();
}

void RandomUser::takeRation(frmDekBrowser& browser) {
    KeyedGrid* list = browser.grdDEB();
    enum Way { DoubleClick, Enter, Insert, Replace, Hide };
    const Way way = oneOf({DoubleClick, Enter, Insert, Replace, Replace, Hide});
    const int row = shownRow(list);
    if (way == Hide || row < 0)
        return m_driver.key(&browser, Qt::Key_Escape);
    list->setRow(row);
    begin(Deed::Kind::Ration, {}, row, way == Replace ? u"replace"_s : u"insert"_s, list->text(row, u"DEH"_s));
    m_deed.dekID = browser.cboDek()->currentData().toString();
    m_deed.possible = browser.ParetnForm() == m_driver.editor();
    if (way == DoubleClick) {
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->currentIndex()).center());
    } else if (way == Enter) {
        list->setFocus();
        m_driver.key(list, Qt::Key_Return);
    } else {
        browser.CommandBars1()->execute(way == Insert ? 259 : 260);
    }
    done();
}
