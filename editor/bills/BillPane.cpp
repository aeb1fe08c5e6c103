#include "editor/bills/BillPane.h"

#include <QToolBar>
#include <QVBoxLayout>

#include "app/base/Guarded.h"
#include "editor/bills/BillTextBox.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

namespace {

constexpr Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment centre = Qt::AlignCenter;

std::vector<GridColumn> billColumns() {
    return {
        {QString(), QString(), 225, left, left},
        {u"id"_s, u"id"_s, 900, left, left, false},
        {u"CodePreFix"_s, u"前缀"_s, 960, centre, centre},
        {u"Code"_s, u"编号"_s, 1590, left, centre},
        {u"Name"_s, u"清单名称"_s, 4995, left, centre},
        {u"Unit"_s, u"单位"_s, 1155, centre, centre},
        {u"Cont"_s, u"工作内容"_s, 2475, left, centre, false},
        {u"RULE"_s, u"计算规则"_s, 2985, left, centre, false},
    };
}

}  // namespace

BillPane::BillPane(QWidget* parent)
    : QWidget(parent),
      m_layout(new QVBoxLayout(this)),
      m_grdBillList(new KeyedGrid(this)),
      m_txtRule(new BillTextBox(this)),
      m_txtContent(new BillTextBox(this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_grdBillList, 1);
    setFocusProxy(m_grdBillList);
    m_grdBillList->setObjectName(u"grdBillList"_s);
    m_grdBillList->setColumns(billColumns());
    m_grdBillList->setTag(u"0"_s);
    m_txtRule->setObjectName(u"txtRule"_s);
    m_txtContent->setObjectName(u"txtContent"_s);
    connect(m_grdBillList, &KeyedGrid::rowChanged, this, [this](int, int row) { grdBillList_AfterRowColChange(row); });
    enableEditing();
}

BillPane::~BillPane() {
    // Boxes that were laid out elsewhere may live on and lose the focus later.
    for (BillTextBox* box : {m_txtRule.data(), m_txtContent.data()}) {
        if (box)
            box->validate = nullptr;
    }
}

QPlainTextEdit* BillPane::txtRule() const { return m_txtRule; }

QPlainTextEdit* BillPane::txtContent() const { return m_txtContent; }

void BillPane::addToolBar(QToolBar* bar) { m_layout->insertWidget(m_layout->indexOf(m_grdBillList), bar); }

void BillPane::LoadBill(const QString& chapterCode) {
    guarded({"frmEditor", "LoadBill"}, [&] {
        commitPending();
        Recordset rows = billsOfChapter(m_ormConn, chapterCode);
        ListBillData(&rows);
        ReleaseOrmRecordset(rows);
    });
}

void BillPane::ListBillData(Recordset* rows) {
    if (!rows)
        return;
    guarded(
        {"frmEditor", "ListBillData"},
        [&] {
            commitPending();
            m_grdBillList->setRedraw(false);
            m_grdBillList->clearRows();
            for (; !rows->EndOfFile(); rows->MoveNext())
                m_grdBillList->appendRow({{"id", rows->utf8("ID")},
                                          {"CodePrefix", rows->utf8("CodePrefix")},
                                          {"Code", rows->utf8("Code")},
                                          {"Name", rows->utf8("Name")},
                                          {"Unit", rows->utf8("Unit")},
                                          {"Cont", rows->utf8("Cont")},
                                          {"RULE", rows->utf8("Rule")}});
            showFirstBill();
        },
        [this] { showFirstBill(); });
}

void BillPane::showFirstBill() {
    if (m_grdBillList->hasRows())
        m_grdBillList->setRow(0);
    else
        grdBillList_AfterRowColChange(-1);
    m_grdBillList->setRedraw(true);
    if (!m_grdBillList->hasRows() && listEmptied)
        listEmptied();
}

void BillPane::clearList() {
    commitPending();
    m_grdBillList->clearRows();
    m_txtRule->showText(0, {});
    m_txtContent->showText(0, {});
}

void BillPane::grdBillList_AfterRowColChange(int newRow) {
    guarded({"frmEditor", "grdBillList_AfterRowColChange"}, [&] {
        // What was typed for the bill that was current until now.
        m_txtRule->commitChange();
        m_txtContent->commitChange();
        const qint64 id = billId(newRow);
        if (billChanged)
            billChanged(id);
        m_txtRule->showText(id, m_grdBillList->text(newRow, u"RULE"_s));
        m_txtContent->showText(id, m_grdBillList->text(newRow, u"Cont"_s));
    });
}

qint64 BillPane::billId(int row) const { return m_grdBillList->value(row, u"id"_s); }
