#include "editor/common/BillDetails.h"

#include "storage/Connection.h"
#include "storage/Lookups.h"

void deleteBillDetails(Connection& connection, const SqlText& ids) {
    Lookups& lookups = connection.lookups();
    const SqlText isTheirs = sql("key", ids);
    const SqlText theirs = sql(" WHERE billID", ids);
    const SqlText parameters = lookups.narrow(LookupBy::ParametersByBill, isTheirs);
    const SqlText contents = sql(theirs, lookups.narrow(LookupBy::ContentsByBill, isTheirs));
    const SqlText ofContents = sql(" IN (SELECT ID FROM tblcont", contents, ")");
    const SqlText features = sql(theirs, lookups.narrow(LookupBy::FeaturesByBill, isTheirs));
    const SqlText ofFeatures = sql(" IN (SELECT ID FROM tblBillSpec", features, ")");

    connection.Execute(sql("DELETE FROM tblParm", theirs, parameters, ";"));
    connection.Execute(sql("DELETE FROM tblcontde WHERE ID IN (SELECT id FROM  tblcontde WHERE contID", ofContents,
                           lookups.narrow(LookupBy::SubRowsByContent, sql("key", ofContents)), ");"));
    connection.Execute(sql("DELETE FROM tblcont", contents, ";"));
    connection.Execute(sql("DELETE FROM tblSpecEnum WHERE id IN (SELECT id FROM  tblSpecEnum WHERE specID", ofFeatures,
                           lookups.narrow(LookupBy::ValuesByFeature, sql("key", ofFeatures)), ");"));
    connection.Execute(sql("DELETE FROM tblBillSpec", features, ";"));
}
