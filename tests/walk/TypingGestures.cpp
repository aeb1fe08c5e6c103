// What the user types, chooses and ticks, and how that ends.

#include "tests/walk/RandomUser.h"

/// Text as people type it, and some as they should not.
QString RandomUser::anyText() {
    static const QStringList odd =
        u"¦it's¦x'--¦' OR 1=1 --¦x',(SELECT name FROM sqlite_schema),'¦; DELETE FROM tblBill;¦?1 :name @name¦0x1F¦"
        "50%_\"q\";#1;a|b\\¦%1 %2 %n %s %%¦<b>bold</b>¦&File && &x¦title [*]¦&lt;&#39;¦NULL¦a\u0301\u0302z¦"
        "  两边空白  ¦　全角空白　¦🏗️ 土方 👷"_s.split(u'¦')
        << QString(60, u'w') << QString(49, u'n') + u"😀n"_s;
    if (chance(55))
        return oneOf(odd);
    return (chance(10) ? u"两行\n名称%1"_s : u"名称%1"_s).arg(++m_names);
}

/// A code as some ration of the library may have it, or none has.
QString RandomUser::anyCode() {
    QStringList seen;
    for (const QStringList& row : rowsOf(m_driver.contents()))
        if (row[ContentCell::Level] == u"2" && !row[ContentCell::Cont].isEmpty())
            seen << row[ContentCell::Cont].mid(1).section(u']', 0, 0) << row[ContentCell::Cont];
    if (seen.isEmpty() || chance(30))
        seen = {u"x1-1"_s, u"X1-2"_s, u"X1-3"_s, u"x1-4"_s, u"zz"_s, u" A1-1 "_s, QString(), u"a'"_s};
    const QString code = oneOf(seen);
    return chance(40) ? code.toLower() : code;
}

/// One of the first columns that text can be typed into, or of all.
QString RandomUser::anyColumn(const KeyedGrid* view, qsizetype columns) {
    QStringList keys{u"cont"_s};
    if (view == m_driver.bills())
        keys = {u"CodePreFix"_s, u"Name"_s, u"Name"_s, u"Unit"_s, u"Code"_s};
    else if (view == m_driver.features())
        keys = {u"Name"_s, u"unit"_s, u"defval"_s};
    else if (view == m_driver.values())
        keys = {u"eigenValue"_s};
    return oneOf(keys.mid(0, columns));
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

/// Types over a cell of a row and leaves it being edited; null when that may not be.
QWidget* RandomUser::beginTyping(KeyedGrid* view, int row, qsizetype columns) {
    const QString key = anyColumn(view, columns);
    const QString text = view == m_driver.contents() && view->level(row) == 2 ? anyCode() : anyText();
    QWidget* editor = m_driver.openEditor(view, row, key);
    // The row is current now, and its details are shown.
    begin(Deed::Kind::Edit, view->objectName(), row, key, text);
    m_deed.possible = editor;
    // Over a text that is longer than its cell takes nothing longer can be pasted.
    const bool pastes = chance(25) && view->text(row, key).size() <= 8;
    if (editor)
        (pastes ? EditorDriver::pasteOver : EditorDriver::typeOver)(editor, text);
    return editor;
}

QWidget* RandomUser::beginTypingIntoBox() {
    const QString text = anyText();
    QPlainTextEdit* box = chance(50) ? m_driver.rule() : m_driver.content();
    m_driver.showPage(box);
    begin(Deed::Kind::Edit, box->objectName(), -1, {}, text);
    m_deed.possible = !box->isReadOnly();
    box->setFocus();
    EditorDriver::typeOver(box, text);
    return box;
}

/// Edits a cell, and ends the edit or gives it up. Among contents it is most often the code of a ration.
void RandomUser::editCell() {
    KeyedGrid* view = grid();
    const int row = view == m_driver.contents() && chance(75) ? rationRow() : shownRow(view);
    if (row < 0)
        return;
    QWidget* editor = beginTyping(view, row);
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

void RandomUser::typeIntoBox() {
    m_driver.key(beginTypingIntoBox(), Qt::Key_Tab);
    done();
}

/// Begins to type, and does something else without having ended that.
void RandomUser::goOnWhileTyping() {
    const bool inBox = m_room == Room::Bills && chance(40);
    KeyedGrid* view = grid();
    const int row = shownRow(view);
    if (m_disturbed || (!inBox && row < 0))
        return;
    QWidget* box = inBox ? beginTypingIntoBox() : nullptr;
    if (!inBox && !beginTyping(view, row, 2))
        return done();
    // Between two gestures the window comes to rest: buttons know by now what is current.
    EditorDriver::settle();
    const QModelIndex cell = view->currentIndex();
    const int way = upTo(m_habits.reopens ? 10 : 5);
    const QList<KeyedTree::Node*> nodes = m_driver.tree()->nodes();
    const Snapshot before = onDeed ? snapshotOf(*m_driver.editor()) : Snapshot();
    const qsizetype said = m_answers->seen().size();
    int command = 0;
    if (way < 3 && !nodes.isEmpty()) {
        m_driver.click(oneOf(nodes));
    } else if (way < 5) {
        m_driver.click(m_driver.bills(), upTo(m_driver.bills()->rowCount()), u"Code"_s);
    } else if (way < 7) {
        m_deed.closed = m_driver.close(closing());
    } else {
        // A command by the mouse or its key, that does not depend on what is being typed. The first press of several
        // would be lost when the edit is refused.
        command = oneOf({1108, 2200, 2104, 2105, 2400, 3300, 4300});
        const bool mayBeRefused =
            m_deed.text.contains(u'\'') || view == m_driver.contents() || view == m_driver.values();
        run(command, !mayBeRefused && chance(50));
    }
    if (m_deed.closed) {
        m_driver.open();
        done();
        begin(Deed::Kind::Reopened);
        return done();
    }
    const bool refused = m_answers->seen().size() > said;
    m_deed.stayedOpen = inBox ? box->hasFocus() : view->isEditing() && view->currentIndex() == cell;
    if (inBox && m_deed.stayedOpen)
        m_driver.key(box, Qt::Key_Tab);
    // A key is meant for the window, whatever message came; only an edit that stays open keeps it from acting.
    const bool lost = refused && !inBox && m_deed.stayedOpen;
    done();
    escape();
    if (command == 0)
        return;
    begin(lost ? Deed::Kind::Look : Deed::Kind::Command);
    m_deed.command = command;
    m_deed.before = before;
    done();
}

/// Chooses the type of a feature or the library of a ration.
void RandomUser::chooseEntry() {
    const bool ofRation = m_room == Room::Contents;
    KeyedGrid* view = ofRation ? m_driver.contents() : m_driver.features();
    const int row = ofRation ? rationRow() : shownRow(view);
    const QString key = ofRation ? u"dekName"_s : u"type"_s;
    if (row < 0)
        return;
    // A real display takes the made-up double click for two clicks.
    const bool byMouse = chance(50) && m_driver.ownsWindow();
    begin(Deed::Kind::Choice, view->objectName(), row, key);
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
    begin(Deed::Kind::Tick, values->objectName(), row);
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
