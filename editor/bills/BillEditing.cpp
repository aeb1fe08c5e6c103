// What the user edits of a bill: cells of the list, and the two text boxes.

#include "app/base/Guarded.h"
#include "app/base/Text.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/BillTextBox.h"

using namespace Qt::StringLiterals;

namespace {

struct EditableColumn {
    const char* key;
    const char* field;
    /// Longest text, in characters: the width of the column in the file.
    int limit;
};

/// All others, the code among them, change by commands or in the text boxes only.
constexpr EditableColumn editableColumns[] = {
    {"codeprefix", "CodePreFix", 8},
    {"name", "Name", 50},
    {"unit", "Unit", 12},
};

const EditableColumn* editableColumn(const QString& key) {
    for (const EditableColumn& column : editableColumns) {
        if (key.compare(QLatin1String(column.key), Qt::CaseInsensitive) == 0)
            return &column;
    }
    return nullptr;
}

}  // namespace

void BillPane::enableEditing() {
    m_grdBillList->startEdit = [](int, const QString& key) { return editableColumn(key) != nullptr; };
    m_grdBillList->editLimit = [](int, const QString& key) {
        const EditableColumn* column = editableColumn(key);
        return column ? column->limit : 0;
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
            const EditableColumn* column = editableColumn(key);
            const QString typed = trimBlanks(text);
            if (!column || !ModifyBill(m_ormConn, billId(row), QString::fromLatin1(column->field), typed))
                return EditVerdict::Restore;
            text = typed;
            return EditVerdict::Accept;
        },
        [] { return EditVerdict::Restore; });
}

void BillPane::txtRule_Validate() {
    guarded({"frmEditor", "txtRule_Validate"}, [this] { writeBox(*m_txtRule, u"Rule"_s, u"RULE"_s); });
}

void BillPane::txtContent_Validate() {
    guarded({"frmEditor", "txtContent_Validate"}, [this] { writeBox(*m_txtContent, u"Cont"_s, u"Cont"_s); });
}

void BillPane::writeBox(BillTextBox& box, const QString& field, const QString& key) {
    const QString text = box.text();
    if (!ModifyBill(m_ormConn, box.billId(), field, text)) {
        box.restore();
        return;
    }
    box.setStored(text);
    for (int row = 0; row < m_grdBillList->rowCount(); ++row) {
        if (billId(row) == box.billId())
            m_grdBillList->setText(row, key, text);
    }
}

bool BillPane::commitPending() {
    const bool closed = m_grdBillList->commitEdit();
    m_txtRule->commitChange();
    m_txtContent->commitChange();
    return closed;
}
