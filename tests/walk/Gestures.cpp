// What the user does, with what of a window: clicks, keys, commands, typing.

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QToolButton>

#include "ration_browser/frmDekBrowser.h"
#include "tests/walk/RandomUser.h"

using namespace Qt::StringLiterals;

namespace {

QStringList typedColumns(const QString& grid) {
    if (grid == u"grdBillList")
        return {u"CodePreFix"_s, u"Name"_s, u"Name"_s, u"Unit"_s, u"Code"_s};
    if (grid == u"grdSpec")
        return {u"Name"_s, u"unit"_s, u"defval"_s};
    return {grid == u"grdSpecEnum" ? u"eigenValue"_s : u"cont"_s};
}

}  // namespace

void RandomUser::look(QWidget* place, int row, const std::function<void()>& act) {
    begin(Deed::Kind::Look).place = place->objectName();
    m_deed.row = row;
    act();
    done();
}

/// Runs a command, an enabled one also with the mouse.
void RandomUser::command(int host, int id, const QString& searched) {
    begin(Deed::Kind::Command).command = host * 1000 + id;
    m_deed.text = searched;
    const int row = m_driver.contents()->row();
    m_deed.key = row < 0 ? QString() : QString::number(m_driver.contents()->level(row));
    if (chance(50) && m_driver.isEnabled(host, id))
        m_driver.runByMouse(host, id);
    else
        m_driver.run(host, id);
    done();
}

void RandomUser::press(QWidget* view, std::initializer_list<QKeyCombination> keys) {
    m_driver.showPage(view);
    view->setFocus();
    const QKeyCombination key = oneOf(keys);
    look(view, -1, [&] { m_driver.key(view, key.key(), key.keyboardModifiers()); });
}

/// Gives up whatever is still being edited.
void RandomUser::escape() {
    for (KeyedGrid* each : {m_driver.bills(), m_driver.features(), m_driver.values(), m_driver.contents()})
        if (QWidget* editor = each->findChild<QWidget*>(u"cellEditor"_s)) {
            auto* list = qobject_cast<QComboBox*>(editor);
            m_driver.key(list ? list->view() : editor, Qt::Key_Escape);
            QCoreApplication::processEvents();
        }
}

/// A row that is not hidden, of an outline level or deeper; -1 when there is none.
int RandomUser::shownRow(const KeyedGrid* grid, int level) {
    QList<int> rows;
    for (int row = 0; row < grid->rowCount(); ++row)
        if (!grid->isRowHidden(row) && grid->level(row) >= level)
            rows << row;
    return rows.isEmpty() ? -1 : oneOf(rows);
}

KeyedGrid* RandomUser::grid() {
    switch (m_room) {
        case Room::Contents:
            return m_driver.contents();
        case Room::Features:
            return chance(50) ? m_driver.features() : m_driver.values();
        default:
            return m_driver.bills();
    }
}

void RandomUser::clickChapter() {
    const QList<KeyedTree::Node*> nodes = m_driver.tree()->nodes();
    if (nodes.isEmpty())
        return;
    int row = upTo(static_cast<int>(nodes.size()));
    // Most often one that has bills.
    for (int tries = 0; tries < 4 && KeyedTree::tag(nodes[row]).size() != 6; ++tries)
        row = upTo(static_cast<int>(nodes.size()));
    look(m_driver.tree(), row, [&] { m_driver.click(nodes[row]); });
}

void RandomUser::pressInTree() {
    press(m_driver.tree(),
          {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown});
}

void RandomUser::chapterCommand() {
    const KeyedTree* tree = m_driver.tree();
    const KeyedTree::Node* selected = tree->selectedNode();
    const int id = oneOf({100, 100, 101, 101, 102, 102, 103, 104, 105, 105, 106, 107, 108, 109});
    // Behind a code that has overflowed there is no next one.
    const KeyedTree::Node* last = selected && id == 100 ? tree->lastSibling(selected) : nullptr;
    if (id == 101 && selected && selected->childCount() > 0)
        last = selected->child(selected->childCount() - 1);
    if (KeyedTree::tag(last).size() % 2 == 0)
        command(1, id);
}

void RandomUser::reopen() {
    if (!m_habits.reopens)
        return;
    begin(Deed::Kind::Reopened);
    const bool unknown = m_halfDone;
    m_deed.text = unknown ? u"unknown"_s : QString();
    using enum EditorDriver::Closing;
    if (!m_driver.close(oneOf({Command, Key, Child, m_driver.ownsWindow() ? Main : Child})) &&
        !(unknown && m_driver.close()))
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
    const QString key = oneOf(typedColumns(view->objectName()));
    look(view, row, [&] {
        m_driver.click(view, row, key, right ? Qt::RightButton : Qt::LeftButton);
        m_driver.closeMenu();
    });
    // A click on the current cell of a column with a list opens the list.
    escape();
}

void RandomUser::pressInGrid() {
    press(grid(), {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_PageDown, Qt::CTRL | Qt::Key_Home,
                   Qt::CTRL | Qt::Key_End, Qt::Key_Left, Qt::Key_Right, Qt::CTRL | Qt::Key_C});
}

/// Presses the mouse where something would happen and releases it elsewhere, where nothing does.
void RandomUser::pressOnly() {
    KeyedGrid* values = m_driver.values();
    const auto* command = m_driver.editor()->commandBars(2)->action(oneOf({200, 201, 104, 105}));
    QWidget* pressed = values->viewport();
    QPoint at = values->visualRect(values->model()->index(values->rowCount() - 1, values->column(u"isUse"_s))).center();
    if (m_room == Room::Features)
        m_driver.showPage(values);
    for (auto* button : m_driver.editor()->findChildren<QToolButton*>())
        if (m_room == Room::Bills && button->defaultAction() == command) {
            pressed = button;
            at = button->rect().center();
        }
    const QPoint elsewhere(at.x(), pressed->height() + 3);
    look(pressed, -1, [&] {
        QTest::mousePress(pressed, Qt::LeftButton, {}, at);
        QTest::mouseMove(pressed, elsewhere);
        QTest::mouseRelease(pressed, Qt::LeftButton, {}, elsewhere);
    });
}

void RandomUser::editCell() {
    KeyedGrid* view = grid();
    const int row = shownRow(view);
    if (row >= 0 && (view != m_driver.contents() || view->level(row) < 2))
        type(view, row, oneOf(typedColumns(view->objectName())), anyText());
}

/// Edits a cell, and ends the edit or gives it up.
void RandomUser::type(KeyedGrid* view, int row, const QString& key, const QString& text) {
    QWidget* editor = beginTyping(view, row, key, text);
    const int end = oneOf<int>({Qt::Key_Return, Qt::Key_Return, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape});
    m_deed.given = end != Qt::Key_Escape;
    const QModelIndex cell = view->currentIndex();
    if (editor)
        m_driver.key(editor, end);
    // Tab goes on to the next cell.
    m_deed.stayedOpen = view->isEditing() && view->currentIndex() == cell;
    done();
    escape();
}

/// Types over a cell and leaves it being edited; null when that may not be.
QWidget* RandomUser::beginTyping(KeyedGrid* view, int row, const QString& key, const QString& text) {
    begin(Deed::Kind::Edit).place = view->objectName();
    m_deed.row = row;
    m_deed.key = key;
    m_deed.text = text;
    const bool pasted = text.size() > 200 || chance(25);
    QWidget* editor = m_driver.openEditor(view, row, key);
    m_deed.possible = editor;
    // The row is current now, and its details are shown.
    if (onDeed)
        m_deed.before = snapshotOf(*m_driver.editor());
    if (editor && pasted)
        EditorDriver::pasteOver(editor, text);
    else if (editor)
        EditorDriver::typeOver(editor, text);
    return editor;
}

void RandomUser::query() {
    const QString text = oneOf({u""_s, u"0101"_s, u"01"_s, u"1"_s, u"002"_s, u"0_0%1"_s, u"'"_s, u"zz"_s});
    m_driver.typeQuery(text);
    if (chance(50))
        return command(2, 202, text);
    begin(Deed::Kind::Command).command = 2202;
    m_deed.text = text;
    m_driver.key(m_driver.search(), Qt::Key_Return);
    done();
}

/// What could not be listed is not there for any command, until it has been listed.
void RandomUser::listWhileLocked() {
    if (m_disturbed || !m_habits.disturbed)
        return;
    const bool asks = m_driver.chapter().size() != 6 || chance(50);
    if (asks)
        m_driver.typeQuery(u"0"_s);
    begin(Deed::Kind::Refused).text = asks ? u"0"_s : QString();
    {
        const Disturbance locked(m_driver.path(), Disturbance::Kind::Locked);
        m_driver.pragma("PRAGMA busy_timeout=0");
        if (asks)
            m_driver.run(2, 202);
        else
            m_driver.click(m_driver.tree()->selectedNode());
        EditorDriver::settle();
    }
    m_deed.possible = !m_driver.bills()->hasRows();
    // Adding lists first; a query is asked again.
    m_driver.run(2, asks ? 202 : 200);
    done();
}

QPlainTextEdit* RandomUser::beginTypingIntoBox(const QString& text) {
    QPlainTextEdit* box = chance(50) ? m_driver.rule() : m_driver.content();
    m_driver.showPage(box);
    begin(Deed::Kind::Edit).place = box->objectName();
    m_deed.text = text;
    m_deed.possible = !box->isReadOnly();
    box->setFocus();
    EditorDriver::typeOver(box, text);
    return box;
}

void RandomUser::typeIntoBox() {
    m_driver.key(beginTypingIntoBox(anyText()), Qt::Key_Tab);
    done();
}

/// Begins to type, and does something else without having ended that.
void RandomUser::goOnWhileTyping() {
    const bool inBox = m_room == Room::Bills && chance(40);
    KeyedGrid* view = grid();
    const int row = shownRow(view);
    if (m_disturbed || (!inBox && row < 0))
        return;
    QWidget* box = nullptr;
    if (inBox) {
        box = beginTypingIntoBox(anyText());
    } else {
        const bool ration = view == m_driver.contents() && view->level(row) == 2;
        const QStringList columns = typedColumns(view->objectName());
        if (!beginTyping(view, row, oneOf(columns.mid(0, 2)), ration ? anyCode() : anyText()))
            return done();
    }
    // Between two gestures the window comes to rest: buttons know by now what is current.
    EditorDriver::settle();
    const QModelIndex cell = view->currentIndex();
    const auto ended = [&] {
        m_deed.stayedOpen = inBox ? box->hasFocus() : view->isEditing() && view->currentIndex() == cell;
        if (inBox && m_deed.stayedOpen)
            m_driver.key(box, Qt::Key_Tab);
        done();
        escape();
    };
    const int way = m_habits.reopens ? upTo(10) : upTo(5);
    const QList<KeyedTree::Node*> nodes = m_driver.tree()->nodes();
    if (way < 3 && !nodes.isEmpty()) {
        m_driver.click(oneOf(nodes));
        ended();
    } else if (way < 5) {
        m_driver.click(m_driver.bills(), upTo(m_driver.bills()->rowCount()), u"Code"_s);
        ended();
    } else if (way < 7) {
        using enum EditorDriver::Closing;
        const auto closing = oneOf({Command, Key, Child, m_driver.ownsWindow() ? Main : Child});
        m_deed.closed = m_driver.close(closing);
        if (!m_deed.closed)
            return ended();
        m_driver.open();
        done();
        begin(Deed::Kind::Reopened);
        done();
    } else {
        // A command by the mouse or its key, that does not depend on what is being typed.
        constexpr std::pair<int, int> commands[] = {{1, 108}, {2, 200}, {2, 104}, {2, 105},
                                                    {2, 400}, {3, 300}, {4, 300}};
        const auto [host, id] = oneOf(commands);
        const Snapshot before = onDeed ? snapshotOf(*m_driver.editor()) : Snapshot();
        const qsizetype said = m_answers->seen().size();
        // The first press of several would be lost when the edit is refused.
        const bool mayBeRefused =
            m_deed.text.contains(u'\'') || view == m_driver.contents() || view == m_driver.values();
        const bool byMouse = !mayBeRefused && chance(50) && m_driver.isEnabled(host, id);
        if (byMouse)
            m_driver.runByMouse(host, id);
        else
            m_driver.run(host, id);
        const bool refused = m_answers->seen().size() > said;
        ended();
        // A key is meant for the window, whatever message came; only an edit that stays open keeps it from acting.
        const bool lost = refused && !inBox && m_deed.stayedOpen;
        begin(lost ? Deed::Kind::Look : Deed::Kind::Command).command = host * 1000 + id;
        m_deed.before = before;
        done();
    }
}

void RandomUser::chooseType() {
    const int row = shownRow(m_driver.features());
    if (row >= 0)
        chooseIn(m_driver.features(), row, u"type"_s);
}

void RandomUser::chooseIn(KeyedGrid* view, int row, const QString& key) {
    begin(Deed::Kind::Choice).place = view->objectName();
    m_deed.row = row;
    m_deed.key = key;
    // A real display takes the made-up double click for two clicks.
    const bool byMouse = chance(50) && m_driver.ownsWindow();
    QComboBox* list = m_driver.openList(view, row, key, byMouse);
    m_deed.possible = list;
    if (list) {
        const int entry = upTo(list->count());
        m_deed.text = list->itemData(entry).toString();
        EditorDriver::choose(list, entry, byMouse);
    }
    done();
    escape();
}

void RandomUser::tickValue() {
    KeyedGrid* values = m_driver.values();
    const int row = shownRow(values);
    if (row < 0)
        return;
    begin(Deed::Kind::Tick).place = values->objectName();
    m_deed.row = row;
    if (chance(60)) {
        m_driver.click(values, row, u"isUse"_s);
    } else {
        m_driver.showPage(values);
        values->setFocus();
        values->setCell(row, u"isUse"_s);
        m_driver.key(values, Qt::Key_Space);
    }
    done();
}

/// Runs a command where the user is, or on another row.
void RandomUser::commandHere(int host, int id) {
    if (chance(40))
        clickRow();
    command(host, id);
}

void RandomUser::featureCommand() { commandHere(3, oneOf({300, 300, 300, 301, 301})); }
void RandomUser::valueCommand() { commandHere(4, oneOf({300, 300, 301})); }
void RandomUser::contentCommand() { commandHere(2, oneOf({400, 401, 402, 402, 403, 403})); }
void RandomUser::billCommand() { commandHere(2, oneOf({200, 200, 200, 201, 201, 104, 105, 105})); }

/// A row of a ration; none is current when there is none.
int RandomUser::rationRow() {
    const KeyedGrid* contents = m_driver.contents();
    const int row = contents->row();
    return row >= 0 && contents->level(row) == 2 ? row : shownRow(contents, 2);
}

/// A code as some ration of the library may have it, or none has.
QString RandomUser::anyCode() {
    const KeyedGrid* contents = m_driver.contents();
    QStringList codes{u"x1-1"_s, u"X1-2"_s, u"X1-3"_s, u"x1-4"_s, u"zz"_s, u" A1-1 "_s, QString(), u"a'"_s};
    QStringList seen;
    for (int row = 0; row < contents->rowCount(); ++row)
        if (contents->level(row) == 2 && !contents->text(row, u"cont"_s).isEmpty())
            seen << contents->text(row, u"cont"_s).mid(1).section(u']', 0, 0) << contents->text(row, u"cont"_s);
    const QString code = seen.isEmpty() || chance(30) ? oneOf(codes) : oneOf(seen);
    return chance(40) ? code.toLower() : code;
}

void RandomUser::typeCode() {
    if (const int row = rationRow(); row >= 0)
        type(m_driver.contents(), row, u"cont"_s, anyCode());
}

void RandomUser::chooseLibrary() {
    if (const int row = rationRow(); row >= 0)
        chooseIn(m_driver.contents(), row, u"dekName"_s);
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
        begin(Deed::Kind::Look).place = u"browser"_s;
        m_driver.key(contents, Qt::Key_F4);
        m_deed.possible = browser->isVisible();
        m_deed.dekID = shown();
        m_deed.text = browser->DekID();
        done();
    }
    if (!browser->isVisible())
        return;
    EditorDriver::activate(browser);
    if (chance(30)) {
        const QString before = shown();
        begin(Deed::Kind::Look).place = u"cboDek"_s;
        m_driver.key(browser->cboDek(), oneOf({Qt::Key_Up, Qt::Key_Down}));
        if (shown() != before)
            m_deed.dekID = shown();
        done();
    }
    if (const QList<KeyedTree::Node*> nodes = browser->tvRationContent()->nodes(); !nodes.isEmpty())
        EditorDriver::click(browser->tvRationContent(), oneOf(nodes));
    takeRation(*browser, shown());
    m_driver.activate();
}

void RandomUser::takeRation(frmDekBrowser& browser, const QString& library) {
    KeyedGrid* list = browser.grdDEB();
    enum Way { DoubleClick, Enter, Insert, Replace, Hide };
    const Way way = oneOf({DoubleClick, Enter, Insert, Replace, Replace, Hide});
    const int row = shownRow(list);
    if (way == Hide || row < 0)
        return m_driver.key(&browser, Qt::Key_Escape);
    list->setRow(row);
    begin(Deed::Kind::Ration).text = list->text(row, u"DEH"_s);
    m_deed.dekID = library;
    m_deed.key = way == Replace ? u"replace"_s : u"insert"_s;
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
