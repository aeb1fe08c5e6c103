// The commands that change which bills there are and in what order.

#include <QSignalBlocker>

#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/base/Text.h"
#include "editor/bills/BillPane.h"
#include "editor/common/LibraryDocument.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int mostBillsOfChapter = 999;

}  // namespace

/// The bills from `firstRow` to the end of the list, each with the code after its own, or before it.
std::vector<Bill> BillPane::steppedCodes(int firstRow, bool forward) const {
    std::vector<Bill> bills;
    for (int row = firstRow; row < m_grdBillList->rowCount(); ++row) {
        const Bill listed = bill(row);
        bills.push_back({listed.id, GetCodePreNext(listed.code, forward, billCodeLength)});
    }
    return bills;
}

void BillPane::showCodes(int firstRow, const std::vector<Bill>& bills) {
    int row = firstRow;
    for (const Bill& shifted : bills)
        setCell(row++, BillColumns::code, shifted.code);
}

void BillPane::mnuAddBill_Click() {
    guarded({"frmEditor", "mnuAddBill_Click"}, [this] {
        // After a failed listing the grid is empty though the chapter may have bills, and a code computed from it may
        // be taken. List them, and let the user ask again.
        if (m_library.listing().failed)
            return m_library.showChapter(m_library.chapter());
        if (m_grdBillList->rowCount() >= mostBillsOfChapter) {
            showMessage(u"对不起！ 由于编码规则此章节只能添加999条清单！"_s, u"提示"_s, MessageIcon::Information);
            return;
        }
        const Bill* current = m_library.currentBill();
        const QString newCode =
            GetCodePreNext(current ? current->code : m_library.chapter() + u"000"_s, true, billCodeLength);
        const int at = m_grdBillList->row() + 1;
        const std::vector<Bill> shifted = steppedCodes(at, true);
        const std::optional<qint64> id = addBill(m_library.connection(), newCode, shifted);
        if (!id)
            return;
        showCodes(at, shifted);
        m_grdBillList->insertRow(at, {{BillColumns::id.key, QString::number(*id)}, {BillColumns::code.key, newCode}});
        // Before the new row becomes current: a text box that has the focus writes its text for the old bill now.
        m_grdBillList->setFocus();
        m_grdBillList->setCell(at, QString::fromLatin1(BillColumns::name.key));
        m_library.did(u"添加清单 "_s + newCode);
    });
}

void BillPane::mnuDeleteBill_Click() {
    guarded({"frmEditor", "mnuDeleteBill_Click"}, [this] {
        const int row = m_grdBillList->row();
        if (row < 0)
            return;
        const Bill deleted = bill(row);
        const QString codeAndName = deleted.code + u' ' + cell(row, BillColumns::name);
        if (!askYesNo(u"确认删除清单 "_s + codeAndName + u" ？"_s))
            return;
        const std::vector<Bill> shifted = steppedCodes(row + 1, false);
        if (!deleteBill(m_library.connection(), deleted.id, shifted))
            return;
        showCodes(row + 1, shifted);
        m_grdBillList->removeRows(row);
        if (m_grdBillList->hasRows())
            m_grdBillList->setRow(qMin(row, m_grdBillList->rowCount() - 1));
        else
            grdBillList_AfterRowColChange(-1);
        m_library.did(u"删除清单 "_s + codeAndName);
    });
}

void BillPane::mnuQueryBill_Click(const QString& text) { m_library.showQuery(text); }

void BillPane::MoveBillRow(bool up) {
    guarded({"frmEditor", "MoveBillRow"}, [this, up] {
        const int row = m_grdBillList->row();
        const int other = up ? row - 1 : row + 1;
        if (row < 0 || other < 0 || other >= m_grdBillList->rowCount())
            return;
        // Codes of a chapter are dense, so the number after the last is free.
        const QString temporaryCode = m_library.chapter() + zeroPadded(m_grdBillList->rowCount() + 1, 3);
        if (!moveBill(m_library.connection(), bill(row), bill(other), temporaryCode))
            return;
        for (const BillColumn& column : BillColumns::all) {
            if (column.key == BillColumns::code.key)
                continue;
            const QString text = cell(row, column);
            setCell(row, column, cell(other, column));
            setCell(other, column, text);
        }
        // The bill that was moved stays the current one; its details are shown already.
        const QSignalBlocker sameBill(m_grdBillList);
        m_grdBillList->setRow(other);
        m_library.setShownBillCode(bill(other).code);
        m_library.did((up ? u"上移清单 "_s : u"下移清单 "_s) + bill(other).code + u' ' +
                      cell(other, BillColumns::name));
    });
}
