#include "editor/common/CopyName.h"

#include "app/base/Guarded.h"
#include "app/base/Text.h"
#include "storage/LibraryConnection.h"

QString GetCopyName(Connection* ormConn, const QString& name, const SqlText& table, const SqlText& field) {
    return guarded({"frmEditor", "GetCopyName"}, [&] {
        Connection& connection = requireConnection(ormConn);
        const QString trimmed = trimBlanks(name);
        QString candidate = trimmed;
        for (int counter = 1;; ++counter) {
            Recordset taken = connection.OpenRecordset(
                sql("SELECT ", field, " FROM ", table, " WHERE ", field, "='", candidate, "' LIMIT 1 OFFSET 0;"));
            if (taken.EndOfFile())
                return candidate;
            candidate = trimmed + QLatin1Char('(') + QString::number(counter) + QLatin1Char(')');
        }
    });
}
