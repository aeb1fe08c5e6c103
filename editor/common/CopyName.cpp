#include "editor/common/CopyName.h"

#include <QSet>

#include "app/base/Guarded.h"
#include "app/base/Text.h"
#include "storage/LibraryConnection.h"
#include "storage/Lookups.h"

namespace {

/// Narrows the search to what the look-ups know when it is about the name that they keep for new rows of the table.
SqlText amongNewNames(Connection& connection, const SqlText& table, const QString& name) {
    for (const LookupBy by : {LookupBy::ContentsByNewName, LookupBy::SubRowsByNewName, LookupBy::FeaturesByNewName})
        if (LookupTables::tableName(LookupTables::tableOf(by)).text() == table.text() &&
            LookupTables::newName(by).text() == name)
            return connection.lookups().narrow(by, "key IS NOT NULL");
    return "";
}

}  // namespace

QString GetCopyName(Connection* ormConn, const QString& name, const SqlText& table, const SqlText& field) {
    return guarded({"frmEditor", "GetCopyName"}, [&] {
        const QString trimmed = trimBlanks(name);
        // Stands for one "SELECT field FROM table WHERE field='candidate' LIMIT 1 OFFSET 0;" per candidate, each of
        // which costs a pass. This one pass reads whatever can equal a candidate, by the column's own comparison: the
        // name itself and all texts that begin with the name and "(", which sort before the name and ")".
        Connection& connection = requireConnection(ormConn);
        Recordset rows = connection.OpenRecordset(
            sql("SELECT ", field, " AS taken FROM ", table, " WHERE (", field, "='", trimmed, "' OR (", field, ">='",
                trimmed, "(' AND ", field, "<'", trimmed, ")'))", amongNewNames(connection, table, trimmed), ";"));
        QSet<QString> taken;
        for (; !rows.EndOfFile(); rows.MoveNext())
            taken.insert(rows.text("taken"));
        ReleaseOrmRecordset(rows);

        QString candidate = trimmed;
        for (int counter = 1; taken.contains(candidate); ++counter)
            candidate = trimmed + u'(' + QString::number(counter) + u')';
        return candidate;
    });
}
