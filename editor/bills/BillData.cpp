#include "editor/bills/BillData.h"

#include "app/base/Text.h"
#include "editor/common/BillDetails.h"
#include "editor/common/InSavepoint.h"
#include "storage/LibraryConnection.h"
#include "storage/Lookups.h"

namespace {

/// "key IN (1,2,…)" with the ids of the bills.
SqlText isOneOf(const std::vector<Bill>& bills) {
    SqlComposer ids;
    ids.add("key IN (-1");
    for (const Bill& bill : bills) {
        ids.add(",");
        ids.add(bill.id);
    }
    ids.add(")");
    return ids.take();
}

void shiftBills(Connection& connection, const std::vector<Bill>& bills) {
    if (bills.empty())
        return;
    const Lookups::Some contents = connection.lookups().some(LookupBy::ContentsByBill, isOneOf(bills));
    for (const Bill& bill : bills) {
        connection.Execute(sql("Update tblCont set Code='", bill.code, "' where BillId=", bill.id,
                               contents.narrow(sql("key=", bill.id))));
        connection.Execute(sql("Update tblBill set Code='", bill.code, "' where Id=", bill.id));
    }
}

void reassign(Connection& connection, qint64 id, const QString& code) {
    Lookups& lookups = connection.lookups();
    const SqlText isBill = sql("key=", id);
    connection.Execute(sql("Update tblParm set Code='", code, "' where BillId=", id,
                           lookups.narrow(LookupBy::ParametersByBill, isBill)));
    connection.Execute(sql("Update tblCont set Code='", code, "' where BillId=", id,
                           lookups.narrow(LookupBy::ContentsByBill, isBill)));
    connection.Execute(sql("Update tblBill set Code='", code, "' where Id=", id));
}

}  // namespace

Recordset billsOfChapter(Connection* ormConn, const QString& chapterCode) {
    Connection& connection = requireConnection(ormConn);
    const SqlText pattern = sql(" LIKE '", chapterCode.left(6), "___'");
    return connection.OpenRecordset(sql("SELECT * FROM tblbill WHERE code", pattern,
                                        connection.lookups().narrow(LookupBy::BillsByCode, sql("key", pattern)),
                                        " ORDER BY code; "));
}

Recordset billsWithCode(Connection* ormConn, const QString& text) {
    return requireConnection(ormConn).OpenRecordset(
        sql("SELECT * FROM tblbill WHERE code LIKE '%", Doubled{text}, "%' ORDER BY code; "));
}

bool billExists(Connection* ormConn, qint64 id) {
    return !requireConnection(ormConn).OpenRecordset(sql("SELECT ID FROM tblBill WHERE ID=", id, ";")).EndOfFile();
}

bool ModifyBill(Connection* ormConn, qint64 id, const QString& field, const QString& value) {
    return ExecuteDDL(ormConn, sql("UPDATE tblBill SET ", field, "='", value, "' , LastUpdate='", nowText(),
                                   "' WHERE id='", id, "';"));
}

std::optional<qint64> addBill(Connection* ormConn, const QString& code, const std::vector<Bill>& shifted) {
    qint64 id = 0;
    const bool added = inSavepoint("mnuAddBill_Click", ormConn, [&](Connection& connection) {
        connection.Execute(
            sql("INSERT INTO tblBill (code,lastUpdate,IsDel) VALUES ('", code, "','", nowText(), "',0)"));
        id = connection.LastInsertId();
        shiftBills(connection, shifted);
        return true;
    });
    return added ? std::optional(id) : std::nullopt;
}

bool deleteBill(Connection* ormConn, qint64 id, const std::vector<Bill>& shifted) {
    return inSavepoint("mnuDeleteBill_Click", ormConn, [&](Connection& connection) {
        deleteBillDetails(connection, sql("='", id, "'"));
        if (connection.Execute(sql("DELETE FROM tblBill WHERE ID='", id, "';")) < 1)
            return false;
        shiftBills(connection, shifted);
        return true;
    });
}

bool moveBill(Connection* ormConn, const Bill& moving, const Bill& neighbour, const QString& temporaryCode) {
    return inSavepoint("MoveBillRow", ormConn, [&](Connection& connection) {
        reassign(connection, neighbour.id, temporaryCode);
        reassign(connection, moving.id, neighbour.code);
        reassign(connection, neighbour.id, moving.code);
        return true;
    });
}
