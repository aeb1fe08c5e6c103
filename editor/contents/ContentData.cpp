#include "editor/contents/ContentData.h"

#include "app/base/Guarded.h"
#include "app/base/Text.h"
#include "editor/common/InSavepoint.h"
#include "storage/LibraryConnection.h"
#include "storage/Lookups.h"

namespace {

/// Narrows a statement on tblContDe to the rows of one content, and one on tblCont to the contents of one bill.
SqlText ofContent(Connection& connection, qint64 contID) {
    return connection.lookups().narrow(LookupBy::SubRowsByContent, sql("key=", contID));
}
SqlText ofBill(Connection& connection, qint64 billID) {
    return connection.lookups().narrow(LookupBy::ContentsByBill, sql("key=", billID));
}

}  // namespace

bool ModifyCont(Connection* ormConn, qint64 contID, const QString& text) {
    return ExecuteDDL(
        ormConn, sql("UPDATE tblCont SET cont='", text, "' , LastUpdate='", nowText(), "' WHERE id='", contID, "';"));
}

bool ModifySubCont(Connection* ormConn, qint64 contID, qint64 subNum, const QString& text) {
    return ExecuteDDL(
        ormConn, sql("UPDATE tblContde SET subCont='", text, "' , LastUpdate='", nowText(), "' WHERE contID='", contID,
                     "' AND subNum='", subNum, "'", ormConn ? ofContent(*ormConn, contID) : SqlText(""), ";"));
}

qint64 GetSubContID(Connection* ormConn, qint64 contID, qint64 subNum) {
    return guarded({"frmEditor", "GetSubContID"}, [&] {
        Connection& connection = requireConnection(ormConn);
        Recordset row =
            connection.OpenRecordset(sql("SELECT ID FROM tblContDe WHERE contId='", contID, "' AND subNum='", subNum,
                                         "'", ofContent(connection, contID), " ORDER BY ID ASC limit 1;"));
        const qint64 id = row.EndOfFile() ? 0 : row.number("ID");
        ReleaseOrmRecordset(row);
        return id;
    });
}

std::optional<qint64> addContent(Connection* ormConn, const NewContent& content) {
    qint64 id = 0;
    const bool added = inSavepoint(
        "munAddBillCont_Click", ormConn,
        [&](Connection& connection) {
            connection.Execute(sql("UPDATE tblCont SET num=num+1 WHERE num>='", content.num, "' AND billID='",
                                   content.billID, "'", ofBill(connection, content.billID), ";"));
            connection.Execute(sql("INSERT INTO tblCont (code,num,cont,prof,billid,lastUpdate,IsDel) VALUES('",
                                   content.code, "','", content.num, "','", content.name, "','", content.prof, "','",
                                   content.billID, "','", nowText(), "','0');"));
            id = connection.LastInsertId();
            return true;
        },
        AfterFailure::LeaveOpen);
    return added ? std::optional(id) : std::nullopt;
}

bool addSubContent(Connection* ormConn, qint64 contID, qint64 subNum, const QString& name) {
    return inSavepoint(
        "munAddBillSubCont_Click", ormConn,
        [&](Connection& connection) {
            connection.Execute(sql("UPDATE tblContde SET subNum=subNum+1 WHERE subNum>='", subNum, "' AND contID='",
                                   contID, "'", ofContent(connection, contID), ";"));
            connection.Execute(sql("INSERT INTO tblContde (contID,subNum,subCont,lastUpdate,IsDel) VALUES('", contID,
                                   "','", subNum, "','", name, "','", nowText(), "','0');"));
            return true;
        },
        AfterFailure::LeaveOpen);
}

bool deleteContent(Connection* ormConn, qint64 contID, qint64 contNum, qint64 billID) {
    return inSavepoint("mnuDelBillCont_Click", ormConn, [&](Connection& connection) {
        connection.Execute(
            sql("DELETE FROM tblContde WHERE contId='", contID, "'", ofContent(connection, contID), ";"));
        connection.Execute(sql("UPDATE tblcont SET num=num-1 WHERE num>'", contNum, "' AND billId ='", billID, "'",
                               ofBill(connection, billID), ";"));
        connection.Execute(sql("DELETE FROM tblcont WHERE id='", contID, "';"));
        return true;
    });
}

bool deleteSubContent(Connection* ormConn, qint64 contID, qint64 subNum) {
    return inSavepoint("munDelBillSubCont_Click", ormConn, [&](Connection& connection) {
        connection.Execute(sql("DELETE FROM tblContde WHERE contId='", contID, "' AND subNum='", subNum, "'",
                               ofContent(connection, contID), " ;"));
        connection.Execute(sql("UPDATE tblcontDe SET subNum=subNum-1 WHERE  subNum>'", subNum, "' AND contId ='",
                               contID, "'", ofContent(connection, contID), ";"));
        return true;
    });
}

bool deleteRation(Connection* ormConn, qint64 contDeID, RationRow becomes) {
    return inSavepoint(
        "munDelBillContDe_Click", ormConn,
        [&](Connection& connection) {
            if (becomes == RationRow::Removed)
                connection.Execute(sql("DELETE FROM tblContde WHERE id='", contDeID, "' ;"));
            else
                connection.Execute(sql("UPDATE tblContDe SET DEH='',Name='',Unit='',DekID='',LastUpdate='", nowText(),
                                       "' WHERE ID='", contDeID, "';"));
            return true;
        },
        AfterFailure::LeaveOpen);
}

bool updateRation(Connection* ormConn, qint64 id, const Ration& ration) {
    return ExecuteDDL(ormConn,
                      sql("UPDATE tblContDe SET DEH='", ration.deh, "',Name='", ration.name, "',Unit='", ration.unit,
                          "',DekID='", ration.dekID, "',LastUpdate='", nowText(), "' WHERE ID='", id, "';"));
}

std::optional<qint64> insertRation(Connection* ormConn, qint64 contID, qint64 subNum, const QString& subCont,
                                   const Ration& ration) {
    const bool inserted = ExecuteDDL(
        ormConn, sql("INSERT INTO tblContde (contID,subNum,subCont,deh,Name,Unit,dekID,lastUpdate,IsDel) VALUES('",
                     contID, "','", subNum, "','", subCont, "','", ration.deh, "','", ration.name, "','", ration.unit,
                     "','", ration.dekID, "','", nowText(), "','0');"));
    return inserted ? std::optional(ormConn->LastInsertId()) : std::nullopt;
}
