// What the user does with the bill list.

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMessageBox>

#include "app/base/Text.h"
#include "editor/common/Codes.h"
#include "tests/walk/RandomUser.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

const QString idKey = u"id"_s;
const QString codeKey = u"Code"_s;

QStringList idsOf(const Rows& bills) {
    QStringList ids;
    for (const QStringList& bill : bills)
        ids << bill[BillCell::Id];
    return ids;
}

}  // namespace

void RandomUser::clickBill() {
    KeyedGrid* bills = m_driver.bills();
    if (!bills->hasRows())
        return;
    const int row = upTo(bills->rowCount());
    const bool right = chance(15);
    say(u"%1click bill row %2"_s.arg(right ? u"right-"_s : QString()).arg(row));
    m_driver.click(bills, row, oneOf({u"CodePreFix"_s, codeKey, u"Name"_s}), right ? Qt::RightButton : Qt::LeftButton);
    EXPECT_EQ(bills->row(), row);
    EXPECT_EQ(m_driver.closeMenu(), right);
}

void RandomUser::walkBills() {
    walk(m_driver.bills(), {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_PageDown, Qt::CTRL | Qt::Key_Home,
                            Qt::CTRL | Qt::Key_End, Qt::Key_Left, Qt::Key_Right});
}

void RandomUser::editBill() {
    KeyedGrid* bills = m_driver.bills();
    if (!bills->hasRows())
        return;
    const int row = upTo(bills->rowCount());
    const QString key = oneOf({u"CodePreFix"_s, u"Name"_s, u"Name"_s, u"Unit"_s, codeKey});
    const QString text = anyText();
    const int end = oneOf<int>({Qt::Key_Return, Qt::Key_Return, Qt::Key_Tab, Qt::Key_Escape});
    say(u"edit %1 of bill row %2 to \"%3\""_s.arg(key).arg(row).arg(text));
    const bool editable = m_driver.edit(bills, row, key, text, end);
    EXPECT_EQ(editable, key != codeKey);
    // Tab goes on to the next cell.
    if (QWidget* next = bills->findChild<QWidget*>(u"cellEditor"_s))
        m_driver.key(next, Qt::Key_Escape);
    if (editable && end != Qt::Key_Escape && text.contains(u'\''))
        expectError("ModDBOperator.ExecuteDDL");
}

bool RandomUser::leavesChapter(const QString& code) const {
    return code.left(6) != m_driver.chapter() || code.size() != 9;
}

/// The bills from row `first` of the last comparison on get the next code, or the one before.
void RandomUser::shiftBills(int first, bool forward) {
    const Rows& bills = m_comparison.last().bills;
    for (qsizetype row = first; row < bills.size(); ++row) {
        const QString code = neighbourCode(bills[row][BillCell::Code], 9, forward);
        m_codes.recodeBill(bills[row][BillCell::Id], code, false);
        if (leavesChapter(code) && !m_prescribed.bills)
            m_prescribed.bills = idsOf(bills);
    }
}

void RandomUser::addBill() {
    KeyedGrid* bills = m_driver.bills();
    const int row = bills->row();
    const QString base = bills->hasRows() ? bills->text(row, codeKey) : m_driver.chapter() + u"000"_s;
    say(u"add a bill behind "_s + base);
    const bool enabled = m_driver.isEnabled(2, 200);
    EXPECT_EQ(enabled, bills->tag() == u"0"_s && m_driver.chapter().size() == 6);
    run(2, 200);
    if (!enabled || failed())
        return;
    const QString code = neighbourCode(base, 9, true);
    if (leavesChapter(code) && !m_prescribed.bills)
        m_prescribed.bills = idsOf(m_comparison.last().bills);
    shiftBills(row + 1, true);
    m_codes.addBill(code);
    EXPECT_EQ(bills->row(), row + 1);
    if (m_prescribed.bills)
        m_prescribed.bills->insert(row + 1, bills->text(row + 1, idKey));
}

void RandomUser::deleteBill() {
    KeyedGrid* bills = m_driver.bills();
    const int row = bills->row();
    say(u"delete bill row %1"_s.arg(row));
    if (row < 0) {
        EXPECT_FALSE(m_driver.isEnabled(2, 201));
        run(2, 201);
        return;
    }
    const bool yes = chance(80);
    m_answers->press(yes ? QMessageBox::Yes : QMessageBox::No);
    m_expected << u"清单库编辑器: 确认删除清单 %1 %2 ？"_s.arg(bills->text(row, codeKey), bills->text(row, u"Name"_s));
    const QString id = bills->text(row, idKey);
    run(2, 201);
    if (!yes || failed())
        return;
    m_codes.deleteBill(id);
    const bool steppedElsewhere = bills->tag() == u"1"_s && row + 1 < m_comparison.last().bills.size();
    if (steppedElsewhere && !m_prescribed.bills)
        m_prescribed.bills = idsOf(m_comparison.last().bills);
    shiftBills(row + 1, false);
    if (m_prescribed.bills)
        m_prescribed.bills->removeAt(row);
    EXPECT_EQ(bills->row(), qMin(row, bills->rowCount() - 1));
}

void RandomUser::moveBill() {
    KeyedGrid* bills = m_driver.bills();
    const int row = bills->row();
    const bool up = chance(50);
    const int other = up ? row - 1 : row + 1;
    say(u"move bill row %1 to %2"_s.arg(row).arg(other));
    const bool enabled = m_driver.isEnabled(2, up ? 104 : 105);
    EXPECT_EQ(enabled, bills->tag() == u"0"_s && row >= 0 && other >= 0 && other < bills->rowCount());
    run(2, up ? 104 : 105);
    if (!enabled || failed())
        return;
    const QStringList moved = m_comparison.last().bills[row];
    const QStringList neighbour = m_comparison.last().bills[other];
    m_codes.recodeBill(moved[BillCell::Id], neighbour[BillCell::Code], true);
    m_codes.recodeBill(neighbour[BillCell::Id], moved[BillCell::Code], true);
    if (m_prescribed.bills)
        m_prescribed.bills->swapItemsAt(row, other);
    EXPECT_EQ(bills->row(), other);
}

void RandomUser::query() {
    const QString text = oneOf({u""_s, u"0101"_s, u"01"_s, u"1"_s, u"002"_s, u"0_0%1"_s, u"'"_s, u"zz"_s});
    say(u"search for \"%1\""_s.arg(text));
    m_driver.typeQuery(text);
    m_prescribed.listLoaded();
    m_query = text;
    if (chance(50))
        m_driver.key(m_driver.search(), Qt::Key_Return);
    else
        run(2, 202);
    EXPECT_EQ(m_driver.bills()->tag(), u"1"_s);
    EXPECT_FALSE(m_driver.tree()->selectedNode());
}

/// What could not be listed is not there for any command, until it has been listed.
void RandomUser::listWhileLocked() {
    const QString chapter = m_driver.chapter();
    if (m_disturbed)
        return;
    const bool asks = !holdsBills(chapter) || chance(50);

    say(u"list while the file is locked"_s);
    if (asks)
        m_driver.typeQuery(u"0"_s);
    {
        const Disturbance locked(m_driver.path(), Disturbance::Kind::Locked);
        m_driver.pragma("PRAGMA busy_timeout=0");
        if (asks)
            m_driver.run(2, 202);
        else
            m_driver.click(m_driver.tree()->selectedNode());

        EditorDriver::settle();
    }
    expectError(asks ? "frmEditor.mnuQueryBill_Click" : "frmEditor.LoadBill");
    EXPECT_FALSE(m_driver.bills()->hasRows());
    m_query = u"0"_s;
    // Adding lists first; a query is asked again.
    m_driver.run(2, asks ? 202 : 200);
}

/// Leaves an edit by a click. Where the edit is refused the click may be lost, but a part of it never happens.
void RandomUser::clickAwayFromAnEdit() {
    KeyedGrid* grid = chance(50) ? m_driver.bills() : m_driver.contents();
    const QList<int> rows = visibleContentRows(0);
    if (!m_driver.bills()->hasRows() || (grid == m_driver.contents() && rows.isEmpty()))
        return;
    const bool isBill = grid == m_driver.bills();
    const int row = isBill ? upTo(grid->rowCount()) : rows[upTo(static_cast<int>(rows.size()))];
    const bool isRation = !isBill && grid->level(row) == 2;
    const QString text = isRation ? u"zz"_s : oneOf({u"it's"_s, u"点开%1"_s.arg(++m_names)});
    QWidget* editor = m_driver.openEditor(grid, row, isBill ? u"Name"_s : u"cont"_s);
    if (!editor)
        return;
    EditorDriver::typeOver(editor, text);
    say(u"type \"%1\" in row %2 of %3 and click elsewhere"_s.arg(text).arg(row).arg(grid->objectName()));
    if (!isBill)
        m_prescribed.onlyCaseChanged.remove(Prescribed::nodeKey(rowsOf(grid)[row]));
    if (isRation)
        m_expected << m_rations.rejection(text.toUpper(), grid->text(row, u"dekName"_s));
    else if (text.contains(u'\'') && (isBill || text != grid->text(row, u"cont"_s)))
        expectError("ModDBOperator.ExecuteDDL");
    if (chance(60)) {
        const QList<KeyedTree::Node*> nodes = m_driver.tree()->nodes();
        m_driver.click(nodes[upTo(static_cast<int>(nodes.size()))]);
    } else {
        const int clicked = upTo(m_driver.bills()->rowCount());
        m_driver.click(m_driver.bills(), clicked, codeKey);
    }
    if (grid->isEditing())
        m_driver.key(editor, Qt::Key_Escape);
}
