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
    connectPanes();
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

void frmEditor::connectPanes() {
    m_chapters->chapterClicked = [this](const QString& tag) { chapterClicked(tag); };
    m_chapters->chapterDeleted = [this] { lockDetailsOfDeletedBill(); };

    m_bills->selectedChapter = [this] {
        const KeyedTree::Node* node = m_chapters->tvSYB()->selectedNode();
        return node ? KeyedTree::tag(node) : QString();
    };
    m_bills->deselectChapter = [this] { m_chapters->tvSYB()->selectNode(nullptr); };
    m_bills->queryText = [this] { return m_searchText->text(); };
    m_bills->billChanged = [this](qint64 billId) {
        m_contents->LoadBillContent(billId);
        m_features->LoadBillSpec(billId);
    };
    m_bills->listEmptied = [this] { m_contents->grdConcent()->clearRows(); };

    m_features->currentBillId = [this] {
        const KeyedGrid* bills = m_bills->grdBillList();
        return bills->value(bills->row(), u"id"_s);
    };
    m_contents->currentBill = [this] {
        const KeyedGrid* bills = m_bills->grdBillList();
        const int row = bills->row();
        return CurrentBill{bills->value(row, u"id"_s), row < 0 ? QString() : bills->text(row, u"code"_s)};
    };
    m_contents->ellipsisClicked = [this](const QString& dekId) { openRationBrowser(dekId); };
}
