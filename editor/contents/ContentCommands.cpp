// The commands that add and delete rows of the content grid.

#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "editor/common/CopyName.h"
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentData.h"
#include "editor/contents/ContentPane.h"
#include "editor/contents/ContentRows.h"

using namespace Qt::StringLiterals;

using namespace ContentRows;

namespace {

QString stepped(const KeyedGrid& grid, int row, const QString& key, int by) {
    return QString::number(grid.value(row, key) + by);
}

bool isBlankRation(const KeyedGrid& grid, int row) {
    return grid.level(row) == rationLevel && grid.text(row, contDeID).isEmpty();
}

}  // namespace

/// Inserts a row and makes it current, ready to be typed into.
void ContentPane::insertNode(int at, KeyedGrid::Cells cells, int level) {
    m_grdConcent->insertRow(at, cells, level);
    m_grdConcent->setText(at, contType, QString::number(level));
    m_grdConcent->setCell(at, cont);
    m_grdConcent->setFocus();
}

/// Removes a row with everything below it in the outline; the row that takes its place becomes current.
void ContentPane::removeNode(int row) {
    m_grdConcent->removeRows(row, m_grdConcent->nodeEnd(row) - row);
    m_grdConcent->setRow(qMin(row, m_grdConcent->rowCount() - 1));
}

int ContentPane::rowBelowRations(int row) const {
    int below = row + 1;
    while (below < m_grdConcent->rowCount() && m_grdConcent->level(below) == rationLevel)
        ++below;
    return below;
}

void ContentPane::munAddBillCont_Click() {
    guarded({"frmEditor", "munAddBillCont_Click"}, [this] {
        const Bill* bill = m_library.currentBill();
        if (!bill || bill->id < 1)
            return;
        NewContent content{bill->id, bill->code, 0, {}, profession()};
        content.name = GetCopyName(m_library.connection(), u"新建工作内容"_s, "tblCont", "cont");
        if (content.name.isEmpty())
            return;
        const int row = m_grdConcent->row();
        const int rows = m_grdConcent->rowCount();
        for (int above = row; above >= 0 && content.num < 1; --above)
            content.num = qMax<qint64>(0, m_grdConcent->value(above, contNum));
        ++content.num;
        int at = row + 1;
        while (at < rows && m_grdConcent->value(at, contNum) <= 0)
            ++at;
        const std::optional<qint64> id = addContent(m_library.connection(), content);
        if (!id)
            return;
        for (int below = row + 1; below < rows; ++below)
            if (m_grdConcent->value(below, contNum) > 0)
                m_grdConcent->setText(below, contNum, stepped(*m_grdConcent, below, contNum, 1));
        insertNode(
            at, {{"contID", QString::number(*id)}, {"contNum", QString::number(content.num)}, {"cont", content.name}},
            contentLevel);
        m_library.did(u"添加工作内容 "_s + content.name);
    });
}

void ContentPane::munAddBillSubCont_Click() {
    guarded({"frmEditor", "munAddBillSubCont_Click"}, [this] {
        const int row = m_grdConcent->row();
        if (row < 0 || m_grdConcent->level(row) >= rationLevel)
            return;
        const qint64 content = m_grdConcent->value(row, contID);
        const QString name = GetCopyName(m_library.connection(), u"新建二级工作内容"_s, "tblContDe", "subCont");
        if (name.isEmpty())
            return;
        // From a content's row it is appended to the content, from a second-level content's row inserted after that.
        qint64 number = 1;
        int at = row + 1;
        if (m_grdConcent->level(row) == contentLevel) {
            for (; at < m_grdConcent->rowCount() && m_grdConcent->level(at) != contentLevel; ++at)
                number = m_grdConcent->value(at, subNum) + 1;
        } else {
            number = m_grdConcent->value(row, subNum) + 1;
            at = rowBelowRations(row);
        }
        if (!addSubContent(m_library.connection(), content, number, name))
            return;
        for (int below = at; below < m_grdConcent->rowCount() && m_grdConcent->value(below, subNum) > 0; ++below)
            m_grdConcent->setText(below, subNum, stepped(*m_grdConcent, below, subNum, 1));
        insertNode(at, {{"contID", QString::number(content)}, {"subNum", QString::number(number)}, {"cont", name}},
                   subContentLevel);
        m_library.did(u"添加二级工作内容 "_s + name);
    });
}

void ContentPane::munAddBillContDe_Click() {
    guarded({"frmEditor", "munAddBillContDe_Click"}, [this] {
        const int row = m_grdConcent->row();
        if (row < 0)
            return;
        const QString& dekID = m_library.defaultRationLibrary();
        const QString library = dekID.isEmpty() ? QString() : dekID.left(10) + m_library.shownBill().code.left(2);
        insertNode(rowBelowRations(row),
                   {{"contID", m_grdConcent->text(row, contID)},
                    {"subNum", QString::number(m_grdConcent->value(row, subNum))},
                    {"dekName", library}},
                   rationLevel);
        m_grdConcent->setPending(m_grdConcent->row(), dekName, true);
        // Only one row may be without a ration: an older one is removed.
        int blank = 0;
        while (blank < m_grdConcent->rowCount() &&
               (blank == m_grdConcent->row() || !isBlankRation(*m_grdConcent, blank)))
            ++blank;
        m_grdConcent->removeRows(blank);
        blank = 0;
        while (blank < m_grdConcent->rowCount() && !isBlankRation(*m_grdConcent, blank))
            ++blank;
        m_grdConcent->setRow(blank);
    });
}

BlankRation ContentPane::blankRation() const {
    for (int row = 0; row < m_grdConcent->rowCount(); ++row)
        if (isBlankRation(*m_grdConcent, row))
            return {m_grdConcent->text(row, contID), m_grdConcent->text(row, subNum), m_grdConcent->text(row, dekName)};
    return {};
}

void ContentPane::addBlankRation(const BlankRation& ration) {
    for (int row = 0; row < m_grdConcent->rowCount() && !ration.contID.isEmpty(); ++row) {
        if (m_grdConcent->level(row) != subContentLevel || m_grdConcent->text(row, contID) != ration.contID ||
            m_grdConcent->text(row, subNum) != ration.subNum)
            continue;
        const int at = rowBelowRations(row);
        m_grdConcent->insertRow(at, {{"contID", ration.contID}, {"subNum", ration.subNum}, {"dekName", ration.dekName}},
                                rationLevel);
        m_grdConcent->setText(at, contType, QString::number(rationLevel));
        m_grdConcent->setPending(at, dekName, true);
        return;
    }
}

void ContentPane::mnuDelBillCont_Click() {
    guarded({"frmEditor", "mnuDelBillCont_Click"}, [this] {
        const int row = m_grdConcent->row();
        const QString text = m_grdConcent->text(row, cont);
        if (row < 0 || !askYesNo(u"确认删工作内容指引 "_s + text + u" ？"_s))
            return;
        if (!deleteContent(m_library.connection(), m_grdConcent->value(row, contID), m_grdConcent->value(row, contNum),
                           m_library.shownBill().id))
            return;
        for (int next = m_grdConcent->nextSibling(row); next >= 0; next = m_grdConcent->nextSibling(next))
            m_grdConcent->setText(next, contNum, stepped(*m_grdConcent, next, contNum, -1));
        removeNode(row);
        m_library.did(u"删除工作内容 "_s + text);
    });
}

void ContentPane::munDelBillSubCont_Click() {
    guarded({"frmEditor", "munDelBillSubCont_Click"}, [this] {
        const int row = m_grdConcent->row();
        const QString text = m_grdConcent->text(row, cont);
        if (row < 0 || !askYesNo(u"确认删工作内容指引 "_s + text + u" ？"_s))
            return;
        if (!deleteSubContent(m_library.connection(), m_grdConcent->value(row, contID),
                              m_grdConcent->value(row, subNum)))
            return;
        for (int next = m_grdConcent->nodeEnd(row);
             next < m_grdConcent->rowCount() && m_grdConcent->level(next) != contentLevel; ++next)
            m_grdConcent->setText(next, subNum, stepped(*m_grdConcent, next, subNum, -1));
        removeNode(row);
        m_library.did(u"删除二级工作内容 "_s + text);
    });
}

void ContentPane::munDelBillContDe_Click() {
    guarded({"frmEditor", "munDelBillContDe_Click"}, [this] {
        const int row = m_grdConcent->row();
        const QString text = m_grdConcent->text(row, cont);
        if (row < 0 || !askYesNo(u"确认删除定额 "_s + text + u" ？"_s))
            return;
        const bool first = row > 0 && m_grdConcent->level(row - 1) == subContentLevel;
        const bool beforeSubContent =
            row + 1 < m_grdConcent->rowCount() && m_grdConcent->level(row + 1) == subContentLevel;
        const RationRow becomes = !first || beforeSubContent ? RationRow::Removed : RationRow::Cleared;
        if (!deleteRation(m_library.connection(), m_grdConcent->value(row, contDeID), becomes))
            return;
        removeNode(row);
        m_library.did(u"删除定额 "_s + text);
    });
}

void ContentPane::deleteCurrentRow() {
    const int row = m_grdConcent->row();
    if (row < 0)
        return;
    switch (m_grdConcent->level(row)) {
        case contentLevel:
            return mnuDelBillCont_Click();
        case subContentLevel:
            return munDelBillSubCont_Click();
        default:
            return munDelBillContDe_Click();
    }
}

void ContentPane::insertRation(const QString& deh, const QString& dekID) {
    const int row = m_grdConcent->row();
    if (m_library.isShownBillGone() || row < 0 || m_grdConcent->level(row) == contentLevel)
        return;
    munAddBillContDe_Click();
    EditBillContDe(deh, dekID);
}

void ContentPane::replaceRation(const QString& deh, const QString& dekID) {
    const int row = m_grdConcent->row();
    if (!m_library.isShownBillGone() && row >= 0 && m_grdConcent->level(row) == rationLevel)
        EditBillContDe(deh, dekID);
}
