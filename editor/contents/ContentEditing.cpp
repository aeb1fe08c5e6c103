// What may be edited in the content grid, and what an edit writes.

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/base/Text.h"
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentData.h"
#include "editor/contents/ContentPane.h"
#include "editor/contents/ContentRows.h"
#include "editor/contents/RationLookup.h"

using namespace Qt::StringLiterals;

using namespace ContentRows;

namespace {

const QString hint = u"提示"_s;

QString comparable(const QString& text) { return trimBlanks(text).toLower(); }

/// Writes `ration` for the row `row`. Gives the id of the row that holds it in the library, when it was written.
std::optional<qint64> writeRation(Connection* ormConn, const KeyedGrid& grid, int row, const Ration& ration) {
    const qint64 saved = grid.value(row, contDeID);
    if (saved >= 1)
        return updateRation(ormConn, saved, ration) ? std::optional(saved) : std::nullopt;
    const qint64 content = grid.value(row, contID);
    const qint64 number = grid.value(row, subNum);
    int above = row - 1;
    if (above >= 0 && grid.level(above) == subContentLevel) {
        // The first row of a second-level content holds only its text until the first ration is stored in it.
        const qint64 first = GetSubContID(ormConn, content, number);
        return first >= 1 && updateRation(ormConn, first, ration) ? std::optional(first) : std::nullopt;
    }
    while (above >= 0 && grid.level(above) != subContentLevel)
        --above;
    return insertRation(ormConn, content, number, grid.text(above, cont), ration);
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
        if (m_library.isShownBillGone())
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
            if (key != dekName || m_grdConcent->level(row) != rationLevel)
                return EditVerdict::Restore;
            if (text != m_grdConcent->text(row, dekName))
                m_grdConcent->setPending(row, dekName, true);
            return EditVerdict::Accept;
        },
        [] { return EditVerdict::Restore; });
}

EditVerdict ContentPane::validateText(int row, QString& text) {
    if (comparable(text) == comparable(m_grdConcent->text(row, cont)))
        return EditVerdict::Accept;
    text = trimBlanks(text);
    const qint64 content = m_grdConcent->value(row, contID);
    // What is refused stays in the editor, to be put right.
    const auto accepted = [](bool done) { return done ? EditVerdict::Accept : EditVerdict::KeepOpen; };
    const auto written = [&](bool done) {
        if (done)
            m_library.did(u"修改工作内容 "_s + text);
        return accepted(done);
    };
    switch (m_grdConcent->level(row)) {
        case contentLevel:
            return written(ModifyCont(m_library.connection(), content, text));
        case subContentLevel:
            return written(ModifySubCont(m_library.connection(), content, m_grdConcent->value(row, subNum), text));
        default:
            break;
    }
    const Setting set = setRation(row, text.toUpper(), m_grdConcent->text(row, dekName));
    // The cell shows the ration by now, not the code that was typed.
    if (set == Setting::Written)
        text = m_grdConcent->text(row, cont);
    else if (set == Setting::NotWritten)
        m_grdConcent->setPending(row, cont, true);

    return accepted(set != Setting::Refused);
}

void ContentPane::grdConcent_CellButtonClick(int row) {
    guarded({"frmEditor", "grdConcent_CellButtonClick"}, [&] {
        if (!m_library.isShownBillGone())
            Q_EMIT rationWanted(m_grdConcent->text(row, dekName));
    });
}

void ContentPane::dropTypedCode() {
    const int row = m_grdConcent->row();
    if (m_grdConcent->isEditing() && m_grdConcent->level(row) == rationLevel && m_grdConcent->columnKey() == cont)
        m_grdConcent->cancelEdit();
}

QString ContentPane::nextStep() const {
    const int row = m_grdConcent->row();
    const bool ration = row >= 0 && m_grdConcent->level(row) == rationLevel;
    if (!ration || !m_grdConcent->text(row, dekName).isEmpty())
        return {};
    return u"先在“定额库”列选择定额库，或按 … 浏览"_s;
}

bool ContentPane::EditBillContDe(const QString& deh, const QString& dekID) {
    return setRation(m_grdConcent->row(), deh, dekID) != Setting::Refused;
}

ContentPane::Setting ContentPane::setRation(int row, const QString& deh, const QString& dekID) {
    return guarded({"frmEditor", "EditBillContDe"}, [&] {
        const QString path = GetDekFilePath(dekID);
        if (!fso().FileExists(path)) {
            showMessage(u"定额库"_s + path + u"文件不存在!"_s, hint, MessageIcon::Critical);
            return Setting::Refused;
        }
        Ration ration{deh, {}, {}, dekID};
        if (!GetDeData(deh, path, ration.name, ration.unit)) {
            showMessage(u"定额 ["_s + deh + u"] 不存在, 请重新输入!"_s, hint, MessageIcon::Exclamation);
            return Setting::Refused;
        }
        const std::optional<qint64> id = writeRation(m_library.connection(), *m_grdConcent, row, ration);
        if (!id)
            return Setting::NotWritten;
        m_grdConcent->setText(row, contDeID, QString::number(*id));
        m_grdConcent->setText(row, cont, rationText(deh, ration.name));
        m_grdConcent->setText(row, unit, ration.unit);
        m_grdConcent->setText(row, dekName, dekID);
        for (const QString& key : {cont, dekName})
            m_grdConcent->setPending(row, key, false);
        m_library.did(u"选用定额 "_s + m_grdConcent->text(row, cont));
        return Setting::Written;
    });
}
