#include "editor/bills/BillPane.h"

#include <QToolBar>
#include <QVBoxLayout>

#include "app/base/Guarded.h"
#include "editor/bills/BillTextBox.h"
#include "editor/common/LibraryDocument.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

namespace {

std::vector<GridColumn> gridColumns() {
    constexpr Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
    // The mark of the current row has a column of its own.
    std::vector<GridColumn> columns{{QString(), QString(), 225, left, left}};
    for (const BillColumn& column : BillColumns::all)
        columns.push_back({.key = QString::fromLatin1(column.key),
                           .caption = QString::fromUtf16(column.caption),
                           .twips = column.twips,
                           .cells = column.centred ? Qt::Alignment(Qt::AlignCenter) : left,
                           .shown = column.shown});
    return columns;
}

}  // namespace

BillPane::BillPane(LibraryDocument& library, QWidget* parent)
    : QWidget(parent),
      m_library(library),
      m_layout(new QVBoxLayout(this)),
      m_grdBillList(new KeyedGrid(this)),
      m_txtRule(new BillTextBox(this)),
      m_txtContent(new BillTextBox(this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addWidget(m_grdBillList, 1);
    setFocusProxy(m_grdBillList);
    m_grdBillList->setObjectName(u"grdBillList"_s);
    m_grdBillList->setColumns(gridColumns());
    m_grdBillList->setTag(u"0"_s);
    m_txtRule->setObjectName(u"txtRule"_s);
    m_txtContent->setObjectName(u"txtContent"_s);
    connect(m_grdBillList, &KeyedGrid::rowChanged, this, [this](int, int row) { grdBillList_AfterRowColChange(row); });
    connect(&m_library, &LibraryDocument::listingChanged, this, &BillPane::showListing);
    enableEditing();
}

BillPane::~BillPane() {
    // The boxes may have got another parent and outlive this pane: losing the focus later, they must not call into it.
    for (BillTextBox* box : {m_txtRule.data(), m_txtContent.data()}) {
        if (box) {
            box->validate = nullptr;
            box->beforeWrite = nullptr;
        }
    }
}

QPlainTextEdit* BillPane::txtRule() const { return m_txtRule; }

QPlainTextEdit* BillPane::txtContent() const { return m_txtContent; }

void BillPane::addToolBar(QToolBar* bar) { m_layout->insertWidget(m_layout->indexOf(m_grdBillList), bar); }

void BillPane::showListing() {
    m_grdBillList->setTag(m_library.listsQuery() ? u"1"_s : u"0"_s);
    const Listing listing = m_library.listing();
    switch (listing.of) {
        case Listing::Of::Nothing:
            return clearList();
        case Listing::Of::Chapter:
            return LoadBill(listing.text);
        case Listing::Of::Query:
            return listQuery(listing.text);
    }
}

void BillPane::LoadBill(const QString& chapterCode) {
    list("LoadBill", [&] { return billsOfChapter(m_library.connection(), chapterCode); });
}

void BillPane::listQuery(const QString& text) {
    list("mnuQueryBill_Click", [&] { return billsWithCode(m_library.connection(), text); });
    if (!m_library.listing().failed)
        Q_EMIT m_library.said(u"查找 “%1”：%2 条"_s.arg(text).arg(m_grdBillList->rowCount()));
}

void BillPane::list(const char* procedure, const std::function<Recordset()>& query) {
    guarded(
        {"frmEditor", procedure},
        [&] {
            Recordset rows = query();
            ListBillData(rows);
            ReleaseOrmRecordset(rows);
        },
        [this] { listingFailed(); });
}

void BillPane::ListBillData(Recordset& rows) {
    guarded(
        {"frmEditor", "ListBillData"},
        [&] {
            m_grdBillList->setRedraw(false);
            m_grdBillList->clearRows();
            KeyedGrid::Batch bills(*m_grdBillList);
            for (; !rows.EndOfFile(); rows.MoveNext())
                appendBill(bills, rows);
            bills.add();
            showFirstBill();
        },
        [this] { listingFailed(); });
}

void BillPane::listingFailed() {
    // Rows of another listing, or a part of this one, would be taken for the whole by every command.
    m_grdBillList->clearRows();
    m_library.listingFailed();
    showFirstBill();
}

void BillPane::showFirstBill() {
    if (m_grdBillList->hasRows())
        m_grdBillList->setRow(0);
    else
        grdBillList_AfterRowColChange(-1);
    m_grdBillList->setRedraw(true);
}

void BillPane::clearList() {
    m_grdBillList->clearRows();
    m_library.leaveCurrentBill();
    m_txtRule->showText(0, {});
    m_txtContent->showText(0, {});
}

void BillPane::grdBillList_AfterRowColChange(int newRow) {
    guarded({"frmEditor", "grdBillList_AfterRowColChange"}, [&] {
        // What was typed for the bill that was current until now.
        m_txtRule->commitChange();
        m_txtContent->commitChange();
        const Bill current = bill(newRow);
        m_library.setCurrentBill(newRow < 0 ? std::nullopt : std::optional(current));
        m_txtRule->showText(current.id, cell(newRow, BillColumns::rule));
        m_txtContent->showText(current.id, cell(newRow, BillColumns::cont));
    });
}

void BillPane::appendBill(KeyedGrid::Batch& bills, const Recordset& rows) {
    using namespace BillColumns;
    const auto cell = [&](const BillColumn& column) {
        return std::pair(column.key, CellText(rows.utf8(column.field)));
    };
    bills.append({cell(id), cell(prefix), cell(code), cell(name), cell(unit), cell(cont), cell(rule)});
}

QString BillPane::cell(int row, const BillColumn& column) const {
    return m_grdBillList->text(row, QString::fromLatin1(column.key));
}

void BillPane::setCell(int row, const BillColumn& column, const QString& text) {
    m_grdBillList->setText(row, QString::fromLatin1(column.key), text);
}

Bill BillPane::bill(int row) const { return {m_grdBillList->value(row, u"id"_s), cell(row, BillColumns::code)}; }
