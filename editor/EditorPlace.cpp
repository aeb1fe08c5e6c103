// Where the user is in the window, and the way back there when everything is read anew.

#include <QComboBox>
#include <QPlainTextEdit>
#include <QScopeGuard>
#include <QScrollBar>
#include <QTabWidget>

#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentPane.h"
#include "editor/contents/ContentRows.h"
#include "editor/frmEditor.h"

using namespace Qt::StringLiterals;

namespace {

/// The columns that tell a grid's rows.
using RowKeys = QStringList;

const RowKeys byId{u"id"_s};
const RowKeys byContent{ContentRows::contType, ContentRows::contID, ContentRows::subNum, ContentRows::contDeID};

QString nameOfRow(const KeyedGrid& grid, int row, const RowKeys& keys) {
    QStringList name;
    for (const QString& key : keys)
        name << grid.text(row, key);
    return name.join(u'|');
}

CellPlace placeIn(const KeyedGrid& grid, const RowKeys& keys) {
    const int row = grid.row();
    return {row < 0 ? QString() : nameOfRow(grid, row, keys), row, grid.columnKey()};
}

/// Makes the cell current, or the one in its place. False when its row is not there.
bool goTo(KeyedGrid& grid, const CellPlace& place, const RowKeys& keys) {
    int row = 0;
    while (row < grid.rowCount() && (place.row.isEmpty() || nameOfRow(grid, row, keys) != place.row))
        ++row;
    const bool found = row < grid.rowCount();
    if (!found)
        row = qMin(place.number, grid.rowCount() - 1);
    if (row < 0)
        return false;
    if (place.column.isEmpty())
        grid.setRow(row);
    else
        grid.setCell(row, place.column);
    return found;
}

/// Which nodes of a grid's outline are closed.
QStringList closedNodes(const KeyedGrid& grid, const RowKeys& keys) {
    QStringList closed;
    for (int row = 0; row < grid.rowCount(); ++row)
        if (grid.isCollapsed(row))
            closed << nameOfRow(grid, row, keys);
    return closed;
}

void closeNodes(KeyedGrid& grid, const QStringList& closed, const RowKeys& keys) {
    for (int row = 0; !closed.isEmpty() && row < grid.rowCount(); ++row)
        if (closed.contains(nameOfRow(grid, row, keys)))
            grid.setCollapsed(row, true);
}

}  // namespace

ViewPlace frmEditor::place() const {
    // The editor of a cell has no name, and goes with the grid's rows.
    const QWidget* focus = focusWidget();
    while (focus && focus != this && (focus->objectName().isEmpty() || focus->objectName().startsWith(u"qt_")))
        focus = focus->parentWidget();
    return {m_library->chapter(),
            m_library->listing(),
            m_library->shownBill(),
            placeIn(*m_bills->grdBillList(), byId),
            tabBillDetail->currentIndex(),
            m_contents->cboProfession()->currentIndex(),
            placeIn(*m_contents->grdConcent(), byContent),
            m_contents->blankRation(),
            placeIn(*m_features->grdSpec(), byId),
            placeIn(*m_features->grdSpecEnum(), byId),
            focus && focus != this ? focus->objectName() : QString()};
}

bool frmEditor::isAt(const ViewPlace& place) const {
    const ViewPlace here = this->place();
    return here.chapter == place.chapter && here.bill.id == place.bill.id && here.billCell.row == place.billCell.row &&
           here.content.row == place.content.row && here.feature.row == place.feature.row &&
           here.value.row == place.value.row;
}

void frmEditor::showAfresh(const ViewPlace& place) {
    const std::pair<KeyedGrid*, RowKeys> grids[] = {{m_bills->grdBillList(), byId},
                                                    {m_contents->grdConcent(), byContent},
                                                    {m_features->grdSpec(), byId},
                                                    {m_features->grdSpecEnum(), byId}};
    KeyedGrid* typedInto = nullptr;
    QString typed;
    for (const auto& [grid, keys] : grids) {
        if (!grid->typedText().isNull()) {
            typedInto = grid;
            typed = grid->typedText();
        }
        grid->cancelEdit();
    }
    m_bills->commitTexts();
    const bool sameList =
        place.listing.of == m_library->listing().of && place.listing.text == m_library->listing().text;
    // A list that stays the same one stays where it was scrolled to, with the same nodes closed.
    const bool sameBill = place.bill.id == m_library->shownBill().id;
    const bool isSame[] = {sameList, sameBill, sameBill, sameBill};
    int scrolledTo[std::size(grids)];
    for (std::size_t i = 0; i < std::size(grids); ++i)
        scrolledTo[i] = grids[i].first->verticalScrollBar()->value();
    const QStringList closed = closedNodes(*m_contents->grdConcent(), byContent);

    setUpdatesEnabled(false);
    m_bills->setBoxesLeftByProgram(true);
    std::optional showing = qScopeGuard([this] {
        m_bills->setBoxesLeftByProgram(false);
        setUpdatesEnabled(true);
    });
    tabBillDetail->setCurrentIndex(place.tab);
    m_contents->cboProfession()->setCurrentIndex(place.profession);
    const QString chapter = m_chapters->showAfresh(place.chapter);
    const bool stays = chapter == place.chapter;
    m_library->showAfresh(chapter, stays ? place.listing : listingOf(chapter), stays ? place.bill : Bill());
    const CellPlace places[] = {place.billCell, place.content, place.feature, place.value};
    bool typedRowIsThere = false;
    for (std::size_t i = 0; i < std::size(grids); ++i) {
        const auto& [grid, keys] = grids[i];
        if (grid == m_contents->grdConcent()) {
            m_contents->addBlankRation(place.blankRation);
            closeNodes(*grid, closed, keys);
        }
        const bool isThere = goTo(*grid, places[i], keys);
        typedRowIsThere = typedRowIsThere || (isThere && grid == typedInto);
        if (isSame[i]) {
            grid->verticalScrollBar()->setValue(scrolledTo[i]);
            grid->scrollTo(grid->currentIndex());
        }
    }
    if (QWidget* control = place.focus.isEmpty() ? nullptr : findChild<QWidget*>(place.focus);
        control && control->isVisible())
        control->setFocus();
    showing.reset();
    if (typedInto && !(typedRowIsThere && typedInto->typeAgain(typed)))
        showMessage(u"正在修改的内容已被另一个程序删除，刚才输入的“"_s + typed + u"”没有写入"_s, u"提示"_s,
                    MessageIcon::Exclamation);
}
