#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "app/controls/KeyedGrid.h"
#include "editor/bills/FeatureData.h"

/// The features of one bill beside the values of the current feature, and the commands that change them.
///
/// At most one value of a feature is in use; it is the feature's default value. Edits and commands write to the library
/// first; what cannot be written does not stay in the grids.
class FeaturePane : public QWidget {
    Q_OBJECT

public:
    explicit FeaturePane(QWidget* parent = nullptr);

    /// The library to work on, owned by the caller; null when it could not be opened.
    void setConnection(Connection* ormConn) { m_ormConn = ormConn; }

    KeyedGrid* grdSpec() const { return m_grdSpec; }
    KeyedGrid* grdSpecEnum() const { return m_grdSpecEnum; }

    /// Shows the features of a bill (0: none), unlocked, and makes the first current.
    void LoadBillSpec(qint64 billId);
    /// Shows the values of a feature and makes the first current.
    void LoadSpecEnum(qint64 specId);

    /// The bill whose features are shown; 0 for none.
    qint64 shownBill() const { return m_shownBill; }

    /// While the pane is locked, because the bill shown is no longer there, nothing can be edited and commands do
    /// nothing.
    void setLocked(bool locked) { m_locked = locked; }
    bool isLocked() const { return m_locked; }

    /// Ends an open cell editor as an edit. False when it stays open.
    bool commitPending();

    void mnuAddFeature_Click();
    void mnuDeleteFeature_Click();
    void mnuAddFeatureVal_Click();
    void mnuDeleteFeatureVal_Click();

    /// The current bill; 0 for none.
    std::function<qint64()> currentBillId;

private:
    void grdSpec_AfterRowColChange(int newRow);
    void showFirstRow(KeyedGrid* grid);

    // FeatureEditing.cpp
    void enableEditing();
    EditVerdict grdSpec_ValidateEdit(int row, const QString& key, QString& text);
    void grdSpecEnum_AfterEdit(int row, const QString& key);
    std::vector<FeatureValue> values() const;
    void showValues(const std::vector<FeatureValue>& values);
    int rowOfFeature(qint64 specId) const;

    Connection* m_ormConn = nullptr;
    KeyedGrid* m_grdSpec;
    KeyedGrid* m_grdSpecEnum;
    qint64 m_shownBill = 0;
    qint64 m_shownFeature = 0;
    bool m_locked = false;
    std::vector<FeatureValue> m_valuesBeforeEdit;
};
