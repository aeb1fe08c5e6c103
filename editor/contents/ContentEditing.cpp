// What may be edited in the content grid, and what an edit writes.

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/base/Text.h"
#include "editor/contents/ContentData.h"
#include "editor/contents/ContentPane.h"
#include "editor/contents/ContentRows.h"
#include "editor/contents/RationLookup.h"

using namespace Qt::StringLiterals;

using namespace ContentRows;

namespace {

const QString hint = u"提示"_s;

QString comparable(const QString& text) { return trimBlanks(text).toLower(); }

/// Writes `ration` for the row `row`. Gives the id of the row that holds it in the library; 0 when nothing was written.
qint64 writeRation(Connection* ormConn, const KeyedGrid& grid, int row, const Ration& ration) {
    const qint64 saved = grid.value(row, contDeID);
    if (saved >= 1)
        return updateRation(ormConn, saved, ration) ? saved : 0;
    const qint64 contId = grid.value(row, contID);
    const qint64 number = grid.value(row, subNum);
    int above = row - 1;
    if (above >= 0 && grid.level(above) == subContentLevel) {
        // The first ration takes the row that has stood for the second-level content alone.
        const qint64 first = GetSubContID(ormConn, contId, number);
        return first >= 1 && updateRation(ormConn, first, ration) ? first : 0;
    }
    while (above >= 0 && grid.level(above) != subContentLevel)
        --above;
    return insertRation(ormConn, contId, number, grid.text(above, cont), ration);
}

}  // namespace

void ContentPane::grdConcent_RowColChange(int row, const QString& key) {
    guarded({"frmEditor", "grdConcent_RowColChange"}, [&] {
        const bool ration = row >= 0 && m_grdConcent->level(row) == rationLevel;
        if (key == cont)
            m_grdConcent->setComboList(cont, ration ? u"|..."_s : QString());
        else if (key != dekName)
            m_grdConcent->setComboList(key, QString());
        else if (ration)
            m_grdConcent->setComboList(dekName, m_dekComboList);
    });
}

bool ContentPane::grdConcent_StartEdit(int row, const QString& key) const {
    return guarded({"frmEditor", "grdConcent_StartEdit"}, [&] {
        if (m_locked)
            return false;
        return key == cont || (key == dekName && m_grdConcent->level(row) == rationLevel);
    });
}

EditVerdict ContentPane::grdConcent_ValidateEdit(int row, const QString& key, QString& text) {
    return guarded(
        {"frmEditor", "grdConcent_ValidateEdit"},
        [&] {
            if (key == cont)
                return validateText(row, text);
            const bool ration = m_grdConcent->level(row) == rationLevel;
            return key == dekName && ration ? EditVerdict::Accept : EditVerdict::Restore;
        },
        [] { return EditVerdict::Restore; });
}

EditVerdict ContentPane::validateText(int row, QString& text) {
    if (comparable(text) == comparable(m_grdConcent->text(row, cont)))
        return EditVerdict::Accept;
    text = trimBlanks(text);
    const qint64 contId = m_grdConcent->value(row, contID);
    switch (m_grdConcent->level(row)) {
        case contentLevel:
            return ModifyCont(m_ormConn, contId, text) ? EditVerdict::Accept : EditVerdict::Restore;
        case subContentLevel:
            return ModifySubCont(m_ormConn, contId, m_grdConcent->value(row, subNum), text) ? EditVerdict::Accept
                                                                                            : EditVerdict::Restore;
        default:
            break;
    }
    m_editText = text;
    // A rejected code is given back to be typed again.
    if (!setRation(row, text.toUpper(), m_grdConcent->text(row, dekName)))
        return EditVerdict::KeepOpen;
    text = m_editText;
    return EditVerdict::Accept;
}

void ContentPane::grdConcent_CellButtonClick(int row) {
    guarded({"frmEditor", "grdConcent_CellButtonClick"}, [&] {
        if (!m_locked && ellipsisClicked)
            ellipsisClicked(m_grdConcent->text(row, dekName));
    });
}

bool ContentPane::EditBillContDe(const QString& deh, const QString& dekID) {
    return setRation(m_grdConcent->row(), deh, dekID);
}

bool ContentPane::setRation(int row, const QString& deh, const QString& dekID) {
    return guarded({"frmEditor", "EditBillContDe"}, [&] {
        const QString path = GetDekFilePath(dekID);
        if (!fso().FileExists(path)) {
            showMessage(u"定额库"_s + path + u"文件不存在!"_s, hint, MessageIcon::Critical);
            return false;
        }
        Ration ration{deh, {}, {}, dekID};
        if (!GetDeData(deh, path, ration.name, ration.unit)) {
            showMessage(u"定额 ["_s + deh + u"] 不存在, 请重新输入!"_s, hint, MessageIcon::Exclamation);
            return false;
        }
        const qint64 id = writeRation(m_ormConn, *m_grdConcent, row, ration);
        if (id < 1)
            return true;
        m_editText = u'[' + deh + u"] "_s + ration.name;
        m_grdConcent->setText(row, contDeID, QString::number(id));
        m_grdConcent->setText(row, cont, m_editText);
        m_grdConcent->setText(row, unit, ration.unit);
        m_grdConcent->setText(row, dekName, dekID);
        return true;
    });
}
