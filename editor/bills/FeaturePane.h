#pragma once

#include <QWidget>
#include <vector>

#include "app/controls/KeyedGrid.h"
#include "editor/bills/FeatureData.h"

class LibraryDocument;

/// The features of one bill beside the values of the current feature, and the commands that change them.
///
/// At most one value of a feature is in use; it is the feature's default value. Edits and commands write to the library
/// first; what cannot be written does not stay in the grids.
class FeaturePane : public QWidget {
    Q_OBJECT

public:
    /// Shows the features of the current bill of `library`.
    explicit FeaturePane(LibraryDocument& library, QWidget* parent = nullptr);

    KeyedGrid* grdSpec() const { return m_grdSpec; }
    KeyedGrid* grdSpecEnum() const { return m_grdSpecEnum; }

    /// Shows the features of a bill and makes the first current.
    void LoadBillSpec(qint64 billId);
    /// Shows the values of a feature and makes the first current.
    void LoadSpecEnum(qint64 specId);

    /// Ends an open cell editor as an edit. False when it stays open.
    bool commitPending();

    void mnuAddFeature_Click();
    void mnuDeleteFeature_Click();
    void mnuAddFeatureVal_Click();
    void mnuDeleteFeatureVal_Click();

private:
    void showCurrentBill();
    void grdSpec_AfterRowColChange(int newRow);
    void showFirstRow(KeyedGrid* grid);

    // FeatureEditing.cpp
    void enableEditing();
    EditVerdict grdSpec_ValidateEdit(int row, const QString& key, QString& text);
    void grdSpecEnum_AfterEdit(int row, const QString& key);
    std::vector<FeatureValue> values() const;
    void showValues(const std::vector<FeatureValue>& values);
    int rowOfFeature(qint64 specId) const;

    LibraryDocument& m_library;
    KeyedGrid* m_grdSpec;
    KeyedGrid* m_grdSpecEnum;
    qint64 m_shownFeature = 0;
    std::vector<FeatureValue> m_valuesBeforeEdit;
};
