// The editor as the ration browser sees it.

#include "app/base/Guarded.h"
#include "app/controls/KeyedGrid.h"
#include "editor/bills/BillPane.h"
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentPane.h"
#include "editor/contents/ContentRows.h"
#include "editor/frmEditor.h"
#include "ration_browser/frmDekBrowser.h"

using namespace Qt::StringLiterals;

void frmEditor::WinCommand(RationMode mode, const QString& deh, const QString& dekID) {
    // A code that is only half typed gives way to the chosen one.
    m_contents->dropTypedCode();
    if (!mayRunCommand())
        return;
    guarded({"frmEditor", "WinCommand"}, [&] {
        if (mode == RationMode::Insert)
            m_contents->insertRation(deh, dekID);
        else
            m_contents->replaceRation(deh, dekID);
    });
}

void frmEditor::openRationBrowser(const QString& dekId) {
    guarded({"frmEditor", "grdConcent_CellButtonClick"}, [&] {
        frmDekBrowser* browser = frmDekBrowser::shared(m_mainWindow);
        browser->setParetnForm(this);
        browser->setDekID(dekId);
        browser->show();
        browser->raise();
        browser->activateWindow();
    });
}

QString frmEditor::receivingRow() const {
    const KeyedGrid* bills = m_bills->grdBillList();
    const KeyedGrid* contents = m_contents->grdConcent();
    const int row = contents->row();
    const auto none = [this](const QString& why) { return u"定额放不进 "_s + windowTitle() + u"："_s + why; };
    if (m_library->isShownBillGone())
        return none(u"这条清单已被删除"_s);
    if (!contents->hasRows())
        return none(bills->row() < 0 ? u"没有选中清单"_s : u"这条清单还没有工作内容"_s);
    if (row < 0 || contents->level(row) == ContentRows::contentLevel)
        return none(u"先选中一个二级工作内容，或其下的定额"_s);
    QStringList way{windowTitle()};
    if (bills->row() >= 0)
        way << bills->text(bills->row(), u"code"_s) + u' ' + bills->text(bills->row(), u"Name"_s);
    int subContent = row;
    while (subContent > 0 && contents->level(subContent) > ContentRows::subContentLevel)
        --subContent;
    way << contents->text(subContent, ContentRows::cont);
    if (subContent != row)
        way << contents->text(row, ContentRows::cont);
    way.removeAll(QString());
    return u"→ "_s + way.join(u" · "_s);
}

QRect frmEditor::receivingRect() const {
    const KeyedGrid* grid = m_contents->grdConcent();
    const QRect cell = grid->visualRect(grid->currentIndex());
    if (!grid->isVisible() || !grid->viewport()->rect().contains(cell.center()))
        return {};
    return {grid->viewport()->mapToGlobal(QPoint(0, cell.top())), QSize(grid->viewport()->width(), cell.height())};
}
