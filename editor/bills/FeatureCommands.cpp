// The commands that change which features and values there are.

#include "app/base/Guarded.h"
#include "app/controls/CheckState.h"

#include "editor/bills/FeaturePane.h"
#include "editor/common/CopyName.h"
#include "editor/common/LibraryDocument.h"

using namespace Qt::StringLiterals;

namespace {

const QString id = u"id"_s;

/// The row that takes the place of a removed one.
void stayAtRow(KeyedGrid* grid, int row) { grid->setRow(qMin(row, grid->rowCount() - 1)); }

}  // namespace

void FeaturePane::mnuAddFeature_Click() {
    guarded({"frmEditor", "mnuAddFeature_Click"}, [this] {
        const Bill* bill = m_library.currentBill();
        if (!bill)
            return;
        const QString name = GetCopyName(m_library.connection(), u"新建项目特征"_s, "tblBillSpec", "Name");
        if (name.isEmpty())
            return;
        const std::optional<qint64> added = addFeature(m_library.connection(), bill->id, name);
        if (!added)
            return;
        const int row = m_grdSpec->appendRow({{"id", QString::number(*added)}, {"Name", name}, {"type", u"0"_s}});
        m_grdSpec->setCell(row, u"Name"_s);
        m_grdSpec->setFocus();
        m_library.did(u"添加项目特征 "_s + name);
    });
}

void FeaturePane::mnuDeleteFeature_Click() {
    guarded({"frmEditor", "mnuDeleteFeature_Click"}, [this] {
        const int row = m_grdSpec->row();
        const QString name = m_grdSpec->text(row, u"Name"_s);
        if (row < 0 || !deleteFeature(m_library.connection(), m_grdSpec->value(row, id)))
            return;
        m_grdSpec->removeRows(row);
        stayAtRow(m_grdSpec, row);
        if (!m_grdSpec->hasRows())
            grdSpec_AfterRowColChange(-1);
        m_library.did(u"删除项目特征 "_s + name);
    });
}

void FeaturePane::mnuAddFeatureVal_Click() {
    guarded({"frmEditor", "mnuAddFeatureVal_Click"}, [this] {
        const int row = m_grdSpec->row();
        if (row < 0)
            return;
        const std::optional<qint64> added = addFeatureVal(m_library.connection(), m_grdSpec->value(row, id));
        if (!added)
            return;
        m_grdSpecEnum->setCell(
            m_grdSpecEnum->appendRow({{"ID", QString::number(*added)}, {"isUse", CheckState::of(false)}}),
            u"eigenValue"_s);
        m_grdSpecEnum->setFocus();
        m_library.did(u"添加特征值"_s);
    });
}

void FeaturePane::mnuDeleteFeatureVal_Click() {
    guarded({"frmEditor", "mnuDeleteFeatureVal_Click"}, [this] {
        const int row = m_grdSpecEnum->row();
        const QString value = m_grdSpecEnum->text(row, u"eigenValue"_s);
        if (row < 0 || !deleteFeatureVal(m_library.connection(), m_grdSpecEnum->value(row, id)))
            return;
        m_grdSpecEnum->removeRows(row);
        stayAtRow(m_grdSpecEnum, row);
        m_library.did(u"删除特征值 "_s + value);
    });
}
