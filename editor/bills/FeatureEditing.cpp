// What the user edits of features and values.

#include "app/base/Guarded.h"
#include "app/base/Text.h"
#include "app/controls/CheckState.h"

#include "editor/bills/FeaturePane.h"
#include "editor/common/LibraryDocument.h"

using namespace Qt::StringLiterals;

namespace {

const QString isUse = u"isUse"_s;
const QString eigenValue = u"eigenValue"_s;

}  // namespace

void FeaturePane::enableEditing() {
    m_grdSpec->setComboList(u"type"_s, u"#0; |#1;数值|#2;枚举|#3;计算"_s);
    m_grdSpec->startEdit = [this](int, const QString& key) {
        return !m_library.isShownBillGone() && key.compare(u"id"_s, Qt::CaseInsensitive) != 0;
    };
    m_grdSpec->validateEdit = [this](int row, const QString& key, QString& text) {
        return grdSpec_ValidateEdit(row, key, text);
    };
    m_grdSpecEnum->startEdit = m_grdSpec->startEdit;
    m_grdSpecEnum->validateEdit = [this](int, const QString&, QString&) {
        m_valuesBeforeEdit = values();
        return EditVerdict::Accept;
    };
    connect(m_grdSpecEnum, &KeyedGrid::afterEdit, this, &FeaturePane::grdSpecEnum_AfterEdit);
}

EditVerdict FeaturePane::grdSpec_ValidateEdit(int row, const QString& key, QString& text) {
    return guarded(
        {"frmEditor", "grdSpec_ValidateEdit"},
        [&] {
            // For the type the number of the list entry is stored.
            const bool isType = key.compare(u"type"_s, Qt::CaseInsensitive) == 0;
            const QString value = isType ? QString::number(numericValue(text)) : trimBlanks(text);
            if (!ModifyBillSpec(m_library.connection(), m_grdSpec->value(row, u"id"_s), key, value))
                return EditVerdict::Restore;
            m_library.did(u"修改项目特征 "_s + m_grdSpec->text(row, u"Name"_s));
            text = value;
            return EditVerdict::Accept;
        },
        [] { return EditVerdict::Restore; });
}

void FeaturePane::grdSpecEnum_AfterEdit(int row, const QString& key) {
    guarded({"frmEditor", "grdSpecEnum_AfterEdit"}, [&] {
        if (key.compare(isUse, Qt::CaseInsensitive) == 0 && m_grdSpecEnum->text(row, isUse) == CheckState::checked) {
            for (int other = 0; other < m_grdSpecEnum->rowCount(); ++other) {
                if (other != row)
                    m_grdSpecEnum->setText(other, isUse, CheckState::unchecked);
            }
        }
        const std::vector<FeatureValue> written = values();
        QString defVal;
        for (const FeatureValue& value : written) {
            if (value.isUse == CheckState::checked)
                defVal = value.eigenValue;
        }
        if (!writeFeatureValues(m_library.connection(), m_shownFeature, written, defVal)) {
            m_grdSpecEnum->revokeEdit();
            return showValues(m_valuesBeforeEdit);
        }
        m_grdSpec->setText(rowOfFeature(m_shownFeature), u"defval"_s, defVal);
        m_library.did(u"修改特征值 "_s + m_grdSpecEnum->text(row, eigenValue));
    });
}

std::vector<FeatureValue> FeaturePane::values() const {
    std::vector<FeatureValue> all;
    all.reserve(static_cast<std::size_t>(m_grdSpecEnum->rowCount()));
    for (int row = 0; row < m_grdSpecEnum->rowCount(); ++row)
        all.push_back({m_grdSpecEnum->value(row, u"ID"_s), m_grdSpecEnum->text(row, isUse),
                       m_grdSpecEnum->text(row, eigenValue)});
    return all;
}

void FeaturePane::showValues(const std::vector<FeatureValue>& values) {
    int row = 0;
    for (const FeatureValue& value : values) {
        m_grdSpecEnum->setText(row, isUse, value.isUse);
        m_grdSpecEnum->setText(row, eigenValue, value.eigenValue);
        ++row;
    }
}

int FeaturePane::rowOfFeature(qint64 specId) const {
    for (int row = 0; row < m_grdSpec->rowCount(); ++row) {
        if (m_grdSpec->value(row, u"id"_s) == specId)
            return row;
    }
    return -1;
}
