#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "storage/Recordset.h"

class Connection;

/// The statements that read and change the features of bills (tblBillSpec) and their values (tblSpecEnum). Failures
/// are recorded.

/// A value of a feature: its row id, the check state as the grid shows and the file stores it (CheckState), its text.
struct FeatureValue {
    qint64 id;
    QString isUse;
    QString eigenValue;
};

/// The features of a bill. Throws Error.
Recordset featuresOfBill(Connection* ormConn, qint64 billId);

/// The values of a feature. Throws Error.
Recordset valuesOfFeature(Connection* ormConn, qint64 specId);

/// Writes one column of a feature. False after a recorded error: `value` must hold no apostrophe.
[[nodiscard]] bool ModifyBillSpec(Connection* ormConn, qint64 id, const QString& field, const QString& value);

/// Adds a feature without a type to a bill. Its row id.
[[nodiscard]] std::optional<qint64> addFeature(Connection* ormConn, qint64 billId, const QString& name);

/// Deletes a feature with its values. After an error both are there as before.
[[nodiscard]] bool deleteFeature(Connection* ormConn, qint64 id);

/// Adds an empty value to a feature. Its row id.
[[nodiscard]] std::optional<qint64> addFeatureVal(Connection* ormConn, qint64 specId);

/// Deletes a value; the feature's default value stays.
[[nodiscard]] bool deleteFeatureVal(Connection* ormConn, qint64 id);

/// Writes all values of the feature `specId`, in order, and `defVal` as its default value. After an error everything
/// is as before.
[[nodiscard]] bool writeFeatureValues(Connection* ormConn, qint64 specId, const std::vector<FeatureValue>& values,
                                      const QString& defVal);
