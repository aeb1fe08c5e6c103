#include "editor/chapters/ChapterData.h"

#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/base/Text.h"
#include "editor/common/BillDetails.h"
#include "editor/common/InSavepoint.h"
#include "storage/LibraryConnection.h"
#include "storage/Lookups.h"

using namespace Qt::StringLiterals;

namespace {

/// Puts `to` in the place of the first `length` characters of every code that begins with `from`.
void recode(Connection& connection, const QString& from, const QString& to, qsizetype length) {
    Lookups& lookups = connection.lookups();
    const SqlText beginsSo = sql("like('", from, "%',key)");
    const std::pair<SqlText, SqlText> tables[] = {{"tblSyb", ""},
                                                  {"tblBill", lookups.narrow(LookupBy::BillsByCode, beginsSo)},
                                                  {"tblCont", lookups.narrow(LookupBy::ContentsByCode, beginsSo)}};
    for (const auto& [table, narrowed] : tables)
        connection.Execute(sql("update ", table, " set code='", to, "' || substr(code,", length, "+1) where like('",
                               from, "%',code)", narrowed, ";"));
}

}  // namespace

bool AddBillSYB(Connection* ormConn, const QString& code, const QString& name) {
    return guarded({"frmEditor", "AddBillSYB"}, [&] {
        if (ExistSybCode(ormConn, code)) {
            showMessage(u"目录编号已经存在!"_s, u"提示"_s, MessageIcon::Information);
            return false;
        }
        requireConnection(ormConn).Write(sql("INSERT INTO tblSYB (code,name,lastUpdate,IsDel) VALUES ", "('", code,
                                             "','", name, "','", nowText(), "',0);"));
        return true;
    });
}

bool ModifyBillSYB(Connection* ormConn, const QString& code, const QString& name) {
    // Error records of this procedure have always had an empty procedure name.
    return guarded({"frmEditor", ""}, [&] {
        requireConnection(ormConn).Write(
            sql("UPDATE tblSYB SET name='", name, "',lastUpdate='", nowText(), "' WHERE code='", code, "';"));
        return true;
    });
}

bool DeleteBillSYB(Connection* ormConn, const QString& code) {
    const auto deleteAll = [&](Connection& connection) {
        const SqlText pattern = sql(" like '", code.left(6), "___'");
        const SqlText bills = sql(" IN (SELECT ID FROM tblBill WHERE CODE", pattern,
                                  connection.lookups().narrow(LookupBy::BillsByCode, sql("key", pattern)), ")");
        deleteBillDetails(connection, bills);
        connection.Execute(sql("DELETE FROM tblBill WHERE ID", bills, ";"));
        connection.Execute(sql("DELETE FROM tblSyb WHERE code='", code, "';"));
        return true;
    };
    // By rule a delete that fails is not rolled back: what was deleted before the error stays deleted.
    return inSavepoint("DeleteBillSYB", ormConn, deleteAll, AfterFailure::LeaveOpen);
}

bool ExchangeSYBNode(Connection* ormConn, const QString& codeA, const QString& codeB) {
    return inSavepoint("ExchangeSYBNode", ormConn, [&](Connection& connection) {
        const qsizetype length = codeB.size();
        const QString tmp = u"000000000"_s.left(length);
        recode(connection, codeB, tmp, length);
        recode(connection, codeA, codeB, length);
        recode(connection, tmp, codeA, length);
        return true;
    });
}
