#include "editor/bills/BillData.h"

#include "app/base/Text.h"
#include "editor/common/InSavepoint.h"
#include "storage/LibraryConnection.h"
#include "storage/TemporaryIndex.h"

namespace {

/// An index on the work contents' bill serves the statements that follow, one per bill. For a few of them it would
/// cost more than it saves.
std::unique_ptr<TemporaryIndex> indexForShifting(Connection& connection, const std::vector<Bill>& bills) {
    constexpr std::size_t worthAnIndex = 4;
    if (bills.size() < worthAnIndex)
        return nullptr;
    return std::make_unique<TemporaryIndex>(&connection, "tblCont", "BillId");
}

void shiftBills(Connection& connection, const std::vector<Bill>& bills) {
    for (const Bill& bill : bills) {
        connection.Execute(sql("Update tblCont set Code='", bill.code, "' where BillId=", bill.id));
        connection.Execute(sql("Update tblBill set Code='", bill.code, "' where Id=", bill.id));
    }
}

void reassign(Connection& connection, qint64 id, const QString& code) {
    connection.Execute(sql("Update tblParm set Code='", code, "' where BillId=", id));
    connection.Execute(sql("Update tblCont set Code='", code, "' where BillId=", id));
    connection.Execute(sql("Update tblBill set Code='", code, "' where Id=", id));
}

}  // namespace

Recordset billsOfChapter(Connection* ormConn, const QString& chapterCode) {
    return requireConnection(ormConn).OpenRecordset(
        sql("SELECT * FROM tblbill WHERE code LIKE '", chapterCode.left(6), "___' ORDER BY code; "));
}

Recordset billsWithCode(Connection* ormConn, const QString& text) {
    return requireConnection(ormConn).OpenRecordset(
        sql("SELECT * FROM tblbill WHERE code LIKE '%", Doubled{text}, "%' ORDER BY code; "));
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
        const auto index = indexForShifting(connection, shifted);
        shiftBills(connection, shifted);
        if (index)
            index->drop();
        return true;
    });
    return added ? std::optional(id) : std::nullopt;
}

bool deleteBill(Connection* ormConn, qint64 id, const std::vector<Bill>& shifted) {
    return inSavepoint("mnuDeleteBill_Click", ormConn, [&](Connection& connection) {
        // Created before the deletes: their sub-selects use it too.
        const auto index = indexForShifting(connection, shifted);
        connection.Execute(sql("DELETE FROM tblParm WHERE billID='", id, "';"));
        connection.Execute(
            sql("DELETE FROM tblcontde WHERE ID IN (SELECT id FROM  tblcontde WHERE contID IN (SELECT ID FROM tblcont "
                "WHERE billID='",
                id, "'));"));
        connection.Execute(sql("DELETE FROM tblcont WHERE billID='", id, "';"));
        connection.Execute(
            sql("DELETE FROM tblSpecEnum WHERE id IN (SELECT id FROM  tblSpecEnum WHERE specID IN (SELECT ID FROM "
                "tblBillSpec WHERE billID='",
                id, "'));"));
        connection.Execute(sql("DELETE FROM tblBillSpec WHERE billID='", id, "';"));
        if (connection.Execute(sql("DELETE FROM tblBill WHERE ID='", id, "';")) < 1)
            return false;
        shiftBills(connection, shifted);
        if (index)
            index->drop();
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
