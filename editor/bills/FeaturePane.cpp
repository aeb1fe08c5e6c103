#include "editor/bills/FeaturePane.h"

#include <QHBoxLayout>
#include <QSplitter>

#include "app/base/Guarded.h"
#include "app/controls/CheckState.h"

#include "editor/common/LibraryDocument.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

namespace {

constexpr Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment centre = Qt::AlignCenter;

std::vector<GridColumn> featureColumns() {
    return {
        {u"id"_s, u"ID"_s, 480, left, left, false},       {u"Name"_s, u"特征名称"_s, 3000, left, centre},
        {u"type"_s, u"类型"_s, 1080, centre, centre},     {u"unit"_s, u"单位"_s, 1080, centre, centre},
        {u"defval"_s, u"默认值"_s, 1995, centre, centre},
    };
}

std::vector<GridColumn> valueColumns() {
    return {
        {u"ID"_s, u"ID"_s, 495, left, left, false},
        {u"isUse"_s, u"特征值"_s, 630, centre, centre, true, GridColumn::Look::CheckBox},
        {u"eigenValue"_s, u"特征值"_s, 1005, centre, centre},
    };
}

}  // namespace

FeaturePane::FeaturePane(LibraryDocument& library, QWidget* parent)
    : QWidget(parent), m_library(library), m_grdSpec(new KeyedGrid(this)), m_grdSpecEnum(new KeyedGrid(this)) {
    m_grdSpec->setObjectName(u"grdSpec"_s);
    m_grdSpec->setColumns(featureColumns());
    m_grdSpecEnum->setObjectName(u"grdSpecEnum"_s);
    m_grdSpecEnum->setColumns(valueColumns());

    auto* sides = new QSplitter(Qt::Horizontal, this);
    sides->setObjectName(u"featuresAndValues"_s);
    sides->setChildrenCollapsible(false);

    sides->addWidget(m_grdSpec);
    sides->addWidget(m_grdSpecEnum);
    sides->setStretchFactor(0, 3);
    sides->setStretchFactor(1, 1);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(sides);

    connect(m_grdSpec, &KeyedGrid::rowChanged, this, [this](int, int row) { grdSpec_AfterRowColChange(row); });
    connect(&m_library, &LibraryDocument::currentBillChanged, this, &FeaturePane::showCurrentBill);
    enableEditing();
}

void FeaturePane::showCurrentBill() {
    if (const Bill* bill = m_library.currentBill()) {
        LoadBillSpec(bill->id);
    } else {
        m_grdSpec->clearRows();
        grdSpec_AfterRowColChange(-1);
    }
}

void FeaturePane::LoadBillSpec(qint64 billId) {
    guarded(
        {"frmEditor", "LoadBillSpec"},
        [&] {
            m_grdSpec->setRedraw(false);
            m_grdSpec->clearRows();
            Recordset rows = featuresOfBill(m_library.connection(), billId);
            for (; !rows.EndOfFile(); rows.MoveNext())
                m_grdSpec->appendRow({{"id", rows.text("ID")},
                                      {"Name", rows.text("Name")},
                                      {"type", rows.text("Type")},
                                      {"unit", rows.text("Unit")},
                                      {"defval", rows.text("DefVal")}});
            ReleaseOrmRecordset(rows);
            showFirstRow(m_grdSpec);
        },
        [this] { showFirstRow(m_grdSpec); });
}

void FeaturePane::LoadSpecEnum(qint64 specId) {
    guarded(
        {"frmEditor", "LoadSpecEnum"},
        [&] {
            m_shownFeature = specId;
            m_grdSpecEnum->setRedraw(false);
            m_grdSpecEnum->clearRows();
            Recordset rows = valuesOfFeature(m_library.connection(), specId);
            for (; !rows.EndOfFile(); rows.MoveNext())
                m_grdSpecEnum->appendRow({{"ID", rows.text("ID")},
                                          {"isUse", CheckState::of(rows.number("IsUse") == 1)},
                                          {"eigenValue", rows.text("EigenValue")}});
            ReleaseOrmRecordset(rows);
            showFirstRow(m_grdSpecEnum);
        },
        [this] { showFirstRow(m_grdSpecEnum); });
}

void FeaturePane::showFirstRow(KeyedGrid* grid) {
    if (grid->hasRows())
        grid->setRow(0);
    else if (grid == m_grdSpec)
        grdSpec_AfterRowColChange(-1);
    grid->setRedraw(true);
}

void FeaturePane::grdSpec_AfterRowColChange(int newRow) {
    guarded({"frmEditor", "grdSpec_AfterRowColChange"}, [&] {
        if (newRow >= 0) {
            LoadSpecEnum(m_grdSpec->value(newRow, u"id"_s));
        } else {
            m_shownFeature = 0;
            m_grdSpecEnum->clearRows();
        }
    });
}

bool FeaturePane::commitPending() {
    const bool featureDone = m_grdSpec->commitEdit();
    const bool valueDone = m_grdSpecEnum->commitEdit();
    return featureDone && valueDone;
}
