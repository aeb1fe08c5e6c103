#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "app/controls/UiHelpers.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"

using namespace Qt::StringLiterals;

namespace {

QSplitter* splitter(Qt::Orientation orientation, QWidget* first, QWidget* second, int firstShare, int secondShare) {
    auto* split = new QSplitter(orientation);
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

    QSplitter* right = splitter(Qt::Vertical, m_bills, tabBillDetail, 5, 4);
    QSplitter* whole = splitter(Qt::Horizontal, m_chapters, right, 0, 1);
    const int digit = fontMetrics().horizontalAdvance(u'0');
    whole->setSizes({digit * 42, digit * 130});

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(whole);

    SetVsGridStyle();
    connect(m_contents, &ContentPane::rationWanted, this, &frmEditor::openRationBrowser);
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
