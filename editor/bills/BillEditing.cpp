// What the user edits of a bill: cells of the list, and the two text boxes.

#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/base/Text.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/BillTextBox.h"
#include "editor/common/LibraryDocument.h"

using namespace Qt::StringLiterals;

namespace {

/// The column when its cells may be edited, else null.
const BillColumn* editableColumn(const QString& key) {
    for (const BillColumn& column : BillColumns::all) {
        if (column.longestText > 0 && key.compare(QLatin1String(column.key), Qt::CaseInsensitive) == 0)
            return &column;
    }
    return nullptr;
}

QString changeOf(const Bill& bill, const BillColumn& column) {
    return u"修改清单 "_s + bill.code + u" 的"_s + QString::fromUtf16(column.caption);
}

}  // namespace

void BillPane::enableEditing() {
    m_grdBillList->startEdit = [](int, const QString& key) { return editableColumn(key) != nullptr; };
    m_grdBillList->editLimit = [](int, const QString& key) {
        const BillColumn* column = editableColumn(key);
        return column ? column->longestText : 0;
    };
    m_grdBillList->validateEdit = [this](int row, const QString& key, QString& text) {
        return grdBillList_ValidateEdit(row, key, text);
    };
    m_txtRule->validate = [this] { txtRule_Validate(); };
    m_txtContent->validate = [this] { txtContent_Validate(); };
}

EditVerdict BillPane::grdBillList_ValidateEdit(int row, const QString& key, QString& text) {
    return guarded(
        {"frmEditor", "grdBillList_ValidateEdit"},
        [&] {
            const BillColumn* column = editableColumn(key);
            const QString typed = trimBlanks(text);
            if (!column || !ModifyBill(m_library.connection(), bill(row).id, QString::fromLatin1(column->field), typed))
                return EditVerdict::Restore;
            m_library.did(changeOf(bill(row), *column));
            text = typed;
            return EditVerdict::Accept;
        },
        [] { return EditVerdict::Restore; });
}

void BillPane::txtRule_Validate() {
    guarded({"frmEditor", "txtRule_Validate"}, [this] { writeBox(*m_txtRule, BillColumns::rule); });
}

void BillPane::txtContent_Validate() {
    guarded({"frmEditor", "txtContent_Validate"}, [this] { writeBox(*m_txtContent, BillColumns::cont); });
}

void BillPane::writeBox(BillTextBox& box, const BillColumn& column) {
    const QString text = box.text();
    const bool isChanged = box.isChanged();
    if (!ModifyBill(m_library.connection(), box.billId(), QString::fromLatin1(column.field), text)) {
        box.restore();
        return;
    }
    box.setStored(text);
    for (int row = 0; row < m_grdBillList->rowCount(); ++row) {
        if (bill(row).id == box.billId())
            setCell(row, column, text);
    }
    m_library.did(changeOf(m_library.shownBill(), column));
    bool isThere = true;
    succeeds([&] { isThere = billExists(m_library.connection(), box.billId()); });
    if (isChanged && !isThere)
        showMessage(u"这条清单已被另一个程序删除，刚才输入的内容没有写入：\r\n"_s + text, u"提示"_s,
                    MessageIcon::Exclamation);
}

bool BillPane::commitPending() {
    const bool closed = m_grdBillList->commitEdit();
    commitTexts();
    return closed;
}

void BillPane::setBoxesLeftByProgram(bool on) {
    m_txtRule->setLeftByProgram(on);
    m_txtContent->setLeftByProgram(on);
}

void BillPane::setBeforeBoxesWrite(const std::function<bool()>& act) {
    m_txtRule->beforeWrite = act;
    m_txtContent->beforeWrite = act;
}

void BillPane::commitTexts() {
    m_txtRule->commitChange();
    m_txtContent->commitChange();
}
