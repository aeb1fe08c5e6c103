#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTabBar>

#include <QTabWidget>
#include <QVBoxLayout>

#include "app/base/UserSettings.h"
#include "app/controls/KeyedGrid.h"

#include "app/controls/KeyedTree.h"
#include "app/controls/UiHelpers.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/common/LibraryDocument.h"

#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"

using namespace Qt::StringLiterals;

namespace {

QSplitter* splitter(const QString& name, Qt::Orientation orientation, QWidget* first, QWidget* second, int firstShare,
                    int secondShare) {
    auto* split = new QSplitter(orientation);
    split->setObjectName(name);
    split->addWidget(first);
    split->addWidget(second);
    split->setChildrenCollapsible(false);
    split->setStretchFactor(0, firstShare);
    split->setStretchFactor(1, secondShare);
    return split;
}

}  // namespace

void frmEditor::InitFormView() {
    m_bills->txtRule()->setFrameShape(QFrame::NoFrame);
    m_bills->txtContent()->setFrameShape(QFrame::NoFrame);

    tabBillDetail->setObjectName(u"tabBillDetail"_s);
    tabBillDetail->setDocumentMode(true);
    tabBillDetail->addTab(m_contents, u"工作内容"_s);
    tabBillDetail->addTab(m_features, u"项目特征"_s);
    tabBillDetail->addTab(m_bills->txtRule(), u"计算规则"_s);
    tabBillDetail->addTab(m_bills->txtContent(), u"工程内容"_s);

    QSplitter* right = splitter(u"billsAndDetails"_s, Qt::Vertical, m_bills, tabBillDetail, 5, 4);
    QSplitter* whole = splitter(u"chaptersAndBills"_s, Qt::Horizontal, m_chapters, right, 0, 1);
    const int digit = fontMetrics().horizontalAdvance(u'0');
    whole->setSizes({digit * 42, digit * 130});

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(whole);

    SetVsGridStyle();
    nameForScreenReaders();
    connect(m_contents, &ContentPane::rationWanted, this, &frmEditor::openRationBrowser);
    connect(m_library, &LibraryDocument::said, this, &frmEditor::statusText);
    restoreSplitters();
}

void frmEditor::nameForScreenReaders() {
    const std::pair<QWidget*, QString> names[] = {
        {m_chapters->tvSYB(), u"清单目录"_s},      {m_bills->grdBillList(), u"清单"_s},
        {m_contents->grdConcent(), u"工作内容"_s}, {m_features->grdSpec(), u"项目特征"_s},
        {m_features->grdSpecEnum(), u"特征值"_s},  {m_bills->txtRule(), u"计算规则"_s},
        {m_bills->txtContent(), u"工程内容"_s}};
    for (const auto& [widget, name] : names)
        widget->setAccessibleName(name);
}

/// Tab goes as the eye does: chapters, search box, bills, details.
bool frmEditor::focusNextPrevChild(bool next) {
    QWidget* const ring[] = {m_chapters->tvSYB(),         m_searchText,
                             m_bills->grdBillList(),      tabBillDetail->tabBar(),
                             m_contents->cboProfession(), m_contents->grdConcent(),
                             m_features->grdSpec(),       m_features->grdSpecEnum(),
                             m_bills->txtRule(),          m_bills->txtContent()};
    const int count = static_cast<int>(std::size(ring));
    const QWidget* focus = focusWidget();
    int at = 0;
    while (at < count && ring[at] != focus && !ring[at]->isAncestorOf(focus))
        ++at;
    for (int step = 1; step <= count; ++step) {
        QWidget* reached = ring[(at + (next ? step : count - step)) % count];
        if (!reached->isVisible())
            continue;
        reached->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    return false;
}

void frmEditor::restoreSplitters() {
    const QSettings settings = userSettings(objectName());
    for (QSplitter* split : findChildren<QSplitter*>())
        split->restoreState(settings.value(split->objectName()).toByteArray());
}

void frmEditor::saveSplitters() const {
    QSettings settings = userSettings(objectName());
    for (const QSplitter* split : findChildren<QSplitter*>())
        settings.setValue(split->objectName(), split->saveState());
}

void frmEditor::SetVsGridStyle() {
    Grid_MergeFix(m_features->grdSpecEnum());
    // Texts of any length take the room that is left beside them.
    m_features->grdSpecEnum()->setGrowingColumn(u"eigenValue"_s);
    m_features->grdSpec()->setGrowingColumn(u"Name"_s);
    m_bills->grdBillList()->setGrowingColumn(u"Name"_s);
    m_contents->grdConcent()->setGrowingColumn(u"cont"_s);
    for (KeyedGrid* grid :
         {m_bills->grdBillList(), m_contents->grdConcent(), m_features->grdSpec(), m_features->grdSpecEnum()})
        SetVSFlexGridStyle(grid);
}
