#include "editor/bills/FeatureData.h"

#include "app/base/Guarded.h"
#include "app/base/Text.h"
#include "editor/common/InSavepoint.h"
#include "storage/LibraryConnection.h"
#include "storage/Lookups.h"

Recordset featuresOfBill(Connection* ormConn, qint64 billId) {
    Connection& connection = requireConnection(ormConn);
    return connection.OpenRecordset(sql("select * from tblBillSpec  where billID = '", billId, "'",
                                        connection.lookups().narrow(LookupBy::FeaturesByBill, sql("key=", billId)),
                                        "; "));
}

Recordset valuesOfFeature(Connection* ormConn, qint64 specId) {
    Connection& connection = requireConnection(ormConn);
    return connection.OpenRecordset(sql("select * from tblSpecEnum  where specID = '", specId, "'",
                                        connection.lookups().narrow(LookupBy::ValuesByFeature, sql("key=", specId)),
                                        "; "));
}

bool ModifyBillSpec(Connection* ormConn, qint64 id, const QString& field, const QString& value) {
    return ExecuteDDL(ormConn, sql("UPDATE tblBillSpec SET ", field, "='", value, "' , LastUpdate='", nowText(),
                                   "' WHERE id='", id, "';"));
}

std::optional<qint64> addFeature(Connection* ormConn, qint64 billId, const QString& name) {
    if (!ExecuteDDL(ormConn, sql("INSERT INTO tblBillSpec (billID,Name,type,lastUpdate,IsDel) VALUES ('", billId, "','",
                                 name, "',0,'", nowText(), "',0)")))
        return std::nullopt;
    return ormConn->LastInsertId();
}

bool deleteFeature(Connection* ormConn, qint64 id) {
    return inSavepoint("mnuDeleteFeature_Click", ormConn, [&](Connection& connection) {
        connection.Execute(sql("DELETE FROM tblSpecEnum WHERE specID='", id, "'",
                               connection.lookups().narrow(LookupBy::ValuesByFeature, sql("key=", id)), ";"));
        connection.Execute(sql("DELETE FROM tblBillSpec WHERE id='", id, "';"));
        return true;
    });
}

std::optional<qint64> addFeatureVal(Connection* ormConn, qint64 specId) {
    if (!ExecuteDDL(ormConn, sql("INSERT INTO tblSpecEnum (specID,lastUpdate,IsDel) VALUES ('", specId, "','",
                                 nowText(), "',0)")))
        return std::nullopt;
    return ormConn->LastInsertId();
}

bool deleteFeatureVal(Connection* ormConn, qint64 id) {
    return guarded({"frmEditor", "mnuDeleteFeatureVal_Click"}, [&] {
        requireConnection(ormConn).Write(sql("DELETE FROM tblSpecEnum WHERE ID='", id, "';"));
        return true;
    });
}

bool writeFeatureValues(Connection* ormConn, qint64 specId, const std::vector<FeatureValue>& values,
                        const QString& defVal) {
    return inSavepoint("grdSpecEnum_AfterEdit", ormConn, [&](Connection& connection) {
        for (const FeatureValue& value : values)
            connection.Execute(sql("UPDATE tblSpecEnum SET IsUse='", value.isUse, "' , EigenValue='", value.eigenValue,
                                   "',LastUpdate='", nowText(), "' WHERE id='", value.id, "';"));
        connection.Execute(sql("UPDATE tblBillSpec SET defVal='", defVal, "' , LastUpdate='", nowText(), "' WHERE id='",
                               specId, "';"));
        return true;
    });
}
