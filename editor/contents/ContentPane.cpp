#include "editor/contents/ContentPane.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include "app/base/Guarded.h"
#include "app/base/Text.h"
#include "app/controls/UiHelpers.h"
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentOutline.h"
#include "editor/contents/ContentRows.h"

using namespace Qt::StringLiterals;

using namespace ContentRows;

ContentPane::ContentPane(LibraryDocument& library, QWidget* parent)
    : QWidget(parent), m_library(library), m_grdConcent(new KeyedGrid(this)), m_cboProfession(new QComboBox(this)) {
    m_cboProfession->setObjectName(u"cboProfession"_s);
    turnByWheelOnlyWithFocus(m_cboProfession);
    int number = 0;
    for (const char16_t* name : {u"建筑", u"装饰", u"安装", u"市政", u"园林", u"送电", u"变电", u"发电", u"配网"})
        m_cboProfession->addItem(QString::fromUtf16(name), ++number);
    // Choosing the shown profession again loads again.
    connect(m_cboProfession, &QComboBox::activated, this, &ContentPane::cboProfession_Click);
    auto* label = new QLabel(u"专业："_s, this);
    label->setBuddy(m_cboProfession);

    auto* choice = new QHBoxLayout;
    choice->setContentsMargins(6, 4, 6, 4);
    choice->addWidget(label);
    choice->addWidget(m_cboProfession);
    choice->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(choice);
    layout->addWidget(m_grdConcent);
    setUpGrid();
    connect(&m_library, &LibraryDocument::currentBillChanged, this, &ContentPane::showCurrentBill);
    connect(&m_library, &LibraryDocument::shownBillLost, m_grdConcent, &KeyedGrid::cancelEdit);
}

void ContentPane::setUpGrid() {
    constexpr auto left = Qt::AlignLeft | Qt::AlignVCenter;
    constexpr auto centre = Qt::AlignCenter;
    m_grdConcent->setObjectName(u"grdConcent"_s);
    m_grdConcent->setColumns({
        {cont, u"工作内容指引"_s, 4995, left},
        {unit, u"单位"_s, 1005, centre},
        {dekName, u"定额库"_s, 3495, left},
        {contID, contID, 1080, left, centre, false},
        {contDeID, contDeID, 1080, left, centre, false},
        {contNum, contNum, 1080, left, centre, false},
        {subNum, subNum, 1080, left, centre, false},
        {contType, contType, 1080, left, centre, false},
    });
    m_grdConcent->setOutlineColumn(cont);

    m_grdConcent->startEdit = [this](int row, const QString& key) { return grdConcent_StartEdit(row, key); };
    m_grdConcent->editLimit = [this](int row, const QString& key) {
        if (key != cont)
            return 0;
        return m_grdConcent->level(row) == rationLevel ? 150 : 50;
    };
    m_grdConcent->validateEdit = [this](int row, const QString& key, QString& text) {
        return grdConcent_ValidateEdit(row, key, text);
    };
    connect(m_grdConcent, &KeyedGrid::cellChanged, this, &ContentPane::grdConcent_RowColChange);
    connect(m_grdConcent, &KeyedGrid::cellButtonClicked, this, &ContentPane::grdConcent_CellButtonClick);
}

QString ContentPane::profession() const { return zeroPadded(m_cboProfession->currentData().toInt(), 2); }

void ContentPane::setDekComboList(const QString& list) {
    m_dekComboList = list;
    m_grdConcent->setComboList(dekName, list);
}

void ContentPane::showCurrentBill() {
    if (const Bill* bill = m_library.currentBill())
        LoadBillContent(bill->id);
    else
        m_grdConcent->clearRows();
}

void ContentPane::LoadBillContent(qint64 billID) {
    guarded(
        {"frmEditor", "LoadBillContent"},
        [&] {
            const Outline outline = ::LoadBillContent(m_library.connection(), billID, profession());
            m_grdConcent->setRedraw(false);
            m_grdConcent->clearRows();
            KeyedGrid::Batch rows(*m_grdConcent);
            for (const OutlineRow& row : outline)
                rows.append({{"cont", row.cont},
                             {"Unit", row.unit},
                             {"dekName", row.dekName},
                             {"contID", row.contID},
                             {"contDeID", row.contDeID},
                             {"contNum", row.contNum},
                             {"subNum", row.subNum},
                             {"contType", QString::number(row.level)}},
                            row.level);
            rows.add();
            m_grdConcent->setRow(m_grdConcent->hasRows() ? 0 : -1);
            m_grdConcent->setRedraw(true);
        },
        [this] { m_grdConcent->setRedraw(true); });
}

void ContentPane::cboProfession_Click() {
    guarded({"frmEditor", "cboProfession_Click"}, [this] {
        const Bill* bill = m_library.currentBill();
        if (!bill || bill->id < 1)
            m_grdConcent->clearRows();
        else
            LoadBillContent(bill->id);
    });
}

bool ContentPane::commitPending() { return m_grdConcent->commitEdit(); }
