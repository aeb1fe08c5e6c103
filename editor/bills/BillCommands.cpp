// The commands that change which bills there are and in what order.

#include <QSignalBlocker>

#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/base/Text.h"
#include "editor/bills/BillPane.h"
#include "editor/common/CodeStepping.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int mostBillsOfChapter = 999;
constexpr int billCodeLength = 9;

const QString code = u"Code"_s;

}  // namespace

/// What the bills from `firstRow` to the end of the list are called when they move on by one, or back.
std::vector<BillCode> BillPane::shiftedCodes(int firstRow, bool forward) const {
    std::vector<BillCode> bills;
    for (int row = firstRow; row < m_grdBillList->rowCount(); ++row)
        bills.push_back({billId(row), GetCodePreNext(m_grdBillList->text(row, code), forward, billCodeLength)});
    return bills;
}

void BillPane::showCodes(int firstRow, const std::vector<BillCode>& bills) {
    int row = firstRow;
    for (const BillCode& bill : bills)
        m_grdBillList->setText(row++, code, bill.code);
}

void BillPane::mnuAddBill_Click() {
    guarded({"frmEditor", "mnuAddBill_Click"}, [this] {
        if (m_grdBillList->rowCount() >= mostBillsOfChapter) {
            showMessage(u"对不起！ 由于编码规则此章节只能添加999条清单！"_s, u"提示"_s, MessageIcon::Information);
            return;
        }
        const bool empty = !m_grdBillList->hasRows();
        const QString base = empty ? selectedChapter() + u"000"_s : m_grdBillList->text(m_grdBillList->row(), code);
        const QString newCode = GetCodePreNext(base, true, billCodeLength);
        const int at = m_grdBillList->row() + 1;
        const std::vector<BillCode> shifted = shiftedCodes(at, true);
        const std::optional<qint64> id = addBill(m_ormConn, newCode, shifted);
        if (!id)
            return;
        showCodes(at, shifted);
        m_grdBillList->insertRow(at, {{"id", QString::number(*id)}, {"Code", newCode}});
        // First, so that a text box which had the focus is left while its bill is still the current one.
        m_grdBillList->setFocus();
        m_grdBillList->setCell(at, u"Name"_s);
    });
}

void BillPane::mnuDeleteBill_Click() {
    guarded({"frmEditor", "mnuDeleteBill_Click"}, [this] {
        const int row = m_grdBillList->row();
        if (row < 0)
            return;
        const QString name = m_grdBillList->text(row, u"Name"_s);
        if (!askYesNo(u"确认删除清单 "_s + m_grdBillList->text(row, code) + u' ' + name + u" ？"_s))
            return;
        const std::vector<BillCode> shifted = shiftedCodes(row + 1, false);
        if (!deleteBill(m_ormConn, billId(row), shifted))
            return;
        showCodes(row + 1, shifted);
        m_grdBillList->removeRows(row);
        if (m_grdBillList->hasRows())
            m_grdBillList->setRow(qMin(row, m_grdBillList->rowCount() - 1));
        else
            grdBillList_AfterRowColChange(-1);
    });
}

void BillPane::mnuQueryBill_Click() {
    guarded({"frmEditor", "mnuQueryBill_Click"}, [this] {
        commitPending();
        Recordset rows = billsWithCode(m_ormConn, queryText());
        ListBillData(&rows);
        ReleaseOrmRecordset(rows);
        deselectChapter();
        m_grdBillList->setTag(u"1"_s);
    });
}

void BillPane::MoveBillRow(bool up) {
    guarded({"frmEditor", "MoveBillRow"}, [this, up] {
        const int row = m_grdBillList->row();
        const int other = up ? row - 1 : row + 1;
        if (row < 0 || other < 0 || other >= m_grdBillList->rowCount())
            return;
        const BillCode moving = {billId(row), m_grdBillList->text(row, code)};
        const BillCode neighbour = {billId(other), m_grdBillList->text(other, code)};
        // One more than there are bills: no bill of the chapter has it.
        const QString temporaryCode = selectedChapter() + zeroPadded(m_grdBillList->rowCount() + 1, 3);
        if (!moveBill(m_ormConn, moving, neighbour, temporaryCode))
            return;
        for (const char* key : {"id", "CodePrefix", "Name", "Unit", "Cont", "RULE"}) {
            const QString cell = QString::fromLatin1(key);
            const QString text = m_grdBillList->text(row, cell);
            m_grdBillList->setText(row, cell, m_grdBillList->text(other, cell));
            m_grdBillList->setText(other, cell, text);
        }
        // The bill that was moved stays the current one; its details are shown already.
        const QSignalBlocker sameBill(m_grdBillList);
        m_grdBillList->setRow(other);
    });
}
